// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/TourPages.h"

#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "editor/EditorPaneView.h"
#include "editor/EditorView.h"
#include "shell/MainWindow.h"
#include "shell/OrvaneWorkspaceApp.h"
#include "shell/TourHand.h"
#include "text/TextStore.h"

namespace orvane {

using namespace Qt::StringLiterals;

void tourPages(OrvaneWorkspaceApp& app, const TourHand& hand,
               const std::function<void(const QString& name)>& picture)
{
    MainWindow& window = app.window();
    EditorPaneView& pane = window.editorPane();
    EditorSession& session = pane.session();
    const EditorMode mode = session.mode();
    const auto wear = [&](AppearanceThemeMode mode) {
        app.themes().applyTheme(signatureBundle().id, mode);
    };
    session.setMode(EditorMode::richText);
    pane.focusText();
    hand.press(Qt::Key_Home, Qt::ControlModifier);
    hand.press(Qt::Key_Down, Qt::ControlModifier);
    hand.press(Qt::Key_Return, Qt::ControlModifier);
    picture(u"page-break"_s);
    hand.press(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    hand.press(Qt::Key_R, Qt::ControlModifier);
    picture(u"page-view"_s);
    wear(AppearanceThemeMode::Light);
    picture(u"page-view-light"_s);
    const QSize wide = window.size();
    window.resize(window.minimumSize());
    picture(u"page-view-narrow-light"_s);
    wear(AppearanceThemeMode::Dark);
    picture(u"page-view-narrow"_s);
    hand.press(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    picture(u"ruler-narrow"_s);
    window.resize(wide);
    picture(u"ruler"_s);
    wear(AppearanceThemeMode::Light);
    picture(u"ruler-light"_s);
    wear(AppearanceThemeMode::Dark);
    hand.press(Qt::Key_R, Qt::ControlModifier);
    hand.press(Qt::Key_Z, Qt::ControlModifier);
    session.setMode(mode);
}

} // namespace orvane
