// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/ShortcutAction.h"

#include "commands/EditorFormatNotifications.h"

#include <QCoreApplication>

namespace orvane {

namespace {

using namespace KeyModifier;
namespace App = AppCommandEvents;
namespace Format = EditorFormatNotifications;

enum class InText { passes, works };

struct ActionRow {
    const char* rawValue;
    const char* title;
    ShortcutData shortcut;
    PostableCommand notification;
    InText inText;
};

constexpr PostableCommand none{};
constexpr InText no = InText::passes;
constexpr InText yes = InText::works;

// clang-format off
constexpr ActionRow rows[] = {
    {"newNote", QT_TRANSLATE_NOOP("ShortcutAction", "New Note"),
     {45, command}, postable<App::newNote>(), no},
    {"newFolder", QT_TRANSLATE_NOOP("ShortcutAction", "New Folder"),
     {45, control | command}, postable<App::newFolder>(), no},
    {"newWindow", QT_TRANSLATE_NOOP("ShortcutAction", "New Window"),
     {45, shift | command}, postable<App::openMainDocumentWindow>(), no},
    {"newNoteFromTemplate", QT_TRANSLATE_NOOP("ShortcutAction", "New Note from Template"),
     {45, option | command}, postable<App::newNoteFromTemplate>(), no},
    {"saveDocument", QT_TRANSLATE_NOOP("ShortcutAction", "Save"),
     {1, command}, postable<App::saveDocument>(), yes},
    {"saveAsTemplate", QT_TRANSLATE_NOOP("ShortcutAction", "Save as Template"),
     {1, shift | command}, postable<App::saveCurrentNoteAsTemplate>(), no},
    {"exportPDF", QT_TRANSLATE_NOOP("ShortcutAction", "Export as PDF"),
     {14, shift | command}, postable<App::exportCurrentNoteAsPDF>(), yes},
    {"exportPlainText", QT_TRANSLATE_NOOP("ShortcutAction", "Export as Plain Text"),
     {14, option | command}, postable<App::exportCurrentNoteAsPlainText>(), yes},
    {"exportMarkdown", QT_TRANSLATE_NOOP("ShortcutAction", "Export as Markdown"),
     {14, option | shift | command}, postable<App::exportCurrentNoteAsMarkdown>(), yes},
    {"printDocument", QT_TRANSLATE_NOOP("ShortcutAction", "Print"),
     {35, command}, postable<App::printCurrentNote>(), yes},
    {"showInFinder", QT_TRANSLATE_NOOP("ShortcutAction", "Show Project Library in File Manager"),
     {31, option | command}, postable<App::openNotesLibrary>(), no},
    {"showProjects", QT_TRANSLATE_NOOP("ShortcutAction", "Open Project"),
     {31, command}, postable<App::showProjects>(), no},
    {"versionHistory", QT_TRANSLATE_NOOP("ShortcutAction", "Version History"),
     {34, option | shift | command}, postable<App::openVersionHistoryFolder>(), no},
    {"shareNote", QT_TRANSLATE_NOOP("ShortcutAction", "Share Note"),
     {1, option | command}, postable<App::shareCurrentNote>(), no},
    {"closeWindow", QT_TRANSLATE_NOOP("ShortcutAction", "Close Window"),
     {13, command}, none, no},
    {"settings", QT_TRANSLATE_NOOP("ShortcutAction", "Settings"),
     {43, command}, none, no},
    {"findInNote", QT_TRANSLATE_NOOP("ShortcutAction", "Find & Replace in Note"),
     {3, command}, postable<App::toggleDocumentFind>(), yes},
    {"findInBinder", QT_TRANSLATE_NOOP("ShortcutAction", "Find in Binder"),
     {3, shift | command}, postable<App::projectSearch>(), no},
    {"projectSearch", QT_TRANSLATE_NOOP("ShortcutAction", "Project Search"),
     {5, option | command}, postable<App::projectSearch>(), no},
    {"insertEditLink", QT_TRANSLATE_NOOP("ShortcutAction", "Insert / Edit Link"),
     {40, command}, postable<App::insertEditLink>(), yes},
    {"openOrvaneClipboard", QT_TRANSLATE_NOOP("ShortcutAction", "Orvane Clipboard"),
     {9, option | command}, postable<App::openOrvaneClipboard>(), yes},
    {"openBrainMap", QT_TRANSLATE_NOOP("ShortcutAction", "Brain Map"),
     {11, shift | command}, postable<App::openBrainMap>(), no},
    {"bold", QT_TRANSLATE_NOOP("ShortcutAction", "Bold"),
     {11, command}, postable<Format::bold>(), yes},
    {"italic", QT_TRANSLATE_NOOP("ShortcutAction", "Italic"),
     {34, command}, postable<Format::italic>(), yes},
    {"underline", QT_TRANSLATE_NOOP("ShortcutAction", "Underline"),
     {32, command}, postable<Format::underline>(), yes},
    {"strikethrough", QT_TRANSLATE_NOOP("ShortcutAction", "Strikethrough"),
     {7, shift | command}, postable<Format::strikethrough>(), yes},
    {"toggleFormattingBar", QT_TRANSLATE_NOOP("ShortcutAction", "Toggle Formatting Toolbar"),
     {17, option | command}, postable<App::toggleFormattingBar>(), no},
    {"toggleBinder", QT_TRANSLATE_NOOP("ShortcutAction", "Toggle Left Pane"),
     {42, command}, postable<App::toggleBinder>(), no},
    {"toggleInspector", QT_TRANSLATE_NOOP("ShortcutAction", "Toggle Right Pane"),
     {42, option | command}, postable<App::toggleInspector>(), no},
    {"focusBinder", QT_TRANSLATE_NOOP("ShortcutAction", "Jump to Binder"),
     {11, option | command}, postable<App::focusBinder>(), no},
    {"heading1", QT_TRANSLATE_NOOP("ShortcutAction", "Heading 1"),
     {18, command}, postable<App::applyHeading1>(), yes},
    {"heading2", QT_TRANSLATE_NOOP("ShortcutAction", "Heading 2"),
     {19, command}, postable<App::applyHeading2>(), yes},
    {"heading3", QT_TRANSLATE_NOOP("ShortcutAction", "Heading 3"),
     {20, command}, postable<App::applyHeading3>(), yes},
    {"heading4", QT_TRANSLATE_NOOP("ShortcutAction", "Heading 4"),
     {21, command}, postable<App::applyHeading4>(), yes},
    {"heading5", QT_TRANSLATE_NOOP("ShortcutAction", "Heading 5"),
     {23, command}, postable<App::applyHeading5>(), yes},
    {"heading6", QT_TRANSLATE_NOOP("ShortcutAction", "Heading 6"),
     {22, command}, postable<App::applyHeading6>(), yes},
    {"colorRing", QT_TRANSLATE_NOOP("ShortcutAction", "Color Ring"),
     {40, shift | command}, postable<App::showColorRing>(), yes},
    {"bulletRing", QT_TRANSLATE_NOOP("ShortcutAction", "Bullet Ring"),
     {38, shift | command}, postable<App::showBulletRing>(), yes},
    {"makeUppercase", QT_TRANSLATE_NOOP("ShortcutAction", "Make Uppercase"),
     {32, option | command}, postable<App::makeUppercase>(), yes},
    {"makeLowercase", QT_TRANSLATE_NOOP("ShortcutAction", "Make Lowercase"),
     {37, option | command}, postable<App::makeLowercase>(), yes},
    {"capitalize", QT_TRANSLATE_NOOP("ShortcutAction", "Capitalize"),
     {8, option | command}, postable<App::capitalize>(), yes},
    {"toggleRuler", QT_TRANSLATE_NOOP("ShortcutAction", "Toggle Ruler"),
     {15, command}, postable<App::toggleRuler>(), yes},
    {"togglePageView", QT_TRANSLATE_NOOP("ShortcutAction", "Toggle Page View"),
     {15, shift | command}, postable<App::togglePageView>(), yes},
    {"insertPageBreak", QT_TRANSLATE_NOOP("ShortcutAction", "Insert Page Break"),
     {36, command}, postable<App::insertPageBreak>(), yes},
};
// clang-format on
static_assert(std::size(rows) == shortcutActionCount);

constexpr quint64 inTextMask()
{
    quint64 mask = 0;
    for (size_t i = 0; i < std::size(rows); ++i) {
        if (rows[i].inText == InText::works)
            mask |= quint64(1) << i;
    }
    return mask;
}
static_assert(inTextMask() == 0xFFFC3D903D0);

const ActionRow& row(ShortcutAction action)
{
    return rows[size_t(action)];
}

} // namespace

const std::array<ShortcutAction, shortcutActionCount>& allShortcutActions()
{
    static constexpr auto actions = [] {
        std::array<ShortcutAction, shortcutActionCount> all{};
        for (size_t i = 0; i < all.size(); ++i)
            all[i] = ShortcutAction(i);
        return all;
    }();
    return actions;
}

QString rawValue(ShortcutAction action)
{
    return QString::fromLatin1(row(action).rawValue);
}

std::optional<ShortcutAction> shortcutActionFromRawValue(const QString& text)
{
    for (const ShortcutAction action : allShortcutActions()) {
        if (text == QLatin1String(row(action).rawValue))
            return action;
    }
    return std::nullopt;
}

QString title(ShortcutAction action)
{
    return QCoreApplication::translate("ShortcutAction", row(action).title);
}

ShortcutData defaultShortcut(ShortcutAction action)
{
    return row(action).shortcut;
}

PostableCommand notification(ShortcutAction action)
{
    return row(action).notification;
}

bool worksInText(ShortcutAction action)
{
    return row(action).inText == InText::works;
}

} // namespace orvane
