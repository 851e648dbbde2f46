// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

namespace orvane {

/// Shows the program to someone without a display: in a temporary home it answers the welcome,
/// makes projects, folders and notes, types, quits, starts again and looks whether every word is
/// there, all by events. Leaves a picture of every screen in `folder`. The result is the
/// program's exit status: 0 when everything was as it should be. Needs a QApplication.
int runTour(const QString& folder);

} // namespace orvane
