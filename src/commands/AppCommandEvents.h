// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/NotificationCenter.h"
#include "text/value/OWChartKind.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

/// The note that a command is meant for. Without one it goes to the text view that has, or last
/// had, the keyboard in the active window.
struct CommandTarget {
    std::optional<QUuid> noteID;

    bool operator==(const CommandTarget&) const = default;
};

struct InsertChart {
    OWChartKind kind = OWChartKind::bar;
    std::optional<QUuid> noteID;

    bool operator==(const InsertChart&) const = default;
};

/// `kind` is the stored word of the shape's kind.
struct InsertShape {
    QString kind;
    std::optional<QUuid> noteID;

    bool operator==(const InsertShape&) const = default;
};

/// The selection of a text view, to become a note of its own.
struct SelectionForNewNote {
    QString text;
    QByteArray rtf;

    bool operator==(const SelectionForNewNote&) const = default;
};

/// A place in a PDF note; pages count from zero.
struct PdfAnnotationPlace {
    QUuid noteID;
    int pageIndex = 0;
    std::optional<QString> annotationID;

    bool operator==(const PdfAnnotationPlace&) const = default;
};

} // namespace orvane

/// The commands of the program, and what is told about them. Menus, toolbars, keys and the command
/// palette post them; the window or object that owns the work observes them. A command that nobody
/// observes is lost without a word; `NotificationCenter::isObserved` tells beforehand.
namespace orvane::AppCommandEvents {

// --- Projects and the program ---

/// The browser of projects.
inline constexpr Notification<NoPayload> showProjects{"OrvaneWorkspace.ShowProjects"};
/// The folder of projects in the file manager.
inline constexpr Notification<NoPayload> openNotesLibrary{"OrvaneWorkspace.OpenNotesLibrary"};
inline constexpr Notification<NoPayload> openMainDocumentWindow{
    "OrvaneWorkspace.OpenMainDocumentWindow"};
inline constexpr Notification<NoPayload> openSettingsWindow{"OrvaneWorkspace.OpenSettingsWindow"};
inline constexpr Notification<NoPayload> openBulletLibrarySettings{
    "OrvaneWorkspace.OpenBulletLibrarySettings"};
inline constexpr Notification<NoPayload> openIconsAndTitles{"OrvaneWorkspace.OpenIconsAndTitles"};
inline constexpr Notification<NoPayload> customizeMainToolbar{
    "OrvaneWorkspace.CustomizeMainToolbar"};
/// Posted where the licence question was answered with no.
inline constexpr Notification<NoPayload> showLicenseUnlock{"OrvaneWorkspace.ShowLicenseUnlock"};

// --- Notes and folders ---

inline constexpr Notification<NoPayload> newNote{"OrvaneWorkspace.NewNote"};
inline constexpr Notification<NoPayload> newFolder{"OrvaneWorkspace.NewFolder"};
inline constexpr Notification<NoPayload> newNoteFromTemplate{"OrvaneWorkspace.NewNoteFromTemplate"};
inline constexpr Notification<NoPayload> saveCurrentNoteAsTemplate{
    "OrvaneWorkspace.SaveCurrentNoteAsTemplate"};
/// Writes the draft and keeps a version of the note.
inline constexpr Notification<NoPayload> saveDocument{"OrvaneWorkspace.SaveDocument"};
/// `saveDocument` was carried out.
inline constexpr Notification<NoPayload> manualSaveCompleted{"OrvaneWorkspace.ManualSaveCompleted"};
inline constexpr Notification<NoPayload> openVersionHistoryFolder{
    "OrvaneWorkspace.OpenVersionHistoryFolder"};
inline constexpr Notification<NoPayload> shareCurrentNote{"OrvaneWorkspace.ShareCurrentNote"};
inline constexpr Notification<NoPayload> openEditorImport{"OrvaneWorkspace.OpenEditorImport"};
inline constexpr Notification<NoPayload> exportCurrentNoteAsPDF{
    "OrvaneWorkspace.ExportCurrentNoteAsPDF"};
inline constexpr Notification<NoPayload> exportCurrentNoteAsPlainText{
    "OrvaneWorkspace.ExportCurrentNoteAsPlainText"};
inline constexpr Notification<NoPayload> exportCurrentNoteAsMarkdown{
    "OrvaneWorkspace.ExportCurrentNoteAsMarkdown"};
inline constexpr Notification<NoPayload> printCurrentNote{"OrvaneWorkspace.PrintCurrentNote"};

// --- The Binder ---

inline constexpr Notification<NoPayload> focusBinder{"OrvaneWorkspace.FocusBinder"};
inline constexpr Notification<NoPayload> projectSearch{"OrvaneWorkspace.ProjectSearch"};
inline constexpr Notification<NoPayload> binderPreviousItem{"OrvaneWorkspace.BinderPreviousItem"};
inline constexpr Notification<NoPayload> binderNextItem{"OrvaneWorkspace.BinderNextItem"};
inline constexpr Notification<NoPayload> binderExpandFolder{"OrvaneWorkspace.BinderExpandFolder"};
inline constexpr Notification<NoPayload> binderCollapseFolder{
    "OrvaneWorkspace.BinderCollapseFolder"};
inline constexpr Notification<NoPayload> binderActivateSelection{
    "OrvaneWorkspace.BinderActivateSelection"};

// --- The window and its panes ---

inline constexpr Notification<NoPayload> toggleBinder{"OrvaneWorkspace.ToggleBinder"};
inline constexpr Notification<NoPayload> toggleInspector{"OrvaneWorkspace.ToggleInspector"};
inline constexpr Notification<NoPayload> collapseLeftPane{"OrvaneWorkspace.CollapseLeftPane"};
inline constexpr Notification<NoPayload> collapseRightPane{"OrvaneWorkspace.CollapseRightPane"};
inline constexpr Notification<NoPayload> restoreThreePaneLayout{
    "OrvaneWorkspace.RestoreThreePaneLayout"};
/// The widths of the panes are final after start-up; once per window.
inline constexpr Notification<NoPayload> splitLayoutRestored{"OrvaneWorkspace.SplitLayoutRestored"};
inline constexpr Notification<NoPayload> toggleFormattingBar{"OrvaneWorkspace.ToggleFormattingBar"};
inline constexpr Notification<NoPayload> toggleDocumentFind{"OrvaneWorkspace.ToggleDocumentFind"};
inline constexpr Notification<NoPayload> mainEditorBack{"OrvaneWorkspace.MainEditorBack"};
inline constexpr Notification<NoPayload> mainEditorForward{"OrvaneWorkspace.MainEditorForward"};
inline constexpr Notification<NoPayload> singleEditorMode{"OrvaneWorkspace.SingleEditorMode"};
inline constexpr Notification<NoPayload> splitEditorMode{"OrvaneWorkspace.SplitEditorMode"};
inline constexpr Notification<NoPayload> quadEditorMode{"OrvaneWorkspace.QuadEditorMode"};

/// Focus mode was turned on or off, or is on something else now; the settings say what.
inline constexpr Notification<NoPayload> focusModeChanged{"OrvaneWorkspace.FocusMode.Changed"};

// --- Windows beside the main one ---

inline constexpr Notification<NoPayload> openOrvaneClipboard{"OrvaneWorkspace.OpenOrvaneClipboard"};
inline constexpr Notification<NoPayload> openRogueEditor{"OrvaneWorkspace.OpenRogueEditor"};
inline constexpr Notification<NoPayload> openBrainMap{"OrvaneWorkspace.OpenBrainMap"};
inline constexpr Notification<NoPayload> toggleTeleprompter{"OrvaneWorkspace.ToggleTeleprompter"};
inline constexpr Notification<NoPayload> openTeleprompterFile{
    "OrvaneWorkspace.OpenTeleprompterFile"};
inline constexpr Notification<NoPayload> openTeleprompterSettings{
    "OrvaneWorkspace.OpenTeleprompterSettings"};

// --- Google Drive ---

inline constexpr Notification<NoPayload> googleDriveSignIn{"OrvaneWorkspace.GoogleDrive.SignIn"};
inline constexpr Notification<NoPayload> googleDriveImport{"OrvaneWorkspace.GoogleDrive.Import"};
inline constexpr Notification<NoPayload> googleDriveExportCurrentNote{
    "OrvaneWorkspace.GoogleDrive.ExportCurrentNote"};
inline constexpr Notification<NoPayload> googleDriveExportCurrentPDF{
    "OrvaneWorkspace.GoogleDrive.ExportCurrentPDF"};
inline constexpr Notification<NoPayload> googleDriveOpenLastExport{
    "OrvaneWorkspace.GoogleDrive.OpenLastExport"};
inline constexpr Notification<NoPayload> googleDriveSettings{
    "OrvaneWorkspace.GoogleDrive.Settings"};
inline constexpr Notification<NoPayload> googleDriveDisconnect{
    "OrvaneWorkspace.GoogleDrive.Disconnect"};

// --- One note, in a pane or a window of its own ---

inline constexpr Notification<QUuid> openNoteInBinderPane{"OrvaneWorkspace.OpenNoteInBinderPane"};
inline constexpr Notification<QUuid> openNoteInInspectorPane{
    "OrvaneWorkspace.OpenNoteInInspectorPane"};
inline constexpr Notification<QUuid> openRogueEditorWithNote{
    "OrvaneWorkspace.OpenRogueEditorWithNote"};
inline constexpr Notification<PdfAnnotationPlace> navigatePDFAnnotation{
    "OrvaneWorkspace.NavigatePDFAnnotation"};
inline constexpr Notification<SelectionForNewNote> saveSelectionToNewNote{
    "OrvaneWorkspace.SaveSelectionToNewNote"};

// --- The text of one note ---

inline constexpr Notification<CommandTarget> applyHeading1{"OrvaneWorkspace.ApplyHeading1"};
inline constexpr Notification<CommandTarget> applyHeading2{"OrvaneWorkspace.ApplyHeading2"};
inline constexpr Notification<CommandTarget> applyHeading3{"OrvaneWorkspace.ApplyHeading3"};
inline constexpr Notification<CommandTarget> applyHeading4{"OrvaneWorkspace.ApplyHeading4"};
inline constexpr Notification<CommandTarget> applyHeading5{"OrvaneWorkspace.ApplyHeading5"};
inline constexpr Notification<CommandTarget> applyHeading6{"OrvaneWorkspace.ApplyHeading6"};
inline constexpr Notification<CommandTarget> makeUppercase{"OrvaneWorkspace.MakeUppercase"};
inline constexpr Notification<CommandTarget> makeLowercase{"OrvaneWorkspace.MakeLowercase"};
inline constexpr Notification<CommandTarget> capitalize{"OrvaneWorkspace.Capitalize"};
inline constexpr Notification<CommandTarget> insertEditLink{"OrvaneWorkspace.InsertEditLink"};
inline constexpr Notification<CommandTarget> linkSelectionToNote{
    "OrvaneWorkspace.LinkSelectionToNote"};
inline constexpr Notification<CommandTarget> insertPageBreak{"OrvaneWorkspace.InsertPageBreak"};
inline constexpr Notification<CommandTarget> insertImage{"OrvaneWorkspace.InsertImage"};
inline constexpr Notification<CommandTarget> insertTable{"OrvaneWorkspace.InsertTable"};
inline constexpr Notification<CommandTarget> openShapePicker{"OrvaneWorkspace.OpenShapePicker"};
inline constexpr Notification<CommandTarget> showColorRing{"OrvaneWorkspace.ShowColorRing"};
inline constexpr Notification<CommandTarget> showBulletRing{"OrvaneWorkspace.ShowBulletRing"};
inline constexpr Notification<CommandTarget> toggleRuler{"OrvaneWorkspace.ToggleRuler"};
inline constexpr Notification<CommandTarget> togglePageView{"OrvaneWorkspace.TogglePageView"};
/// How large text and page are shown, in this view and all others.
inline constexpr Notification<CommandTarget> zoomIn{"OrvaneWorkspace.ZoomIn"};
inline constexpr Notification<CommandTarget> zoomOut{"OrvaneWorkspace.ZoomOut"};
inline constexpr Notification<CommandTarget> resetZoom{"OrvaneWorkspace.ResetZoom"};
/// How a note is written.
inline constexpr Notification<CommandTarget> writeRichText{"OrvaneWorkspace.WriteRichText"};
inline constexpr Notification<CommandTarget> writePlainText{"OrvaneWorkspace.WritePlainText"};
inline constexpr Notification<CommandTarget> writeMarkdown{"OrvaneWorkspace.WriteMarkdown"};
inline constexpr Notification<InsertChart> insertChart{"OrvaneWorkspace.InsertChart"};
inline constexpr Notification<InsertShape> insertShape{"OrvaneWorkspace.InsertShape"};

} // namespace orvane::AppCommandEvents
