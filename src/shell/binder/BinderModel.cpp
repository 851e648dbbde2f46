// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/BinderModel.h"

#include "core/records/Wording.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// Folders nested deeper than this are damage, and the walk down stops.
constexpr int deepest = 200;
/// So many notes find their new places one by one; more are put in order all at once.
constexpr qsizetype fewMoves = 16;
constexpr qsizetype longestSecondLine = 120;
constexpr qsizetype searchedForSecondLine = 2'000;

BinderRowID folderRow(const QUuid& id)
{
    return {BinderRowID::Kind::Folder, id};
}

BinderRowID noteRow(const QUuid& id)
{
    return {BinderRowID::Kind::Note, id};
}

} // namespace

QString secondLineOf(const NoteRecord& note)
{
    const QString beginning = note.body.beginning(searchedForSecondLine);
    const QStringView body = beginning;
    const QString title = note.titleForList();
    qsizetype at = 0;
    while (at < body.size()) {
        qsizetype end = body.indexOf(u'\n', at);
        if (end < 0)
            end = body.size();
        const QStringView line = body.mid(at, end - at).trimmed();
        if (!line.isEmpty() && line != title)
            return line.left(longestSecondLine).toString().simplified();
        at = end + 1;
    }
    return dayInWords(note.updatedAt);
}

struct BinderModel::Node {
    BinderRowID row;
    Node* parent = nullptr;
    int place = 0;
    bool isListed = false;
    std::vector<std::unique_ptr<Node>> children;

    void renumber(size_t from)
    {
        for (size_t i = from; i < children.size(); ++i)
            children[i]->place = int(i);
    }
};

BinderModel::BinderModel(AppState& appState, QObject* parent)
    : QAbstractItemModel(parent)
    , m_appState(appState)
    , m_root(std::make_unique<Node>())
{
    connect(&appState, &AppState::notebookReset, this, &BinderModel::reset);
    connect(&appState, &AppState::notebookChanged, this, &BinderModel::follow);
    connect(&appState, &AppState::binderSortOrderChanged, this, &BinderModel::syncStructure);
    connect(&appState, &AppState::activeTagFilterChanged, this, &BinderModel::syncStructure);
    connect(&appState, &AppState::tagSettingsChanged, this, [this] {
        for (const Node* node : std::as_const(m_nodes)) {
            const QModelIndex index = indexOfNode(*node);
            emit dataChanged(index, index, {TagsRole});
        }
    });
    reset();
}

BinderModel::~BinderModel() = default;

void BinderModel::reset()
{
    beginResetModel();
    m_root = std::make_unique<Node>();
    m_nodes.clear();
    m_filter.clear();
    m_kept.clear();
    recount();
    m_root->isListed = true;
    for (const BinderRowID& row : wantedChildren(*m_root)) {
        auto child = std::make_unique<Node>();
        child->row = row;
        child->parent = m_root.get();
        m_nodes.insert(row, child.get());
        m_root->children.push_back(std::move(child));
    }
    m_root->renumber(0);
    endResetModel();
}

void BinderModel::syncStructure()
{
    recount();
    if (!m_filter.isEmpty())
        refilter();
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
    if (!m_filter.isEmpty() && concernsTitles(change)) {
        refilter();
        return syncChildren(*m_root);
    }
    QList<BinderRowID> moving;
    for (auto each = change.notes.cbegin(); each != change.notes.cend(); ++each) {
        if (*each & placingAspects())
            moving.append(noteRow(each.key()));
    }
    if (moving.size() > fewMoves)
        return syncChildren(*m_root);
    for (const BinderRowID& row : std::as_const(moving))
        placeAgain(row);
}

bool BinderModel::concernsTitles(const NotebookChange& change)
{
    // The title of an untitled note is its first line.
    constexpr RecordAspects titles = RecordAspect::Title | RecordAspect::Text;
    const auto isOfTitles = [](RecordAspects aspects) {
        return bool(aspects & titles);
    };
    return std::ranges::any_of(change.notes, isOfTitles) ||
           std::ranges::any_of(change.folders, isOfTitles);
}

RecordAspects BinderModel::placingAspects() const
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

void BinderModel::placeAgain(const BinderRowID& row)
{
    const NoteRecord* note = m_appState.note(row.id);
    Node* node = m_nodes.value(row);
    if (isTagFiltered()) {
        const bool isWanted = note && m_appState.passesTagFilter(*note) &&
                              (m_filter.isEmpty() || m_kept.contains(row));
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
    const auto order =
        isTagFiltered() ? BinderSortOrder::RecentModified : m_appState.binderSortOrder();
    const NoteOrder noteOrder(order);
    const auto standsBefore = [&](size_t i) {
        const NoteRecord* other = m_appState.note(siblings[i]->row.id);
        const int difference = other ? noteOrder.compare(*other, note) : -1;
        return difference < 0 || (difference == 0 && standsBeforeByHand(*other, note));
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

bool BinderModel::standsBeforeByHand(const NoteRecord& one, const NoteRecord& other) const
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

void BinderModel::recount()
{
    m_counts.clear();
    for (const QUuid& id : m_appState.order().rootFolderOrder)
        countBelow(id, 0);
    countBelow(FolderRecord::trashFolderID, 0);
}

int BinderModel::countBelow(const QUuid& folder, int depth)
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

void BinderModel::setTitleFilter(const QString& text)
{
    const QString filter = text.trimmed();
    if (filter == m_filter)
        return;
    m_filter = filter;
    refilter();
    syncChildren(*m_root);
}

void BinderModel::refilter()
{
    m_kept.clear();
    if (m_filter.isEmpty())
        return;
    for (const BinderRowID& row : topLevel()) {
        if (row.kind == BinderRowID::Kind::Folder)
            keepByFilter(row.id, 0);
        else if (passesFilter(row))
            m_kept.insert(row);
    }
}

bool BinderModel::keepByFilter(const QUuid& folder, int depth)
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

bool BinderModel::passesFilter(const BinderRowID& row) const
{
    if (row.kind == BinderRowID::Kind::Folder) {
        const FolderRecord* folder = m_appState.folder(row.id);
        return folder && folder->titleForList().contains(m_filter, Qt::CaseInsensitive);
    }
    const NoteRecord* note = m_appState.note(row.id);
    return note && note->titleForList().contains(m_filter, Qt::CaseInsensitive);
}

QList<BinderRowID> BinderModel::childrenOf(const BinderRowID& row) const
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

void BinderModel::appendNotes(QList<BinderRowID>& rows, const QUuid& container) const
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

QList<BinderRowID> BinderModel::topLevel() const
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

QList<BinderRowID> BinderModel::wantedChildren(const Node& node) const
{
    QList<BinderRowID> rows = &node == m_root.get() ? topLevel() : childrenOf(node.row);
    if (!m_filter.isEmpty())
        rows.removeIf([this](const BinderRowID& row) { return !m_kept.contains(row); });
    return rows;
}

BinderModel::Node* BinderModel::nodeOf(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : m_root.get();
}

QModelIndex BinderModel::indexOfNode(const Node& node) const
{
    return &node == m_root.get() ? QModelIndex() : createIndex(node.place, 0, &node);
}

std::optional<BinderRowID> BinderModel::parentRow(const BinderRowID& row) const
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

BinderModel::Node* BinderModel::findOrList(const BinderRowID& row)
{
    if (Node* node = m_nodes.value(row))
        return node;
    QList<BinderRowID> way;
    for (auto above = parentRow(row); above && way.size() < deepest; above = parentRow(*above)) {
        way.prepend(*above);
        if (m_nodes.contains(*above))
            break;
    }
    for (const BinderRowID& step : way) {
        Node* node = m_nodes.value(step);
        if (!node)
            return nullptr;
        fetchMore(indexOfNode(*node));
    }
    return m_nodes.value(row);
}

QModelIndex BinderModel::indexOf(const BinderRowID& row)
{
    const Node* node = findOrList(row);
    return node ? indexOfNode(*node) : QModelIndex();
}

BinderRowID BinderModel::rowIdOf(const QModelIndex& index) const
{
    return nodeOf(index)->row;
}

QModelIndex BinderModel::index(int row, int column, const QModelIndex& parent) const
{
    const Node* node = nodeOf(parent);
    if (row < 0 || column != 0 || size_t(row) >= node->children.size())
        return {};
    return createIndex(row, 0, node->children[size_t(row)].get());
}

QModelIndex BinderModel::parent(const QModelIndex& index) const
{
    const Node* node = nodeOf(index);
    return node->parent ? indexOfNode(*node->parent) : QModelIndex();
}

int BinderModel::rowCount(const QModelIndex& parent) const
{
    return int(nodeOf(parent)->children.size());
}

int BinderModel::columnCount(const QModelIndex&) const
{
    return 1;
}

bool BinderModel::hasChildren(const QModelIndex& parent) const
{
    const Node* node = nodeOf(parent);
    if (node->isListed)
        return !node->children.empty();
    if (node->row.kind == BinderRowID::Kind::Note)
        return false;
    const BinderOrder& order = m_appState.order();
    return !order.childFolderOrder.value(node->row.id).isEmpty() ||
           !order.noteOrderByFolder.value(node->row.id).isEmpty();
}

bool BinderModel::canFetchMore(const QModelIndex& parent) const
{
    return !nodeOf(parent)->isListed && hasChildren(parent);
}

void BinderModel::fetchMore(const QModelIndex& parent)
{
    Node* node = nodeOf(parent);
    if (node->isListed || node->row.kind == BinderRowID::Kind::Note)
        return;
    node->isListed = true;
    insertNew(*node, wantedChildren(*node));
}

QVariant BinderModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Node* node = nodeOf(index);
    if (role == IdRole)
        return node->row.id;
    if (role == IsFolderRole)
        return node->row.kind == BinderRowID::Kind::Folder;
    if (role == IsTrashRole)
        return node->row == folderRow(FolderRecord::trashFolderID);
    if (role == DepthRole) {
        int depth = 0;
        for (const Node* above = node->parent; above && above != m_root.get();
             above = above->parent)
            ++depth;
        return depth;
    }
    if (node->row.kind == BinderRowID::Kind::Folder) {
        const FolderRecord* folder = m_appState.folder(node->row.id);
        return folder ? folderData(*folder, role) : QVariant();
    }
    const NoteRecord* note = m_appState.note(node->row.id);
    return note ? noteData(*note, role) : QVariant();
}

bool BinderModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || !m_appState.canCreateOrEdit())
        return false;
    const BinderRowID row = rowIdOf(index);
    const QString title = value.toString().simplified();
    if (title.isEmpty() || title == index.data(Qt::EditRole).toString())
        return false;
    if (row.kind == BinderRowID::Kind::Folder)
        return isTaken(m_appState.updateFolderBinderTitle(row.id, title, std::nullopt));
    return isTaken(m_appState.updateNoteBinderTitle(row.id, title, std::nullopt));
}

Qt::ItemFlags BinderModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    if (!index.isValid() || index.data(IsTrashRole).toBool() || !m_appState.canCreateOrEdit())
        return flags;
    return flags | Qt::ItemIsEditable | Qt::ItemIsDragEnabled;
}

QVariant BinderModel::folderData(const FolderRecord& folder, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return folder.titleForList();
    case Qt::AccessibleTextRole: {
        const int count = m_counts.value(folder.id);
        return count == 1 ? tr("%1, folder, 1 note").arg(folder.titleForList())
                          : tr("%1, folder, %2 notes").arg(folder.titleForList()).arg(count);
    }
    case CountRole:
        return m_counts.value(folder.id);
    case Qt::EditRole:
        return folder.name;
    case IsPinnedRole:
        return folder.isPinned;
    case IconRole:
        return folder.iconName.value_or(QString());
    default:
        return {};
    }
}

QVariant BinderModel::noteData(const NoteRecord& note, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return note.titleForList();
    case Qt::AccessibleDescriptionRole:
    case SecondLineRole:
        return secondLineOf(note);
    case Qt::EditRole:
        return note.titleForList();
    case IsPdfRole:
        return note.isEmbeddedPDF();
    case IsPinnedRole:
        return note.isPinned;
    case TagsRole:
        return note.tags;
    case IconRole:
        return note.iconName.value_or(QString());
    default:
        return {};
    }
}

} // namespace orvane
