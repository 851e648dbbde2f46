// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/PortalSetting.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QDebug>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settingsInterface = u"org.freedesktop.portal.Settings"_s;

/// The portal's answer comes in one variant or, from older portals, in two.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

PortalSetting::PortalSetting(const QString& group, const QString& key, const QDBusConnection& bus,
                             QObject* parent)
    : QObject(parent)
    , m_group(group)
    , m_key(key)
{
    QDBusConnection connection = bus;
    if (!connection.isConnected())
        return;
    // Slots are found by the names of their types, and nothing has to have registered this one.
    qRegisterMetaType<QDBusVariant>();
    if (!connection.connect(portalService, portalPath, settingsInterface, u"SettingChanged"_s, this,
                            SLOT(takeChange(QString, QString, QDBusVariant))))
        qWarning().noquote() << "OrvaneWorkspace can't follow the desktop's" << group << key;
    QDBusMessage question =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, u"Read"_s);
    question << group << key;
    auto* watcher = new QDBusPendingCallWatcher(connection.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            emit told(unwrapped(reply.value().variant()));
    });
}

void PortalSetting::takeChange(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (group == m_group && key == m_key)
        emit told(unwrapped(value.variant()));
}

} // namespace orvane
