// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

#include <functional>
#include <memory>

class QWidget;

namespace orvane {

class Clock;
class OrvaneWorkspaceApp;

/// Told of each screen as it stands: the window that shows it, and the picture's name. What it
/// changes it puts back.
using ScreenSeen =
    std::function<void(OrvaneWorkspaceApp& app, QWidget& window, const QString& name)>;

/// Makes the clock of each run of the program.
using MakeClock = std::function<std::unique_ptr<Clock>()>;

/// Shows the program to someone without a display: in a temporary home it answers the welcome,
/// makes projects, folders and notes, types, quits, starts again and looks whether every word is
/// there, all by events. Leaves a picture of every screen in `folder`. The result is the
/// program's exit status: 0 when everything was as it should be. Needs a QApplication. With
/// `seen` no picture is written; it is called instead. Without `makeClock` the time is the
/// machine's.
int runTour(const QString& folder, const ScreenSeen& seen = {}, const MakeClock& makeClock = {});

} // namespace orvane
