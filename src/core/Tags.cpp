// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/Tags.h"

#include <QCollator>
#include <QSet>

namespace orvane {

namespace {

QCollator caseInsensitiveCollator()
{
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

void sortForPerson(QStringList& texts)
{
    const QCollator collator = caseInsensitiveCollator();
    std::stable_sort(texts.begin(), texts.end(), [&](const QString& a, const QString& b) {
        return collator.compare(a, b) < 0;
    });
}

/// Keeps the first of those that differ only by case.
QStringList withoutDoubles(const QStringList& texts)
{
    QStringList kept;
    QSet<QString> seen;
    for (const QString& text : texts) {
        const QString lower = text.toLower();
        if (seen.contains(lower))
            continue;
        seen.insert(lower);
        kept.append(text);
    }
    return kept;
}

bool sameTag(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

QStringList normalizeTags(const QStringList& tags)
{
    QStringList trimmed;
    for (const QString& tag : tags) {
        QString text = tag.trimmed();
        if (!text.isEmpty() && text.size() <= longestTag)
            trimmed.append(std::move(text));
    }
    QStringList unique = withoutDoubles(trimmed);
    sortForPerson(unique);
    return unique;
}

bool containsTag(const QStringList& tags, const QString& tag)
{
    return tags.contains(tag, Qt::CaseInsensitive);
}

std::optional<QStringList> replacingTag(const QStringList& tags, const QString& oldName,
                                        const QString& newName)
{
    if (!containsTag(tags, oldName))
        return std::nullopt;
    QStringList replaced = tags;
    for (QString& tag : replaced) {
        if (sameTag(tag, oldName))
            tag = newName;
    }
    return normalizeTags(replaced);
}

std::optional<QStringList> removingTag(const QStringList& tags, const QString& name)
{
    QStringList rest = tags;
    if (rest.removeIf([&](const QString& tag) { return sameTag(tag, name); }) == 0)
        return std::nullopt;
    return rest;
}

TagAliases normalizedAliasMap(const TagAliases& aliases)
{
    TagAliases clean;
    for (auto it = aliases.cbegin(); it != aliases.cend(); ++it) {
        const QString tag = it.key().trimmed().toLower();
        if (tag.isEmpty())
            continue;
        QStringList list = clean.value(tag);
        for (const QString& alias : it.value()) {
            QString text = alias.trimmed();
            if (!text.isEmpty() && !sameTag(text, tag))
                list.append(std::move(text));
        }
        list = withoutDoubles(list);
        sortForPerson(list);
        if (!list.isEmpty())
            clean.insert(tag, list);
    }
    return clean;
}

void TagIndex::rebuild(const RecordTable<FolderRecord>& folders,
                       const RecordTable<NoteRecord>& notes)
{
    *this = {};
    m_libraryIsStale = true;
    for (const Shared<FolderRecord>& folder : folders)
        add(*folder);
    for (const Shared<NoteRecord>& note : notes)
        add(*note);
}

void TagIndex::count(const NoteRecord& note, int by)
{
    count(note.tags, by);
    if (note.folderID == FolderRecord::trashFolderID)
        return;
    QSet<QString> counted; // a record from elsewhere may hold two spellings of one tag
    for (const QString& tag : note.tags) {
        const QString lower = tag.toLower();
        if (counted.contains(lower))
            continue;
        counted.insert(lower);
        m_noteCounts[lower] += by;
    }
}

void TagIndex::count(const QStringList& tags, int by)
{
    for (const QString& tag : tags) {
        int& uses = m_uses[tag];
        const bool wasUsed = uses > 0;
        uses += by;
        if (wasUsed != (uses > 0))
            m_libraryIsStale = true;
        if (uses <= 0)
            m_uses.remove(tag);
    }
}

const QList<TagRecord>& TagIndex::library() const
{
    if (m_libraryIsStale) {
        QStringList names = m_uses.keys();
        names.sort(); // spellings that differ only by case keep one order
        sortForPerson(names);
        m_library.clear();
        m_library.reserve(names.size());
        for (const QString& name : std::as_const(names))
            m_library.append({name});
        m_libraryIsStale = false;
    }
    return m_library;
}

int TagIndex::noteCount(const QString& tag) const
{
    return m_noteCounts.value(tag.toLower());
}

} // namespace orvane
