// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/notebook/NotebookEdit.h"

#include "core/binder/BinderActions.h"

#include <QSet>

#include <algorithm>

namespace orvane {

namespace {

using Kind = OrderListID::Kind;

QList<QUuid>& listOf(BinderOrder& order, const OrderListID& list)
{
    switch (list.kind) {
    case Kind::RootFolders:
        return order.rootFolderOrder;
    case Kind::ChildFolders:
        return order.childFolderOrder[list.container];
    case Kind::Notes:
        break;
    }
    return order.noteOrderByFolder[list.container];
}

// Between the first and the last id that differ.
std::optional<OrderChange> changeBetween(const OrderListID& list, const QList<QUuid>& before,
                                         const QList<QUuid>& after)
{
    if (before == after)
        return std::nullopt;
    const qsizetype shorter = std::min(before.size(), after.size());
    qsizetype head = 0;
    while (head < shorter && before.at(head) == after.at(head))
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head &&
           before.at(before.size() - 1 - tail) == after.at(after.size() - 1 - tail))
        ++tail;
    return OrderChange{list, head, before.mid(head, before.size() - head - tail),
                       after.mid(head, after.size() - head - tail)};
}

template <typename Record>
void applyChange(RecordTable<Record>& table, TagIndex& tags, const RecordChange<Record>& change,
                 QSet<QUuid>& gone, QHash<QUuid, RecordAspects>& told)
{
    RecordAspects aspects;
    if (!change.before)
        aspects = RecordAspect::Came;
    else if (!change.after)
        aspects = RecordAspect::Went;
    else
        aspects = differenceOf(**change.before, **change.after);
    told.insert(change.id(), aspects);
    constexpr RecordAspects counted =
        RecordAspect::Tags | RecordAspect::Place | RecordAspect::Came | RecordAspect::Went;
    if (aspects & counted) {
        if (change.before)
            tags.remove(**change.before);
        if (change.after)
            tags.add(**change.after);
    }
    if (!change.after)
        gone.insert(change.id());
    else if (change.before)
        table.replace(*change.after);
    else
        table.append(*change.after);
}

constexpr RecordAspects countedAspects =
    RecordAspect::Tags | RecordAspect::Place | RecordAspect::Came | RecordAspect::Went;

template <typename Record>
bool concernsTags(const QList<RecordChange<Record>>& changes,
                  const QHash<QUuid, RecordAspects>& told)
{
    const auto hasTags = [](const auto& record) {
        return record && !(*record)->tags.isEmpty();
    };
    return std::ranges::any_of(changes, [&](const auto& change) {
        return (hasTags(change.before) || hasTags(change.after)) &&
               told.value(change.id()) & countedAspects;
    });
}

bool concernsStructure(const QHash<QUuid, RecordAspects>& told)
{
    constexpr RecordAspects structure =
        RecordAspect::Place | RecordAspect::Came | RecordAspect::Went;
    return std::ranges::any_of(told,
                               [&](RecordAspects aspects) { return bool(aspects & structure); });
}

// Puts the piece back where it still stands as it was put, else each id where it is missing.
void putBack(QList<QUuid>& list, const OrderChange& change)
{
    if (list.mid(change.at, change.inserted.size()) == change.inserted) {
        list.remove(change.at, change.inserted.size());
        for (qsizetype i = 0; i < change.removed.size(); ++i)
            list.insert(change.at + i, change.removed.at(i));
        return;
    }
    const QSet<QUuid> kept(change.removed.begin(), change.removed.end());
    const QSet<QUuid> came(change.inserted.begin(), change.inserted.end());
    list.removeIf([&](const QUuid& id) { return came.contains(id) && !kept.contains(id); });
    qsizetype at = std::min(change.at, list.size());
    for (const QUuid& id : change.removed) {
        if (!list.contains(id))
            list.insert(at++, id);
    }
}

// Takes one edit back, record by record.
class Inversion {
public:
    Inversion(const NotebookEdit& done, const Notebook& now, const QUuid& root)
        : m_done(done)
        , m_editor(now, root)
    {}

    NotebookEdit edit()
    {
        for (const auto& change : m_done.notes)
            invert(change);
        for (const auto& change : m_done.folders)
            invert(change);
        removeFoldersThatCame();
        for (const OrderChange& change : m_done.order) {
            if (isThere(change.list))
                putBack(m_editor.changeList(change.list), change);
        }
        for (const auto& change : m_done.folders)
            settleFolder(change.id());
        for (const auto& change : m_done.notes)
            settleNote(change.id());
        for (const QUuid& folder : m_done.expanded)
            m_editor.setExpanded(folder, false);
        for (const QUuid& folder : m_done.collapsed)
            m_editor.setExpanded(folder, true);
        return m_editor.edit();
    }

private:
    bool isThere(const OrderListID& list) const
    {
        return list.kind == Kind::RootFolders || list.container == m_editor.root() ||
               m_editor.folder(list.container);
    }
    void invert(const RecordChange<FolderRecord>& change)
    {
        const auto* now = m_editor.folder(change.id());
        if (!change.before)
            return; // goes when all that is to leave it has left
        if (!change.after && !now)
            m_editor.put(*change.before);
        else if (change.after && now)
            m_editor.put(takenBack(*now, change));
    }
    void removeFoldersThatCame()
    {
        QList<QUuid> came;
        for (const auto& change : m_done.folders) {
            if (!change.before && m_editor.folder(change.id()))
                came.append(change.id());
        }
        const auto remove = [this](const QUuid& id) {
            if (!isLeft(id))
                return false;
            m_editor.removeFolder(id);
            return true;
        };
        while (came.removeIf(remove) > 0) { // those within go first
        }
    }
    void invert(const RecordChange<NoteRecord>& change)
    {
        const auto* now = m_editor.note(change.id());
        constexpr RecordAspects words =
            RecordAspect::Text | RecordAspect::Title | RecordAspect::Shapes | RecordAspect::File;
        if (!change.before) {
            if (!now)
                return;
            if (!(differenceOf(**now, **change.after) & words))
                m_editor.removeNote(change.id());
            else
                m_editor.put(now->with(
                    [](NoteRecord& note) { note.folderID = FolderRecord::trashFolderID; }));
        } else if (!change.after) {
            if (!now)
                m_editor.put(*change.before);
        } else if (now) {
            m_editor.put(takenBack(*now, change));
        }
    }
    template <typename Record>
    Shared<Record> takenBack(const Shared<Record>& now, const RecordChange<Record>& change) const
    {
        if (now.isSame(*change.after))
            return *change.before;
        RecordAspects aspects = differenceOf(**change.before, **change.after);
        if (differenceOf(*now, **change.after) & ~RecordAspects(RecordAspect::Dates))
            aspects.setFlag(RecordAspect::Dates, false); // its last change was another one
        return now.with([&](Record& record) { takeAspects(record, **change.before, aspects); });
    }
    // Whether nothing lies in it any more, of what is listed there.
    bool isLeft(const QUuid& id) const
    {
        const auto hasLeft = [&](const auto* record, const auto& place) {
            return !record || place(**record) != id;
        };
        const auto noteLeft = [&](const QUuid& note) {
            return hasLeft(m_editor.note(note), [](const NoteRecord& n) { return n.folderID; });
        };
        const auto folderLeft = [&](const QUuid& folder) {
            return hasLeft(m_editor.folder(folder),
                           [](const FolderRecord& f) { return f.parentFolderID; });
        };
        return std::ranges::all_of(m_editor.list(OrderListID::notesOf(id)), noteLeft) &&
               std::ranges::all_of(m_editor.list(OrderListID::foldersOf(id)), folderLeft);
    }
    // Each is listed once, where it lies.
    void settleFolder(const QUuid& id)
    {
        const auto* folder = m_editor.folder(id);
        if (folder && (*folder)->isTrash())
            return;
        std::optional<OrderListID> home;
        if (folder) {
            const auto parent = (*folder)->parentFolderID;
            home =
                OrderListID::foldersOf(parent && m_editor.folder(*parent) ? parent : std::nullopt);
        }
        settle(id, home, [](const OrderListID& list) { return list.kind != Kind::Notes; });
    }
    void settleNote(const QUuid& id)
    {
        const auto* note = m_editor.note(id);
        const auto home =
            note ? std::optional(OrderListID::notesOf(m_editor.containerOf(**note))) : std::nullopt;
        settle(id, home, [](const OrderListID& list) { return list.kind == Kind::Notes; });
    }
    void settle(const QUuid& id, const std::optional<OrderListID>& home,
                const std::function<bool(const OrderListID&)>& isOfItsKind)
    {
        for (const OrderChange& change : m_done.order) {
            if (!isOfItsKind(change.list) || change.list == home || !isThere(change.list))
                continue;
            if (m_editor.list(change.list).contains(id))
                m_editor.changeList(change.list).removeAll(id);
        }
        if (home && !m_editor.list(*home).contains(id))
            m_editor.changeList(*home).append(id);
    }

    const NotebookEdit& m_done;
    NotebookEditor m_editor;
};

} // namespace

const QList<QUuid>* findList(const BinderOrder& order, const OrderListID& list)
{
    if (list.kind == Kind::RootFolders)
        return &order.rootFolderOrder;
    const auto& lists = list.kind == Kind::Notes ? order.noteOrderByFolder : order.childFolderOrder;
    const auto found = lists.constFind(list.container);
    return found == lists.cend() ? nullptr : &*found;
}

// --- NotebookEditor ------------------------------------------------------------------------------

NotebookEditor::NotebookEditor(const Notebook& notebook, const QUuid& root)
    : m_notebook(notebook)
    , m_root(root)
{}

const Shared<NoteRecord>* NotebookEditor::note(const QUuid& id) const
{
    const auto put = m_notes.byID.constFind(id);
    if (put != m_notes.byID.cend())
        return *put ? &**put : nullptr;
    return m_notebook.notes.find(id);
}

const Shared<FolderRecord>* NotebookEditor::folder(const QUuid& id) const
{
    const auto put = m_folders.byID.constFind(id);
    if (put != m_folders.byID.cend())
        return *put ? &**put : nullptr;
    return m_notebook.folders.find(id);
}

QList<QUuid> NotebookEditor::list(const OrderListID& list) const
{
    const auto changed = m_lists.constFind(list);
    if (changed != m_lists.cend())
        return *changed;
    const auto* stored = findList(m_notebook.order, list);
    return stored ? *stored : QList<QUuid>();
}

QUuid NotebookEditor::containerOf(const NoteRecord& note) const
{
    return folder(note.folderID) ? note.folderID : m_root;
}

void NotebookEditor::put(const Shared<NoteRecord>& note)
{
    m_notes.set(note->id, note);
}

void NotebookEditor::put(const Shared<FolderRecord>& folder)
{
    m_folders.set(folder->id, folder);
}

void NotebookEditor::removeNote(const QUuid& id)
{
    m_notes.set(id, std::nullopt);
}

void NotebookEditor::removeFolder(const QUuid& id)
{
    m_folders.set(id, std::nullopt);
    for (const OrderListID& list : {OrderListID::foldersOf(id), OrderListID::notesOf(id)}) {
        if (findList(m_notebook.order, list) || m_lists.contains(list))
            changeList(list).clear();
    }
    if (m_notebook.order.expandedFolderIDs.contains(id))
        setExpanded(id, false);
}

QList<QUuid>& NotebookEditor::changeList(const OrderListID& list)
{
    const auto changed = m_lists.find(list);
    if (changed != m_lists.end())
        return *changed;
    m_touchedLists.append(list);
    return *m_lists.insert(list, this->list(list));
}

void NotebookEditor::setExpanded(const QUuid& folder, bool expanded)
{
    m_expansion.insert(folder, expanded);
}

void NotebookEditor::relist(const QUuid& id, const OrderListID& from, const OrderListID& to,
                            const std::optional<QUuid>& before)
{
    changeList(from).removeAll(id);
    QList<QUuid>& list = changeList(to);
    const qsizetype place = before ? list.indexOf(*before) : -1;
    list.insert(place < 0 ? list.size() : place, id);
}

template <typename Record>
QList<RecordChange<Record>> NotebookEditor::changes(const Records<Record>& records,
                                                    const RecordTable<Record>& before)
{
    QList<RecordChange<Record>> changes;
    changes.reserve(records.touched.size());
    for (const QUuid& id : records.touched) {
        const auto* found = before.find(id);
        RecordChange<Record> change{found ? std::optional(*found) : std::nullopt,
                                    records.byID.value(id)};
        const bool isNone = change.before && change.after
                                ? change.before->isSame(*change.after) ||
                                      !differenceOf(**change.before, **change.after)
                                : !change.before && !change.after;
        if (!isNone)
            changes.append(std::move(change));
    }
    return changes;
}

NotebookEdit NotebookEditor::edit() const
{
    NotebookEdit edit;
    edit.folders = changes(m_folders, m_notebook.folders);
    edit.notes = changes(m_notes, m_notebook.notes);
    for (const OrderListID& list : m_touchedLists) {
        const auto* before = findList(m_notebook.order, list);
        if (auto change =
                changeBetween(list, before ? *before : QList<QUuid>(), m_lists.value(list)))
            edit.order.append(*std::move(change));
    }
    for (auto each = m_expansion.cbegin(); each != m_expansion.cend(); ++each) {
        if (m_notebook.order.expandedFolderIDs.contains(each.key()) == *each)
            continue;
        if (!*each)
            edit.collapsed.append(each.key());
        else if (folder(each.key()))
            edit.expanded.append(each.key());
    }
    return edit;
}

// --- Applying ------------------------------------------------------------------------------------

NotebookChange applyEdit(Notebook& notebook, const NotebookEdit& edit)
{
    NotebookChange told;
    QSet<QUuid> goneFolders;
    for (const auto& change : edit.folders)
        applyChange(notebook.folders, notebook.tags, change, goneFolders, told.folders);
    QSet<QUuid> goneNotes;
    for (const auto& change : edit.notes)
        applyChange(notebook.notes, notebook.tags, change, goneNotes, told.notes);
    if (!goneFolders.isEmpty())
        notebook.folders.removeAll(goneFolders);
    if (!goneNotes.isEmpty())
        notebook.notes.removeAll(goneNotes);
    for (const OrderChange& change : edit.order) {
        QList<QUuid>& list = listOf(notebook.order, change.list);
        Q_ASSERT(list.mid(change.at, change.removed.size()) == change.removed);
        // One piece for another in one go: a list has tens of thousands of ids.
        const qsizetype both = std::min(change.removed.size(), change.inserted.size());
        std::copy_n(change.inserted.begin(), both, list.begin() + change.at);
        if (change.removed.size() > both)
            list.remove(change.at + both, change.removed.size() - both);
        if (change.inserted.size() > both) {
            const qsizetype added = change.inserted.size() - both;
            list.insert(change.at + both, added, QUuid());
            std::copy_n(change.inserted.begin() + both, added, list.begin() + change.at + both);
        }
    }
    for (const QUuid& id : std::as_const(goneFolders)) {
        notebook.order.childFolderOrder.remove(id);
        notebook.order.noteOrderByFolder.remove(id);
    }
    for (const QUuid& id : edit.expanded)
        notebook.order.expandedFolderIDs.insert(id);
    for (const QUuid& id : edit.collapsed)
        notebook.order.expandedFolderIDs.remove(id);
    told.expanded = edit.expanded;
    told.collapsed = edit.collapsed;
    told.isStructural =
        !edit.order.isEmpty() || concernsStructure(told.folders) || concernsStructure(told.notes);
    told.concernsTags =
        concernsTags(edit.folders, told.folders) || concernsTags(edit.notes, told.notes);
    return told;
}

NotebookEdit inverseOf(const NotebookEdit& done, const Notebook& now, const QUuid& root)
{
    return Inversion(done, now, root).edit();
}

} // namespace orvane
