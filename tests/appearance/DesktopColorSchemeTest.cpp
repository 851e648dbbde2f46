// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/DesktopColorScheme.h"

#include "FakePortal.h"
#include "appearance/DesktopMotion.h"
#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "appearance/themes/DesktopThemeFollower.h"
#include "platform/Clock.h"

#include <QPalette>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

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
    portal.values.insert(u"color-scheme"_s, QVariant::fromValue(QDBusVariant(1U)));
    PortalColorScheme desktop(ColorScheme::Light);
    desktop.ask(portal.client);
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
        portal.change(u"org.freedesktop.appearance"_s, u"color-scheme"_s, row.preference);
        EXPECT_TRUE(changes.wait()) << row.name;
        EXPECT_EQ(desktop.scheme(), row.expected) << row.name;
    }
    portal.change(u"org.freedesktop.appearance"_s, u"contrast"_s, 1U);
    EXPECT_FALSE(changes.wait(50));
    EXPECT_EQ(changes.size(), 1 + int(std::size(rows)));
}

TEST(DesktopColorScheme, fallsBackWhereNobodyAnswers)
{
    PortalColorScheme desktop(ColorScheme::Dark);
    desktop.ask(QDBusConnection(u"not connected"_s));
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

TEST(DesktopMotion, isReducedWhereAnyDesktopSaysSo)
{
    FakePortal portal;
    ASSERT_TRUE(portal.client.isConnected());
    portal.values.insert(u"enable-animations"_s, false);
    UserDefaults defaults;
    const DesktopMotion motion(defaults, portal.client);
    EXPECT_FALSE(motion.isReduced()) << "before the answer";
    EXPECT_TRUE(QTest::qWaitFor([&] { return motion.isReduced(); }));
    portal.change(u"org.gnome.desktop.interface"_s, u"enable-animations"_s, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !motion.isReduced(); }));

    const struct {
        const char* name;
        const char* group;
        const char* key;
        QVariant value;
        bool reduced;
    } rows[] = {
        {"asked for", "org.freedesktop.appearance", "reduced-motion", 1U, true},
        {"not any more", "org.freedesktop.appearance", "reduced-motion", 0U, false},
        {"no duration", "org.kde.kdeglobals.KDE", "AnimationDurationFactor", u"0"_s, true},
        {"a long one", "org.kde.kdeglobals.KDE", "AnimationDurationFactor", u"1.5"_s, false},
    };
    for (const auto& row : rows) {
        portal.change(QString::fromLatin1(row.group), QString::fromLatin1(row.key), row.value);
        EXPECT_TRUE(QTest::qWaitFor([&] { return motion.isReduced() == row.reduced; })) << row.name;
    }
    motionSetting.write(defaults, u"reduced"_s);
    EXPECT_TRUE(motion.isReduced()) << "the person's own word";
    portal.change(u"org.gnome.desktop.interface"_s, u"enable-animations"_s, false);
    motionSetting.write(defaults, u"full"_s);
    EXPECT_FALSE(motion.isReduced());
}

} // namespace orvane
