// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

class QApplication;

namespace orvane {

/// What the desktop and the settings' folders know the program by.
void nameProgram(QApplication& application);

} // namespace orvane
