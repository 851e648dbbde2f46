// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "core/AppState.h"

class QGridLayout;
class QLabel;
class QTimer;

namespace orvane {

/// The Inspector pane: what there is to know about the selected note, or folder.
class InspectorView : public SurfacePanel {
    Q_OBJECT
public:
    InspectorView(AppState& appState, Look& look, QWidget* parent = nullptr);

private:
    QLabel* addRow(const QString& label);
    void show(const QString& heading, const QList<std::pair<QLabel*, QString>>& values);
    void refresh();
    void showNote(const NoteRecord& note);
    void showFolder(const FolderRecord& folder);

    AppState& m_appState;
    QWidget* m_details;
    QLabel* m_nothing;
    QLabel* m_heading;
    QGridLayout* m_grid;
    QLabel* m_title;
    QLabel* m_created;
    QLabel* m_changed;
    QLabel* m_words;
    QLabel* m_folder;
    QLabel* m_notes;
    QTimer* m_refreshTimer;
};

} // namespace orvane
