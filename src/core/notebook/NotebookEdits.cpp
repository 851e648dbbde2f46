// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/notebook/NotebookEdits.h"

#include "core/binder/BinderActions.h"

#include <algorithm>

namespace orvane::NotebookEdits {

namespace {

void listAfter(QList<QUuid>& list, const QUuid& id, const std::optional<QUuid>& sibling)
{
    const qsizetype place = sibling ? list.indexOf(*sibling) : -1;
    list.insert(place < 0 ? list.size() : place + 1, id);
}

// Out of the lists of their containers, each list gone through once.
void unlist(NotebookEditor& editor, const QList<Shared<NoteRecord>>& notes)
{
    QHash<QUuid, QSet<QUuid>> byContainer;
    for (const Shared<NoteRecord>& note : notes)
        byContainer[editor.containerOf(*note)].insert(note->id);
    for (auto each = byContainer.cbegin(); each != byContainer.cend(); ++each) {
        editor.changeList(OrderListID::notesOf(each.key())).removeIf([&](const QUuid& id) {
            return each->contains(id);
        });
    }
}

Shared<NoteRecord> inTrash(const Shared<NoteRecord>& note, const QUuid& from, Timestamp now)
{
    return note.with([&](NoteRecord& each) {
        each.folderID = FolderRecord::trashFolderID;
        each.trashedAt = now;
        each.trashedFrom = from;
        each.updatedAt = now;
    });
}

// Outside the Trash, where nobody asks any more how it came there.
Shared<NoteRecord> laidIn(const Shared<NoteRecord>& note, const QUuid& container)
{
    return note.with([&](NoteRecord& each) {
        each.folderID = container;
        each.trashedAt.reset();
        each.trashedFrom.reset();
    });
}

void trashAll(NotebookEditor& editor, const QList<Shared<NoteRecord>>& notes, Timestamp now)
{
    unlist(editor, notes);
    QList<QUuid>& trash = editor.changeList(OrderListID::notesOf(FolderRecord::trashFolderID));
    for (const Shared<NoteRecord>& note : notes) {
        editor.put(inTrash(note, editor.containerOf(*note), now));
        trash.append(note->id);
    }
}

// Takes the folder and all below it away, their notes to the Trash.
void trashFolder(NotebookEditor& editor, const QUuid& id, Timestamp now)
{
    const auto* folder = editor.folder(id);
    if (!folder || (*folder)->isTrash())
        return;
    const auto parent = (*folder)->parentFolderID;
    const bool hasParent = parent && editor.folder(*parent);
    editor.changeList(OrderListID::foldersOf(hasParent ? parent : std::nullopt)).removeAll(id);
    QList<QUuid>& trash = editor.changeList(OrderListID::notesOf(FolderRecord::trashFolderID));
    for (const QUuid& each : folderSubtreeIDs(id, editor.notebook().order)) {
        for (const QUuid& noteID : editor.list(OrderListID::notesOf(each))) {
            if (const auto* note = editor.note(noteID)) {
                editor.put(inTrash(*note, each, now));
                trash.append(noteID);
            }
        }
        editor.removeFolder(each);
    }
}

// The rows without what lies below another of them, which goes where that goes.
QList<BinderRowID> outermost(const NotebookEditor& editor, const QList<BinderRowID>& rows)
{
    QSet<QUuid> below;
    for (const BinderRowID& row : rows) {
        if (row.kind != BinderRowID::Kind::Folder)
            continue;
        const QList<QUuid> subtree = folderSubtreeIDs(row.id, editor.notebook().order);
        below.unite(QSet<QUuid>(subtree.cbegin() + 1, subtree.cend()));
    }
    QSet<QUuid> whole = below;
    for (const BinderRowID& row : rows) {
        if (row.kind == BinderRowID::Kind::Folder)
            whole.insert(row.id);
    }
    QList<BinderRowID> outer;
    for (const BinderRowID& row : rows) {
        const auto* note = row.kind == BinderRowID::Kind::Note ? editor.note(row.id) : nullptr;
        const bool isThere =
            note || (row.kind == BinderRowID::Kind::Folder && editor.folder(row.id));
        if (isThere && !below.contains(row.id) &&
            !(note && whole.contains(editor.containerOf(**note))) && !outer.contains(row))
            outer.append(row);
    }
    return outer;
}

// The first that stays of the list from `before` on.
std::optional<QUuid> stayingFrom(const QList<QUuid>& list, const std::optional<QUuid>& before,
                                 const QSet<QUuid>& moving)
{
    qsizetype at = before ? list.indexOf(*before) : -1;
    for (; at >= 0 && at < list.size(); ++at) {
        if (!moving.contains(list.at(at)))
            return list.at(at);
    }
    return std::nullopt;
}

void ensureTrash(NotebookEditor& editor, Timestamp now)
{
    if (!editor.folder(FolderRecord::trashFolderID))
        editor.put(trashFolder(now));
}

// Takes the rows into the folder, or to the top; false where one of them can't go into `stable`,
// the folder itself or the one above it, which was there before.
bool takeRows(NotebookEditor& editor, const QList<BinderRowID>& rows,
              const std::optional<QUuid>& folder, const std::optional<QUuid>& stable,
              const std::optional<BinderRowID>& before)
{
    const QList<BinderRowID> moved = outermost(editor, rows);
    QSet<QUuid> moving;
    QList<Shared<NoteRecord>> notes;
    for (const BinderRowID& row : moved) {
        moving.insert(row.id);
        if (row.kind == BinderRowID::Kind::Note)
            notes.append(*editor.note(row.id));
        else if (!canReparentFolder(row.id, stable, editor.notebook().folders))
            return false;
    }
    const auto placeIn = [&](const OrderListID& list, BinderRowID::Kind kind) {
        return stayingFrom(
            editor.list(list),
            before && before->kind == kind ? std::optional(before->id) : std::nullopt, moving);
    };
    const OrderListID folders = OrderListID::foldersOf(folder);
    const auto beforeFolder = placeIn(folders, BinderRowID::Kind::Folder);
    for (const BinderRowID& row : moved) {
        if (row.kind != BinderRowID::Kind::Folder)
            continue;
        const Shared<FolderRecord> each = *editor.folder(row.id);
        const auto former = each->parentFolderID;
        const auto from = former && editor.folder(*former) ? former : std::nullopt;
        editor.put(each.with([&](FolderRecord& record) { record.parentFolderID = folder; }));
        editor.relist(row.id, OrderListID::foldersOf(from), folders, beforeFolder);
    }
    if (folder)
        editor.setExpanded(*folder, true);
    if (notes.isEmpty())
        return !moved.isEmpty();
    const QUuid container = folder.value_or(editor.root());
    const auto beforeNote = placeIn(OrderListID::notesOf(container), BinderRowID::Kind::Note);
    unlist(editor, notes);
    QList<QUuid>& list = editor.changeList(OrderListID::notesOf(container));
    qsizetype at = beforeNote ? list.indexOf(*beforeNote) : list.size();
    for (const Shared<NoteRecord>& note : std::as_const(notes)) {
        editor.put(laidIn(note, container));
        list.insert(at++, note->id);
    }
    return true;
}

} // namespace

NotebookEdit addNote(const Notebook& notebook, const QUuid& root, const NoteRecord& note,
                     const std::optional<QUuid>& after)
{
    NotebookEditor editor(notebook, root);
    editor.put(note);
    listAfter(editor.changeList(OrderListID::notesOf(editor.containerOf(note))), note.id, after);
    return editor.edit();
}

NotebookEdit addFolder(const Notebook& notebook, const QUuid& root, const FolderRecord& folder,
                       const std::optional<QUuid>& after)
{
    NotebookEditor editor(notebook, root);
    editor.put(folder);
    const auto& parent = folder.parentFolderID;
    const bool hasParent = parent && editor.folder(*parent);
    listAfter(editor.changeList(OrderListID::foldersOf(hasParent ? parent : std::nullopt)),
              folder.id, after);
    if (hasParent)
        editor.setExpanded(*parent, true);
    return editor.edit();
}

NotebookEdit changeNotes(const Notebook& notebook, const QUuid& root, const QList<QUuid>& ids,
                         const NoteChange& change)
{
    NotebookEditor editor(notebook, root);
    for (const QUuid& id : ids) {
        if (const auto* note = editor.note(id))
            editor.put(note->with(change));
    }
    return editor.edit();
}

NotebookEdit changeFolder(const Notebook& notebook, const QUuid& root, const QUuid& id,
                          const FolderChange& change)
{
    NotebookEditor editor(notebook, root);
    if (const auto* folder = editor.folder(id))
        editor.put(folder->with(change));
    return editor.edit();
}

NotebookEdit
changeTags(const Notebook& notebook, const QUuid& root,
           const std::function<std::optional<QStringList>(const QStringList&)>& retagged,
           Timestamp now)
{
    NotebookEditor editor(notebook, root);
    for (const Shared<NoteRecord>& each : notebook.notes) {
        if (const auto tags = retagged(each->tags)) {
            editor.put(each.with([&](NoteRecord& note) {
                note.tags = *tags;
                note.updatedAt = now;
            }));
        }
    }
    for (const Shared<FolderRecord>& each : notebook.folders) {
        if (const auto tags = retagged(each->tags))
            editor.put(each.with([&](FolderRecord& folder) { folder.tags = *tags; }));
    }
    return editor.edit();
}

NotebookEdit moveNote(const Notebook& notebook, const QUuid& root, const QUuid& id,
                      const QUuid& container, const std::optional<QUuid>& before)
{
    NotebookEditor editor(notebook, root);
    const auto* note = editor.note(id);
    if (!note || (container != root && !editor.folder(container)))
        return {};
    const QUuid from = editor.containerOf(**note);
    editor.put(laidIn(*note, container));
    editor.relist(id, OrderListID::notesOf(from), OrderListID::notesOf(container), before);
    return editor.edit();
}

NotebookEdit moveFolder(const Notebook& notebook, const QUuid& root, const QUuid& id,
                        const std::optional<QUuid>& parent, const std::optional<QUuid>& before)
{
    if (!canReparentFolder(id, parent, notebook.folders))
        return {};
    NotebookEditor editor(notebook, root);
    const auto* folder = editor.folder(id);
    const auto former = (*folder)->parentFolderID;
    const auto from = former && editor.folder(*former) ? former : std::nullopt;
    editor.put(folder->with([&](FolderRecord& each) { each.parentFolderID = parent; }));
    editor.relist(id, OrderListID::foldersOf(from), OrderListID::foldersOf(parent), before);
    if (parent)
        editor.setExpanded(*parent, true);
    return editor.edit();
}

NotebookEdit reorderNotes(const Notebook& notebook, const QUuid& root, const QUuid& container,
                          QList<qsizetype> fromOffsets, qsizetype toOffset)
{
    NotebookEditor editor(notebook, root);
    const OrderListID id = OrderListID::notesOf(container);
    const QList<QUuid> list = editor.list(id);
    QSet<qsizetype> moving;
    QList<QUuid> moved;
    std::sort(fromOffsets.begin(), fromOffsets.end());
    for (const qsizetype offset : std::as_const(fromOffsets)) {
        if (offset >= 0 && offset < list.size() && !moving.contains(offset)) {
            moving.insert(offset);
            moved.append(list.at(offset));
        }
    }
    if (moved.isEmpty())
        return {};
    QList<QUuid> result;
    result.reserve(list.size());
    for (qsizetype i = 0; i <= list.size(); ++i) {
        if (i == std::clamp<qsizetype>(toOffset, 0, list.size()))
            result += moved;
        if (i < list.size() && !moving.contains(i))
            result.append(list.at(i));
    }
    editor.changeList(id) = std::move(result);
    return editor.edit();
}

NotebookEdit expandFolders(const Notebook& notebook, const QUuid& root, const QList<QUuid>& ids,
                           bool expanded)
{
    NotebookEditor editor(notebook, root);
    for (const QUuid& id : ids) {
        if (editor.folder(id))
            editor.setExpanded(id, expanded);
    }
    return editor.edit();
}

NotebookEdit trashNotes(const Notebook& notebook, const QUuid& root, const QList<QUuid>& ids,
                        Timestamp now)
{
    NotebookEditor editor(notebook, root);
    QList<Shared<NoteRecord>> notes;
    for (const QUuid& id : ids) {
        const auto* note = editor.note(id);
        if (note && (*note)->folderID != FolderRecord::trashFolderID)
            notes.append(*note);
    }
    if (notes.isEmpty())
        return {};
    ensureTrash(editor, now);
    trashAll(editor, notes, now);
    return editor.edit();
}

NotebookEdit restoreNotes(const Notebook& notebook, const QUuid& root, const QList<QUuid>& ids,
                          Timestamp now)
{
    NotebookEditor editor(notebook, root);
    for (const QUuid& id : ids) {
        const auto* note = editor.note(id);
        if (!note || (*note)->folderID != FolderRecord::trashFolderID)
            continue;
        const QUuid container = containerToRestoreTo(notebook, root, **note);
        const QList<QUuid> there = editor.list(OrderListID::notesOf(container));
        editor.put(laidIn(*note, container).with([&](NoteRecord& each) { each.updatedAt = now; }));
        editor.relist(id, OrderListID::notesOf(FolderRecord::trashFolderID),
                      OrderListID::notesOf(container),
                      there.isEmpty() ? std::nullopt : std::optional(there.first()));
    }
    return editor.edit();
}

NotebookEdit eraseNotes(const Notebook& notebook, const QUuid& root, const QSet<QUuid>& ids)
{
    NotebookEditor editor(notebook, root);
    QList<Shared<NoteRecord>> notes;
    for (const QUuid& id : ids) {
        if (const auto* note = editor.note(id))
            notes.append(*note);
    }
    unlist(editor, notes);
    for (const Shared<NoteRecord>& note : std::as_const(notes))
        editor.removeNote(note->id);
    return editor.edit();
}

NotebookEdit deleteFolder(const Notebook& notebook, const QUuid& root, const QUuid& id,
                          Timestamp now)
{
    NotebookEditor editor(notebook, root);
    const auto* folder = editor.folder(id);
    if (!folder || (*folder)->isTrash())
        return {};
    ensureTrash(editor, now);
    trashFolder(editor, id, now);
    return editor.edit();
}

NotebookEdit moveRows(const Notebook& notebook, const QUuid& root, const QList<BinderRowID>& rows,
                      const std::optional<QUuid>& folder, const std::optional<BinderRowID>& before)
{
    NotebookEditor editor(notebook, root);
    const auto* target = folder ? editor.folder(*folder) : nullptr;
    const bool isPlace = !folder || (target && !(*target)->isTrash());
    return isPlace && takeRows(editor, rows, folder, folder, before) ? editor.edit()
                                                                     : NotebookEdit();
}

NotebookEdit moveRowsToNewFolder(const Notebook& notebook, const QUuid& root,
                                 const QList<BinderRowID>& rows, const FolderRecord& folder)
{
    NotebookEditor editor(notebook, root);
    const auto& parent = folder.parentFolderID;
    editor.put(folder);
    editor.changeList(OrderListID::foldersOf(parent)).append(folder.id);
    if (parent)
        editor.setExpanded(*parent, true);
    return takeRows(editor, rows, folder.id, parent, std::nullopt) ? editor.edit() : NotebookEdit();
}

NotebookEdit trashRows(const Notebook& notebook, const QUuid& root, const QList<BinderRowID>& rows,
                       Timestamp now)
{
    NotebookEditor editor(notebook, root);
    const QList<BinderRowID> gone = outermost(editor, rows);
    if (gone.isEmpty())
        return {};
    ensureTrash(editor, now);
    QList<Shared<NoteRecord>> notes;
    for (const BinderRowID& row : gone) {
        if (row.kind == BinderRowID::Kind::Folder)
            trashFolder(editor, row.id, now);
        else if ((*editor.note(row.id))->folderID != FolderRecord::trashFolderID)
            notes.append(*editor.note(row.id));
    }
    trashAll(editor, notes, now);
    return editor.edit();
}

NotebookEdit changeRows(const Notebook& notebook, const QUuid& root, const QList<BinderRowID>& rows,
                        const NoteChange& change, const FolderChange& folderChange)
{
    NotebookEditor editor(notebook, root);
    for (const BinderRowID& row : rows) {
        const auto* note = row.kind == BinderRowID::Kind::Note ? editor.note(row.id) : nullptr;
        const auto* folder =
            row.kind == BinderRowID::Kind::Folder ? editor.folder(row.id) : nullptr;
        if (note)
            editor.put(note->with(change));
        else if (folder)
            editor.put(folder->with(folderChange));
    }
    return editor.edit();
}

QUuid containerToRestoreTo(const Notebook& notebook, const QUuid& root, const NoteRecord& note)
{
    const auto* from = note.trashedFrom ? notebook.folders.find(*note.trashedFrom) : nullptr;
    return from && !(*from)->isTrash() ? (*from)->id : root;
}

} // namespace orvane::NotebookEdits
