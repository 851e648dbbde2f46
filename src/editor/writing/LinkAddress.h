// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

#include <optional>

class QUrl;

namespace orvane {

/// What a click may hand to the desktop: web pages and mail addresses, nothing that would be run or
/// read on this machine.
[[nodiscard]] bool opensOutside(const QUrl& url);

/// The address that a person means by `typed`: a link to a note, what `opensOutside`, or either
/// without its scheme, as "example.org/page" and "name@example.org". Nothing for all else.
[[nodiscard]] std::optional<QString> linkAddress(const QString& typed);

} // namespace orvane
