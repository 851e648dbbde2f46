// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/ProjectTilesModel.h"

namespace orvane {

ProjectTilesModel::ProjectTilesModel(QObject* parent)
    : QAbstractListModel(parent)
{}

void ProjectTilesModel::setProjects(const QList<OrvaneProjectRecord>& projects)
{
    m_projects = projects;
    refilter();
}

void ProjectTilesModel::setFilter(const QString& filter)
{
    m_filter = filter.trimmed();
    refilter();
}

void ProjectTilesModel::refilter()
{
    QList<OrvaneProjectRecord> shown;
    for (const OrvaneProjectRecord& project : m_projects) {
        if (m_filter.isEmpty() || project.titleForDisplay().contains(m_filter, Qt::CaseInsensitive))
            shown.append(project);
    }
    if (shown == m_shown)
        return;
    const bool sameTiles =
        std::equal(shown.begin(), shown.end(), m_shown.begin(), m_shown.end(),
                   [](const auto& one, const auto& other) { return one.id == other.id; });
    if (sameTiles) {
        m_shown = std::move(shown);
        emit dataChanged(index(0), index(int(m_shown.size()) - 1));
        return;
    }
    beginResetModel();
    m_shown = std::move(shown);
    endResetModel();
}

QModelIndex ProjectTilesModel::indexOf(const QUuid& id) const
{
    for (qsizetype i = 0; i < m_shown.size(); ++i) {
        if (m_shown.at(i).id == id)
            return index(int(i));
    }
    return {};
}

QUuid ProjectTilesModel::projectAt(const QModelIndex& index) const
{
    return index.isValid() && index.row() < m_shown.size() ? m_shown.at(index.row()).id : QUuid();
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
    const OrvaneProjectRecord& project = m_shown.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
    case Qt::ToolTipRole:
        return project.titleForDisplay();
    case ProjectIdRole:
        return project.id;
    case UpdatedAtRole:
        return project.updatedAt.msecs;
    case IconNameRole:
        return project.iconName.value_or(QString());
    default:
        return {};
    }
}

} // namespace orvane
