// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/BinderRows.h"

namespace orvane {

BinderRows::BinderRows(const AppState& appState)
    : m_appState(appState)
{}

QList<BinderRowID> BinderRows::topLevel() const
{
    return filtered(wholeTopLevel());
}

QList<BinderRowID> BinderRows::below(const BinderRowID& row) const
{
    return filtered(childrenOf(row));
}

QList<BinderRowID> BinderRows::filtered(QList<BinderRowID> rows) const
{
    if (!m_filter.isEmpty())
        rows.removeIf([this](const BinderRowID& row) { return !m_kept.contains(row); });
    return rows;
}

bool BinderRows::hasAnyBelow(const BinderRowID& row) const
{
    if (row.kind == BinderRowID::Kind::Note)
        return false;
    const BinderOrder& order = m_appState.order();
    return !order.childFolderOrder.value(row.id).isEmpty() ||
           !order.noteOrderByFolder.value(row.id).isEmpty();
}

QList<BinderRowID> BinderRows::childrenOf(const BinderRowID& row) const
{
    QList<BinderRowID> rows;
    if (row.kind == BinderRowID::Kind::Note)
        return rows;
    const BinderOrder& order = m_appState.order();
    for (const QUuid& id : order.childFolderOrder.value(row.id))
        rows.append(folderRow(id));
    appendNotes(rows, row.id);
    return rows;
}

QList<BinderRowID> BinderRows::wholeTopLevel() const
{
    QList<BinderRowID> rows;
    if (isTagFiltered()) {
        for (const Shared<NoteRecord>& note : m_appState.tagFilteredNotes())
            rows.append(noteRow(note->id));
        return rows;
    }
    for (const QUuid& id : m_appState.order().rootFolderOrder)
        rows.append(folderRow(id));
    if (const auto project = m_appState.projectRootContainerID())
        appendNotes(rows, *project);
    if (m_appState.folder(FolderRecord::trashFolderID))
        rows.append(folderRow(FolderRecord::trashFolderID));
    return rows;
}

void BinderRows::appendNotes(QList<BinderRowID>& rows, const QUuid& container) const
{
    const BinderSortOrder sorting = m_appState.binderSortOrder();
    if (sorting == BinderSortOrder::Custom) {
        for (const QUuid& id : m_appState.order().noteOrderByFolder.value(container))
            rows.append(noteRow(id));
        return;
    }
    for (const auto& note : sortedNotes(m_appState.orderedNotes(container), sorting))
        rows.append(noteRow(note->id));
}

std::optional<BinderRowID> BinderRows::parentOf(const BinderRowID& row) const
{
    std::optional<QUuid> container;
    if (row.kind == BinderRowID::Kind::Folder) {
        const FolderRecord* folder = m_appState.folder(row.id);
        container = folder ? folder->parentFolderID : std::nullopt;
    } else if (const NoteRecord* note = m_appState.note(row.id)) {
        container = note->folderID;
    }
    if (!container || isTagFiltered() || !m_appState.folder(*container))
        return std::nullopt;
    return folderRow(*container);
}

void BinderRows::recount()
{
    m_counts.clear();
    for (const QUuid& id : m_appState.order().rootFolderOrder)
        countBelow(id, 0);
    countBelow(FolderRecord::trashFolderID, 0);
}

int BinderRows::countBelow(const QUuid& folder, int depth)
{
    const BinderOrder& order = m_appState.order();
    int count = 0;
    if (const auto notes = order.noteOrderByFolder.constFind(folder);
        notes != order.noteOrderByFolder.cend())
        count = int(notes->size());
    if (depth < deepest) {
        for (const QUuid& child : order.childFolderOrder.value(folder))
            count += countBelow(child, depth + 1);
    }
    m_counts.insert(folder, count);
    return count;
}

void BinderRows::setTitleFilter(const QString& text)
{
    m_filter = text;
    refilter();
}

void BinderRows::refilter()
{
    m_kept.clear();
    if (m_filter.isEmpty())
        return;
    for (const BinderRowID& row : wholeTopLevel()) {
        if (row.kind == BinderRowID::Kind::Folder)
            keepByFilter(row.id, 0);
        else if (passesFilter(row))
            m_kept.insert(row);
    }
}

bool BinderRows::keepByFilter(const QUuid& folder, int depth)
{
    bool keeps = passesFilter(folderRow(folder));
    for (const BinderRowID& child : childrenOf(folderRow(folder))) {
        if (child.kind == BinderRowID::Kind::Folder) {
            keeps |= depth < deepest && keepByFilter(child.id, depth + 1);
        } else if (passesFilter(child)) {
            m_kept.insert(child);
            keeps = true;
        }
    }
    if (keeps)
        m_kept.insert(folderRow(folder));
    return keeps;
}

bool BinderRows::passesFilter(const BinderRowID& row) const
{
    if (row.kind == BinderRowID::Kind::Folder) {
        const FolderRecord* folder = m_appState.folder(row.id);
        return folder && folder->titleForList().contains(m_filter, Qt::CaseInsensitive);
    }
    const NoteRecord* note = m_appState.note(row.id);
    return note && note->titleForList().contains(m_filter, Qt::CaseInsensitive);
}

bool BinderRows::isInTagFilter(const NoteRecord& note) const
{
    return m_appState.passesTagFilter(note) &&
           (m_filter.isEmpty() || m_kept.contains(noteRow(note.id)));
}

RecordAspects BinderRows::placingAspects() const
{
    if (isTagFiltered())
        return RecordAspect::Tags | RecordAspect::Dates;
    switch (m_appState.binderSortOrder()) {
    case BinderSortOrder::Custom:
        return {};
    case BinderSortOrder::AlphabeticalAZ:
    case BinderSortOrder::AlphabeticalZA:
        return RecordAspect::Title | RecordAspect::Text;
    default:
        return RecordAspect::Dates;
    }
}

bool BinderRows::standsBefore(const NoteRecord& one, const NoteRecord& other) const
{
    const auto order =
        isTagFiltered() ? BinderSortOrder::RecentModified : m_appState.binderSortOrder();
    const int difference = NoteOrder(order).compare(one, other);
    return difference < 0 || (difference == 0 && standsBeforeByHand(one, other));
}

// Of two that the sort order doesn't tell apart.
bool BinderRows::standsBeforeByHand(const NoteRecord& one, const NoteRecord& other) const
{
    if (isTagFiltered()) {
        const auto& notes = m_appState.notes();
        return notes.find(one.id) < notes.find(other.id);
    }
    const auto container = m_appState.folder(other.folderID) ? std::optional(other.folderID)
                                                             : m_appState.projectRootContainerID();
    const auto list = container ? m_appState.order().noteOrderByFolder.constFind(*container)
                                : m_appState.order().noteOrderByFolder.cend();
    if (list == m_appState.order().noteOrderByFolder.cend())
        return false;
    for (const QUuid& id : *list) {
        if (id == one.id || id == other.id)
            return id == one.id;
    }
    return false;
}

bool concernsTitles(const NotebookChange& change)
{
    // The title of an untitled note is its first line.
    constexpr RecordAspects titles = RecordAspect::Title | RecordAspect::Text;
    const auto isOfTitles = [&](RecordAspects aspects) {
        return bool(aspects & titles);
    };
    return std::ranges::any_of(change.notes, isOfTitles) ||
           std::ranges::any_of(change.folders, isOfTitles);
}

} // namespace orvane
