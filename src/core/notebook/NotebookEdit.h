// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/notebook/Notebook.h"
#include "core/records/RecordFields.h"

#include <QHash>
#include <QList>
#include <QUuid>

#include <optional>

namespace orvane {

/// One list of the Binder's order: the folders at the top level, those of a folder, or the notes of
/// a container.
struct OrderListID {
    enum class Kind { RootFolders, ChildFolders, Notes };
    Kind kind = Kind::RootFolders;
    /// The folder or container; null for the top level.
    QUuid container;

    [[nodiscard]] static OrderListID foldersOf(const std::optional<QUuid>& parent)
    {
        return parent ? OrderListID{Kind::ChildFolders, *parent} : OrderListID{};
    }
    [[nodiscard]] static OrderListID notesOf(const QUuid& container)
    {
        return {Kind::Notes, container};
    }
    bool operator==(const OrderListID&) const = default;
};
inline size_t qHash(const OrderListID& list, size_t seed = 0)
{
    return qHashMulti(seed, int(list.kind), list.container);
}

/// The list, or null where there is none.
[[nodiscard]] const QList<QUuid>* findList(const BinderOrder& order, const OrderListID& list);

/// What becomes of one record. Without `before` it comes, without `after` it goes.
template <typename Record>
struct RecordChange {
    std::optional<Shared<Record>> before;
    std::optional<Shared<Record>> after;

    [[nodiscard]] const QUuid& id() const { return (after ? *after : *before)->id; }
};

/// A piece of one list: what stood from `at` on, and what stands there instead.
struct OrderChange {
    OrderListID list;
    qsizetype at = 0;
    QList<QUuid> removed;
    QList<QUuid> inserted;
};

/// A change of a notebook as a value: the records that changed, came and went, and the pieces of
/// the order. It fits the notebook that it was made from.
struct NotebookEdit {
    QList<RecordChange<FolderRecord>> folders;
    QList<RecordChange<NoteRecord>> notes;
    QList<OrderChange> order;
    QList<QUuid> expanded;
    QList<QUuid> collapsed;

    [[nodiscard]] bool isEmpty() const
    {
        return folders.isEmpty() && notes.isEmpty() && order.isEmpty() && expanded.isEmpty() &&
               collapsed.isEmpty();
    }
};

/// What an edit has changed, for those who show it.
struct NotebookChange {
    QHash<QUuid, RecordAspects> folders;
    QHash<QUuid, RecordAspects> notes;
    QList<QUuid> expanded;
    QList<QUuid> collapsed;
    /// Records came, went or moved, or lists have another order.
    bool isStructural = false;
    /// The library of tags or its counts may differ.
    bool concernsTags = false;

    [[nodiscard]] RecordAspects ofNote(const QUuid& id) const { return notes.value(id); }
    [[nodiscard]] RecordAspects ofFolder(const QUuid& id) const { return folders.value(id); }
};

/// Collects an edit of a notebook, which stays as it is meanwhile and outlives this. What was put
/// is what `note`, `folder` and `list` tell from then on.
class NotebookEditor {
public:
    /// `root` is the container of the notes that lie in no folder: the project's id.
    NotebookEditor(const Notebook& notebook, const QUuid& root);

    [[nodiscard]] const QUuid& root() const { return m_root; }
    [[nodiscard]] const Notebook& notebook() const { return m_notebook; }
    /// The record, or null.
    [[nodiscard]] const Shared<NoteRecord>* note(const QUuid& id) const;
    [[nodiscard]] const Shared<FolderRecord>* folder(const QUuid& id) const;
    [[nodiscard]] QList<QUuid> list(const OrderListID& list) const;
    /// Where the note is listed: its folder, or the root where that doesn't exist.
    [[nodiscard]] QUuid containerOf(const NoteRecord& note) const;

    void put(const Shared<NoteRecord>& note);
    void put(const Shared<FolderRecord>& folder);
    void removeNote(const QUuid& id);
    /// The folder alone, and its lists.
    void removeFolder(const QUuid& id);
    /// The list to be changed; made where there is none.
    [[nodiscard]] QList<QUuid>& changeList(const OrderListID& list);
    void setExpanded(const QUuid& folder, bool expanded);

    /// Takes the id out of one list and puts it into another (or the same) before `before`, or at
    /// its end.
    void relist(const QUuid& id, const OrderListID& from, const OrderListID& to,
                const std::optional<QUuid>& before);

    [[nodiscard]] NotebookEdit edit() const;

private:
    template <typename Record>
    struct Records {
        QHash<QUuid, std::optional<Shared<Record>>> byID;
        QList<QUuid> touched;

        void set(const QUuid& id, const std::optional<Shared<Record>>& record)
        {
            if (!byID.contains(id))
                touched.append(id);
            byID.insert(id, record);
        }
    };
    template <typename Record>
    [[nodiscard]] static QList<RecordChange<Record>> changes(const Records<Record>& records,
                                                             const RecordTable<Record>& before);

    const Notebook& m_notebook;
    QUuid m_root;
    Records<NoteRecord> m_notes;
    Records<FolderRecord> m_folders;
    QHash<OrderListID, QList<QUuid>> m_lists;
    QList<OrderListID> m_touchedLists;
    QHash<QUuid, bool> m_expansion;
};

/// Changes the notebook, which is the one that the edit was made from.
NotebookChange applyEdit(Notebook& notebook, const NotebookEdit& edit);

/// What takes back an edit that was applied, on the notebook as it is now. What has changed
/// otherwise since then stays: of a record only those aspects go back that the edit changed, and a
/// note that came by it and has got other words since goes to the Trash instead of away.
[[nodiscard]] NotebookEdit inverseOf(const NotebookEdit& done, const Notebook& now,
                                     const QUuid& root);

} // namespace orvane
