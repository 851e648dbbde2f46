// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/projects/ProjectTilesModel.h"

#include <algorithm>

namespace orvane {

ProjectTilesModel::ProjectTilesModel(QObject* parent)
    : QAbstractListModel(parent)
{}

void ProjectTilesModel::setProjects(const QList<OrvaneProjectRecord>& projects,
                                    const KnownProjects& known, const QList<KnownProject>& missing)
{
    m_tiles.clear();
    for (const OrvaneProjectRecord& project : projects) {
        const KnownProject* remembered = known.at(project.rootPath);
        m_tiles.append({project.rootPath, project.titleForDisplay(),
                        project.iconName.value_or(QString()), project.updatedAt, false,
                        remembered && remembered->isSetAside});
    }
    // What stayed behind when a project was moved comes after all that is worked in.
    std::ranges::stable_partition(m_tiles, [](const Tile& tile) { return !tile.isSetAside; });
    for (const KnownProject& project : missing)
        m_tiles.append({project.folder, project.title, project.iconName.value_or(QString()),
                        project.lastSeen, true, project.isSetAside});
    refilter();
}

void ProjectTilesModel::setFilter(const QString& filter)
{
    m_filter = filter.trimmed();
    refilter();
}

void ProjectTilesModel::refilter()
{
    QList<Tile> shown;
    for (const Tile& tile : std::as_const(m_tiles)) {
        if (m_filter.isEmpty() || tile.title.contains(m_filter, Qt::CaseInsensitive))
            shown.append(tile);
    }
    if (shown == m_shown)
        return;
    if (std::ranges::equal(shown, m_shown, {}, &Tile::folder, &Tile::folder)) {
        m_shown = std::move(shown);
        emit dataChanged(index(0), index(int(m_shown.size()) - 1));
        return;
    }
    beginResetModel();
    m_shown = std::move(shown);
    endResetModel();
}

QModelIndex ProjectTilesModel::indexOf(const QString& folder) const
{
    const auto found = std::ranges::find(m_shown, folder, &Tile::folder);
    return found == m_shown.end() ? QModelIndex() : index(int(found - m_shown.begin()));
}

QString ProjectTilesModel::folderAt(const QModelIndex& index) const
{
    return index.isValid() && index.row() < m_shown.size() ? m_shown.at(index.row()).folder
                                                           : QString();
}

bool ProjectTilesModel::isMissing(const QModelIndex& index) const
{
    return index.isValid() && index.row() < m_shown.size() && m_shown.at(index.row()).isMissing;
}

int ProjectTilesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size()) + 1;
}

QVariant ProjectTilesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (index.row() == m_shown.size()) {
        const bool isText = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
        return isText ? QVariant(tr("New Project")) : QVariant();
    }
    const Tile& tile = m_shown.at(index.row());
    switch (role) {
    case Qt::AccessibleTextRole:
        if (tile.isMissing)
            return tr("%1, not there now", "a project").arg(tile.title);
        return tile.isSetAside ? tr("%1, set aside", "a project").arg(tile.title) : tile.title;
    case Qt::DisplayRole:
        return tile.title;
    case Qt::ToolTipRole:
        return tile.isMissing || tile.isSetAside ? tile.folder : tile.title;
    case ProjectFolderRole:
        return tile.folder;
    case UpdatedAtRole:
        return tile.date.msecs;
    case IconNameRole:
        return tile.iconName;
    case IsMissingRole:
        return tile.isMissing;
    case IsSetAsideRole:
        return tile.isSetAside;
    default:
        return {};
    }
}

} // namespace orvane
