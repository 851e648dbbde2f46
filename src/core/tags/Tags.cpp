// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/tags/Tags.h"

#include <QCollator>
#include <QSet>

#include <algorithm>
#include <iterator>

namespace orvane {

namespace {

/// Up to so many changes each move what stands behind them; more are merged in one pass.
constexpr size_t fewChanges = 16;

/// Each thread has its own: a collator may not be used by two.
const QCollator& caseInsensitiveCollator()
{
    thread_local const QCollator collator = [] {
        QCollator made;
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    return collator;
}

QCollatorSortKey sortKey(const QString& text)
{
    const QCollator& collator = caseInsensitiveCollator();
    // Keys of the C locale are the bytes as they are, whatever the collator is told of case.
    const bool hasRules = collator.locale().language() != QLocale::C;
    return collator.sortKey(hasRules ? text : text.toCaseFolded());
}

void sortForPerson(QStringList& texts)
{
    const QCollator& collator = caseInsensitiveCollator();
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

QStringList tagsContaining(const QList<TagRecord>& library, const QString& text, qsizetype most)
{
    QStringList found;
    QSet<QString> seen;
    for (const TagRecord& tag : library) {
        if (found.size() >= most)
            break;
        if (!tag.name.contains(text, Qt::CaseInsensitive))
            continue;
        const QString lower = tag.name.toLower();
        if (seen.contains(lower))
            continue;
        seen.insert(lower);
        found.append(tag.name);
    }
    return found;
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

TagOrder::TagOrder(const QString& text)
    : m_key(sortKey(text))
    , m_text(text)
{}

void TagIndex::rebuild(const RecordTable<FolderRecord>& folders,
                       const RecordTable<NoteRecord>& notes)
{
    *this = {};
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
            m_changed.insert(tag);
        if (uses <= 0)
            m_uses.remove(tag);
    }
}

const QList<TagRecord>& TagIndex::library() const
{
    if (!m_changed.isEmpty())
        mergeChanged();
    return m_library;
}

void TagIndex::mergeChanged() const
{
    std::vector<TagOrder> came;
    std::vector<TagOrder> went;
    for (const QString& tag : std::as_const(m_changed)) {
        TagOrder order(tag);
        const bool isThere = std::binary_search(m_sorted.begin(), m_sorted.end(), order);
        if (isThere != m_uses.contains(tag))
            (isThere ? went : came).push_back(std::move(order));
    }
    m_changed.clear();
    if (came.size() + went.size() <= fewChanges)
        changeInPlace(came, went);
    else
        merge(came, went);
}

void TagIndex::changeInPlace(const std::vector<TagOrder>& came,
                             const std::vector<TagOrder>& went) const
{
    for (const TagOrder& tag : went) {
        const auto at = std::lower_bound(m_sorted.begin(), m_sorted.end(), tag);
        m_library.removeAt(at - m_sorted.begin());
        m_sorted.erase(at);
    }
    for (const TagOrder& tag : came) {
        const auto at = std::lower_bound(m_sorted.begin(), m_sorted.end(), tag);
        m_library.insert(at - m_sorted.begin(), {tag.text()});
        m_sorted.insert(at, tag);
    }
}

void TagIndex::merge(std::vector<TagOrder>& came, std::vector<TagOrder>& went) const
{
    std::sort(came.begin(), came.end());
    std::sort(went.begin(), went.end());
    std::vector<TagOrder> stayed;
    stayed.reserve(m_sorted.size());
    auto next = went.cbegin();
    for (TagOrder& order : m_sorted) {
        if (next != went.cend() && next->text() == order.text())
            ++next;
        else
            stayed.push_back(std::move(order));
    }
    m_sorted.clear();
    m_sorted.reserve(stayed.size() + came.size());
    std::merge(std::make_move_iterator(stayed.begin()), std::make_move_iterator(stayed.end()),
               std::make_move_iterator(came.begin()), std::make_move_iterator(came.end()),
               std::back_inserter(m_sorted));
    m_library.clear();
    m_library.reserve(qsizetype(m_sorted.size()));
    for (const TagOrder& order : m_sorted)
        m_library.append({order.text()});
}

int TagIndex::noteCount(const QString& tag) const
{
    return m_noteCounts.value(tag.toLower());
}

} // namespace orvane
