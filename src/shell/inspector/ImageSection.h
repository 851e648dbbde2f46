// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/formatting/EditorSelectionSnapshot.h"

#include <QWidget>

class QGridLayout;
class QLabel;

namespace orvane {

class ImageControls;
class Look;

/// What there is to know of the image that is selected in the selected note, and the controls for
/// it while no popover beside the image has them. Hidden while none is selected. It posts commands
/// and touches no text.
class ImageSection final : public QWidget {
    Q_OBJECT
public:
    /// Both outlive it.
    ImageSection(NotificationCenter& notifications, Look& look, QWidget* parent);

    /// The note that is selected; none to show nothing.
    void setNote(const std::optional<QUuid>& note);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showOrHide();

    Look& m_look;
    std::optional<QUuid> m_note;
    EditorSelectionChange m_told;
    QGridLayout* m_grid;
    QLabel* m_placement;
    QLabel* m_size;
    QLabel* m_original;
    QLabel* m_data;
    ImageControls* m_controls;
    NotificationCenter::Observation m_observation;
};

} // namespace orvane
