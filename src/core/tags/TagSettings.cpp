// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/tags/TagSettings.h"

#include <QJsonArray>
#include <QJsonObject>

namespace orvane {

namespace {

const QString colorsKey = QStringLiteral("tagColors.v2");
const QString aliasesKey = QStringLiteral("tagAliases.v1");
const QString exceptionsKey = QStringLiteral("autoTag.exceptions");

/// What was never decided has no key.
template <typename Value>
void setIfDecided(UserDefaults& defaults, const QString& key, const Value& value)
{
    if (!value.isEmpty() || defaults.contains(key))
        defaults.set(key, value);
}

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
        for (const auto& alias : it.value().toArray())
            aliases[it.key()].append(alias.toString());
    }
    settings.aliases = normalizedAliasMap(aliases);
    settings.autoTagExceptions = defaults.get<QStringList>(exceptionsKey, {});
    return settings;
}

void TagSettings::save(UserDefaults& defaults) const
{
    QJsonObject colors;
    for (auto it = colorHexes.cbegin(); it != colorHexes.cend(); ++it)
        colors.insert(it.key(), it.value());
    QJsonObject stored;
    const TagAliases clean = normalizedAliasMap(aliases);
    for (auto it = clean.cbegin(); it != clean.cend(); ++it)
        stored.insert(it.key(), QJsonArray::fromStringList(it.value()));
    setIfDecided(defaults, colorsKey, colors);
    setIfDecided(defaults, aliasesKey, stored);
    setIfDecided(defaults, exceptionsKey, autoTagExceptions);
}

TagSettings editTagSettings(UserDefaults& defaults, const std::function<void(TagSettings&)>& edit)
{
    defaults.refresh({colorsKey, aliasesKey, exceptionsKey});
    TagSettings settings = TagSettings::load(defaults);
    edit(settings);
    settings.save(defaults);
    return settings;
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
