// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/AppearanceThemeDisplayNameNormalizer.h"

namespace orvane::AppearanceThemeDisplayNameNormalizer {

using namespace Qt::StringLiterals;

QString normalized(const QString& name)
{
    const QString plain = name.trimmed().toLower();
    if (plain == "codex afterglow"_L1 || plain == "afterglow"_L1)
        return u"AFTERGLOW"_s;
    if (plain == "opus4.6"_L1 || plain == "opus 4.6"_L1)
        return u"MIDNIGHT"_s;
    return name;
}

QJsonObject normalizedThemeDictionary(QJsonObject theme)
{
    if (const QJsonValue name = theme.value("name"_L1); name.isString())
        theme.insert("name"_L1, normalized(name.toString()));
    for (const auto variant : {"light"_L1, "dark"_L1}) {
        if (const QJsonValue held = theme.value(variant); held.isObject())
            theme.insert(variant, normalizedThemeDictionary(held.toObject()));
    }
    return theme;
}

} // namespace orvane::AppearanceThemeDisplayNameNormalizer
