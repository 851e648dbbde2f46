// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>

namespace orvane {

class Look;

/// The places where rows of the Binder can go: the top of the project, then the folders as the
/// Binder lists them. While something is searched for, the folders whose names match and those that
/// they lie in.
class MoveTargets final : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        DepthRole = Qt::UserRole,
        CountRole, ///< notes in it
        FoundRole, ///< QList<qsizetype>, the units of the name that were found
    };

    MoveTargets(const AppState& appState, const QList<BinderRowID>& rows);

    /// Reads the folders anew.
    void refresh();
    void search(const QString& text);
    /// The best match, else the first place.
    [[nodiscard]] QModelIndex best() const;
    /// Nothing for the top of the project.
    [[nodiscard]] std::optional<QUuid> folder(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex indexOf(const QUuid& folder) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Place {
        std::optional<QUuid> folder;
        QString name;
        QString folded;
        int depth = 0;
        qsizetype notes = 0;
        QList<qsizetype> found = {};
    };

    void addBelow(const QList<QUuid>& folders, int depth);

    const AppState& m_appState;
    QList<BinderRowID> m_rows;
    QString m_search;
    std::vector<Place> m_places;
    std::vector<size_t> m_shown;
    int m_best = 0;
};

/// Draws them as the Binder draws folders.
class MoveTargetDelegate final : public QStyledItemDelegate {
public:
    explicit MoveTargetDelegate(Look& look, QObject* parent = nullptr);
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

private:
    Look& m_look;
};

} // namespace orvane
