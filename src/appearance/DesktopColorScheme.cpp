// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/DesktopColorScheme.h"

#include "appearance/PortalSetting.h"

#include <QPalette>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr uint preferDark = 1;
constexpr uint preferLight = 2;

} // namespace

ColorScheme schemeOf(const QPalette& palette)
{
    return palette.color(QPalette::WindowText).lightness() >
                   palette.color(QPalette::Window).lightness()
               ? ColorScheme::Dark
               : ColorScheme::Light;
}

PortalColorScheme::PortalColorScheme(ColorScheme fallback, QObject* parent)
    : DesktopColorScheme(parent)
    , m_fallback(fallback)
    , m_scheme(fallback)
{}

void PortalColorScheme::ask(const QDBusConnection& bus)
{
    auto* setting =
        new PortalSetting(u"org.freedesktop.appearance"_s, u"color-scheme"_s, bus, this);
    connect(setting, &PortalSetting::told, this, &PortalColorScheme::take);
}

void PortalColorScheme::take(const QVariant& value)
{
    const uint preference = value.toUInt();
    const ColorScheme scheme = preference == preferDark    ? ColorScheme::Dark
                               : preference == preferLight ? ColorScheme::Light
                                                           : m_fallback;
    if (scheme == m_scheme)
        return;
    m_scheme = scheme;
    emit changed();
}

} // namespace orvane
