// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "shell/inspector/VersionRows.h"

#include <QListView>

namespace orvane {

class VersionListModel;

/// A note's timeline: the note itself on top and the days, which can't be selected, and its
/// versions. What can be done with the selected one stands below its row.
class VersionListView : public QListView {
    Q_OBJECT
public:
    static constexpr int rowHeight = 44;
    static constexpr int dayHeight = 28;

    explicit VersionListView(Look& look, QWidget* parent = nullptr);

    void setRows(const QList<VersionRow>& rows);
    /// Takes over what stands below the selected row.
    void setActions(QWidget* actions);
    /// Of all rows and what stands below the selected one.
    [[nodiscard]] int contentHeight() const;
    /// From 0 for the newest version; -1 when none is selected.
    [[nodiscard]] int selectedVersion() const;
    /// -1 for none; beyond the last it is the last.
    void selectVersion(int version);

signals:
    void selectionMoved();
    /// Return, or a double click.
    void versionActivated();
    void deletionRequested();

protected:
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void updateGeometries() override;

private:
    void placeActions();
    [[nodiscard]] int actionsHeight() const;

    VersionListModel* m_rows;
    QWidget* m_actions = nullptr;
};

} // namespace orvane
