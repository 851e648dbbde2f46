// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Clock.h"
#include "platform/Machine.h"
#include "platform/NotificationCenter.h"
#include "platform/Questions.h"
#include "platform/UserDefaults.h"

namespace orvane {

/// What the machine offers, made once by the shell and handed down. Each reference outlives
/// everybody that it is handed to. Tests make their own, see `tests/support/TestServices.h`.
struct Services {
    UserDefaults& defaults;
    NotificationCenter& notifications;
    Questions& questions;
    Beeper& beeper;
    SystemTrash& trash;
    Clock& clock;
    LicencePolicy& licence;
    UserFolders folders;
};

} // namespace orvane
