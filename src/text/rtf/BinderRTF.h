// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Titles that are stored as RTF.
namespace orvane::BinderRTF {

/// The text of an RTF document without white space and newlines at its ends; nothing when the bytes
/// are no RTF, or no text is left.
[[nodiscard]] std::optional<QString> plainString(const QByteArray& rtf);

} // namespace orvane::BinderRTF
