// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace orvane {

class AppState;

/// What stands in the place of a record where none is shown: how to come to one, or why the last
/// one was not opened.
class NoRecordPage : public QWidget {
    Q_OBJECT
public:
    NoRecordPage(AppState& appState, QWidget* parent);

signals:
    void newNoteRequested();

private:
    void refresh();

    AppState& m_appState;
    QLabel* m_text;
    QPushButton* m_newNote;
    QPushButton* m_openAnyway;
};

} // namespace orvane
