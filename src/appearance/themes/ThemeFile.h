// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/themes/AppearanceTheme.h"
#include "platform/AtomicFile.h"

namespace orvane {

/// Why a file is not a theme that can be taken in.
struct ThemeFileError {
    enum class Code {
        Unreadable,   ///< the file can't be read; `detail` is the system's reason
        TooLarge,     ///< no theme is that large
        NotATheme,    ///< something else, or cut short
        NewerVersion, ///< written by a later release
        Damaged,      ///< a theme, but `detail` is missing or wrong in it
    };
    Code code = Code::NotATheme;
    QString detail;

    bool operator==(const ThemeFileError&) const = default;
};

/// A pair of themes as a file that one person gives to another; its form is told in
/// docs/formats.md.
namespace ThemeFile {

/// ".orvanetheme", with the dot.
[[nodiscard]] QString suffix();

[[nodiscard]] QByteArray encode(const AppearanceThemeBundle& bundle);

/// The bundle with the ids that the file says; a library gives it new ones. Every channel and
/// strength is from 0 to 1, and every name has at least one visible character and one line.
[[nodiscard]] std::expected<AppearanceThemeBundle, ThemeFileError> decode(const QByteArray& data);

[[nodiscard]] std::expected<void, FileError> write(const AppearanceThemeBundle& bundle,
                                                   const QString& path);
[[nodiscard]] std::expected<AppearanceThemeBundle, ThemeFileError> read(const QString& path);

/// The error for a person, in one or two sentences.
[[nodiscard]] QString text(const ThemeFileError& error);

/// A file name for the bundle that every file system takes, with the suffix.
[[nodiscard]] QString fileName(const QString& themeName);

} // namespace ThemeFile

} // namespace orvane
