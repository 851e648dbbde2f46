// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/Log.h"

namespace orvane {

Q_LOGGING_CATEGORY(selectionSyncLog, "com.orvaneworkspace.mac.SelectionSync", QtInfoMsg)
Q_LOGGING_CATEGORY(projectBootstrapLog, "com.orvaneworkspace.mac.ProjectBootstrap", QtInfoMsg)

} // namespace orvane
