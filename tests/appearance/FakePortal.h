// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QHash>
#include <QProcess>

namespace orvane {

/// A bus of its own, and on it a settings portal and a connection for those who ask.
class FakePortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    FakePortal()
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"),
                        QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
        if (!m_daemon.waitForStarted() || !m_daemon.waitForReadyRead())
            return;
        const QString address = QString::fromLatin1(m_daemon.readLine().trimmed());
        QDBusConnection portal = QDBusConnection::connectToBus(address, QStringLiteral("portal"));
        portal.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                              QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        portal.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
        client = QDBusConnection::connectToBus(address, QStringLiteral("portal-client"));
    }
    ~FakePortal() override
    {
        client = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(QStringLiteral("portal-client"));
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }

    void change(const QString& group, const QString& key, const QVariant& value)
    {
        emit SettingChanged(group, key, QDBusVariant(value));
    }

    QDBusConnection client{QString()};
    /// By key; what is not in it is no setting of this portal.
    QHash<QString, QVariant> values;

public slots:
    // NOLINTNEXTLINE(readability-identifier-naming): the name of the portal's method
    QDBusVariant Read(const QString& group, const QString& key)
    {
        if (!values.contains(key))
            sendErrorReply(QDBusError::InvalidArgs, group);
        return QDBusVariant(values.value(key, 0U));
    }

signals:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    QProcess m_daemon;
};

} // namespace orvane
