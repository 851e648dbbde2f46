// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/BinderMenus.h"

#include "core/records/InternalNoteLink.h"
#include "core/records/Wording.h"
#include "shell/commands/AppMenus.h"
#include "shell/inspector/TagActions.h"

#include <QActionGroup>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

namespace orvane {

namespace {

/// More are no menu any more; they are found in a sheet.
constexpr qsizetype mostTagsInMenu = 40;

} // namespace

BinderMenus::BinderMenus(AppState& appState, Look& look, QWidget* parent)
    : QObject(parent)
    , m_appState(appState)
    , m_look(look)
    , m_parent(parent)
{}

std::unique_ptr<QMenu> BinderMenus::menuFor(const std::optional<BinderRowID>& row)
{
    auto menu = std::make_unique<QMenu>(m_parent);
    const NoteRecord* note =
        row && row->kind == BinderRowID::Kind::Note ? m_appState.note(row->id) : nullptr;
    const FolderRecord* folder =
        row && row->kind == BinderRowID::Kind::Folder ? m_appState.folder(row->id) : nullptr;
    const QList<BinderRowID>& rows = m_appState.selection().rows();
    if (row && rows.contains(*row))
        fillRowsMenu(*menu, rows);
    else if (note && note->folderID == FolderRecord::trashFolderID)
        fillTrashedNoteMenu(*menu, *note);
    else if (note)
        fillNoteMenu(*menu, *note);
    else if (folder && folder->isTrash())
        fillTrashMenu(*menu);
    else if (folder)
        fillFolderMenu(*menu, *folder);
    else
        fillEmptySpaceMenu(*menu);
    if (!m_appState.canCreateOrEdit()) {
        for (QAction* action : menu->actions())
            action->setEnabled(action->menu() != nullptr);
    }
    return menu;
}

void BinderMenus::addNewItems(QMenu& menu)
{
    connect(menu.addAction(m_look.icon(Symbol::NewNote), tr("New Note")), &QAction::triggered, this,
            &BinderMenus::newNoteRequested);
    connect(menu.addAction(m_look.icon(Symbol::NewFolder), tr("New Folder…")), &QAction::triggered,
            this, &BinderMenus::newFolderRequested);
}

void BinderMenus::addNaming(QMenu& menu)
{
    menu.addSeparator();
    connect(menu.addAction(m_look.icon(Symbol::Rename), tr("Rename")), &QAction::triggered, this,
            &BinderMenus::renameRequested);
    connect(menu.addAction(tr("Icon and Title…")), &QAction::triggered, this,
            &BinderMenus::iconsAndTitlesRequested);
}

void BinderMenus::addMoving(QMenu& menu)
{
    connect(menu.addAction(tr("Move To…")), &QAction::triggered, this,
            &BinderMenus::moveSheetRequested);
}

bool BinderMenus::arePinned(const QList<BinderRowID>& rows) const
{
    return std::ranges::all_of(rows, [this](const BinderRowID& row) {
        const NoteRecord* note = m_appState.note(row.id);
        const FolderRecord* folder = m_appState.folder(row.id);
        return note ? note->isPinned : folder && folder->isPinned;
    });
}

void BinderMenus::togglePins(const QList<BinderRowID>& rows)
{
    (void)m_appState.setRowsPinned(rows, !arePinned(rows));
}

void BinderMenus::fillRowsMenu(QMenu& menu, const QList<BinderRowID>& rows)
{
    const NoteRecord* first = m_appState.note(rows.first().id);
    if (first && first->folderID == FolderRecord::trashFolderID) {
        QList<QUuid> ids;
        for (const BinderRowID& row : rows)
            ids.append(row.id);
        connect(menu.addAction(tr("Restore")), &QAction::triggered, this,
                [this, ids] { restore(ids); });
        menu.addSeparator();
        connect(menu.addAction(tr("Delete Permanently…")), &QAction::triggered, this,
                [this, rows] { remove(rows); });
        return;
    }
    addMoving(menu);
    connect(menu.addAction(m_look.icon(Symbol::Pin), arePinned(rows) ? tr("Unpin") : tr("Pin")),
            &QAction::triggered, this, [this, rows] { togglePins(rows); });
    menu.addSeparator();
    connect(menu.addAction(m_look.icon(Symbol::Trash), tr("Move to Trash")), &QAction::triggered,
            this, [this, rows] { remove(rows); });
}

void BinderMenus::fillNoteMenu(QMenu& menu, const NoteRecord& note)
{
    const QUuid id = note.id;
    addNewItems(menu);
    addNaming(menu);
    connect(menu.addAction(m_look.icon(Symbol::Pin), note.isPinned ? tr("Unpin") : tr("Pin")),
            &QAction::triggered, this, [this, id] { (void)m_appState.togglePinNote(id); });
    addMoving(menu);
    connect(menu.addAction(tr("Duplicate")), &QAction::triggered, this,
            [this, id] { (void)m_appState.duplicateNote(id); });
    connect(menu.addAction(tr("Copy Link to Note")), &QAction::triggered, this,
            [id] { QGuiApplication::clipboard()->setText(InternalNoteLink::link(id)); });
    menu.addSeparator();
    connect(menu.addAction(m_look.icon(Symbol::Trash), tr("Move to Trash")), &QAction::triggered,
            this, [this, id] { (void)m_appState.moveNoteToTrash(id); });
}

void BinderMenus::fillTrashedNoteMenu(QMenu& menu, const NoteRecord& note)
{
    const QUuid id = note.id;
    connect(menu.addAction(tr("Restore")), &QAction::triggered, this,
            [this, id] { restore({id}); });
    menu.addSeparator();
    connect(menu.addAction(tr("Delete Permanently…")), &QAction::triggered, this,
            [this, id] { erase(id); });
}

void BinderMenus::fillFolderMenu(QMenu& menu, const FolderRecord& folder)
{
    const QUuid id = folder.id;
    addNewItems(menu);
    addNaming(menu);
    connect(menu.addAction(m_look.icon(Symbol::Pin), folder.isPinned ? tr("Unpin") : tr("Pin")),
            &QAction::triggered, this, [this, id] { (void)m_appState.togglePinFolder(id); });
    addMoving(menu);
    connect(menu.addAction(tr("Duplicate Without Contents")), &QAction::triggered, this,
            [this, id] { (void)m_appState.duplicateFolder(id); });
    addSorting(menu);
    menu.addSeparator();
    connect(menu.addAction(m_look.icon(Symbol::Trash), tr("Delete Folder…")), &QAction::triggered,
            this, [this, id] { deleteFolder(id); });
}

void BinderMenus::fillTrashMenu(QMenu& menu)
{
    QAction* empty = menu.addAction(m_look.icon(Symbol::Trash), tr("Empty Trash…"));
    empty->setEnabled(!m_appState.notesInTrash().isEmpty());
    connect(empty, &QAction::triggered, this, &BinderMenus::emptyTrash);
}

void BinderMenus::fillEmptySpaceMenu(QMenu& menu)
{
    addNewItems(menu);
    addSorting(menu);
}

void BinderMenus::addSorting(QMenu& menu)
{
    menu.addSeparator();
    fillSortMenu(*menu.addMenu(m_look.icon(Symbol::Sort), tr("Sort Notes")));
}

void BinderMenus::fillSortMenu(QMenu& menu)
{
    auto* group = new QActionGroup(&menu);
    const BinderSortOrder present = m_appState.binderSortOrder();
    for (int i = 0; i < binderSortOrderCount; ++i) {
        const auto order = BinderSortOrder(i);
        QAction* action = menu.addAction(label(order));
        action->setCheckable(true);
        action->setChecked(order == present);
        group->addAction(action);
        connect(action, &QAction::triggered, this,
                [this, order] { m_appState.setBinderSortOrder(order); });
    }
}

void BinderMenus::fillTagMenu(QMenu& menu)
{
    const QList<TagRecord>& tags = m_appState.tagLibrary();
    const QStringList filter = m_appState.activeTagFilter().values();
    if (tags.isEmpty())
        menu.addAction(tr("No tags yet. Add them to a note in the Inspector."))->setEnabled(false);
    const bool fits = tags.size() <= mostTagsInMenu;
    for (const TagRecord& tag : tags) {
        const bool isOn = containsTag(filter, tag.name);
        if (!isOn && !fits)
            continue;
        QAction* action = menu.addAction(
            tr("%1  (%2)").arg(menuText(tag.name), grouped(m_appState.tagCount(tag.name))));
        action->setCheckable(true);
        action->setChecked(isOn);
        connect(action, &QAction::triggered, this,
                [this, name = tag.name] { m_appState.toggleTagFilter(name); });
    }
    if (fits)
        return;
    menu.addSeparator();
    connect(menu.addAction(tr("Find a Tag…")), &QAction::triggered, this,
            &BinderMenus::tagSheetRequested);
}

void BinderMenus::fillRowsTagMenu(QMenu& menu)
{
    const QList<BinderRowID> rows = m_appState.selection().rows();
    const QList<TagRecord>& tags = m_appState.tagLibrary();
    const QStringList common = commonTags(m_appState, rows);
    if (tags.isEmpty())
        menu.addAction(tr("No tags yet. Add them to a note in the Inspector."))->setEnabled(false);
    for (const TagRecord& tag : tags.first(qMin(tags.size(), mostTagsInMenu))) {
        const bool isOn = containsTag(common, tag.name);
        QAction* action = menu.addAction(menuText(tag.name));
        action->setCheckable(true);
        action->setChecked(isOn);
        action->setEnabled(m_appState.canCreateOrEdit());
        connect(action, &QAction::triggered, this, [this, rows, isOn, name = tag.name] {
            if (isOn)
                (void)m_appState.removeTagFromRows(rows, name);
            else
                (void)m_appState.addTagToRows(rows, name);
        });
    }
}

void BinderMenus::remove(const BinderRowID& row)
{
    if (row.kind == BinderRowID::Kind::Folder) {
        if (row.id == FolderRecord::trashFolderID)
            emptyTrash();
        else
            deleteFolder(row.id);
        return;
    }
    const NoteRecord* note = m_appState.note(row.id);
    if (note && note->folderID == FolderRecord::trashFolderID)
        erase(row.id);
    else
        (void)m_appState.moveNoteToTrash(row.id);
}

void BinderMenus::remove(const QList<BinderRowID>& rows)
{
    QList<QUuid> trashed;
    qsizetype folders = 0;
    for (const BinderRowID& row : rows) {
        const NoteRecord* note = m_appState.note(row.id);
        if (note && note->folderID == FolderRecord::trashFolderID)
            trashed.append(row.id);
        folders += row.kind == BinderRowID::Kind::Folder ? 1 : 0;
    }
    if (!trashed.isEmpty()) {
        if (confirms(tr("Delete %n notes for good?", nullptr, int(trashed.size())),
                     tr("The notes leave the project and can't be brought back."),
                     tr("Delete Permanently")))
            (void)m_appState.eraseNotesPermanently(trashed);
        return;
    }
    if (folders == 0 ||
        confirms(tr("Delete %n folders?", nullptr, int(folders)),
                 tr("All notes that are selected, and those in these folders, go to the Trash and "
                    "can be restored from there. The folders are gone for good."),
                 tr("Delete")))
        (void)m_appState.moveRowsToTrash(rows);
}

void BinderMenus::restore(const QList<QUuid>& ids)
{
    const auto root = m_appState.projectRootContainerID();
    QStringList homeless;
    for (const QUuid& id : ids) {
        const NoteRecord* note = m_appState.note(id);
        const auto from = note ? std::optional<QUuid>(note->trashedFrom) : std::nullopt;
        if (note && !(from && (from == root || m_appState.folder(*from))))
            homeless.append(note->titleForList());
    }
    if (!m_appState.restoreNotesFromTrash(ids) || homeless.isEmpty())
        return;
    const QString text =
        homeless.size() == 1
            ? tr("The folder of “%1” is gone. The note is at the top level of the project.")
                  .arg(homeless.first())
            : tr("The folders of %n notes are gone. The notes are at the top level of the project.",
                 nullptr, int(homeless.size()));
    m_appState.services().questions.ask({.title = tr("Restored to the Top Level"),
                                         .text = text,
                                         .buttons = {tr("OK")},
                                         .suppression = {},
                                         .choices = {},
                                         .tone = {}});
}

bool BinderMenus::confirms(const QString& title, const QString& text, const QString& button)
{
    const Answer answer =
        m_appState.services().questions.ask({.title = title,
                                             .text = text,
                                             .buttons = {button, tr("Cancel")},
                                             .defaultButton = 1,
                                             .suppression = {},
                                             .choices = {},
                                             .tone = Question::Tone::Destructive});
    return answer.button == 0;
}

void BinderMenus::deleteFolder(const QUuid& id)
{
    const FolderRecord* folder = m_appState.folder(id);
    if (!folder)
        return;
    qsizetype notes = 0;
    const QList<QUuid> subtree = folderSubtreeIDs(id, m_appState.order());
    for (const QUuid& each : subtree)
        notes += m_appState.order().noteOrderByFolder.value(each).size();
    const bool isEmpty = notes == 0 && subtree.size() == 1;
    const QString text =
        tr("Its notes (%1) go to the Trash and can be restored from there. The folder and the "
           "folders in it (%2) are gone for good.")
            .arg(grouped(notes), grouped(subtree.size() - 1));
    if (isEmpty ||
        confirms(tr("Delete “%1”?").arg(folder->titleForList()), text, tr("Delete Folder")))
        (void)m_appState.deleteFolder(id);
}

void BinderMenus::erase(const QUuid& id)
{
    const NoteRecord* note = m_appState.note(id);
    if (note && confirms(tr("Delete “%1” for good?").arg(note->titleForList()),
                         tr("The note leaves the project and can't be brought back."),
                         tr("Delete Permanently")))
        (void)m_appState.eraseNotePermanently(id);
}

void BinderMenus::emptyTrash()
{
    const qsizetype count = m_appState.notesInTrash().size();
    if (count == 0 ||
        !confirms(tr("Empty the Trash?"),
                  tr("%Ln notes leave the project. A copy of each as rich text goes to the "
                     "desktop's trash.",
                     nullptr, int(count)),
                  tr("Empty Trash")))
        return;
    if (const auto emptied = m_appState.emptyTrashToMacOSUserTrash();
        !emptied && emptied.error().file)
        m_appState.services().questions.ask(
            {.title = tr("The Trash Was Not Emptied"),
             .text = tr("A note could not be handed to the desktop's trash. It is still in the "
                        "project's Trash, with those after it.\n\n%1")
                         .arg(emptied.error().file->text()),
             .buttons = {tr("OK")},
             .suppression = {},
             .choices = {},
             .tone = Question::Tone::Warning});
}

} // namespace orvane
