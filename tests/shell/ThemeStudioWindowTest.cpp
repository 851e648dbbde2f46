// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/ThemeStudioWindow.h"

#include "ShellFixture.h"
#include "appearance/studio/ThemeStudioView.h"
#include "appearance/themes/BundledThemes.h"
#include "core/AppCommandEvents.h"

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST_F(ShellTest, TheStudioRestylesTheOpenMainWindow)
{
    dismissWelcome();
    start();
    ASSERT_TRUE(state().createProject(u"Novel"_s, {}));
    TourHand::settle();
    const auto binder = [this] {
        return window().grab().toImage().pixelColor(3, window().height() / 2);
    };
    EXPECT_EQ(binder(), QColor(0x0A, 0x0E, 0x16));

    state().services().notifications.post(AppCommandEvents::openSettingsWindow);
    ThemeStudioWindow* studio = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<ThemeStudioWindow*>(widget))
            studio = found;
    }
    ASSERT_TRUE(studio);
    EXPECT_TRUE(studio->isVisible());
    studio->studio().select(googleWorkspaceBundle().id);
    studio->studio().select(AppearanceThemeMode::Light);
    studio->studio().applySelected();
    TourHand::settle();
    EXPECT_EQ(binder(), QColor(0xF1, 0xF3, 0xF4));

    studio->close();
    EXPECT_EQ(&m_app->showThemeStudio(), studio);
    quit();
    start();
    EXPECT_EQ(m_app->look().tokens().accent, QColor(0x1A, 0x73, 0xE8)) << "kept for the next start";
}

} // namespace
} // namespace orvane
