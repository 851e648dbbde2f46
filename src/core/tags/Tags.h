// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/FolderRecord.h"
#include "core/records/NoteRecord.h"
#include "core/records/RecordTable.h"
#include "core/tags/TagRecord.h"

#include <QCollatorSortKey>
#include <QHash>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

namespace orvane {

/// A tag has at most this many UTF-16 units.
inline constexpr qsizetype longestTag = 50;

/// Trims each tag, drops empty and overlong ones, drops those that differ from an earlier one only
/// by case (the first spelling wins), and sorts the rest as a person would, regardless of case.
[[nodiscard]] QStringList normalizeTags(const QStringList& tags);

[[nodiscard]] bool containsTag(const QStringList& tags, const QString& tag);
/// The tags with every spelling of `oldName` replaced; nothing when there is none.
[[nodiscard]] std::optional<QStringList>
replacingTag(const QStringList& tags, const QString& oldName, const QString& newName);
/// The tags without any spelling of `name`; nothing when there is none.
[[nodiscard]] std::optional<QStringList> removingTag(const QStringList& tags, const QString& name);

/// The first `most` tags of a library that contain `text`, regardless of case, in its order. Of
/// spellings that differ only by case the first stands for all.
[[nodiscard]] QStringList tagsContaining(const QList<TagRecord>& library, const QString& text,
                                         qsizetype most);

/// Aliases by lower-cased tag.
using TagAliases = QMap<QString, QStringList>;

/// Trims and lower-cases the keys, trims the aliases, drops what is empty, equal to its tag or
/// doubled regardless of case, sorts the rest, and drops tags without aliases.
[[nodiscard]] TagAliases normalizedAliasMap(const TagAliases& aliases);

/// Where a text stands in a person's order: as the language of the desktop sorts, regardless of
/// case, and by code points where that sees no difference. Making one costs what a dozen
/// comparisons without it would.
class TagOrder {
public:
    explicit TagOrder(const QString& text);
    friend bool operator<(const TagOrder& a, const TagOrder& b)
    {
        const int order = a.m_key.compare(b.m_key);
        return order < 0 || (order == 0 && a.m_text < b.m_text);
    }
    [[nodiscard]] const QString& text() const { return m_text; }

private:
    QCollatorSortKey m_key;
    QString m_text;
};

/// Which tags there are and how many notes have each, kept up to date record by record, so that a
/// change of one note costs as much as that note has tags. The library stays sorted: what has come
/// and gone since it was last asked for is merged in, by keys that each tag's order is worked out
/// into once.
class TagIndex {
public:
    void rebuild(const RecordTable<FolderRecord>& folders, const RecordTable<NoteRecord>& notes);
    void add(const NoteRecord& note) { count(note, +1); }
    void remove(const NoteRecord& note) { count(note, -1); }
    void add(const FolderRecord& folder) { count(folder.tags, +1); }
    void remove(const FolderRecord& folder) { count(folder.tags, -1); }

    /// Every spelling in use on any note or folder, the Trash included, in a person's order.
    [[nodiscard]] const QList<TagRecord>& library() const;
    /// How many notes outside the Trash have the tag, regardless of case.
    [[nodiscard]] int noteCount(const QString& tag) const;

private:
    void count(const NoteRecord& note, int by);
    void count(const QStringList& tags, int by);
    void mergeChanged() const;
    void changeInPlace(const std::vector<TagOrder>& came, const std::vector<TagOrder>& went) const;
    void merge(std::vector<TagOrder>& came, std::vector<TagOrder>& went) const;

    QHash<QString, int> m_uses;       // by exact spelling
    QHash<QString, int> m_noteCounts; // by lower case
    mutable std::vector<TagOrder> m_sorted;
    mutable QList<TagRecord> m_library; // the names in m_sorted
    mutable QSet<QString> m_changed;    // came or went since then, or both
};

} // namespace orvane
