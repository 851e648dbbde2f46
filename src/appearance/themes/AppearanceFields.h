// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/themes/AppearanceValues.h"

#include <QByteArray>
#include <QString>

#include <variant>
#include <vector>

namespace orvane {

class UserDefaults;

/// What one field of a theme holds.
using AppearanceFieldValue = std::variant<bool, double, QString>;

/// One number, flag or text of the look: its name in a stored theme, its key in the user defaults,
/// and the way to its member.
struct AppearanceField {
    QByteArray name; ///< as in "editorBackgroundRed"
    QString key;     ///< as in "settings.appearance.editor.background.red"
    /// A stored theme without a required field can't be read; any other takes its default, which
    /// keeps themes of earlier releases readable. A field added later is never required.
    bool required = true;
    /// Whether applying a theme writes the key. A theme only records the window's toolbar.
    bool applied = true;
    AppearanceFieldValue (*get)(const AppearanceValues&) = nullptr;
    void (*set)(AppearanceValues&, const AppearanceFieldValue&) = nullptr;
};

/// Every field of the look, in the order of a theme. Reading and writing themes, capturing and
/// applying the look and its defaults all come from this one table.
[[nodiscard]] const std::vector<AppearanceField>& appearanceFields();

/// The prefix of all keys of the look, "settings.appearance.".
[[nodiscard]] QString appearanceKeyPrefix();

/// The look as it is now: a key's value where it is set with the right type, else the default.
[[nodiscard]] AppearanceValues readAppearance(const UserDefaults& defaults);

/// Sets the keys of all fields that themes apply; the toolbar's stay as they are.
void applyAppearance(const AppearanceValues& values, UserDefaults& defaults);

/// What the look `current` becomes when `applied` is applied to it.
[[nodiscard]] AppearanceValues appliedTo(const AppearanceValues& current, AppearanceValues applied);

/// Whether applying one or the other would make the same look.
[[nodiscard]] bool sameWhenApplied(const AppearanceValues& one, const AppearanceValues& other);

/// Sets the keys of the fields that differ from the look as it is now, the toolbar's too.
void writeAppearance(const AppearanceValues& values, UserDefaults& defaults);

} // namespace orvane
