// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "tour/TourPages.h"

#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "editor/page/RulerMarker.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/app/OrvaneWorkspaceApp.h"
#include "shell/window/MainWindow.h"
#include "text/store/TextStore.h"
#include "tour/TourHand.h"

#include <QScrollBar>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// The page break, and what `moveMarks` does.
constexpr int stepsTaken = 5;

/// By keys: the first line of the paragraph in, its other lines out, and a tab stop.
void moveMarks(MainWindow& window, const TourHand& hand)
{
    const auto marker = [&](RulerMarkKind kind) {
        for (auto* each : window.findChildren<RulerMarker*>()) {
            if (each->isVisible() && each->mark().kind == kind)
                return each->setFocus();
        }
    };
    hand.press(Qt::Key_Down);
    marker(RulerMarkKind::tail);
    hand.press(Qt::Key_Left, Qt::ShiftModifier);
    hand.press(Qt::Key_Insert);
    marker(RulerMarkKind::firstLine);
    hand.press(Qt::Key_Right, Qt::ShiftModifier);
    hand.press(Qt::Key_Right);
}

} // namespace

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
    moveMarks(window, hand);
    picture(u"ruler"_s);
    wear(AppearanceThemeMode::Light);
    picture(u"ruler-light"_s);
    hand.press(Qt::Key_Escape);
    hand.press(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    hand.press(Qt::Key_End, Qt::ControlModifier);
    QScrollBar& bar = *pane.textView().verticalScrollBar();
    bar.setValue(bar.maximum());
    picture(u"page-view-end-light"_s);
    app.themes().applyTheme(googleWorkspaceBundle().id, AppearanceThemeMode::Light);
    picture(u"page-view-google"_s);
    wear(AppearanceThemeMode::Dark);
    picture(u"page-view-end"_s);
    hand.press(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    hand.press(Qt::Key_R, Qt::ControlModifier);
    for (int step = 0; step < stepsTaken; ++step)
        hand.press(Qt::Key_Z, Qt::ControlModifier);
    session.setMode(mode);
}

} // namespace orvane
