// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/themes/AppearanceValues.h"
#include "core/records/JsonObjectReader.h"
#include "platform/Timestamp.h"

#include <QJsonObject>
#include <QList>
#include <QUuid>

#include <expected>

namespace orvane {

class UserDefaults;

/// Which variant of a pair of themes.
enum class AppearanceThemeMode { Light, Dark };

/// "light" or "dark", as stored.
[[nodiscard]] QString modeText(AppearanceThemeMode mode);
[[nodiscard]] std::optional<AppearanceThemeMode> modeFromText(QStringView text);

/// The look at one moment, named: a frozen copy of every key under `settings.appearance.`. As JSON
/// it is one object of 135 members, `id`, `name`, `createdAt` and those of `appearanceFields`.
struct AppearanceTheme {
    QUuid id;
    QString name;
    Timestamp createdAt;
    AppearanceValues values;

    bool operator==(const AppearanceTheme&) const = default;

    /// The look as it is now. The twelve fields that are never applied are captured too.
    [[nodiscard]] static AppearanceTheme captureCurrentState(const QString& name, const QUuid& id,
                                                             Timestamp now,
                                                             const UserDefaults& defaults);
    /// Writes the keys; whoever shows the look follows them.
    void applyToUserDefaults(UserDefaults& defaults) const;
};

/// A pair of looks under one name, which a person chooses and keeps as one thing.
struct AppearanceThemeBundle {
    QUuid id;
    QString name;
    Timestamp createdAt;
    Timestamp updatedAt;
    AppearanceTheme light;
    AppearanceTheme dark;

    bool operator==(const AppearanceThemeBundle&) const = default;

    [[nodiscard]] const AppearanceTheme& variant(AppearanceThemeMode mode) const
    {
        return mode == AppearanceThemeMode::Light ? light : dark;
    }
    [[nodiscard]] AppearanceTheme& variant(AppearanceThemeMode mode)
    {
        return mode == AppearanceThemeMode::Light ? light : dark;
    }
};

[[nodiscard]] QJsonObject toJson(const AppearanceTheme& theme);
[[nodiscard]] QJsonObject toJson(const AppearanceThemeBundle& bundle);

/// A theme lacking a required field, or with a field of another type, is an error that names it;
/// `path` goes before the name. Unknown members are passed over.
[[nodiscard]] std::expected<AppearanceTheme, JsonError>
appearanceThemeFromJson(const QJsonValue& value, const QString& path = {});

/// All six members are required.
[[nodiscard]] std::expected<AppearanceThemeBundle, JsonError>
appearanceThemeBundleFromJson(const QJsonValue& value, const QString& path = {});

/// The array of bundles that the library keeps; one bad bundle makes the whole an error.
[[nodiscard]] QByteArray encodeThemeBundles(const QList<AppearanceThemeBundle>& bundles);
[[nodiscard]] std::expected<QList<AppearanceThemeBundle>, JsonError>
decodeThemeBundles(const QByteArray& data);

/// The array of single themes of the first release.
[[nodiscard]] std::expected<QList<AppearanceTheme>, JsonError> decodeThemes(const QByteArray& data);

} // namespace orvane
