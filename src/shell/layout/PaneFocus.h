// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>

class QWidget;

namespace orvane {

/// Puts the keyboard into the visible pane `by` places (1 or -1) after the one that has it, round
/// and round; into the first or last where none has it. A pane gets it where it had it last, else
/// at its first control; one without any control is passed over.
void focusPane(const QList<QWidget*>& panes, int by);

} // namespace orvane
