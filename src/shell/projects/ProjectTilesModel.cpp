// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/projects/ProjectTilesModel.h"

#include "core/records/Wording.h"

#include <algorithm>

namespace orvane {

ProjectTilesModel::ProjectTilesModel(const Clock& clock, QObject* parent)
    : QAbstractListModel(parent)
    , m_clock(clock)
{}

void ProjectTilesModel::setProjects(const QList<OrvaneProjectRecord>& projects,
                                    const KnownProjects& known, const QList<KnownProject>& missing,
                                    const Holders& holders)
{
    m_tiles.clear();
    for (const OrvaneProjectRecord& project : projects) {
        const KnownProject* remembered = known.at(project.rootPath);
        const auto holder = holders.constFind(project.rootPath);
        m_tiles.append(
            {.folder = project.rootPath,
             .title = project.titleForDisplay(),
             .iconName = project.iconName.value_or(QString()),
             .date = project.updatedAt,
             .isSetAside = remembered && remembered->isSetAside,
             .coverColor = project.coverColor.value_or(QString()),
             .notes = project.noteCount,
             .words = project.wordCount,
             .holder = holder == holders.cend() ? std::nullopt : std::optional(*holder)});
    }
    // What stayed behind when a project was moved comes after all that is worked in.
    std::ranges::stable_partition(m_tiles, [](const Tile& tile) { return !tile.isSetAside; });
    for (const KnownProject& project : missing)
        m_tiles.append({.folder = project.folder,
                        .title = project.title,
                        .iconName = project.iconName.value_or(QString()),
                        .date = project.lastSeen,
                        .isMissing = true,
                        .isSetAside = project.isSetAside});
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

QString ProjectTilesModel::details(const Tile& tile) const
{
    const Timestamp now = m_clock.now();
    if (tile.isMissing)
        return tr("Last seen %1").arg(momentInWords(tile.date, now));
    const bool isToday = tile.holder && dayInWords(tile.holder->since) == dayInWords(now);
    QString text =
        !tile.holder ? tr("Changed %1").arg(momentInWords(tile.date, now))
        : isToday
            ? tr("Open on “%1” since %2").arg(tile.holder->host, timeInWords(tile.holder->since))
            : tr("Open on “%1” since %2")
                  .arg(tile.holder->host, momentInWords(tile.holder->since, now));
    // Short pieces beside each other, as in a table; each is a sentence of its own.
    for (const auto& figure : {tile.notes ? tr("%Ln notes", nullptr, *tile.notes) : QString(),
                               tile.words ? tr("%Ln words", nullptr, *tile.words) : QString()}) {
        if (!figure.isEmpty())
            text = tr("%1 · %2", "what is said of a project, and more of it").arg(text, figure);
    }
    return text;
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
    case DetailsRole:
    case Qt::AccessibleDescriptionRole:
        return details(tile);
    case IsHeldRole:
        return tile.holder.has_value();
    case CoverColorRole:
        return tile.coverColor;
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
