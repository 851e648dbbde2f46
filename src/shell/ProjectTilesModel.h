// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/ProjectRecord.h"

#include <QAbstractListModel>

namespace orvane {

/// The tiles of the Projects browser: the projects that pass the filter in the order given, and
/// one for making a new project at the end.
class ProjectTilesModel : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        /// The project's id as QUuid; null for the tile that makes one.
        ProjectIdRole = Qt::UserRole + 1,
        /// The last change as milliseconds since 1970, UTC.
        UpdatedAtRole,
        /// The stored icon value, empty when there is none.
        IconNameRole,
    };

    explicit ProjectTilesModel(QObject* parent = nullptr);

    void setProjects(const QList<OrvaneProjectRecord>& projects);
    /// Keeps those whose title contains the text, whatever its case.
    void setFilter(const QString& filter);
    [[nodiscard]] const QString& filter() const { return m_filter; }

    [[nodiscard]] int projectCount() const { return int(m_shown.size()); }
    [[nodiscard]] QModelIndex indexOf(const QUuid& id) const;
    [[nodiscard]] QUuid projectAt(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    void refilter();

    QList<OrvaneProjectRecord> m_projects;
    QList<OrvaneProjectRecord> m_shown;
    QString m_filter;
};

} // namespace orvane
