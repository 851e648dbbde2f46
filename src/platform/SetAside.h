// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

namespace orvane {

/// A name beside the file at `path` under which it is kept when it can't be used: "<path>.damaged",
/// or "<path>.damaged-2" and so on where an earlier one stands. Nothing stands there when this
/// returns; renaming and copying by QFile replace nothing.
[[nodiscard]] QString setAsidePath(const QString& path);

} // namespace orvane
