// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/binder/BinderOrder.h"

namespace orvane::BinderDisplayOrdering {

namespace {

template <typename Record>
using Group = QList<Shared<Record>>;

QHash<QUuid, Group<NoteRecord>> notesByContainer(const RecordTable<FolderRecord>& folders,
                                                 const RecordTable<NoteRecord>& notes,
                                                 const QUuid& projectID)
{
    QHash<QUuid, Group<NoteRecord>> groups;
    for (const Shared<NoteRecord>& note : notes) {
        const bool isPlaced = folders.contains(note->folderID);
        groups[isPlaced ? note->folderID : projectID].append(note);
    }
    for (Group<NoteRecord>& group : groups) {
        std::stable_sort(group.begin(), group.end(),
                         [](const auto& a, const auto& b) { return a->updatedAt > b->updatedAt; });
    }
    return groups;
}

// Whether walking up from the folder ends at the top; a loop or a missing parent does not.
bool reachesTop(const FolderRecord& folder, const RecordTable<FolderRecord>& folders)
{
    const FolderRecord* at = &folder;
    for (qsizetype steps = 0; at->parentFolderID; ++steps) {
        const auto* parent = folders.find(*at->parentFolderID);
        if (!parent || steps > folders.size() || (*parent)->isTrash())
            return false;
        at = &**parent;
    }
    return true;
}

/// By parent; the null id stands for the top level, where the strays are shown as well.
QHash<QUuid, Group<FolderRecord>> foldersByParent(const RecordTable<FolderRecord>& folders)
{
    QHash<QUuid, Group<FolderRecord>> groups;
    for (const Shared<FolderRecord>& folder : folders) {
        if (folder->isTrash())
            continue;
        const bool isPlaced = folder->parentFolderID && reachesTop(*folder, folders);
        groups[isPlaced ? *folder->parentFolderID : QUuid()].append(folder);
    }
    for (Group<FolderRecord>& group : groups) {
        std::stable_sort(group.begin(), group.end(),
                         [](const auto& a, const auto& b) { return a->createdAt < b->createdAt; });
    }
    return groups;
}

template <typename Record>
QList<QUuid> idsOf(const Group<Record>& group)
{
    QList<QUuid> ids;
    ids.reserve(group.size());
    for (const auto& record : group)
        ids.append(record->id);
    return ids;
}

/// `order` without what is not in `members` or doubled, and with what it misses at its end.
/// Hands back the very list where nothing was wrong, so that it is not saved again.
template <typename Record>
QList<QUuid> repaired(const QList<QUuid>& order, const Group<Record>& members)
{
    QSet<QUuid> open;
    open.reserve(members.size());
    for (const auto& record : members)
        open.insert(record->id);
    QList<QUuid> kept;
    kept.reserve(members.size());
    for (const QUuid& id : order) {
        if (open.remove(id))
            kept.append(id);
    }
    if (open.isEmpty() && kept.size() == order.size())
        return order;
    for (const auto& record : members) {
        if (open.contains(record->id))
            kept.append(record->id);
    }
    return kept;
}

template <typename Record>
Group<Record> lookUp(const QList<QUuid>& ids, const RecordTable<Record>& records)
{
    Group<Record> found;
    found.reserve(ids.size());
    for (const QUuid& id : ids) {
        if (const auto* record = records.find(id))
            found.append(*record);
    }
    return found;
}

} // namespace

BinderLayoutSnapshot defaultLayout(const RecordTable<FolderRecord>& folders,
                                   const RecordTable<NoteRecord>& notes, const QUuid& projectID)
{
    BinderOrder order;
    const auto folderGroups = foldersByParent(folders);
    for (auto it = folderGroups.cbegin(); it != folderGroups.cend(); ++it) {
        if (it.key().isNull())
            order.rootFolderOrder = idsOf(it.value());
        else
            order.childFolderOrder.insert(it.key(), idsOf(it.value()));
    }
    const auto noteGroups = notesByContainer(folders, notes, projectID);
    for (auto it = noteGroups.cbegin(); it != noteGroups.cend(); ++it)
        order.noteOrderByFolder.insert(it.key(), idsOf(it.value()));
    return layoutOf(order);
}

BinderOrder orderOf(const BinderLayoutSnapshot& layout)
{
    BinderOrder order;
    for (const BinderFolderOrderEntry& entry : layout.folderOrderEntries) {
        if (entry.parentFolderID)
            order.childFolderOrder.insert(*entry.parentFolderID, entry.childFolderIDs);
        else
            order.rootFolderOrder = entry.childFolderIDs;
    }
    for (const BinderNoteOrderEntry& entry : layout.noteOrderEntries)
        order.noteOrderByFolder.insert(entry.folderID, entry.noteIDs);
    order.expandedFolderIDs =
        QSet<QUuid>(layout.expandedFolderIDs.begin(), layout.expandedFolderIDs.end());
    return order;
}

BinderLayoutSnapshot layoutOf(const BinderOrder& order)
{
    BinderLayoutSnapshot layout;
    layout.folderOrderEntries.reserve(order.childFolderOrder.size() + 1);
    layout.folderOrderEntries.append({std::nullopt, order.rootFolderOrder});
    for (auto it = order.childFolderOrder.cbegin(); it != order.childFolderOrder.cend(); ++it)
        layout.folderOrderEntries.append({it.key(), it.value()});
    layout.noteOrderEntries.reserve(order.noteOrderByFolder.size());
    for (auto it = order.noteOrderByFolder.cbegin(); it != order.noteOrderByFolder.cend(); ++it)
        layout.noteOrderEntries.append({it.key(), it.value()});
    layout.expandedFolderIDs = order.expandedFolderIDs.values();
    return layout;
}

BinderOrder reconciled(BinderOrder order, const RecordTable<FolderRecord>& folders,
                       const RecordTable<NoteRecord>& notes, const QUuid& projectID)
{
    auto folderGroups = foldersByParent(folders);
    order.rootFolderOrder = repaired(order.rootFolderOrder, folderGroups.take(QUuid()));
    QHash<QUuid, QList<QUuid>> children;
    for (auto it = folderGroups.cbegin(); it != folderGroups.cend(); ++it)
        children.insert(it.key(), repaired(order.childFolderOrder.value(it.key()), it.value()));
    order.childFolderOrder = std::move(children);

    const auto noteGroups = notesByContainer(folders, notes, projectID);
    QHash<QUuid, QList<QUuid>> noteLists;
    noteLists.reserve(noteGroups.size());
    for (auto it = noteGroups.cbegin(); it != noteGroups.cend(); ++it)
        noteLists.insert(it.key(), repaired(order.noteOrderByFolder.value(it.key()), it.value()));
    order.noteOrderByFolder = std::move(noteLists);

    order.expandedFolderIDs.removeIf([&](const QUuid& id) { return !folders.contains(id); });
    return order;
}

QList<Shared<NoteRecord>> orderedNotes(const BinderOrder& order,
                                       const RecordTable<NoteRecord>& notes, const QUuid& container)
{
    return lookUp(order.noteOrderByFolder.value(container), notes);
}

} // namespace orvane::BinderDisplayOrdering
