// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/TagSettings.h"

#include <QJsonArray>
#include <QJsonObject>

namespace orvane {

namespace {

const QString colorsKey = QStringLiteral("tagColors.v2");
const QString aliasesKey = QStringLiteral("tagAliases.v1");
const QString exceptionsKey = QStringLiteral("autoTag.exceptions");

} // namespace

TagSettings TagSettings::load(const UserDefaults& defaults)
{
    TagSettings settings;
    const QJsonObject colors = defaults.get<QJsonObject>(colorsKey, {});
    for (auto it = colors.begin(); it != colors.end(); ++it) {
        if (it.value().isString())
            settings.colorHexes.insert(it.key(), it.value().toString());
    }
    TagAliases aliases;
    const QJsonObject stored = defaults.get<QJsonObject>(aliasesKey, {});
    for (auto it = stored.begin(); it != stored.end(); ++it) {
        for (const QJsonValue& alias : it.value().toArray())
            aliases[it.key()].append(alias.toString());
    }
    settings.aliases = normalizedAliasMap(aliases);
    settings.autoTagExceptions = defaults.get<QStringList>(exceptionsKey, {});
    return settings;
}

void TagSettings::saveColors(UserDefaults& defaults) const
{
    QJsonObject object;
    for (auto it = colorHexes.cbegin(); it != colorHexes.cend(); ++it)
        object.insert(it.key(), it.value());
    defaults.set(colorsKey, object);
}

void TagSettings::saveAutoTagSettings(UserDefaults& defaults) const
{
    QJsonObject object;
    const TagAliases clean = normalizedAliasMap(aliases);
    for (auto it = clean.cbegin(); it != clean.cend(); ++it)
        object.insert(it.key(), QJsonArray::fromStringList(it.value()));
    defaults.set(aliasesKey, object);
    defaults.set(exceptionsKey, autoTagExceptions);
}

void TagSettings::rename(const QString& oldName, const QString& newName)
{
    const QString from = oldName.toLower();
    const QString to = newName.toLower();
    if (colorHexes.contains(from))
        colorHexes.insert(to, colorHexes.take(from));
    if (aliases.contains(from)) {
        const QStringList moved = aliases.take(from);
        aliases[to] += moved;
        aliases = normalizedAliasMap(aliases);
    }
}

void TagSettings::remove(const QString& name)
{
    colorHexes.remove(name.toLower());
    aliases.remove(name.toLower());
}

void TagSettings::addAlias(const QString& alias, const QString& tag)
{
    aliases[tag.trimmed().toLower()].append(alias);
    aliases = normalizedAliasMap(aliases);
}

void TagSettings::removeAlias(const QString& alias, const QString& tag)
{
    if (const auto rest = removingTag(aliases.value(tag.trimmed().toLower()), alias.trimmed()))
        aliases[tag.trimmed().toLower()] = *rest;
    aliases = normalizedAliasMap(aliases);
}

} // namespace orvane
