// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QWidget>

namespace orvane {

/// A widget that stands on one surface of the look: fills itself with its ground and hands its
/// palette to what stands in it. Rails are capsules with round corners; everything else is a
/// plain rectangle.
class SurfacePanel : public QWidget {
    Q_OBJECT
public:
    SurfacePanel(Look& look, Surface surface, QWidget* parent = nullptr);

    [[nodiscard]] Look& look() const { return m_look; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void applyLook();
    [[nodiscard]] QBrush ground() const;

    Look& m_look;
    Surface m_surface;
};

} // namespace orvane
