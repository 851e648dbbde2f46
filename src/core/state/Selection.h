// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/binder/BinderOrder.h"
#include "core/notebook/Notebook.h"
#include "core/state/NavigationHistory.h"
#include "platform/UserDefaults.h"

#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

/// What a person has before them: a note, a folder or the project's root of the open notebook, the
/// tile in the Projects browser, and the way back through the notes that were shown. Only what
/// exists can be selected. Main thread.
class Selection : public QObject {
    Q_OBJECT
public:
    /// Both outlive this.
    Selection(const Notebook& notebook, UserDefaults& defaults, QObject* parent = nullptr);

    [[nodiscard]] std::optional<QUuid> selectedNoteID() const { return m_noteID; }
    [[nodiscard]] std::optional<QUuid> selectedFolderID() const { return m_folderID; }
    [[nodiscard]] std::optional<BinderRowID> selectedBinderRowID() const;
    [[nodiscard]] const std::optional<QString>& selectedProjectFolder() const
    {
        return m_projectFolder;
    }
    /// The note that was left unselected when the project opened, because showing it took too long
    /// the last time or never ended; until a note is selected.
    [[nodiscard]] std::optional<QUuid> noteHeldBack() const { return m_noteHeldBack; }

    /// The rows that are selected together, two or more, in the order of the Binder; none while one
    /// row at most is. They are for what is done to all of them: the note and the folder stay.
    [[nodiscard]] const QList<BinderRowID>& rows() const { return m_rows; }
    /// Fewer than two select nothing together.
    void selectRows(const QList<BinderRowID>& rows);
    /// Lets go of rows that aren't there any more.
    void dropMissingRows();

    /// A note takes its folder along and is remembered for the project's next opening; without one
    /// the folder stays.
    void selectNote(const std::optional<QUuid>& id);
    void selectFolder(const QUuid& id);
    /// Without a row, the root.
    void selectBinderRow(const std::optional<BinderRowID>& row);
    /// Nothing without an open project.
    void selectProjectRoot();
    void selectProjectFolder(const std::optional<QString>& folder);
    /// A folder without a note, or a note and the folder that it is shown in; as for something that
    /// has just been made or moved.
    void select(const std::optional<QUuid>& folder, const std::optional<QUuid>& note);
    void holdBack(const std::optional<QUuid>& note);

    /// The note so many places away among those that were shown, made the present one of them.
    [[nodiscard]] std::optional<QUuid> stepThroughHistory(int delta);
    /// The same note again is no step.
    void selectFromHistory(const QUuid& note);
    [[nodiscard]] bool canNavigateMainEditorBack() const { return m_history.canGoBack(); }
    [[nodiscard]] bool canNavigateMainEditorForward() const { return m_history.canGoForward(); }

    /// The project whose notebook it is; none while none is open.
    void setProject(const std::optional<QUuid>& id, const QString& folder);
    /// The open project has another place.
    void projectMoved(const QString& from, const QString& to);
    /// The selected note is shown in another folder; nothing is told.
    void followNote(const QUuid& folder) { m_folderID = folder; }
    /// Another notebook: nothing of it is selected, and nothing is told.
    void forget();

signals:
    /// Sent before anything else learns of the new selection, so that a draft is written first.
    void selectedNoteAboutToChange(const std::optional<QUuid>& from,
                                   const std::optional<QUuid>& to);
    void selectionChanged();
    void rowsChanged();
    void noteHeldBackChanged();
    void historyFlagsChanged();
    void selectedProjectChanged();

private:
    void log(const char* reason) const;

    const Notebook& m_notebook;
    UserDefaults& m_defaults;
    std::optional<QUuid> m_projectID;
    QString m_openFolder;
    std::optional<QUuid> m_folderID;
    std::optional<QUuid> m_noteID;
    QList<BinderRowID> m_rows;
    std::optional<QUuid> m_noteHeldBack;
    std::optional<QString> m_projectFolder;
    NavigationHistory m_history;
    bool m_isFromHistory = false;
};

} // namespace orvane
