// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/commands/CommandIcons.h"

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Row {
    QLatin1StringView id;
    QLatin1StringView drawing;
};

// clang-format off
constexpr Row rows[] = {
    {"newNote"_L1, "document-new"_L1},
    {"newNoteFromTemplate"_L1, "document-new-from-template"_L1},
    {"newFolder"_L1, "folder-new"_L1},
    {"moveTo"_L1, "go-jump"_L1},
    {"newWindow"_L1, "window-new"_L1},
    {"showProjects"_L1, "view-grid"_L1},
    {"showInFinder"_L1, "document-open-folder"_L1},
    {"saveDocument"_L1, "document-save"_L1},
    {"saveAsTemplate"_L1, "document-save-as"_L1},
    {"versionHistory"_L1, "view-history"_L1},
    {"import"_L1, "document-import"_L1},
    {"exportPDF"_L1, "document-export"_L1},
    {"exportPlainText"_L1, "document-export"_L1},
    {"exportMarkdown"_L1, "document-export"_L1},
    {"driveSignIn"_L1, "cloud-upload"_L1},
    {"driveImport"_L1, "cloud-download"_L1},
    {"driveExportNote"_L1, "cloud-upload"_L1},
    {"driveExportPDF"_L1, "cloud-upload"_L1},
    {"driveOpenLastExport"_L1, "cloud-upload"_L1},
    {"driveSettings"_L1, "configure"_L1},
    {"driveDisconnect"_L1, "network-disconnect"_L1},
    {"shareNote"_L1, "document-share"_L1},
    {"printDocument"_L1, "document-print"_L1},
    {"closeWindow"_L1, "window-close"_L1},
    {"quit"_L1, "application-exit"_L1},
    {"undo"_L1, "edit-undo"_L1},
    {"redo"_L1, "edit-redo"_L1},
    {"cut"_L1, "edit-cut"_L1},
    {"copy"_L1, "edit-copy"_L1},
    {"paste"_L1, "edit-paste"_L1},
    {"pastePlain"_L1, "edit-paste-style"_L1},
    {"selectAll"_L1, "edit-select-all"_L1},
    {"findInNote"_L1, "edit-find-replace"_L1},
    {"findInBinder"_L1, "search"_L1},
    {"projectSearch"_L1, "search"_L1},
    {"openOrvaneClipboard"_L1, "edit-paste"_L1},
    {"settings"_L1, "configure"_L1},
    {"bold"_L1, "format-text-bold"_L1},
    {"italic"_L1, "format-text-italic"_L1},
    {"underline"_L1, "format-text-underline"_L1},
    {"strikethrough"_L1, "format-text-strikethrough"_L1},
    {"superscript"_L1, "format-text-superscript"_L1},
    {"subscript"_L1, "format-text-subscript"_L1},
    {"plainText"_L1, "draw-text"_L1},
    {"richText"_L1, "format-text-bold"_L1},
    {"markdown"_L1, "code-context"_L1},
    {"colorRing"_L1, "color-picker"_L1},
    {"bulletRing"_L1, "format-list-unordered"_L1},
    {"bulletList"_L1, "format-list-unordered"_L1},
    {"numberedList"_L1, "format-list-ordered"_L1},
    {"removeCustomBullet"_L1, "list-remove"_L1},
    {"body"_L1, "draw-text"_L1},
    {"heading1"_L1, "format-font-size-more"_L1},
    {"heading2"_L1, "format-font-size-more"_L1},
    {"heading3"_L1, "format-font-size-more"_L1},
    {"heading4"_L1, "format-font-size-more"_L1},
    {"heading5"_L1, "format-font-size-more"_L1},
    {"heading6"_L1, "format-font-size-more"_L1},
    {"alignLeft"_L1, "format-justify-left"_L1},
    {"alignCenter"_L1, "format-justify-center"_L1},
    {"alignRight"_L1, "format-justify-right"_L1},
    {"alignJustified"_L1, "format-justify-fill"_L1},
    {"makeUppercase"_L1, "format-text-uppercase"_L1},
    {"makeLowercase"_L1, "format-text-lowercase"_L1},
    {"capitalize"_L1, "format-text-capitalize"_L1},
    {"insertTable"_L1, "insert-table"_L1},
    {"insertImage"_L1, "insert-image"_L1},
    {"insertShape"_L1, "draw-rectangle"_L1},
    {"insertBarChart"_L1, "office-chart-bar"_L1},
    {"insertLineChart"_L1, "office-chart-line"_L1},
    {"insertPieChart"_L1, "office-chart-pie"_L1},
    {"insertDonutChart"_L1, "office-chart-ring"_L1},
    {"insertEditLink"_L1, "insert-link"_L1},
    {"linkSelectionToNote"_L1, "insert-link"_L1},
    {"insertPageBreak"_L1, "insert-page-break"_L1},
    {"toggleBinder"_L1, "sidebar-collapse-left"_L1},
    {"toggleInspector"_L1, "sidebar-collapse-right"_L1},
    {"showDetails"_L1, "view-list-details"_L1},
    {"showVersions"_L1, "view-history"_L1},
    {"restoreThreePaneLayout"_L1, "view-file-columns"_L1},
    {"focusBinder"_L1, "view-list-tree"_L1},
    {"nextPane"_L1, "go-next"_L1},
    {"previousPane"_L1, "go-previous"_L1},
    {"toggleFormattingBar"_L1, "configure-toolbars"_L1},
    {"togglePageView"_L1, "page-simple"_L1},
    {"customizeToolbar"_L1, "configure-toolbars"_L1},
    {"splitEditor"_L1, "view-split-left-right"_L1},
    {"quadEditor"_L1, "view-grid"_L1},
    {"toggleTypewriterMode"_L1, "go-jump"_L1},
    {"toggleFocusMode"_L1, "view-visible"_L1},
    {"setFocusParagraph"_L1, "view-visible"_L1},
    {"setFocusSentence"_L1, "view-visible"_L1},
    {"zoomIn"_L1, "zoom-in"_L1},
    {"zoomOut"_L1, "zoom-out"_L1},
    {"resetZoom"_L1, "zoom-original"_L1},
    {"fullScreen"_L1, "view-fullscreen"_L1},
    {"back"_L1, "go-previous"_L1},
    {"forward"_L1, "go-next"_L1},
    {"openBrainMap"_L1, "draw-line"_L1},
    {"toggleTeleprompter"_L1, "media-playback-start"_L1},
    {"openTeleprompterFile"_L1, "document-open"_L1},
    {"teleprompterSettings"_L1, "configure"_L1},
    {"bulletLibrary"_L1, "format-list-unordered"_L1},
    {"iconsAndTitles"_L1, "edit-rename"_L1},
    {"minimize"_L1, "window-minimize"_L1},
    {"rogueEditor"_L1, "window-new"_L1},
    {"guide"_L1, "games-hint"_L1},
    {"about"_L1, "help-about"_L1},
};
// clang-format on

} // namespace

QString commandDrawing(const Command& command)
{
    const auto* row = std::ranges::find(rows, command.id, &Row::id);
    return row == std::end(rows) ? u"system-run"_s : QString(row->drawing);
}

} // namespace orvane
