// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>

#include <optional>

namespace orvane {

/// Whether a file is an SVG drawing, by how it begins.
[[nodiscard]] bool isSvg(const QByteArray& bytes);

/// A drawing as it may be drawn whoever made it: without scripts, and without anything that lies
/// outside of it, so that drawing it opens no file and asks no server. Nothing for what is no
/// drawing, or one that would take its reader too long, such as parts that repeat parts that repeat
/// parts. Any thread.
[[nodiscard]] std::optional<QByteArray> safeSvg(const QByteArray& svg);

} // namespace orvane
