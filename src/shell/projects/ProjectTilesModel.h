// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/library/KnownProjects.h"
#include "core/store/ProjectLock.h"
#include "platform/Clock.h"

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
        /// What is said below the title: when it was changed, what it holds, who has it open.
        DetailsRole,
        /// Whether somebody else has it open.
        IsHeldRole,
        /// A colour of the person's own for the cover, "#RRGGBB", else empty.
        CoverColorRole,
        /// The stored icon value, empty when there is none.
        IconNameRole,
        /// Whether the folder is missing.
        IsMissingRole,
        /// Whether it is what stayed behind when its project was moved.
        IsSetAsideRole,
    };

    /// The clock outlives it.
    explicit ProjectTilesModel(const Clock& clock, QObject* parent = nullptr);

    /// Who else has a project open, by its folder.
    using Holders = QHash<QString, LockHolder>;
    void setProjects(const QList<OrvaneProjectRecord>& projects, const KnownProjects& known,
                     const QList<KnownProject>& missing, const Holders& holders);
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
        Timestamp date; ///< of a missing one when it was last seen
        bool isMissing = false;
        bool isSetAside = false;
        QString coverColor = {};
        std::optional<int> notes = {};
        std::optional<int> words = {};
        std::optional<LockHolder> holder = {};

        bool operator==(const Tile&) const = default;
    };
    void refilter();
    [[nodiscard]] QString details(const Tile& tile) const;

    const Clock& m_clock;
    QList<Tile> m_tiles;
    QList<Tile> m_shown;
    QString m_filter;
};

} // namespace orvane
