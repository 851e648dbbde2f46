// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

namespace orvane {

/// Text with its character references ("&eacute;", "&#233;", "&#xE9;") as the characters that they
/// stand for. What is no reference stays as it is.
[[nodiscard]] QString decodeHtmlEntities(QStringView text);

} // namespace orvane
