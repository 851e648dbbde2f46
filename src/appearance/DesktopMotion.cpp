// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/DesktopMotion.h"

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Place {
    QLatin1String group;
    QLatin1String key;
    bool (*isReduced)(const QVariant& value);
};

constexpr Place places[] = {
    {"org.freedesktop.appearance"_L1, "reduced-motion"_L1,
     [](const QVariant& value) {
         return value.toUInt() == 1;
     }},
    {"org.gnome.desktop.interface"_L1, "enable-animations"_L1,
     [](const QVariant& value) {
         return value.isValid() && !value.toBool();
     }},
    {"org.kde.kdeglobals.KDE"_L1, "AnimationDurationFactor"_L1,
     [](const QVariant& value) {
         bool isNumber = false;
         const double factor = value.toDouble(&isNumber);
         return isNumber && factor <= 0;
     }},
};

} // namespace

DesktopMotion::DesktopMotion(const UserDefaults& defaults, const QDBusConnection& bus,
                             QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
{
    static_assert(std::size(places) == std::tuple_size_v<decltype(m_asked)>);
    for (size_t i = 0; i < m_asked.size(); ++i) {
        auto* setting = new PortalSetting(places[i].group, places[i].key, bus, this);
        connect(setting, &PortalSetting::told, this,
                [this, i](const QVariant& value) { m_asked[i] = places[i].isReduced(value); });
    }
}

bool DesktopMotion::isReduced() const
{
    const QString chosen = motionSetting.read(m_defaults);
    if (chosen == "reduced"_L1 || chosen == "full"_L1)
        return chosen == "reduced"_L1;
    return std::ranges::find(m_asked, true) != m_asked.end();
}

} // namespace orvane
