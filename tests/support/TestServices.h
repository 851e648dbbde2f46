// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Services.h"

#include <QTemporaryDir>

namespace orvane {

/// Services over a temporary folder: settings in memory, a clock that stands still until told,
/// scripted answers, and a trash in a folder.
struct TestServices {
    QTemporaryDir folder;
    UserDefaults defaults;
    NotificationCenter notifications;
    ScriptedQuestions questions;
    CountingBeeper beeper;
    FolderTrash trash{folder.path() + QStringLiteral("/trash")};
    ManualClock clock;
    LicencePolicy licence;

    [[nodiscard]] Services services()
    {
        return {defaults, notifications, questions, beeper,
                trash,    clock,         licence,   UserFolders::below(folder.path())};
    }
};

} // namespace orvane
