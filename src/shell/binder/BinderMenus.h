// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "core/state/AppState.h"

#include <QObject>

class QMenu;

namespace orvane {

/// What a person does with the Binder's rows through menus and the Delete key, with the questions
/// that go with it. A question comes only where nothing brings back what is lost.
class BinderMenus : public QObject {
    Q_OBJECT
public:
    BinderMenus(AppState& appState, Look& look, QWidget* parent);

    /// The menu of a row, or of the empty space below the rows.
    [[nodiscard]] std::unique_ptr<QMenu> menuFor(const std::optional<BinderRowID>& row);
    /// The ways to sort the notes of each folder.
    void fillSortMenu(QMenu& menu);
    /// The tags in use, to filter for; of more than a menu holds those that are filtered for, and
    /// the way to the others.
    void fillTagMenu(QMenu& menu);

    /// The tags in use, marked where all rows that are selected together have them, to give to all
    /// or to take from all.
    void fillRowsTagMenu(QMenu& menu);

    /// Notes go to the Trash, from there for good; a folder goes and its notes go to the Trash.
    void remove(const BinderRowID& row);
    /// The same with rows that are selected together.
    void remove(const QList<BinderRowID>& rows);
    /// Takes notes out of the Trash, and says so where their folder is gone.
    void restore(const QList<QUuid>& ids);
    void emptyTrash();
    /// Pins all, or unpins them where all are pinned.
    void togglePins(const QList<BinderRowID>& rows);

signals:
    void newNoteRequested();
    void newFolderRequested();
    void renameRequested();
    void iconsAndTitlesRequested();
    void tagSheetRequested();
    void moveSheetRequested();

private:
    void fillRowsMenu(QMenu& menu, const QList<BinderRowID>& rows);
    [[nodiscard]] bool arePinned(const QList<BinderRowID>& rows) const;
    void addMoving(QMenu& menu);
    void fillNoteMenu(QMenu& menu, const NoteRecord& note);
    void fillTrashedNoteMenu(QMenu& menu, const NoteRecord& note);
    void fillFolderMenu(QMenu& menu, const FolderRecord& folder);
    void fillTrashMenu(QMenu& menu);
    void fillEmptySpaceMenu(QMenu& menu);
    void addNewItems(QMenu& menu);
    void addNaming(QMenu& menu);
    void addSorting(QMenu& menu);
    void deleteFolder(const QUuid& id);
    void erase(const QUuid& id);
    [[nodiscard]] bool confirms(const QString& title, const QString& text, const QString& button);

    AppState& m_appState;
    Look& m_look;
    QWidget* m_parent;
};

} // namespace orvane
