// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/ShortcutAction.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct DefaultRow {
    const char* action;
    const char* display;
    const char* desktop;
    const char* posts;
};

// clang-format off
constexpr DefaultRow defaultRows[] = {
    {"newNote", "⌘ N", "Ctrl+N", "NewNote"},
    {"newFolder", "⌃ ⌘ N", "Super+Ctrl+N", "NewFolder"},
    {"newWindow", "⇧ ⌘ N", "Ctrl+Shift+N", "OpenMainDocumentWindow"},
    {"newNoteFromTemplate", "⌥ ⌘ N", "Ctrl+Alt+N", "NewNoteFromTemplate"},
    {"saveDocument", "⌘ S", "Ctrl+S", "SaveDocument"},
    {"saveAsTemplate", "⇧ ⌘ S", "Ctrl+Shift+S", "SaveCurrentNoteAsTemplate"},
    {"exportPDF", "⇧ ⌘ E", "Ctrl+Shift+E", "ExportCurrentNoteAsPDF"},
    {"exportPlainText", "⌥ ⌘ E", "Ctrl+Alt+E", "ExportCurrentNoteAsPlainText"},
    {"exportMarkdown", "⌥ ⇧ ⌘ E", "Ctrl+Alt+Shift+E", "ExportCurrentNoteAsMarkdown"},
    {"printDocument", "⌘ P", "Ctrl+P", "PrintCurrentNote"},
    {"showInFinder", "⌥ ⌘ O", "Ctrl+Alt+O", "OpenNotesLibrary"},
    {"showProjects", "⌘ O", "Ctrl+O", "ShowProjects"},
    {"versionHistory", "⌥ ⇧ ⌘ I", "Ctrl+Alt+Shift+I", "OpenVersionHistoryFolder"},
    {"shareNote", "⌥ ⌘ S", "Ctrl+Alt+S", "ShareCurrentNote"},
    {"closeWindow", "⌘ W", "Ctrl+W", nullptr},
    {"settings", "⌘ ,", "Ctrl+,", nullptr},
    {"findInNote", "⌘ F", "Ctrl+F", "ToggleDocumentFind"},
    {"findInBinder", "⇧ ⌘ F", "Ctrl+Shift+F", "ProjectSearch"},
    {"projectSearch", "⌥ ⌘ G", "Ctrl+Alt+G", "ProjectSearch"},
    {"insertEditLink", "⌘ K", "Ctrl+K", "InsertEditLink"},
    {"openOrvaneClipboard", "⌥ ⌘ V", "Ctrl+Alt+V", "OpenOrvaneClipboard"},
    {"openBrainMap", "⇧ ⌘ B", "Ctrl+Shift+B", "OpenBrainMap"},
    {"bold", "⌘ B", "Ctrl+B", "EditorFormat.Bold"},
    {"italic", "⌘ I", "Ctrl+I", "EditorFormat.Italic"},
    {"underline", "⌘ U", "Ctrl+U", "EditorFormat.Underline"},
    {"strikethrough", "⇧ ⌘ X", "Ctrl+Shift+X", "EditorFormat.Strikethrough"},
    {"toggleFormattingBar", "⌥ ⌘ T", "Ctrl+Alt+T", "ToggleFormattingBar"},
    {"toggleBinder", "⌘ \\", "Ctrl+\\", "ToggleBinder"},
    {"toggleInspector", "⌥ ⌘ \\", "Ctrl+Alt+\\", "ToggleInspector"},
    {"focusBinder", "⌥ ⌘ B", "Ctrl+Alt+B", "FocusBinder"},
    {"heading1", "⌘ 1", "Ctrl+1", "ApplyHeading1"},
    {"heading2", "⌘ 2", "Ctrl+2", "ApplyHeading2"},
    {"heading3", "⌘ 3", "Ctrl+3", "ApplyHeading3"},
    {"heading4", "⌘ 4", "Ctrl+4", "ApplyHeading4"},
    {"heading5", "⌘ 5", "Ctrl+5", "ApplyHeading5"},
    {"heading6", "⌘ 6", "Ctrl+6", "ApplyHeading6"},
    {"colorRing", "⇧ ⌘ K", "Ctrl+Shift+K", "ShowColorRing"},
    {"bulletRing", "⇧ ⌘ J", "Ctrl+Shift+J", "ShowBulletRing"},
    {"makeUppercase", "⌥ ⌘ U", "Ctrl+Alt+U", "MakeUppercase"},
    {"makeLowercase", "⌥ ⌘ L", "Ctrl+Alt+L", "MakeLowercase"},
    {"capitalize", "⌥ ⌘ C", "Ctrl+Alt+C", "Capitalize"},
    {"toggleRuler", "⌘ R", "Ctrl+R", "ToggleRuler"},
    {"togglePageView", "⇧ ⌘ R", "Ctrl+Shift+R", "TogglePageView"},
    {"insertPageBreak", "⌘ ↩", "Ctrl+Return", "InsertPageBreak"},
};
// clang-format on

TEST(ShortcutAction, DefaultsInOrder)
{
    ASSERT_EQ(std::size(defaultRows), size_t(shortcutActionCount));
    for (int i = 0; i < shortcutActionCount; ++i) {
        const DefaultRow& row = defaultRows[i];
        SCOPED_TRACE(row.action);
        const ShortcutAction action = allShortcutActions()[size_t(i)];
        EXPECT_EQ(rawValue(action), QLatin1String(row.action));
        EXPECT_EQ(shortcutActionFromRawValue(QLatin1String(row.action)), action);
        EXPECT_EQ(defaultShortcut(action).displayString(), QString::fromUtf8(row.display));
        EXPECT_EQ(defaultShortcut(action).desktopText(), QLatin1String(row.desktop));
        const char* posted = notification(action).name;
        EXPECT_EQ(posted == nullptr, row.posts == nullptr);
        if (posted && row.posts) {
            EXPECT_EQ(QLatin1String(posted), u"OrvaneWorkspace."_s + QLatin1String(row.posts));
        }
    }
    EXPECT_EQ(shortcutActionFromRawValue(u"noSuchAction"_s), std::nullopt);
}

TEST(ShortcutAction, KeysWithoutCharacterShowTheirCode)
{
    const ShortcutData arrow{123, KeyModifier::command};
    EXPECT_EQ(arrow.displayString(), u"⌘ (123)"_s);
    EXPECT_EQ(arrow.desktopText(), u"Ctrl+Left"_s);
    const ShortcutData unknown{999, KeyModifier::option | KeyModifier::control};
    EXPECT_EQ(unknown.displayString(), u"⌃ ⌥ (999)"_s);
    EXPECT_EQ(unknown.desktopText(), u"Super+Alt+(999)"_s);
}

} // namespace
} // namespace orvane
