// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// How the Binder's tree follows the notebook row by row.
#include "shell/binder/BinderModel.h"
#include "shell/binder/BinderNode.h"

namespace orvane {

namespace {

/// So many notes find their new places one by one; more are put in order all at once.
constexpr qsizetype fewMoves = 16;

} // namespace

void BinderModel::syncStructure()
{
    m_rows.recount();
    if (!m_rows.titleFilter().isEmpty())
        m_rows.refilter();
    syncChildren(*m_root);
    // Counts and chevrons of the folders above a change show it too.
    for (auto it = m_nodes.cbegin(); it != m_nodes.cend(); ++it) {
        if (it.key().kind != BinderRowID::Kind::Folder)
            continue;
        const QModelIndex index = indexOfNode(*it.value());
        emit dataChanged(index, index, {CountRole});
    }
}

void BinderModel::syncChildren(Node& node)
{
    const QList<BinderRowID> wanted = wantedChildren(node);
    removeMissing(node, QSet<BinderRowID>(wanted.begin(), wanted.end()));
    insertNew(node, wanted);
    reorder(node, wanted);
    for (const auto& child : node.children) {
        if (child->isListed)
            syncChildren(*child);
    }
}

void BinderModel::removeMissing(Node& node, const QSet<BinderRowID>& wanted)
{
    const auto forget = [this](const auto& self, const Node& gone) -> void {
        // One that moved to another folder may be listed there already.
        if (m_nodes.value(gone.row) == &gone)
            m_nodes.remove(gone.row);
        for (const auto& child : gone.children)
            self(self, *child);
    };
    for (size_t end = node.children.size(); end > 0;) {
        if (wanted.contains(node.children[end - 1]->row)) {
            --end;
            continue;
        }
        size_t begin = end - 1;
        while (begin > 0 && !wanted.contains(node.children[begin - 1]->row))
            --begin;
        beginRemoveRows(indexOfNode(node), int(begin), int(end) - 1);
        for (size_t i = begin; i < end; ++i)
            forget(forget, *node.children[i]);
        node.children.erase(node.children.begin() + std::ptrdiff_t(begin),
                            node.children.begin() + std::ptrdiff_t(end));
        node.renumber(begin);
        endRemoveRows();
        end = begin;
    }
}

void BinderModel::insertNew(Node& node, const QList<BinderRowID>& wanted)
{
    QSet<BinderRowID> present;
    for (const auto& child : node.children)
        present.insert(child->row);
    for (qsizetype i = 0; i < wanted.size();) {
        if (present.contains(wanted.at(i))) {
            ++i;
            continue;
        }
        qsizetype end = i + 1;
        while (end < wanted.size() && !present.contains(wanted.at(end)))
            ++end;
        const size_t at = std::min(size_t(i), node.children.size());
        beginInsertRows(indexOfNode(node), int(at), int(at) + int(end - i) - 1);
        std::vector<std::unique_ptr<Node>> added;
        for (; i < end; ++i) {
            auto child = std::make_unique<Node>();
            child->row = wanted.at(i);
            child->parent = &node;
            m_nodes.insert(child->row, child.get());
            added.push_back(std::move(child));
        }
        node.children.insert(node.children.begin() + std::ptrdiff_t(at),
                             std::make_move_iterator(added.begin()),
                             std::make_move_iterator(added.end()));
        node.renumber(at);
        endInsertRows();
    }
}

void BinderModel::reorder(Node& node, const QList<BinderRowID>& wanted)
{
    const bool inOrder =
        std::equal(node.children.begin(), node.children.end(), wanted.begin(), wanted.end(),
                   [](const auto& child, const BinderRowID& row) { return child->row == row; });
    if (inOrder)
        return;
    emit layoutAboutToBeChanged({QPersistentModelIndex(indexOfNode(node))});
    QHash<BinderRowID, int> places;
    for (qsizetype i = 0; i < wanted.size(); ++i)
        places.insert(wanted.at(i), int(i));
    std::stable_sort(node.children.begin(), node.children.end(),
                     [&](const auto& one, const auto& other) {
                         return places.value(one->row) < places.value(other->row);
                     });
    node.renumber(0);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex& index : before)
        after.append(indexOfNode(*static_cast<Node*>(index.internalPointer())));
    changePersistentIndexList(before, after);
    emit layoutChanged({QPersistentModelIndex(indexOfNode(node))});
}

void BinderModel::follow(const NotebookChange& change)
{
    QHash<const Node*, std::pair<int, int>> rows; // by parent: the first and the last that changed
    const auto note = [&](const BinderRowID& row) {
        const Node* node = m_nodes.value(row);
        if (!node)
            return;
        const auto range = rows.find(node->parent);
        if (range == rows.end())
            rows.insert(node->parent, {node->place, node->place});
        else
            *range = {std::min(range->first, node->place), std::max(range->second, node->place)};
    };
    for (auto each = change.folders.cbegin(); each != change.folders.cend(); ++each)
        note(folderRow(each.key()));
    for (auto each = change.notes.cbegin(); each != change.notes.cend(); ++each)
        note(noteRow(each.key()));
    for (auto range = rows.cbegin(); range != rows.cend(); ++range) {
        const auto& children = range.key()->children;
        emit dataChanged(indexOfNode(*children[size_t(range->first)]),
                         indexOfNode(*children[size_t(range->second)]));
    }
    if (change.isStructural)
        return syncStructure();
    if (!m_rows.titleFilter().isEmpty() && concernsTitles(change)) {
        m_rows.refilter();
        return syncChildren(*m_root);
    }
    const RecordAspects placing = m_rows.placingAspects();
    QList<BinderRowID> moving;
    for (auto each = change.notes.cbegin(); each != change.notes.cend(); ++each) {
        if (*each & placing)
            moving.append(noteRow(each.key()));
    }
    if (moving.size() > fewMoves)
        return syncChildren(*m_root);
    for (const BinderRowID& row : std::as_const(moving))
        placeAgain(row);
}

void BinderModel::placeAgain(const BinderRowID& row)
{
    const NoteRecord* note = m_appState.note(row.id);
    Node* node = m_nodes.value(row);
    if (m_rows.isTagFiltered()) {
        const bool isWanted = note && m_rows.isInTagFilter(*note);
        if (isWanted != (node != nullptr))
            return syncChildren(*m_root);
    }
    if (!node || !note)
        return;
    const size_t place = placeOf(*note, *node);
    if (place == size_t(node->place))
        return;
    move(*node->parent, size_t(node->place), place);
}

// Among the notes beside it, which are in order but for this one.
size_t BinderModel::placeOf(const NoteRecord& note, const Node& node) const
{
    const auto& siblings = node.parent->children;
    const auto isNote = [&](size_t i) {
        return siblings[i]->row.kind == BinderRowID::Kind::Note;
    };
    const auto own = size_t(node.place);
    size_t first = own;
    size_t last = own + 1;
    // Folders stand before the notes and the Trash behind them.
    first = size_t(std::partition_point(siblings.begin(), siblings.begin() + node.place,
                                        [](const auto& each) {
                                            return each->row.kind == BinderRowID::Kind::Folder;
                                        }) -
                   siblings.begin());
    last = siblings.size();
    while (last > own + 1 && !isNote(last - 1))
        --last;
    const auto standsBefore = [&](size_t i) {
        const NoteRecord* other = m_appState.note(siblings[i]->row.id);
        return !other || m_rows.standsBefore(*other, note);
    };
    const auto search = [&](size_t from, size_t to) {
        while (from < to) {
            const size_t middle = from + (to - from) / 2;
            if (standsBefore(middle))
                from = middle + 1;
            else
                to = middle;
        }
        return from;
    };
    const size_t before = search(first, own);
    return before < own ? before : search(own + 1, last) - 1;
}

// The rows stay and what they show moves along them: a note has nothing below it, so no view has to
// lay out tens of thousands of rows because one of them changed its place.
void BinderModel::move(Node& parent, size_t from, size_t to)
{
    const size_t first = std::min(from, to);
    const size_t last = std::max(from, to);
    const auto newPlace = [&](size_t place) {
        if (place == from)
            return to;
        return to > from ? place - 1 : place + 1;
    };
    QModelIndexList before;
    QModelIndexList after;
    for (const QModelIndex& index : persistentIndexList()) {
        const Node* node = nodeOf(index);
        const auto place = size_t(node->place);
        if (node->parent != &parent || place < first || place > last)
            continue;
        before.append(index);
        after.append(indexOfNode(*parent.children[newPlace(place)]));
    }
    const BinderRowID moved = parent.children[from]->row;
    for (size_t place = from; place != to; to > from ? ++place : --place) {
        Node& node = *parent.children[place];
        node.row = parent.children[to > from ? place + 1 : place - 1]->row;
        m_nodes.insert(node.row, &node);
    }
    parent.children[to]->row = moved;
    m_nodes.insert(moved, parent.children[to].get());
    changePersistentIndexList(before, after);
    emit dataChanged(indexOfNode(*parent.children[first]), indexOfNode(*parent.children[last]));
    if (!before.isEmpty())
        emit rowsReplaced();
}

} // namespace orvane
