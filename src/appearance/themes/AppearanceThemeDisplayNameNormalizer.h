// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QJsonObject>
#include <QString>

/// Gives themes of an earlier release the display names that they have now.
namespace orvane::AppearanceThemeDisplayNameNormalizer {

/// The present name of a theme that was renamed; any other name as it was given. Letter case and
/// blanks around a name don't matter.
[[nodiscard]] QString normalized(const QString& name);

/// The same for a theme or a bundle as JSON: its `name`, and those of its `light` and `dark`.
[[nodiscard]] QJsonObject normalizedThemeDictionary(QJsonObject theme);

} // namespace orvane::AppearanceThemeDisplayNameNormalizer
