// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/FolderRecord.h"
#include "core/NoteRecord.h"
#include "core/RecordTable.h"
#include "core/TagRecord.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

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

/// Aliases by lower-cased tag.
using TagAliases = QMap<QString, QStringList>;

/// Trims and lower-cases the keys, trims the aliases, drops what is empty, equal to its tag or
/// doubled regardless of case, sorts the rest, and drops tags without aliases.
[[nodiscard]] TagAliases normalizedAliasMap(const TagAliases& aliases);

/// Which tags there are and how many notes have each, kept up to date record by record, so that a
/// change of one note costs as much as that note has tags.
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

    QHash<QString, int> m_uses;       // by exact spelling
    QHash<QString, int> m_noteCounts; // by lower case
    mutable QList<TagRecord> m_library;
    mutable bool m_libraryIsStale = false;
};

} // namespace orvane
