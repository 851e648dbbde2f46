// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>

class QWidget;

namespace orvane {

/// A pane that takes the keyboard.
struct KeyboardPane {
    QWidget* pane;
    /// What in it one comes for, where that isn't its first control.
    QWidget* entrance = nullptr;
};

/// Puts the keyboard into the visible pane `by` places (1 or -1) after the one that has it, round
/// and round; into the first or last where none has it. A pane gets it where it had it last, else
/// at its entrance or its first control; one without any control is passed over. A pane that stands
/// within another is one of its own, and no part of that other.
void focusPane(const QList<KeyboardPane>& panes, int by);

} // namespace orvane
