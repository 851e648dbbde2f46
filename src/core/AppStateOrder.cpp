// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that orders, filters and moves the Binder's rows.
#include "core/AppState.h"

namespace orvane {

namespace {

const QString sortOrderKey = QStringLiteral("settings.binder.sortOrder");

} // namespace

BinderSortOrder AppState::binderSortOrder() const
{
    return orvane::binderSortOrder(m_services.defaults.get<QString>(sortOrderKey, {}));
}

void AppState::setBinderSortOrder(BinderSortOrder order)
{
    if (order == binderSortOrder())
        return;
    m_services.defaults.set(sortOrderKey, storedValue(order));
    emit binderSortOrderChanged();
}

QList<BinderDisplayRow> AppState::displayedBinderRows() const
{
    return m_activeTagFilter.isEmpty() ? sortedBinderRows(visibleBinderRows(), binderSortOrder())
                                       : tagFilteredBinderRows();
}

QList<BinderDisplayRow> AppState::tagFilteredBinderRows() const
{
    QList<Shared<NoteRecord>> matches;
    for (const Shared<NoteRecord>& each : m_notes) {
        const bool matchesFilter =
            std::any_of(m_activeTagFilter.begin(), m_activeTagFilter.end(),
                        [&](const QString& tag) { return containsTag(each->tags, tag); });
        if (matchesFilter && each->folderID != FolderRecord::trashFolderID)
            matches.append(each);
    }
    QList<BinderDisplayRow> rows;
    for (const auto& each : sortedNotes(std::move(matches), BinderSortOrder::RecentModified))
        rows.append({each, 0});
    return rows;
}

QUuid AppState::shownContainer(const NoteRecord& note) const
{
    return m_folders.contains(note.folderID) ? note.folderID
                                             : projectRootContainerID().value_or(note.folderID);
}

QList<QUuid> AppState::filteredNoteIDs() const
{
    const auto container = m_selectedFolderID ? m_selectedFolderID : projectRootContainerID();
    return container ? m_order.noteOrderByFolder.value(*container) : QList<QUuid>();
}

QList<Shared<NoteRecord>> AppState::filteredNotes() const
{
    const auto container = m_selectedFolderID ? m_selectedFolderID : projectRootContainerID();
    return container ? orderedNotes(*container) : QList<Shared<NoteRecord>>();
}

std::optional<QUuid> AppState::nextNoteID(const QUuid& after) const
{
    const NoteRecord* found = note(after);
    if (!found)
        return std::nullopt;
    const QList<QUuid> list = m_order.noteOrderByFolder.value(shownContainer(*found));
    const qsizetype place = list.indexOf(after);
    return place >= 0 && place + 1 < list.size() ? std::optional(list.at(place + 1)) : std::nullopt;
}

std::optional<QUuid> AppState::nextSiblingFolderID(const QUuid& after) const
{
    const FolderRecord* found = folder(after);
    if (!found)
        return std::nullopt;
    const QList<QUuid> list = found->parentFolderID
                                  ? m_order.childFolderOrder.value(*found->parentFolderID)
                                  : m_order.rootFolderOrder;
    const qsizetype place = list.indexOf(after);
    return place >= 0 && place + 1 < list.size() ? std::optional(list.at(place + 1)) : std::nullopt;
}

void AppState::moveFolder(const QUuid& id, const std::optional<QUuid>& parent,
                          const std::optional<QUuid>& before)
{
    if (!passesEditGuard() || !m_currentProject || !canReparentFolder(id, parent, m_folders))
        return;
    const Shared<FolderRecord> moved =
        m_folders.find(id)->with([&](FolderRecord& each) { each.parentFolderID = parent; });
    m_folders.replace(moved);
    BinderActions::moveFolder(m_order, id, parent, before);
    m_order = BinderDisplayOrdering::reconciled(std::move(m_order), m_folders, m_notes,
                                                m_currentProject->id);
    const bool expands = parent && !m_order.expandedFolderIDs.contains(*parent);
    if (expands)
        m_order.expandedFolderIDs.insert(*parent);
    emit binderStructureChanged();
    if (expands)
        emit folderExpansionChanged(*parent, true);
    persist();
}

void AppState::moveNote(const QUuid& id, const QUuid& container, const std::optional<QUuid>& before)
{
    if (!passesEditGuard())
        return;
    const auto* found = m_notes.find(id);
    if (!found || (!m_folders.contains(container) && container != projectRootContainerID()))
        return;
    const QUuid from = shownContainer(**found);
    BinderActions::moveNote(m_order, id, from, container, before);
    replaceNote(found->with([&](NoteRecord& each) { each.folderID = container; }));
    // The selected note takes the selected folder along.
    if (m_selectedNoteID == id && m_folders.contains(container))
        m_selectedFolderID = container;
    emit binderStructureChanged();
    persist();
}

void AppState::apply(const BinderMove& move)
{
    if (move.row.kind == BinderRowID::Kind::Folder)
        moveFolder(move.row.id, move.container, move.before);
    else if (move.container == FolderRecord::trashFolderID)
        moveNoteToTrash(move.row.id);
    else if (move.container)
        moveNote(move.row.id, *move.container, move.before);
}

void AppState::reorderNotes(const QUuid& container, QList<qsizetype> fromOffsets,
                            qsizetype toOffset)
{
    const QList<QUuid> list = m_order.noteOrderByFolder.value(container);
    QSet<qsizetype> moving;
    QList<QUuid> moved;
    std::sort(fromOffsets.begin(), fromOffsets.end());
    for (const qsizetype offset : std::as_const(fromOffsets)) {
        if (offset >= 0 && offset < list.size() && !moving.contains(offset)) {
            moving.insert(offset);
            moved.append(list.at(offset));
        }
    }
    QList<QUuid> result;
    result.reserve(list.size());
    for (qsizetype i = 0; i <= list.size(); ++i) {
        if (i == std::clamp<qsizetype>(toOffset, 0, list.size()))
            result += moved;
        if (i < list.size() && !moving.contains(i))
            result.append(list.at(i));
    }
    if (result == list || !passesEditGuard())
        return;
    m_order.noteOrderByFolder.insert(container, result);
    emit binderStructureChanged();
    persistLayout();
}

} // namespace orvane
