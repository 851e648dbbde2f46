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

Shared<NoteRecord> inTrash(const Shared<NoteRecord>& note, Timestamp now)
{
    return note.with([&](NoteRecord& each) {
        each.folderID = FolderRecord::trashFolderID;
        each.updatedAt = now;
    });
}

void ensureTrash(NotebookEditor& editor, Timestamp now)
{
    if (!editor.folder(FolderRecord::trashFolderID))
        editor.put(trashFolder(now));
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
    editor.put(note->with([&](NoteRecord& each) { each.folderID = container; }));
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
    unlist(editor, notes);
    QList<QUuid>& trash = editor.changeList(OrderListID::notesOf(FolderRecord::trashFolderID));
    for (const Shared<NoteRecord>& note : std::as_const(notes)) {
        editor.put(inTrash(note, now));
        trash.append(note->id);
    }
    return editor.edit();
}

NotebookEdit restoreNote(const Notebook& notebook, const QUuid& root, const QUuid& id,
                         const QUuid& container, Timestamp now)
{
    NotebookEditor editor(notebook, root);
    const auto* note = editor.note(id);
    if (!note || (*note)->folderID != FolderRecord::trashFolderID)
        return {};
    const QList<QUuid> there = editor.list(OrderListID::notesOf(container));
    editor.put(note->with([&](NoteRecord& each) {
        each.folderID = container;
        each.updatedAt = now;
    }));
    editor.relist(id, OrderListID::notesOf(FolderRecord::trashFolderID),
                  OrderListID::notesOf(container),
                  there.isEmpty() ? std::nullopt : std::optional(there.first()));
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
    QList<QUuid>& trash = editor.changeList(OrderListID::notesOf(FolderRecord::trashFolderID));
    for (const QUuid& each : folderSubtreeIDs(id, notebook.order)) {
        for (const QUuid& noteID : notebook.order.noteOrderByFolder.value(each)) {
            if (const auto* note = editor.note(noteID)) {
                editor.put(inTrash(*note, now));
                trash.append(noteID);
            }
        }
        editor.removeFolder(each);
    }
    const auto parent = (*notebook.folders.find(id))->parentFolderID;
    const bool hasParent = parent && notebook.folders.contains(*parent);
    editor.changeList(OrderListID::foldersOf(hasParent ? parent : std::nullopt)).removeAll(id);
    return editor.edit();
}

} // namespace orvane::NotebookEdits
