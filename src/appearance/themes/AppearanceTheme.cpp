// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/AppearanceTheme.h"

#include "appearance/themes/AppearanceFields.h"

#include <QJsonDocument>

#include <cmath>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

// Dates stand as seconds since 1 January 2001.
constexpr qint64 epochMsecs = 978'307'200'000;
constexpr double farthestSeconds = 1e11;

double dateNumber(Timestamp time)
{
    return double(time.msecs - epochMsecs) / 1000.0;
}

Timestamp readDate(JsonObjectReader& reader, QLatin1String key)
{
    const double seconds = reader.number(key);
    if (std::abs(seconds) > farthestSeconds)
        reader.fail(reader.pathOf(key), u"a date is expected"_s);
    return {std::abs(seconds) > farthestSeconds ? 0 : epochMsecs + std::llround(seconds * 1000.0)};
}

void readField(const AppearanceField& field, JsonObjectReader& reader, AppearanceValues& values)
{
    const QLatin1String name(field.name);
    const bool required = field.required || reader.has(name);
    if (!required)
        return;
    switch (field.get(values).index()) {
    case 0:
        return field.set(values, reader.boolean(name));
    case 1:
        return field.set(values, reader.number(name));
    default:
        return field.set(values, reader.string(name));
    }
}

/// Reads each item of the array that `data` holds.
template <typename T, typename Read>
std::expected<QList<T>, JsonError> readArray(const QByteArray& data, Read read)
{
    const auto json = parseJson(data);
    if (!json)
        return std::unexpected(json.error());
    if (!json->isArray())
        return std::unexpected(JsonError{{}, u"an array is expected"_s});
    const QJsonArray array = json->toArray();
    QList<T> items;
    for (qsizetype i = 0; i < array.size(); ++i) {
        auto item = read(array.at(i), u"[%1]"_s.arg(i));
        if (!item)
            return std::unexpected(item.error());
        items.append(*std::move(item));
    }
    return items;
}

} // namespace

QString modeText(AppearanceThemeMode mode)
{
    return mode == AppearanceThemeMode::Light ? u"light"_s : u"dark"_s;
}

std::optional<AppearanceThemeMode> modeFromText(QStringView text)
{
    if (text == "light"_L1)
        return AppearanceThemeMode::Light;
    if (text == "dark"_L1)
        return AppearanceThemeMode::Dark;
    return std::nullopt;
}

AppearanceTheme AppearanceTheme::captureCurrentState(const QString& name, const QUuid& id,
                                                     Timestamp now, const UserDefaults& defaults)
{
    return {id, name, now, readAppearance(defaults)};
}

void AppearanceTheme::applyToUserDefaults(UserDefaults& defaults) const
{
    applyAppearance(values, defaults);
}

QJsonObject toJson(const AppearanceTheme& theme)
{
    QJsonObject object{{"id"_L1, uuidText(theme.id)},
                       {"name"_L1, theme.name},
                       {"createdAt"_L1, dateNumber(theme.createdAt)}};
    for (const AppearanceField& field : appearanceFields()) {
        std::visit([&](const auto& value) { object.insert(QLatin1String(field.name), value); },
                   field.get(theme.values));
    }
    return object;
}

QJsonObject toJson(const AppearanceThemeBundle& bundle)
{
    return {{"id"_L1, uuidText(bundle.id)},
            {"name"_L1, bundle.name},
            {"createdAt"_L1, dateNumber(bundle.createdAt)},
            {"updatedAt"_L1, dateNumber(bundle.updatedAt)},
            {"light"_L1, toJson(bundle.light)},
            {"dark"_L1, toJson(bundle.dark)}};
}

std::expected<AppearanceTheme, JsonError> appearanceThemeFromJson(const QJsonValue& value,
                                                                  const QString& path)
{
    JsonObjectReader reader(value, path);
    AppearanceTheme theme;
    theme.id = reader.uuid("id"_L1);
    theme.name = reader.string("name"_L1);
    theme.createdAt = readDate(reader, "createdAt"_L1);
    for (const AppearanceField& field : appearanceFields())
        readField(field, reader, theme.values);
    return reader.finish(std::move(theme));
}

std::expected<AppearanceThemeBundle, JsonError>
appearanceThemeBundleFromJson(const QJsonValue& value, const QString& path)
{
    JsonObjectReader reader(value, path);
    AppearanceThemeBundle bundle;
    bundle.id = reader.uuid("id"_L1);
    bundle.name = reader.string("name"_L1);
    bundle.createdAt = readDate(reader, "createdAt"_L1);
    bundle.updatedAt = readDate(reader, "updatedAt"_L1);
    for (const auto mode : {AppearanceThemeMode::Light, AppearanceThemeMode::Dark}) {
        const QByteArray key = modeText(mode).toLatin1();
        const QLatin1String name(key);
        auto theme = appearanceThemeFromJson(reader.object(name), reader.pathOf(name));
        if (theme)
            bundle.variant(mode) = *std::move(theme);
        else
            reader.adopt(theme.error());
    }
    return reader.finish(std::move(bundle));
}

QByteArray encodeThemeBundles(const QList<AppearanceThemeBundle>& bundles)
{
    QJsonArray array;
    for (const AppearanceThemeBundle& bundle : bundles)
        array.append(toJson(bundle));
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::expected<QList<AppearanceThemeBundle>, JsonError> decodeThemeBundles(const QByteArray& data)
{
    return readArray<AppearanceThemeBundle>(data, appearanceThemeBundleFromJson);
}

std::expected<QList<AppearanceTheme>, JsonError> decodeThemes(const QByteArray& data)
{
    return readArray<AppearanceTheme>(data, appearanceThemeFromJson);
}

} // namespace orvane
