// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "shell/inspector/VersionRows.h"

#include <QListView>

namespace orvane {

class VersionListModel;

/// A note's timeline: the note itself on top, which can't be selected, and its versions.
class VersionListView : public QListView {
    Q_OBJECT
public:
    static constexpr int rowHeight = 44;

    explicit VersionListView(Look& look, QWidget* parent = nullptr);

    void setRows(const QList<VersionRow>& rows);
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

private:
    VersionListModel* m_rows;
};

} // namespace orvane
