// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QLoggingCategory>

namespace orvane {

/// Which row, note and project are selected, and why. Debug lines only.
Q_DECLARE_LOGGING_CATEGORY(selectionSyncLog)
/// Which projects were found, opened and blocked. Info lines, and critical ones for faults.
Q_DECLARE_LOGGING_CATEGORY(projectBootstrapLog)

} // namespace orvane
