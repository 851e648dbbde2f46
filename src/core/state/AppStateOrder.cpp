// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that orders, filters and moves the Binder's rows.
#include "core/notebook/NotebookEdits.h"
#include "core/state/AppState.h"

namespace orvane {

BinderSortOrder AppState::binderSortOrder() const
{
    return orvane::binderSortOrder(m_services.defaults.get<QString>(binderSortOrderKey, {}));
}

void AppState::setBinderSortOrder(BinderSortOrder order)
{
    const BinderSortOrder before = binderSortOrder();
    if (order == before)
        return;
    m_services.defaults.set(binderSortOrderKey, rawValue(order));
    remember({{}, std::pair(before, order), {}});
    emit binderSortOrderChanged();
}

bool AppState::passesTagFilter(const NoteRecord& note) const
{
    return note.folderID != FolderRecord::trashFolderID &&
           std::ranges::any_of(m_activeTagFilter,
                               [&](const QString& tag) { return containsTag(note.tags, tag); });
}

QList<Shared<NoteRecord>> AppState::tagFilteredNotes() const
{
    QList<Shared<NoteRecord>> matches;
    for (const Shared<NoteRecord>& each : m_notebook.notes) {
        if (passesTagFilter(*each))
            matches.append(each);
    }
    return sortedNotes(std::move(matches), BinderSortOrder::RecentModified);
}

QUuid AppState::shownContainer(const NoteRecord& note) const
{
    return m_notebook.folders.contains(note.folderID)
               ? note.folderID
               : projectRootContainerID().value_or(note.folderID);
}

QList<QUuid> AppState::filteredNoteIDs() const
{
    const auto container =
        m_selection.selectedFolderID() ? m_selection.selectedFolderID() : projectRootContainerID();
    return container ? m_notebook.order.noteOrderByFolder.value(*container) : QList<QUuid>();
}

QList<Shared<NoteRecord>> AppState::filteredNotes() const
{
    const auto container =
        m_selection.selectedFolderID() ? m_selection.selectedFolderID() : projectRootContainerID();
    return container ? orderedNotes(*container) : QList<Shared<NoteRecord>>();
}

std::optional<QUuid> AppState::nextNoteID(const QUuid& after) const
{
    const NoteRecord* found = note(after);
    if (!found)
        return std::nullopt;
    const QList<QUuid> list = m_notebook.order.noteOrderByFolder.value(shownContainer(*found));
    const qsizetype place = list.indexOf(after);
    return place >= 0 && place + 1 < list.size() ? std::optional(list.at(place + 1)) : std::nullopt;
}

std::optional<QUuid> AppState::nextSiblingFolderID(const QUuid& after) const
{
    const FolderRecord* found = folder(after);
    if (!found)
        return std::nullopt;
    const QList<QUuid> list = found->parentFolderID
                                  ? m_notebook.order.childFolderOrder.value(*found->parentFolderID)
                                  : m_notebook.order.rootFolderOrder;
    const qsizetype place = list.indexOf(after);
    return place >= 0 && place + 1 < list.size() ? std::optional(list.at(place + 1)) : std::nullopt;
}

Accepted AppState::moveFolder(const QUuid& id, const std::optional<QUuid>& parent,
                              const std::optional<QUuid>& before)
{
    if (!m_session.currentProject() || !canReparentFolder(id, parent, m_notebook.folders))
        return std::unexpected(Refusal::NotPossible);
    return apply(NotebookEdits::moveFolder(m_notebook, root(), id, parent, before));
}

Accepted AppState::moveNote(const QUuid& id, const QUuid& container,
                            const std::optional<QUuid>& before)
{
    if (!note(id) || (!folder(container) && container != projectRootContainerID()))
        return std::unexpected(Refusal::NotThere);
    if (auto may = mayEdit(); !may)
        return may;
    // The selected note takes the selected folder along.
    if (m_selection.selectedNoteID() == id && m_notebook.folders.contains(container))
        m_selection.followNote(container);
    return carryOut(NotebookEdits::moveNote(m_notebook, root(), id, container, before), Step::Kept);
}

Accepted AppState::moveRows(const QList<BinderRowID>& rows, const std::optional<QUuid>& folder,
                            const std::optional<BinderRowID>& before)
{
    if (!m_session.currentProject())
        return std::unexpected(Refusal::NotPossible);
    if (auto may = mayEdit(); !may)
        return may;
    return moveBy(NotebookEdits::moveRows(m_notebook, root(), rows, folder, before));
}

Accepted AppState::moveRowsToNewFolder(const QList<BinderRowID>& rows, const QString& name,
                                       const std::optional<QUuid>& parent)
{
    if (!m_session.currentProject())
        return std::unexpected(Refusal::NotPossible);
    if (auto may = mayEdit(); !may)
        return may;
    FolderRecord made;
    made.id = QUuid::createUuid();
    made.name = name.trimmed();
    made.createdAt = m_services.clock.now();
    if (parent && folder(*parent))
        made.parentFolderID = parent;
    return made.name.isEmpty()
               ? std::unexpected(Refusal::NotPossible)
               : moveBy(NotebookEdits::moveRowsToNewFolder(m_notebook, root(), rows, made));
}

// The selected note takes the selected folder along.
Accepted AppState::moveBy(const NotebookEdit& edit)
{
    if (edit.isEmpty())
        return std::unexpected(Refusal::NotPossible);
    const auto selected = m_selection.selectedNoteID();
    const Accepted done = carryOut(edit, Step::Kept);
    const NoteRecord* note = selected ? this->note(*selected) : nullptr;
    if (note && folder(note->folderID))
        m_selection.followNote(note->folderID);
    return done;
}

Accepted AppState::apply(const BinderMove& move)
{
    if (move.row.kind == BinderRowID::Kind::Folder)
        return moveFolder(move.row.id, move.container, move.before);
    if (move.container == FolderRecord::trashFolderID)
        return moveNoteToTrash(move.row.id);
    if (!move.container)
        return std::unexpected(Refusal::NotThere);
    return moveNote(move.row.id, *move.container, move.before);
}

Accepted AppState::reorderNotes(const QUuid& container, QList<qsizetype> fromOffsets,
                                qsizetype toOffset)
{
    const auto edit = NotebookEdits::reorderNotes(m_notebook, root(), container,
                                                  std::move(fromOffsets), toOffset);
    return edit.isEmpty() ? Accepted() : apply(edit);
}

} // namespace orvane
