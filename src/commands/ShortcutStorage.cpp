// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/ShortcutStorage.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace orvane::ShortcutStorage {

ShortcutOverrides loadOverrides(const UserDefaults& defaults)
{
    const auto data = defaults.get<QByteArray>(defaultsKey);
    if (!data)
        return {};
    const QJsonObject object = QJsonDocument::fromJson(*data).object();
    ShortcutOverrides overrides;
    for (auto it = object.begin(); it != object.end(); ++it) {
        const auto shortcut = shortcutDataFromJson(it.value());
        if (!shortcut)
            return {};
        if (const auto action = shortcutActionFromRawValue(it.key()))
            overrides.insert(*action, *shortcut);
    }
    return overrides;
}

void saveOverrides(UserDefaults& defaults, const ShortcutOverrides& overrides)
{
    QJsonObject object;
    for (auto it = overrides.begin(); it != overrides.end(); ++it)
        object.insert(rawValue(it.key()), toJson(it.value()));
    defaults.set(defaultsKey, DefaultsValue(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

void clearOverrides(UserDefaults& defaults, NotificationCenter& notifications)
{
    defaults.remove(defaultsKey);
    notifications.post(shortcutsDidReset);
}

} // namespace orvane::ShortcutStorage
