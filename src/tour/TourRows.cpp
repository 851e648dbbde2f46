// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "shell/app/OrvaneWorkspaceApp.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/binder/BinderView.h"
#include "shell/window/MainWindow.h"
#include "tour/TourHand.h"
#include "tour/TourPages.h"

namespace orvane {

using namespace Qt::StringLiterals;

void tourRows(OrvaneWorkspaceApp& app, const TourHand& hand,
              const std::function<void(const QString&)>& picture)
{
    MainWindow& window = app.window();
    AppState& state = app.appState();
    AppearanceThemeLibrary& themes = app.themes();
    auto* tree = window.findChild<BinderTreeView*>();
    const auto before = state.selection().selectedNoteID();
    if (!tree || !before)
        return;
    tree->setFocus();
    hand.press(Qt::Key_Down, Qt::ShiftModifier);
    for (const auto mode : {AppearanceThemeMode::Dark, AppearanceThemeMode::Light}) {
        const QString look = mode == AppearanceThemeMode::Dark ? u"dark"_s : u"light"_s;
        themes.applyTheme(signatureBundle().id, mode);
        picture(u"rows-"_s + look);
        window.findChild<BinderView*>()->showMoveSheet();
        hand.type(u"re"_s);
        picture(u"move-to-"_s + look);
        hand.press(Qt::Key_Escape);
    }
    (void)state.moveNoteToTrash(*before);
    state.openNote(*before);
    picture(u"trash-light"_s);
    themes.applyTheme(signatureBundle().id, AppearanceThemeMode::Dark);
    picture(u"trash-dark"_s);
    (void)state.restoreNoteFromTrash(*before);
    (void)state.undoNotebookStep(); // the order as it was
    (void)state.undoNotebookStep();
    state.openNote(*before);
}

} // namespace orvane
