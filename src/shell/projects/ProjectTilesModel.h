// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/library/KnownProjects.h"

#include <QAbstractListModel>

namespace orvane {

/// The tiles of the Projects browser: the projects that pass the filter in the order given, those
/// whose folder is missing, and one for making a new project at the end.
class ProjectTilesModel : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        /// The project's folder; empty for the tile that makes one.
        ProjectFolderRole = Qt::UserRole + 1,
        /// The last change as milliseconds since 1970, UTC.
        UpdatedAtRole,
        /// The stored icon value, empty when there is none.
        IconNameRole,
        /// Whether the folder is missing; then `UpdatedAtRole` is when it was last seen.
        IsMissingRole,
        /// Whether it is what stayed behind when its project was moved.
        IsSetAsideRole,
    };

    explicit ProjectTilesModel(QObject* parent = nullptr);

    void setProjects(const QList<OrvaneProjectRecord>& projects, const KnownProjects& known,
                     const QList<KnownProject>& missing);
    /// Keeps those whose title contains the text, whatever its case.
    void setFilter(const QString& filter);
    [[nodiscard]] const QString& filter() const { return m_filter; }

    [[nodiscard]] int tileCount() const { return int(m_shown.size()); }
    [[nodiscard]] QModelIndex indexOf(const QString& folder) const;
    /// Empty for the tile that makes one.
    [[nodiscard]] QString folderAt(const QModelIndex& index) const;
    [[nodiscard]] bool isMissing(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Tile {
        QString folder;
        QString title;
        QString iconName;
        Timestamp date;
        bool isMissing = false;
        bool isSetAside = false;

        bool operator==(const Tile&) const = default;
    };
    void refilter();

    QList<Tile> m_tiles;
    QList<Tile> m_shown;
    QString m_filter;
};

} // namespace orvane
