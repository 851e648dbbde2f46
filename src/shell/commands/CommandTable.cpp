// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/EditorFormatNotifications.h"
#include "commands/TableCommands.h"
#include "editor/view/EditorSettings.h"
#include "editor/writing/FocusedText.h"
#include "shell/commands/Command.h"

#include <QCoreApplication>

#define TITLE(text) QT_TRANSLATE_NOOP("Command", text)

namespace orvane {

namespace {

namespace App = AppCommandEvents;
namespace Formatting = EditorFormatNotifications;
namespace Table = TableCommands;
using enum CommandMenu;
using Need = CommandNeed;
using Do = DirectCommand;
using Key = ShortcutAction;

Command ofAction(Key action, Need need, const char* title = nullptr)
{
    Command command;
    command.id = rawValue(action);
    command.title = title;
    command.action = action;
    command.notification = notification(action);
    command.need = need;
    return command;
}

Command posts(const char* id, const char* title, const PostableCommand& notification, Need need)
{
    Command command;
    command.id = QString::fromLatin1(id);
    command.title = title;
    command.notification = notification;
    command.need = need;
    return command;
}

Command acts(const char* id, const char* title, Do direct)
{
    Command command;
    command.id = QString::fromLatin1(id);
    command.title = title;
    command.direct = direct;
    return command;
}

/// What a fixed key does, with its title.
Command ofKey(const char* id, FixedKey key, Do direct)
{
    Command command = acts(id, nullptr, direct);
    command.fixedKey = key;
    return command;
}

Command ofKey(const char* id, FixedKey key, Need need)
{
    Command command = posts(id, nullptr, keyRow(key).command, need);
    command.fixedKey = key;
    return command;
}

Command unlisted(Command command)
{
    command.palette = PaletteListing::Unlisted;
    return command;
}

Command turnsOnAndOff(Command command, decltype(Command::isOn) isOn)
{
    command.isOn = isOn;
    return command;
}

Command closesWindow()
{
    Command command = ofAction(Key::closeWindow, Need::Nothing);
    command.direct = Do::CloseWindow;
    return command;
}

Command opensSettings()
{
    Command command = ofAction(Key::settings, Need::Nothing);
    command.notification = postable<App::openSettingsWindow>();
    return command;
}

Command inProject(Command command)
{
    command.need = Need::Project;
    return command;
}

/// A command of a project's view that is on while `isOn` says so.
Command switches(const char* id, const char* title, Do direct, decltype(Command::isOn) isOn)
{
    return turnsOnAndOff(inProject(acts(id, title, direct)), isOn);
}

template <const auto& setting>
bool isSet(const UserDefaults& defaults, const CommandContext&)
{
    return setting.read(defaults);
}

template <bool CommandContext::*pane>
bool shows(const UserDefaults&, const CommandContext& context)
{
    return context.*pane;
}

template <EditorMode mode>
bool writesIn(const UserDefaults& defaults, const CommandContext&)
{
    return editorModeSetting.read(defaults) == rawValue(mode);
}

template <FocusGranularity granularity>
bool focusesOn(const UserDefaults& defaults, const CommandContext&)
{
    return focusGranularityNamed(focusModeGranularitySetting.read(defaults)) == granularity;
}

template <OWChartKind kind>
PostableCommand insertsChart()
{
    return {App::insertChart.name,
            [](NotificationCenter& center) {
                center.post(App::insertChart, InsertChart{kind, std::nullopt});
            },
            [](const NotificationCenter& center) {
                return center.isObserved(App::insertChart);
            }};
}

std::vector<CommandSection> fileSections()
{
    return {
        {File,
         nullptr,
         {ofAction(Key::newNote, Need::WritableProject),
          ofAction(Key::newNoteFromTemplate, Need::WritableProject),
          ofAction(Key::newFolder, Need::WritableProject),
          ofAction(Key::newWindow, Need::Nothing)}},
        {File,
         nullptr,
         {ofAction(Key::showProjects, Need::Nothing), ofAction(Key::showInFinder, Need::Nothing)}},
        {File,
         nullptr,
         {ofAction(Key::saveDocument, Need::WritableNote),
          ofAction(Key::saveAsTemplate, Need::Note), ofAction(Key::versionHistory, Need::Project)}},
        {File,
         nullptr,
         {posts("import", TITLE("Import…"), postable<App::openEditorImport>(),
                Need::WritableProject)}},
        {File,
         TITLE("Export"),
         {ofAction(Key::exportPDF, Need::Note), ofAction(Key::exportPlainText, Need::Note),
          ofAction(Key::exportMarkdown, Need::Note)}},
        {File,
         TITLE("Google Drive"),
         {posts("driveSignIn", TITLE("Sign in to Google Drive"), postable<App::googleDriveSignIn>(),
                Need::Nothing),
          posts("driveImport", TITLE("Import from Google Drive"),
                postable<App::googleDriveImport>(), Need::WritableProject),
          posts("driveExportNote", TITLE("Export Note to Google Drive"),
                postable<App::googleDriveExportCurrentNote>(), Need::Note),
          posts("driveExportPDF", TITLE("Export PDF to Google Drive"),
                postable<App::googleDriveExportCurrentPDF>(), Need::Note),
          posts("driveOpenLastExport", TITLE("Open Last Export in Google Drive"),
                postable<App::googleDriveOpenLastExport>(), Need::Nothing),
          posts("driveSettings", TITLE("Google Drive Settings"),
                postable<App::googleDriveSettings>(), Need::Nothing),
          posts("driveDisconnect", TITLE("Disconnect Google Drive"),
                postable<App::googleDriveDisconnect>(), Need::Nothing)}},
        {File,
         nullptr,
         {ofAction(Key::shareNote, Need::Note), ofAction(Key::printDocument, Need::Note)}},
        {File, nullptr, {closesWindow(), ofKey("quit", FixedKey::quit, Do::Quit)}},
    };
}

std::vector<CommandSection> editSections()
{
    return {
        {Edit,
         nullptr,
         {unlisted(ofKey("undo", FixedKey::undo, Do::Undo)),
          unlisted(ofKey("redo", FixedKey::redo, Do::Redo))}},
        {Edit,
         nullptr,
         {unlisted(ofKey("cut", FixedKey::cut, Do::Cut)),
          unlisted(ofKey("copy", FixedKey::copy, Do::Copy)),
          unlisted(ofKey("paste", FixedKey::paste, Do::Paste)),
          unlisted(ofKey("pastePlain", FixedKey::pastePlain, Do::PastePlain)),
          unlisted(ofKey("selectAll", FixedKey::selectAll, Do::SelectAll))}},
        {Edit,
         nullptr,
         {ofAction(Key::findInNote, Need::Note), ofAction(Key::findInBinder, Need::Project),
          ofAction(Key::projectSearch, Need::Project)}},
        {Edit, nullptr, {ofAction(Key::openOrvaneClipboard, Need::Nothing)}},
        {Edit, nullptr, {opensSettings()}},
    };
}

std::vector<CommandSection> formatSections()
{
    constexpr Need note = Need::WritableNote;
    constexpr Need rich = Need::FormattableNote;
    constexpr Need cell = Need::Table;
    return {
        {Format,
         TITLE("Mode of the Note"),
         {turnsOnAndOff(
              posts("plainText", TITLE("Plain Text"), postable<App::writePlainText>(), note),
              writesIn<EditorMode::plainText>),
          turnsOnAndOff(posts("richText", TITLE("Rich Text"), postable<App::writeRichText>(), note),
                        writesIn<EditorMode::richText>),
          turnsOnAndOff(posts("markdown", TITLE("Markdown"), postable<App::writeMarkdown>(), note),
                        writesIn<EditorMode::markdown>)}},
        {Format,
         nullptr,
         {ofAction(Key::bold, rich), ofAction(Key::italic, rich), ofAction(Key::underline, rich),
          ofAction(Key::strikethrough, rich), ofKey("superscript", FixedKey::superscript, rich),
          ofKey("subscript", FixedKey::subscript, rich)}},
        {Format, nullptr, {ofAction(Key::colorRing, rich), ofAction(Key::bulletRing, rich)}},
        {Format,
         nullptr,
         {posts("bulletList", TITLE("Bullet List"), postable<Formatting::bulletList>(), rich),
          posts("numberedList", TITLE("Numbered List"), postable<Formatting::numberedList>(), rich),
          posts("removeCustomBullet", TITLE("Remove Custom Bullet"),
                postable<Formatting::removeCustomBullet>(), rich)}},
        {Format,
         TITLE("Heading"),
         {posts("body", TITLE("Body"), postable<Formatting::paragraphBody>(), rich),
          ofAction(Key::heading1, rich), ofAction(Key::heading2, rich),
          ofAction(Key::heading3, rich), ofAction(Key::heading4, rich),
          ofAction(Key::heading5, rich), ofAction(Key::heading6, rich)}},
        {Format,
         TITLE("Alignment"),
         {posts("alignLeft", TITLE("Align Left"), postable<Formatting::alignLeft>(), rich),
          posts("alignCenter", TITLE("Align Center"), postable<Formatting::alignCenter>(), rich),
          posts("alignRight", TITLE("Align Right"), postable<Formatting::alignRight>(), rich),
          posts("alignJustified", TITLE("Justify"), postable<Formatting::alignJustified>(), rich)}},
        {Format,
         TITLE("Table"),
         {posts("tableAddRowAbove", TITLE("Add Row Above"), postable<Table::addRowAbove>(), cell),
          posts("tableAddRowBelow", TITLE("Add Row Below"), postable<Table::addRowBelow>(), cell),
          posts("tableAddColumnLeft", TITLE("Add Column Left"), postable<Table::addColumnLeft>(),
                cell),
          posts("tableAddColumnRight", TITLE("Add Column Right"), postable<Table::addColumnRight>(),
                cell),
          posts("tableRemoveRow", TITLE("Remove Row"), postable<Table::removeRow>(), cell),
          posts("tableRemoveColumn", TITLE("Remove Column"), postable<Table::removeColumn>(), cell),
          posts("tableHeaderFill", TITLE("Header Fill Color..."),
                postable<Table::headerFillColor>(), cell),
          posts("tableCellFill", TITLE("Cell Fill Color..."), postable<Table::cellFillColor>(),
                cell),
          posts("tableClearFill", TITLE("Clear Cell Fill"), postable<Table::clearCellFill>(), cell),
          posts("tableDelete", TITLE("Delete Table"), postable<Table::deleteTable>(), cell)}},
        {Format,
         TITLE("Rows and Columns"),
         {posts("tableSelectRow", TITLE("Select Table Row"), postable<Table::selectRow>(), cell),
          posts("tableSelectColumn", TITLE("Select Table Column"), postable<Table::selectColumn>(),
                cell),
          posts("tableSelect", TITLE("Select Table"), postable<Table::selectTable>(), cell),
          ofKey("tableMoveRowUp", FixedKey::moveTableRowUp, cell),
          ofKey("tableMoveRowDown", FixedKey::moveTableRowDown, cell),
          ofKey("tableMoveColumnLeft", FixedKey::moveTableColumnLeft, cell),
          ofKey("tableMoveColumnRight", FixedKey::moveTableColumnRight, cell),
          posts("tableSortAscending", TITLE("Sort Table Rows Ascending"),
                postable<Table::sortAscending>(), cell),
          posts("tableSortDescending", TITLE("Sort Table Rows Descending"),
                postable<Table::sortDescending>(), cell),
          ofKey("tableTools", FixedKey::goToTableTools, cell)}},
        {Format,
         nullptr,
         {posts("convertTextToTable", TITLE("Convert Text to Table"),
                postable<Table::convertTextToTable>(), rich),
          posts("convertTableToText", TITLE("Convert Table to Text"),
                postable<Table::convertTableToText>(), cell)}},
        {Format,
         TITLE("Case"),
         {ofAction(Key::makeUppercase, note), ofAction(Key::makeLowercase, note),
          ofAction(Key::capitalize, note)}},
    };
}

std::vector<CommandSection> insertSections()
{
    constexpr Need note = Need::WritableNote;
    return {
        {Insert,
         nullptr,
         {posts("insertTable", TITLE("Insert Table"), postable<App::insertTable>(), note),
          posts("insertImage", TITLE("Insert Image"), postable<App::insertImage>(), note),
          posts("insertShape", TITLE("Insert Shape"), postable<App::openShapePicker>(), note)}},
        {Insert,
         TITLE("Chart"),
         {posts("insertBarChart", TITLE("Insert Bar Chart"), insertsChart<OWChartKind::bar>(),
                note),
          posts("insertLineChart", TITLE("Insert Line Chart"), insertsChart<OWChartKind::line>(),
                note),
          posts("insertPieChart", TITLE("Insert Pie Chart"), insertsChart<OWChartKind::pie>(),
                note),
          posts("insertDonutChart", TITLE("Insert Donut Chart"), insertsChart<OWChartKind::donut>(),
                note)}},
        {Insert,
         nullptr,
         {ofAction(Key::insertEditLink, Need::RichNote),
          posts("linkSelectionToNote", TITLE("Link Selection to Note"),
                postable<App::linkSelectionToNote>(), note)}},
        {Insert, nullptr, {ofAction(Key::insertPageBreak, note)}},
    };
}

std::vector<CommandSection> viewSections()
{
    return {
        {View,
         nullptr,
         {unlisted(ofKey("commandPalette", FixedKey::commandPalette, Do::CommandPalette))}},
        {View,
         nullptr,
         {turnsOnAndOff(
              ofAction(Key::toggleBinder, Need::Project, TITLE("Toggle Left Pane (Binder)")),
              shows<&CommandContext::showsBinder>),
          turnsOnAndOff(
              ofAction(Key::toggleInspector, Need::Project, TITLE("Toggle Right Pane (Inspector)")),
              shows<&CommandContext::showsInspector>),
          ofKey("restoreThreePaneLayout", FixedKey::restoreThreePaneLayout, Need::Project),
          ofAction(Key::focusBinder, Need::Project),
          ofKey("nextPane", FixedKey::nextPane, Do::NextPane),
          ofKey("previousPane", FixedKey::previousPane, Do::PreviousPane)}},
        {View,
         TITLE("Inspector"),
         {turnsOnAndOff(inProject(acts("showDetails", TITLE("Show Details"), Do::ShowDetails)),
                        [](const UserDefaults&, const CommandContext& context) {
                            return context.showsInspector && !context.showsVersions;
                        }),
          turnsOnAndOff(inProject(acts("showVersions", TITLE("Show Versions"), Do::ShowVersions)),
                        [](const UserDefaults&, const CommandContext& context) {
                            return context.showsInspector && context.showsVersions;
                        })}},
        {View,
         nullptr,
         {turnsOnAndOff(ofAction(Key::toggleFormattingBar, Need::Project),
                        isSet<showFormattingToolbarSetting>),
          turnsOnAndOff(ofAction(Key::toggleRuler, Need::RichNote), isSet<rulerVisibleSetting>),
          turnsOnAndOff(ofAction(Key::togglePageView, Need::Note), isSet<pageViewEnabledSetting>),
          posts("customizeToolbar", TITLE("Customize Toolbar"),
                postable<App::customizeMainToolbar>(), Need::Nothing)}},
        {View,
         nullptr,
         {ofKey("zoomIn", FixedKey::zoomIn, Need::Note),
          ofKey("zoomOut", FixedKey::zoomOut, Need::Note),
          ofKey("resetZoom", FixedKey::resetZoom, Need::Note)}},
        {View,
         nullptr,
         {switches("toggleTypewriterMode", TITLE("Typewriter Mode"), Do::ToggleTypewriterMode,
                   isSet<typewriterModeSetting>)}},
        {View,
         TITLE("Focus Mode"),
         {switches("toggleFocusMode", TITLE("Focus Mode"), Do::ToggleFocusMode,
                   isSet<focusModeSetting>),
          switches("setFocusParagraph", TITLE("Focus on the Paragraph"), Do::FocusParagraph,
                   focusesOn<FocusGranularity::paragraph>),
          switches("setFocusSentence", TITLE("Focus on the Sentence"), Do::FocusSentence,
                   focusesOn<FocusGranularity::sentence>)}},
        {View,
         TITLE("Editors"),
         {posts("singleEditor", TITLE("Single Editor"), postable<App::singleEditorMode>(),
                Need::Project),
          posts("splitEditor", TITLE("Split Editor"), postable<App::splitEditorMode>(),
                Need::Project),
          posts("quadEditor", TITLE("Four Editors"), postable<App::quadEditorMode>(),
                Need::Project)}},
        {View, nullptr, {ofKey("fullScreen", FixedKey::fullScreen, Do::FullScreen)}},
    };
}

std::vector<CommandSection> noteSections()
{
    return {
        {Note,
         nullptr,
         {ofKey("back", FixedKey::back, Need::Back),
          ofKey("forward", FixedKey::forward, Need::Forward)}},
        {Note, nullptr, {ofAction(Key::openBrainMap, Need::Project)}},
        {Note,
         TITLE("Teleprompter"),
         {posts("toggleTeleprompter", TITLE("Toggle Teleprompter"),
                postable<App::toggleTeleprompter>(), Need::Nothing),
          posts("openTeleprompterFile", TITLE("Open Teleprompter File"),
                postable<App::openTeleprompterFile>(), Need::Nothing),
          posts("teleprompterSettings", TITLE("Teleprompter Settings"),
                postable<App::openTeleprompterSettings>(), Need::Nothing)}},
        {Note, nullptr, {acts("moveTo", TITLE("Move To…"), Do::MoveTo)}},
        {Note,
         nullptr,
         {posts("bulletLibrary", TITLE("Bullet Library"),
                postable<App::openBulletLibrarySettings>(), Need::Nothing),
          posts("iconsAndTitles", TITLE("Icons and Titles"), postable<App::openIconsAndTitles>(),
                Need::Project)}},
    };
}

std::vector<CommandSection> windowAndHelpSections()
{
    return {
        {Window, nullptr, {acts("minimize", TITLE("Minimize"), Do::Minimize)}},
        {Window,
         nullptr,
         {posts("rogueEditor", TITLE("Rogue Editor"), postable<App::openRogueEditor>(),
                Need::Project)}},
        {Help, nullptr, {ofKey("guide", FixedKey::guide, Do::Guide)}},
        {Help, nullptr, {acts("about", TITLE("About OrvaneWorkspace"), Do::About)}},
    };
}

std::vector<CommandSection> makeSections()
{
    std::vector<CommandSection> all;
    for (auto make : {fileSections, editSections, formatSections, insertSections, viewSections,
                      noteSections, windowAndHelpSections}) {
        auto sections = make();
        std::move(sections.begin(), sections.end(), std::back_inserter(all));
    }
    return all;
}

constexpr const char* menuTitles[] = {
    TITLE("&File"), TITLE("&Edit"), TITLE("F&ormat"), TITLE("&Insert"),
    TITLE("&View"), TITLE("&Note"), TITLE("&Window"), TITLE("&Help"),
};
static_assert(std::size(menuTitles) == commandMenuCount);

QString translated(const char* text)
{
    return QCoreApplication::translate("Command", text);
}

} // namespace

bool isMet(CommandNeed need, const CommandContext& context)
{
    switch (need) {
    case CommandNeed::Nothing:
        return true;
    case CommandNeed::Project:
        return context.showsProject;
    case CommandNeed::WritableProject:
        return context.showsProject && context.mayWrite;
    case CommandNeed::Note:
        return context.showsProject && context.hasNote;
    case CommandNeed::WritableNote:
        return context.showsProject && context.hasNote && context.mayWrite;
    case CommandNeed::FormattableNote:
        return context.showsProject && context.hasNote && context.mayWrite &&
               context.mayHaveFormatting;
    case CommandNeed::RichNote:
        return context.showsProject && context.hasNote && context.mayWrite &&
               context.writesRichText;
    case CommandNeed::Table:
        return context.isInTable && isMet(CommandNeed::RichNote, context);
    case CommandNeed::Back:
        return context.showsProject && context.canGoBack;
    case CommandNeed::Forward:
        return context.showsProject && context.canGoForward;
    }
    return false;
}

std::span<const CommandSection> commandSections()
{
    static const std::vector<CommandSection> sections = makeSections();
    return sections;
}

const std::vector<const Command*>& allCommands()
{
    static const std::vector<const Command*> commands = [] {
        std::vector<const Command*> all;
        for (const CommandSection& section : commandSections()) {
            for (const Command& command : section.commands)
                all.push_back(&command);
        }
        return all;
    }();
    return commands;
}

QString commandTitle(const Command& command)
{
    if (command.title)
        return translated(command.title);
    return command.action ? title(*command.action) : keyTitle(*command.fixedKey);
}

QString menuTitle(CommandMenu menu)
{
    return translated(menuTitles[size_t(menu)]);
}

QString submenuTitle(const CommandSection& section)
{
    return translated(section.submenu);
}

} // namespace orvane
