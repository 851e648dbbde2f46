// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariant>

class QDBusVariant;

namespace orvane {

/// One setting of the desktop, asked of its settings portal (freedesktop.org's
/// org.freedesktop.portal.Settings) and followed as it changes. Nothing here waits; where there is
/// no portal, or it doesn't know the setting, nothing is ever told.
class PortalSetting : public QObject {
    Q_OBJECT
public:
    PortalSetting(const QString& group, const QString& key,
                  const QDBusConnection& bus = QDBusConnection::sessionBus(),
                  QObject* parent = nullptr);

signals:
    /// The value as it is now: the portal's first answer, and every change after it.
    void told(const QVariant& value);

private slots:
    void takeChange(const QString& group, const QString& key, const QDBusVariant& value);

private:
    QString m_group;
    QString m_key;
};

} // namespace orvane
