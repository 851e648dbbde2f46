// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"

#include <QHash>
#include <QSet>

namespace orvane {

[[nodiscard]] inline BinderRowID folderRow(const QUuid& id)
{
    return {BinderRowID::Kind::Folder, id};
}
[[nodiscard]] inline BinderRowID noteRow(const QUuid& id)
{
    return {BinderRowID::Kind::Note, id};
}

/// Which rows the Binder shows and in which order: top-level folders, then the notes of the
/// project, the Trash last; below a folder its subfolders, then its notes. While tags are filtered
/// for, a flat list of the notes that have one. Answers from `AppState` as it is when asked, but
/// for the counts and the filter by title, which are brought up to date when told. Main thread.
class BinderRows {
public:
    /// Folders nested deeper than this are damage, and walks stop.
    static constexpr int deepest = 200;

    /// The state outlives it.
    explicit BinderRows(const AppState& appState);

    [[nodiscard]] QList<BinderRowID> topLevel() const;
    /// What stands directly below a folder; nothing for a note.
    [[nodiscard]] QList<BinderRowID> below(const BinderRowID& row) const;
    /// Whether there is anything, the filter by title aside.
    [[nodiscard]] bool hasAnyBelow(const BinderRowID& row) const;
    /// The folder that the row stands in; nothing at the top level.
    [[nodiscard]] std::optional<BinderRowID> parentOf(const BinderRowID& row) const;

    /// Counts the notes of all folders anew.
    void recount();
    /// Notes in a folder and everything below it, when they were last counted.
    [[nodiscard]] int countIn(const QUuid& folder) const { return m_counts.value(folder); }

    /// Keeps only what has the text in its title, whatever its case, and the folders above it.
    void setTitleFilter(const QString& text);
    [[nodiscard]] const QString& titleFilter() const { return m_filter; }
    /// Finds out anew what the filter by title keeps.
    void refilter();
    [[nodiscard]] bool isTagFiltered() const { return !m_appState.activeTagFilter().isEmpty(); }
    /// Whether a list that is filtered by tags has the note.
    [[nodiscard]] bool isInTagFilter(const NoteRecord& note) const;

    /// What of a note decides where it stands, in the order and by the filter that are set.
    [[nodiscard]] RecordAspects placingAspects() const;
    /// Whether one of two notes that stand in the same list comes first.
    [[nodiscard]] bool standsBefore(const NoteRecord& one, const NoteRecord& other) const;

private:
    [[nodiscard]] QList<BinderRowID> childrenOf(const BinderRowID& row) const;
    [[nodiscard]] QList<BinderRowID> wholeTopLevel() const;
    [[nodiscard]] QList<BinderRowID> filtered(QList<BinderRowID> rows) const;
    void appendNotes(QList<BinderRowID>& rows, const QUuid& container) const;
    [[nodiscard]] bool standsBeforeByHand(const NoteRecord& one, const NoteRecord& other) const;
    int countBelow(const QUuid& folder, int depth);
    bool keepByFilter(const QUuid& folder, int depth);
    [[nodiscard]] bool passesFilter(const BinderRowID& row) const;

    const AppState& m_appState;
    QHash<QUuid, int> m_counts;
    QString m_filter;
    /// What the filter keeps, while there is one.
    QSet<BinderRowID> m_kept;
};

/// Whether a change concerns titles, as lists show them.
[[nodiscard]] bool concernsTitles(const NotebookChange& change);

} // namespace orvane
