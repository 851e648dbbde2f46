// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "core/records/NoteRecord.h"

class QLabel;

namespace orvane {

/// Stands above a note of the Trash: since when it lies there, that it can't be changed there, and
/// the two ways out.
class TrashStrip : public SurfacePanel {
    Q_OBJECT
public:
    explicit TrashStrip(Look& look, QWidget* parent = nullptr);

    void show(const NoteRecord& note, Timestamp now, bool mayWrite);

signals:
    void restoreWanted();
    void eraseWanted();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* m_picture;
    QLabel* m_since;
    QWidget* m_restore;
    QWidget* m_erase;
};

} // namespace orvane
