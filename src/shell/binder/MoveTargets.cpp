// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/MoveTargets.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "core/records/Wording.h"
#include "shell/commands/FuzzyMatch.h"

#include <QPainter>

namespace orvane {

namespace {

constexpr int rowHeight = 31;
constexpr int indent = 16;
constexpr int edge = 14;
constexpr int symbolSize = 16;
constexpr int deepest = 200; // as in the Binder

bool isRun(const QList<qsizetype>& positions)
{
    return !positions.isEmpty() && positions.last() - positions.first() + 1 == positions.size();
}

} // namespace

MoveTargets::MoveTargets(const AppState& appState, const QList<BinderRowID>& rows)
    : m_appState(appState)
    , m_rows(rows)
{
    refresh();
}

void MoveTargets::refresh()
{
    m_places.clear();
    const auto root = m_appState.projectRootContainerID();
    m_places.push_back({std::nullopt,
                        tr("Top Level of the Project"),
                        {},
                        0,
                        root ? m_appState.order().noteOrderByFolder.value(*root).size() : 0});
    addBelow(m_appState.order().rootFolderOrder, 0);
    for (Place& place : m_places)
        place.folded = foldedForMatch(place.name);
    search(m_search);
}

void MoveTargets::addBelow(const QList<QUuid>& folders, int depth)
{
    for (const QUuid& id : folders) {
        const FolderRecord* folder = m_appState.folder(id);
        // What lies below a folder that moves can't take it.
        if (!folder || folder->isTrash() || depth > deepest ||
            m_rows.contains({BinderRowID::Kind::Folder, id}))
            continue;
        m_places.push_back({id,
                            folder->titleForList(),
                            {},
                            depth,
                            m_appState.order().noteOrderByFolder.value(id).size()});
        addBelow(m_appState.order().childFolderOrder.value(id), depth + 1);
    }
}

void MoveTargets::search(const QString& text)
{
    m_search = text;
    const QString pattern = foldedForMatch(text);
    beginResetModel();
    m_shown.clear();
    std::vector<std::optional<FuzzyMatch>> matches(m_places.size());
    bool hasRun = false;
    for (size_t i = 0; i < m_places.size() && !pattern.isEmpty(); ++i) {
        matches[i] = fuzzyMatch(pattern, m_places[i].folded);
        hasRun = hasRun || (matches[i] && isRun(matches[i]->positions));
    }
    std::optional<size_t> best;
    std::vector<bool> isShown(m_places.size(), pattern.isEmpty());
    for (size_t i = 0; i < m_places.size(); ++i) {
        // Letters here and there count only where nothing has them together.
        const bool counts = matches[i] && (!hasRun || isRun(matches[i]->positions));
        m_places[i].found = counts ? matches[i]->positions : QList<qsizetype>();
        if (!counts)
            continue;
        if (!best || matches[i]->score > matches[*best]->score)
            best = i;
        isShown[i] = true;
        // The folders above it show where it lies.
        int depth = m_places[i].depth;
        for (size_t above = i; above-- > 0 && depth > 0;) {
            if (m_places[above].folder && m_places[above].depth < depth) {
                depth = m_places[above].depth;
                isShown[above] = true;
            }
        }
    }
    for (size_t i = 0; i < m_places.size(); ++i) {
        if (isShown[i])
            m_shown.push_back(i);
    }
    const auto at = best ? std::ranges::find(m_shown, *best) : m_shown.begin();
    m_best = int(at - m_shown.begin());
    endResetModel();
}

QModelIndex MoveTargets::best() const
{
    return index(m_best);
}

std::optional<QUuid> MoveTargets::folder(const QModelIndex& index) const
{
    return m_places[m_shown[size_t(index.row())]].folder;
}

QModelIndex MoveTargets::indexOf(const QUuid& folder) const
{
    for (size_t row = 0; row < m_shown.size(); ++row) {
        if (m_places[m_shown[row]].folder == folder)
            return index(int(row));
    }
    return {};
}

int MoveTargets::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size());
}

QVariant MoveTargets::data(const QModelIndex& index, int role) const
{
    const Place& place = m_places[m_shown[size_t(index.row())]];
    switch (role) {
    case Qt::DisplayRole:
        return place.name;
    case DepthRole:
        return place.folder ? place.depth + 1 : 0;
    case CountRole:
        return place.notes;
    case FoundRole:
        return QVariant::fromValue(place.found);
    default:
        return {};
    }
}

MoveTargetDelegate::MoveTargetDelegate(Look& look, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_look(look)
{}

QSize MoveTargetDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {100, rowHeight};
}

void MoveTargetDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    const SurfaceTokens& t = m_look.tokens().on(Surface::Card);
    const bool isMarked = option.state.testFlag(QStyle::State_Selected);
    const QRect row = option.rect;
    const auto mirrored = [&](const QRect& part) {
        return QStyle::visualRect(option.direction, row, part);
    };
    drawRowGround(*painter, row, {isMarked, option.state.testFlag(QStyle::State_MouseOver), false},
                  t);
    const QColor ink = isMarked ? t.textOnSelectedRow : t.text;
    const QColor second = isMarked ? t.textSecondaryOnSelectedRow : t.textSecondary;
    const int left = row.left() + edge + index.data(MoveTargets::DepthRole).toInt() * indent;
    drawSymbol(*painter, mirrored({left, row.top(), symbolSize, row.height()}), Symbol::Folder,
               symbolSize, t.icon);
    const QString count = grouped(index.data(MoveTargets::CountRole).toLongLong());
    const QFont label = interfaceFont(TextStyle::Label);
    const int countWidth = QFontMetrics(label).horizontalAdvance(count) + 2;
    const QRect end(row.right() - edge - countWidth, row.top(), countWidth, row.height());
    drawTextLine(*painter, mirrored(end), label, second, count);
    const int textLeft = left + symbolSize + 10;
    const QRect room(textLeft, row.top(), end.left() - 8 - textLeft, row.height());
    const QFont font = interfaceFont(TextStyle::Body);
    const QString name = index.data().toString();
    const QFontMetrics metrics(font);
    for (const qsizetype at : index.data(MoveTargets::FoundRole).value<QList<qsizetype>>()) {
        const int from = metrics.horizontalAdvance(name.left(at));
        const int to = metrics.horizontalAdvance(name.left(at + 1));
        const QRect mark(room.left() + from, row.center().y() - 9, to - from, 18);
        if (mark.right() < room.right())
            painter->fillRect(mirrored(mark), m_look.tokens().match);
    }
    drawTextLine(*painter, mirrored(room), font, ink, name);
}

} // namespace orvane
