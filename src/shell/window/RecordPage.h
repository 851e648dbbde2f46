// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QUuid>
#include <QWidget>

namespace orvane {

class AppState;
class EditorPaneView;
class Look;
class TrashStrip;

/// The place in the main window where the selected record is shown: it follows the selection, says
/// what is to be known of the record before its surface does, and tells the surface that the record
/// is for which one to show. All records are written texts.
class RecordPage : public QWidget {
    Q_OBJECT
public:
    RecordPage(AppState& appState, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] EditorPaneView& textPane() const { return *m_text; }

signals:
    /// A note is wanted where none is shown.
    void newNoteRequested();
    /// The record is to come out of the Trash, or to go for good.
    void restoreWanted(const QUuid& note);
    void eraseWanted(const QUuid& note);

private:
    void showState();

    AppState& m_appState;
    Look& m_look;
    EditorPaneView* m_text;
    TrashStrip* m_trash = nullptr;
};

} // namespace orvane
