// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "support/Bench.h"
#include "support/PaintedFrames.h"

namespace orvane::bench {

/// The rows "focus/…" and "brackets/…".
void addBehaviourRows();
/// The rows "images/…".
void addImageRows();
/// The rows "lists/…".
void addListRows();
/// The rows "markdown/…".
void addMarkdownRows();
/// The rows "session/…".
void addSessionRows();
/// The rows "spelling/…" and "find/…".
void addToolRows();

inline void showForKeys(QWidget& widget)
{
    widget.resize(900, 800);
    widget.show();
    QApplication::setActiveWindow(&widget);
    widget.setFocus();
    settle();
}

} // namespace orvane::bench
