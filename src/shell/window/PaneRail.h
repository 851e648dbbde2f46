// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace orvane {

/// The capsule at the head or the foot of a side pane, with small buttons in its own ink.
class PaneRail : public QWidget {
    Q_OBJECT
public:
    PaneRail(Look& look, Surface surface, QWidget* parent = nullptr);

    /// What stands on the capsule: the parent of everything in it.
    [[nodiscard]] QWidget* capsule() const { return m_capsule; }
    /// A button with a picture in the rail's ink; it belongs to `parent`, else to the capsule, and
    /// still has to be placed.
    [[nodiscard]] QToolButton* makeButton(Symbol symbol, const QString& name,
                                          QWidget* parent = nullptr);
    /// A line of text in the weight that the rail's own light or dark asks for.
    [[nodiscard]] QLabel* makeText(QWidget* parent = nullptr);

private:
    Look& m_look;
    Surface m_surface;
    QWidget* m_capsule;
};

} // namespace orvane
