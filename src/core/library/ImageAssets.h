// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/AtomicFile.h"

namespace orvane {

/// Keeps an image file that a text names by its address among the assets of a project, under a name
/// made from its content with the ending `suffix`, so that the same image is there once. Answers
/// the address for the text, relative to the project's data folder: "assets/images/NAME.png". Any
/// thread.
[[nodiscard]] std::expected<QString, FileError>
keepImageAsset(const QString& dataFolder, const QByteArray& bytes, const QString& suffix);

} // namespace orvane
