// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "core/state/AppState.h"
#include "shell/sheets/SheetHost.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace orvane {

class VersionListView;

/// The versions of the selected note, and what can be done with one: read it beside what is there
/// now, go back to it, remove it.
class VersionHistorySection : public QWidget {
    Q_OBJECT
public:
    VersionHistorySection(AppState& appState, SheetHost& sheets, Look& look,
                          QWidget* parent = nullptr);

    /// Shows a note's timeline. A long one is read in the background and shown when it is there.
    void setNote(const QUuid& noteID);
    /// The note itself changed.
    void refresh(int wordsNow);

private:
    [[nodiscard]] QWidget* makeButtons();
    using Versions = NoteVersionHistoryStore::Versions;

    void load();
    void show(const Versions& oldestFirst);
    void tell(const QString& title, const QString& text, const VersionHistoryError& error);
    void showRows();
    void showChoice();
    [[nodiscard]] std::optional<NoteVersionSummary> selected() const;
    /// With its texts; a person is told when they can't be read.
    [[nodiscard]] std::optional<NoteVersionSnapshot> readSelected();
    void preview();
    /// Whether the note is that version now; a person has been told when not.
    void restore(const NoteVersionSnapshot& version);
    void removeSelected();

    AppState& m_appState;
    SheetHost& m_sheets;
    Look& m_look;
    QUuid m_noteID;
    QList<NoteVersionSummary> m_newestFirst;
    std::optional<VersionHistoryError> m_problem;
    int m_wordsNow = 0;
    /// Tells a list that was read for an earlier wish from the one that is wanted.
    quint64 m_load = 0;
    QLabel* m_count;
    QLabel* m_nothing;
    VersionListView* m_list;
    QLabel* m_hint;
    QPushButton* m_restore = nullptr;
    QPushButton* m_delete = nullptr;
    NotificationCenter::Observation m_observation;
};

} // namespace orvane
