// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/DesktopColorScheme.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPalette>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settingsInterface = u"org.freedesktop.portal.Settings"_s;
const QString appearanceGroup = u"org.freedesktop.appearance"_s;
const QString schemeKey = u"color-scheme"_s;
constexpr uint preferDark = 1;
constexpr uint preferLight = 2;

/// The portal's answer comes in one variant or, from older portals, in two.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

ColorScheme schemeOf(const QPalette& palette)
{
    return palette.color(QPalette::WindowText).lightness() >
                   palette.color(QPalette::Window).lightness()
               ? ColorScheme::Dark
               : ColorScheme::Light;
}

PortalColorScheme::PortalColorScheme(ColorScheme fallback, const QDBusConnection& bus,
                                     QObject* parent)
    : DesktopColorScheme(parent)
    , m_fallback(fallback)
    , m_scheme(fallback)
{
    QDBusConnection connection = bus;
    if (!connection.isConnected())
        return;
    connection.connect(portalService, portalPath, settingsInterface, u"SettingChanged"_s, this,
                       SLOT(takeChange(QString, QString, QDBusVariant)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, u"Read"_s);
    question << appearanceGroup << schemeKey;
    auto* watcher = new QDBusPendingCallWatcher(connection.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            take(reply.value().variant());
    });
}

void PortalColorScheme::takeChange(const QString& group, const QString& key,
                                   const QDBusVariant& value)
{
    if (group == appearanceGroup && key == schemeKey)
        take(value.variant());
}

void PortalColorScheme::take(const QVariant& value)
{
    const uint preference = unwrapped(value).toUInt();
    const ColorScheme scheme = preference == preferDark    ? ColorScheme::Dark
                               : preference == preferLight ? ColorScheme::Light
                                                           : m_fallback;
    if (scheme == m_scheme)
        return;
    m_scheme = scheme;
    emit changed();
}

} // namespace orvane
