// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QWidget>

namespace orvane {

/// Whether a widget should show its ring: it has the focus, and the keyboard brought it there or
/// has been used since.
[[nodiscard]] inline bool showsKeyboardFocus(const QWidget& widget)
{
    return widget.hasFocus() && widget.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

} // namespace orvane
