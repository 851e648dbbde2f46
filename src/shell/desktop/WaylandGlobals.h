// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace orvane {

/// What a Wayland compositor offers, asked before the toolkit connects to it: the names of its
/// globals, such as "wl_compositor". Nothing where none answers at `socketPath` within a moment.
[[nodiscard]] std::optional<QList<QByteArray>> waylandGlobals(const QString& socketPath);

/// The socket that the environment names; empty where it names none, or hands over a connection.
[[nodiscard]] QString waylandSocketPath();

/// The globals in what a compositor answers, once the answer is whole: messages in the byte order
/// of the machine (Wayland protocol, "Wire Format"), the registry being object 2 and the callback
/// that ends them object 3.
[[nodiscard]] std::optional<QList<QByteArray>> globalsIn(const QByteArray& answer);

} // namespace orvane
