// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/BinderModel.h"

#include "core/records/Wording.h"
#include "shell/binder/BinderNode.h"

#include <QPointer>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestSecondLine = 120;
constexpr qsizetype searchedForSecondLine = 2'000;

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

BinderModel::BinderModel(AppState& appState, QObject* parent)
    : QAbstractItemModel(parent)
    , m_appState(appState)
    , m_rows(appState)
    , m_root(std::make_unique<Node>())
{
    connect(&appState, &AppState::notebookReset, this, &BinderModel::reset);
    connect(&appState, &AppState::notebookCompleted, this, &BinderModel::complete);
    connect(&appState, &AppState::notebookChanged, this, &BinderModel::follow);
    connect(&appState, &AppState::binderSortOrderChanged, this, &BinderModel::syncStructure);
    connect(&appState, &AppState::activeTagFilterChanged, this, &BinderModel::syncStructure);
    connect(&appState, &AppState::tagSettingsChanged, this, [this] { showAnew({TagsRole}); });
    m_learning.setSingleShot(true);
    m_learning.setInterval(0);
    connect(&m_learning, &QTimer::timeout, this, &BinderModel::learnSecondLines);
    reset();
}

BinderModel::~BinderModel() = default;

void BinderModel::reset()
{
    beginResetModel();
    m_root = std::make_unique<Node>();
    m_nodes.clear();
    m_rows.setTitleFilter({});
    m_rows.recount();
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

void BinderModel::complete()
{
    syncStructure();
    showAnew({});
}

void BinderModel::showAnew(const QList<int>& roles)
{
    for (const Node* node : std::as_const(m_nodes)) {
        const QModelIndex index = indexOfNode(*node);
        emit dataChanged(index, index, roles);
    }
}

void BinderModel::setTitleFilter(const QString& text)
{
    const QString filter = text.trimmed();
    if (filter == m_rows.titleFilter())
        return;
    m_rows.setTitleFilter(filter);
    syncChildren(*m_root);
}

QList<BinderRowID> BinderModel::wantedChildren(const Node& node) const
{
    return &node == m_root.get() ? m_rows.topLevel() : m_rows.below(node.row);
}

BinderModel::Node* BinderModel::nodeOf(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : m_root.get();
}

QModelIndex BinderModel::indexOfNode(const Node& node) const
{
    return &node == m_root.get() ? QModelIndex() : createIndex(node.place, 0, &node);
}

BinderModel::Node* BinderModel::findOrList(const BinderRowID& row)
{
    if (Node* node = m_nodes.value(row))
        return node;
    QList<BinderRowID> way;
    for (auto above = m_rows.parentOf(row); above && way.size() < BinderRows::deepest;
         above = m_rows.parentOf(*above)) {
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
    return m_rows.hasAnyBelow(node->row);
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
        return tr("%1, folder, %Ln notes", nullptr, m_rows.countIn(folder.id))
            .arg(folder.titleForList());
    }
    case CountRole:
        return m_rows.countIn(folder.id);
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

QString BinderModel::secondLine(const NoteRecord& note) const
{
    if (!note.body.knowsBeginning(searchedForSecondLine)) {
        m_unknownLines.insert(note.id);
        m_learning.start();
    }
    return secondLineOf(note);
}

void BinderModel::learnSecondLines()
{
    const QSet<QUuid> ids = std::exchange(m_unknownLines, {});
    const auto show = [self = QPointer(this), ids] {
        for (const QUuid& id : ids) {
            const Node* node = self ? self->m_nodes.value({BinderRowID::Kind::Note, id}) : nullptr;
            const QModelIndex index = node ? self->indexOfNode(*node) : QModelIndex();
            if (node)
                emit self->dataChanged(index, index,
                                       {SecondLineRole, Qt::AccessibleDescriptionRole});
        }
    };
    m_appState.learnBeginnings(ids.values(), searchedForSecondLine, show);
}

QVariant BinderModel::noteData(const NoteRecord& note, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return note.titleForList();
    case Qt::AccessibleDescriptionRole:
    case SecondLineRole:
        return secondLine(note);
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
