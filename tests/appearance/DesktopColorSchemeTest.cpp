// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/DesktopColorScheme.h"

#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "appearance/themes/DesktopThemeFollower.h"
#include "platform/Clock.h"

#include <QDBusContext>
#include <QDBusVariant>
#include <QPalette>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// A bus of its own, and on it a settings portal and a connection for those who ask.
class FakePortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    FakePortal()
    {
        m_daemon.start(u"dbus-daemon"_s,
                       {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s});
        if (!m_daemon.waitForStarted() || !m_daemon.waitForReadyRead())
            return;
        const QString address = QString::fromLatin1(m_daemon.readLine().trimmed());
        QDBusConnection portal = QDBusConnection::connectToBus(address, u"portal"_s);
        portal.registerObject(u"/org/freedesktop/portal/desktop"_s, this,
                              QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        portal.registerService(u"org.freedesktop.portal.Desktop"_s);
        client = QDBusConnection::connectToBus(address, u"portal-client"_s);
    }
    ~FakePortal() override
    {
        client = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(u"portal-client"_s);
        QDBusConnection::disconnectFromBus(u"portal"_s);
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }

    void setPreference(uint preference)
    {
        emit SettingChanged(u"org.freedesktop.appearance"_s, u"color-scheme"_s,
                            QDBusVariant(preference));
    }

    QDBusConnection client{QString()};
    QVariant scheme = 0U;

public slots:
    // NOLINTNEXTLINE(readability-identifier-naming): the name of the portal's method
    QDBusVariant Read(const QString& group, const QString& key)
    {
        if (group != "org.freedesktop.appearance"_L1 || key != "color-scheme"_L1)
            sendErrorReply(QDBusError::InvalidArgs);
        return QDBusVariant(scheme);
    }

signals:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    QProcess m_daemon;
};

class FixedScheme final : public DesktopColorScheme {
public:
    [[nodiscard]] ColorScheme scheme() const override { return m_scheme; }
    void set(ColorScheme scheme)
    {
        m_scheme = scheme;
        emit changed();
    }

private:
    ColorScheme m_scheme = ColorScheme::Light;
};

} // namespace

TEST(DesktopColorScheme, followsThePortal)
{
    FakePortal portal;
    ASSERT_TRUE(portal.client.isConnected());
    portal.scheme = QVariant::fromValue(QDBusVariant(1U));
    PortalColorScheme desktop(ColorScheme::Light, portal.client);
    EXPECT_EQ(desktop.scheme(), ColorScheme::Light);
    QSignalSpy changes(&desktop, &DesktopColorScheme::changed);
    ASSERT_TRUE(changes.wait());
    EXPECT_EQ(desktop.scheme(), ColorScheme::Dark);

    const struct {
        const char* name;
        uint preference;
        ColorScheme expected;
    } rows[] = {
        {"light", 2, ColorScheme::Light},
        {"dark", 1, ColorScheme::Dark},
        {"no preference", 0, ColorScheme::Light},
        {"dark again", 1, ColorScheme::Dark},
        {"a value of the future", 9, ColorScheme::Light},
    };
    for (const auto& row : rows) {
        portal.setPreference(row.preference);
        EXPECT_TRUE(changes.wait()) << row.name;
        EXPECT_EQ(desktop.scheme(), row.expected) << row.name;
    }
    emit portal.SettingChanged(u"org.freedesktop.appearance"_s, u"contrast"_s, QDBusVariant(1U));
    EXPECT_FALSE(changes.wait(50));
    EXPECT_EQ(changes.size(), 1 + int(std::size(rows)));
}

TEST(DesktopColorScheme, fallsBackWhereNobodyAnswers)
{
    PortalColorScheme desktop(ColorScheme::Dark, QDBusConnection(u"not connected"_s));
    QTest::qWait(20);
    EXPECT_EQ(desktop.scheme(), ColorScheme::Dark);
    EXPECT_EQ(schemeOf(QPalette(QColor(240, 240, 240))), ColorScheme::Light);
    EXPECT_EQ(schemeOf(QPalette(QColor(40, 40, 40))), ColorScheme::Dark);
}

TEST(DesktopThemeFollower, switchesTheActivePairWhileAsked)
{
    UserDefaults defaults;
    ManualClock clock;
    AppearanceThemeLibrary library(defaults, clock);
    library.load();
    FixedScheme desktop;
    DesktopThemeFollower follower(defaults, library, desktop);
    const auto wears = [&](const AppearanceTheme& theme) {
        return sameWhenApplied(theme.values, readAppearance(defaults));
    };
    EXPECT_TRUE(wears(signatureBundle().dark)) << "not asked";
    followDesktopSetting.write(defaults, true);
    EXPECT_TRUE(wears(signatureBundle().light)) << "switched on";
    EXPECT_EQ(library.activeMode(), AppearanceThemeMode::Light);
    desktop.set(ColorScheme::Dark);
    EXPECT_TRUE(wears(signatureBundle().dark)) << "the desktop changed";

    defaults.set(u"settings.appearance.editor.text.red"_s, 0.5);
    desktop.set(ColorScheme::Light);
    EXPECT_EQ(readAppearance(defaults).editorText.red, 0.5) << "edits stay";
    EXPECT_EQ(library.activeMode(), AppearanceThemeMode::Dark);

    library.applyTheme(googleWorkspaceBundle().id, AppearanceThemeMode::Dark);
    library.deleteTheme(googleWorkspaceBundle().id);
    desktop.set(ColorScheme::Light);
    EXPECT_TRUE(wears(googleWorkspaceBundle().dark)) << "no active theme";
}

} // namespace orvane

#include "DesktopColorSchemeTest.moc"
