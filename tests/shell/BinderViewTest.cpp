// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellFixture.h"
#include "core/records/InternalNoteLink.h"
#include "shell/binder/BinderModel.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/shortcuts/KeyRouting.h"
#include "support/KeyWalk.h"

#include <QClipboard>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QShortcut>
#include <QToolButton>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// The Binder of an open project: a folder with three notes, an empty folder, a note at the root.
class BinderViewTest : public ShellTest {
protected:
    void SetUp() override
    {
        dismissWelcome();
        start();
        ASSERT_TRUE(state().projectSession().createProject(u"Novel"_s, {}));
        full = *state().createFolder(u"Full"_s);
        for (const QString& title : {u"Alpha"_s, u"Beta"_s, u"Gamma"_s})
            notes.append(*state().createNote(title, {}));
        state().selection().selectProjectRoot();
        empty = *state().createFolder(u"Empty"_s);
        state().selection().selectProjectRoot();
        loose = *state().createNote(u"Loose"_s, {});
        state().openNote(notes.first());
        tree = find<BinderTreeView>();
        ASSERT_NE(tree, nullptr);
        tree->setFocus();
        QApplication::processEvents();
    }

    QModelIndex indexOf(const BinderRowID& row)
    {
        return static_cast<BinderModel*>(tree->model())->indexOf(row);
    }
    QRect rectOf(const BinderRowID& row) { return tree->visualRect(indexOf(row)); }
    static BinderRowID note(const QUuid& id) { return {BinderRowID::Kind::Note, id}; }
    static BinderRowID folder(const QUuid& id) { return {BinderRowID::Kind::Folder, id}; }

    /// What shows in the tree, from the top.
    QStringList shown()
    {
        QStringList titles;
        for (QModelIndex at = tree->model()->index(0, 0); at.isValid(); at = tree->indexBelow(at))
            titles.append(at.data().toString());
        return titles;
    }

    /// The events that a drag within the window sends, without the desktop's part of it.
    bool drop(const QString& payload, const QPoint& position)
    {
        QMimeData data;
        data.setData(u"application/x-orvaneworkspace-binder-row"_s, payload.toUtf8());
        const auto actions = Qt::MoveAction;
        QDragEnterEvent enter(position, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(tree->viewport(), &enter);
        if (!enter.isAccepted())
            return false;
        QDragMoveEvent move(position, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(tree->viewport(), &move);
        QDropEvent event(position, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(tree->viewport(), &event);
        return event.isAccepted();
    }
    bool drop(const BinderRowID& row, const BinderRowID& target, int y)
    {
        const QRect rect = rectOf(target);
        return drop(BinderDragPayload::text(row), {rect.center().x(), rect.top() + y});
    }

    QMenu* menuAt(const QPoint& position)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, position,
                                tree->viewport()->mapToGlobal(position));
        QApplication::sendEvent(tree->viewport(), &event);
        QApplication::processEvents();
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    static QStringList itemsOf(const QMenu& menu)
    {
        QStringList items;
        for (const QAction* action : menu.actions()) {
            if (!action->isSeparator())
                items.append(action->text());
        }
        return items;
    }
    static void choose(QMenu& menu, const QString& item)
    {
        for (QAction* action : menu.actions()) {
            if (action->text() == item)
                action->trigger();
        }
        menu.close();
        QApplication::processEvents();
    }

    QUuid full;
    QUuid empty;
    QUuid loose;
    QList<QUuid> notes;
    BinderTreeView* tree = nullptr;
};

TEST_F(BinderViewTest, RowsHaveTheHeightsThatDropsDependOn)
{
    EXPECT_EQ(rectOf(folder(full)).height(), 48);
    EXPECT_EQ(rectOf(note(notes[0])).height(), 40);
    EXPECT_EQ(shown(), (QStringList{u"Full"_s, u"Alpha"_s, u"Beta"_s, u"Gamma"_s, u"Empty"_s,
                                    u"Loose"_s, u"Trash"_s}));
}

TEST_F(BinderViewTest, DroppedRowsGoWhereTheGuideSaid)
{
    EXPECT_TRUE(drop(note(loose), note(notes[1]), 5));
    EXPECT_EQ(shown().mid(0, 5),
              (QStringList{u"Full"_s, u"Alpha"_s, u"Loose"_s, u"Beta"_s, u"Gamma"_s}));
    EXPECT_TRUE(drop(note(loose), folder(empty), 24));
    EXPECT_EQ(state().note(loose)->folderID, empty);
    EXPECT_TRUE(drop(folder(empty), folder(full), 3));
    EXPECT_EQ(shown().first(), u"Empty"_s);
    EXPECT_TRUE(drop(folder(empty), folder(full), 24));
    EXPECT_EQ(state().folder(empty)->parentFolderID, full);
    EXPECT_FALSE(drop(folder(full), folder(empty), 24));
    EXPECT_FALSE(drop(folder(empty), note(notes[0]), 24));
    const int below = rectOf(folder(FolderRecord::trashFolderID)).top() - 20;
    EXPECT_TRUE(drop(BinderDragPayload::text(folder(empty)), {50, below}));
    EXPECT_FALSE(state().folder(empty)->parentFolderID);
    EXPECT_TRUE(drop(note(notes[2]), folder(FolderRecord::trashFolderID), 20));
    EXPECT_EQ(state().notesInTrash().size(), 1);
    EXPECT_FALSE(drop(u"folder:nonsense"_s, {50, 20}));
}

TEST_F(BinderViewTest, TheTrashStandsAtTheFootWhileThereIsRoom)
{
    const auto trash = [&] {
        TourHand::settle();
        return rectOf(folder(FolderRecord::trashFolderID));
    };
    const int foot = tree->viewport()->height() - 1;
    EXPECT_EQ(trash().height(), 48);
    EXPECT_EQ(trash().bottom(), foot);
    state().moveNoteToTrash(notes[0]);
    EXPECT_EQ(trash().bottom(), foot - 40) << "what is in it stands below it";
    state().toggleExpanded(FolderRecord::trashFolderID);
    EXPECT_EQ(trash().bottom(), foot);
    const auto selected = state().selection().selectedBinderRowID();
    m_hand->click(*tree->viewport(), {50, trash().top() - 30});
    EXPECT_EQ(state().selection().selectedBinderRowID(), selected) << "the room above it is no row";
    m_hand->click(*tree->viewport(), trash().center());
    EXPECT_EQ(state().selection().selectedFolderID(), FolderRecord::trashFolderID);

    state().selection().selectFolder(full);
    for (int i = 0; i < 40; ++i)
        state().createNote(u"Note %1"_s.arg(i), {});
    TourHand::settle();
    tree->scrollToTop();
    EXPECT_EQ(tree->gapAboveTrash(), 0);
    EXPECT_GT(trash().top(), foot);
    tree->scrollToBottom();
    EXPECT_EQ(trash().bottom(), foot);
}

TEST_F(BinderViewTest, FilesFromElsewhereAreRefused)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(u"/tmp/paper.pdf"_s)});
    QDragEnterEvent enter({50, 20}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree->viewport(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(BinderViewTest, RenamesInPlace)
{
    m_hand->press(Qt::Key_F2);
    auto* field = tree->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->selectedText(), u"Alpha"_s);
    m_hand->type(u"Omega"_s);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(state().note(notes[0])->title, u"Omega"_s);
    m_hand->press(Qt::Key_F2);
    m_hand->type(u"never"_s);
    m_hand->press(Qt::Key_Escape);
    EXPECT_EQ(state().note(notes[0])->title, u"Omega"_s);
    state().updateNoteBinderTitle(notes[1], u"Beta"_s, Blob("{\\rtf1 \\b Beta}"));
    state().selection().selectNote(notes[1]);
    m_hand->press(Qt::Key_F2);
    m_hand->press(Qt::Key_Return); // the same title leaves the rich one
    EXPECT_TRUE(state().note(notes[1])->titleRTF);
}

TEST_F(BinderViewTest, MenusOfferWhatTheRowCanDo)
{
    QMenu* menu = menuAt(rectOf(note(notes[0])).center());
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(itemsOf(*menu).contains(u"Move to Trash"_s));
    choose(*menu, u"Duplicate"_s);
    EXPECT_EQ(shown().mid(1, 2), (QStringList{u"Alpha"_s, u"Alpha Copy"_s}));
    menu = menuAt(rectOf(note(notes[1])).center());
    choose(*menu, u"Copy Link to Note"_s);
    EXPECT_EQ(InternalNoteLink::noteID(QGuiApplication::clipboard()->text()), notes[1]);
    menu = menuAt(rectOf(note(notes[1])).center());
    choose(*menu, u"Pin"_s);
    EXPECT_TRUE(indexOf(note(notes[1])).data(BinderModel::IsPinnedRole).toBool());

    menu = menuAt(rectOf(folder(FolderRecord::trashFolderID)).center());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(itemsOf(*menu), QStringList{u"Empty Trash…"_s});
    EXPECT_FALSE(menu->actions().first()->isEnabled());
    menu->close();
    menu = menuAt({50, rectOf(folder(FolderRecord::trashFolderID)).top() - 2});
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(itemsOf(*menu), (QStringList{u"New Note"_s, u"New Folder…"_s, u"Sort Notes"_s}));
    menu->close();
}

TEST_F(BinderViewTest, DeleteGoesToTheTrashAndAsksOnlyForGood)
{
    state().selection().selectNote(notes[1]);
    tree->setFocus();
    m_hand->press(Qt::Key_Delete);
    EXPECT_EQ(state().notesInTrash().size(), 1);
    EXPECT_EQ(state().selection().selectedNoteID(), notes[2]);

    state().selection().selectNote(notes[1]);
    tree->setFocus();
    EXPECT_TRUE(answering([&] { m_hand->press(Qt::Key_Delete); }, [] {}));
    EXPECT_TRUE(state().note(notes[1]));
    EXPECT_TRUE(
        answering([&] { m_hand->press(Qt::Key_Delete); }, [&] { press(u"Delete Permanently"_s); }));
    EXPECT_FALSE(state().note(notes[1]));

    state().selection().selectFolder(empty); // nothing in it, nothing to ask
    tree->setFocus();
    m_hand->press(Qt::Key_Delete);
    EXPECT_FALSE(state().folder(empty));
    state().selection().selectFolder(full);
    tree->setFocus();
    EXPECT_TRUE(
        answering([&] { m_hand->press(Qt::Key_Delete); }, [&] { press(u"Delete Folder"_s); }));
    EXPECT_FALSE(state().folder(full));
    EXPECT_EQ(state().notesInTrash().size(), 2);
}

TEST_F(BinderViewTest, SortingAndTagFilterChangeOnlyWhatIsShown)
{
    const BinderOrder before = state().order();
    state().setBinderSortOrder(BinderSortOrder::AlphabeticalZA);
    EXPECT_EQ(shown().mid(1, 3), (QStringList{u"Gamma"_s, u"Beta"_s, u"Alpha"_s}));
    state().updateNoteBinderTitle(notes[0], u"Zeta"_s, {});
    EXPECT_EQ(shown().mid(1, 3), (QStringList{u"Zeta"_s, u"Gamma"_s, u"Beta"_s}));
    state().setBinderSortOrder(BinderSortOrder::Custom);
    EXPECT_EQ(shown().mid(1, 3), (QStringList{u"Zeta"_s, u"Beta"_s, u"Gamma"_s}));
    EXPECT_EQ(state().order(), before);

    state().addTagToNote(notes[2], u"tide"_s);
    state().addTagToNote(loose, u"tide"_s);
    state().toggleTagFilter(u"tide"_s);
    QApplication::processEvents();
    EXPECT_EQ(shown().size(), 2);
    if (qEnvironmentVariableIsSet("ORVANE_GRABS"))
        window().grab().save(qEnvironmentVariable("ORVANE_GRABS") + u"/binder-tags.png"_s);
    state().updateNoteTags(loose, {});
    EXPECT_EQ(shown(), QStringList{u"Gamma"_s});
    press(u"Stop filtering for “tide”"_s);
    EXPECT_EQ(shown().size(), 7);
}

TEST_F(BinderViewTest, TheTableOfKeysKnowsEachThatTheBinderTakes)
{
    const QSignalBlocker asksForNothing(tree);
    forEachKey([&](const ShortcutData& pressed) {
        tree->setCurrentIndex(indexOf(note(notes[1])));
        const bool isKnown = std::ranges::any_of(keyTable(), [&](const KeyRow& row) {
            return row.place != KeyPlace::Text && row.isFor(pressed);
        });
        // Not all act on every row: there is nothing to expand in a note.
        EXPECT_TRUE(isKnown || !takesKey(*tree, pressed)) << qPrintable(pressed.desktopText());
    });
}

TEST_F(BinderViewTest, TheTableOfKeysKnowsEachThatTheWindowTakes)
{
    const auto check = [](const QKeySequence& keys) {
        ASSERT_EQ(keys.count(), 1);
        const QKeyCombination key = keys[0];
        constexpr quint16 keypadPlus = 69; // of all keys the one that has a place there alone
        const ShortcutData pressed{codeOfKey(key.key()).value_or(keypadPlus),
                                   modifierFlagsOf(key.keyboardModifiers())};
        EXPECT_TRUE(keyRowFor(pressed, KeyPlace::Window) || keyRowFor(pressed, KeyPlace::Text) ||
                    keyRowFor(pressed, KeyPlace::Always))
            << qPrintable(keys.toString());
    };
    int found = 0;
    for (const QShortcut* shortcut : window().findChildren<QShortcut*>()) {
        for (const QKeySequence& keys : shortcut->keys())
            check(keys);
        ++found;
    }
    for (const QAction* action : window().findChildren<QAction*>()) {
        for (const QKeySequence& keys : action->shortcuts())
            check(keys);
        found += int(action->shortcuts().size());
    }
    EXPECT_GT(found, 10);
}

TEST_F(BinderViewTest, GlassShowsTheBackdropThroughTheWholePane)
{
    defaults().set(u"settings.appearance.windowBackdrop.useGradient"_s, true);
    defaults().set(u"settings.appearance.orvane.enabled"_s, true);
    defaults().set(u"settings.appearance.orvane.binder"_s, true);
    defaults().set(u"settings.appearance.orvane.opacity.binder"_s, 0.4);
    TourHand::settle();
    const QImage picture = window().grab().toImage();
    const QRect list(tree->mapTo(&window(), QPoint()), tree->size());
    const auto lightness = [&](int y) {
        return qGray(picture.pixel(list.left() + 1, y));
    };
    for (const int edge : {list.top(), list.bottom() + 1})
        EXPECT_NEAR(lightness(edge - 1), lightness(edge), 1) << edge;
    EXPECT_GT(lightness(list.top()), lightness(list.bottom()));
}

TEST_F(BinderViewTest, RowsAreSelectedTogetherAndThePageStays)
{
    const QList<BinderRowID> two{note(notes[0]), note(notes[1])};
    m_hand->press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(state().selection().rows(), two);
    EXPECT_EQ(state().selection().selectedNoteID(), notes[0]) << "the page stays";
    m_hand->press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(state().selection().rows().size(), 3);

    (void)state().setRowsPinned(state().selection().rows(), true);
    for (const QUuid& each : notes)
        EXPECT_TRUE(state().note(each)->isPinned);
    EXPECT_EQ(tree->selectionModel()->selectedIndexes().size(), 3) << "still selected";
    ASSERT_TRUE(state().undoNotebookStep());
    EXPECT_FALSE(state().note(notes[2])->isPinned) << "one step";

    (void)state().updateNoteTags(notes[0], {u"ebb"_s, u"tide"_s});
    (void)state().updateNoteTags(notes[1], {u"Tide"_s});
    (void)state().updateNoteTags(notes[2], {u"tide"_s, u"wall"_s});
    QApplication::processEvents();
    EXPECT_NE(find<QLabel>(), nullptr);
    QStringList labels;
    for (const auto* label : window().findChildren<QLabel*>()) {
        if (label->isVisible())
            labels.append(label->text());
    }
    EXPECT_TRUE(labels.contains(u"3 Selected"_s)) << qPrintable(labels.join(u'|'));

    m_hand->press(Qt::Key_Up);
    EXPECT_TRUE(state().selection().rows().isEmpty());
    EXPECT_EQ(state().selection().selectedNoteID(), notes[1]);
}

TEST_F(BinderViewTest, RowsOfTheTrashAreNotSelectedWithOthers)
{
    (void)state().moveNoteToTrash(notes[2]);
    state().toggleExpanded(FolderRecord::trashFolderID);
    state().openNote(loose);
    QApplication::processEvents();
    m_hand->press(Qt::Key_A, Qt::ControlModifier);
    for (const BinderRowID& row : state().selection().rows()) {
        EXPECT_NE(row.id, FolderRecord::trashFolderID);
        EXPECT_NE(row.id, notes[2]);
    }
    EXPECT_EQ(state().selection().rows().size(), 5) << "two folders and three notes";
    EXPECT_EQ(state().selection().selectedNoteID(), loose);
}

TEST_F(BinderViewTest, AltAndAnArrowMoveTheSelectedRows)
{
    struct Row {
        const char* name;
        QUuid selected;
        Qt::Key arrow;
        QStringList after;
    };
    const QStringList before = shown();
    ASSERT_EQ(before, (QStringList{u"Full"_s, u"Alpha"_s, u"Beta"_s, u"Gamma"_s, u"Empty"_s,
                                   u"Loose"_s, u"Trash"_s}));
    const Row rows[] = {
        {"a note down",
         notes[0],
         Qt::Key_Down,
         {u"Full"_s, u"Beta"_s, u"Alpha"_s, u"Gamma"_s, u"Empty"_s, u"Loose"_s, u"Trash"_s}},
        {"a note up",
         notes[2],
         Qt::Key_Up,
         {u"Full"_s, u"Alpha"_s, u"Gamma"_s, u"Beta"_s, u"Empty"_s, u"Loose"_s, u"Trash"_s}},
        {"the first note has nowhere to go", notes[0], Qt::Key_Up, before},
        {"a note out of its folder",
         notes[1],
         Qt::Key_Left,
         {u"Full"_s, u"Alpha"_s, u"Gamma"_s, u"Empty"_s, u"Beta"_s, u"Loose"_s, u"Trash"_s}},
        {"a note into the folder above it",
         loose,
         Qt::Key_Right,
         {u"Full"_s, u"Alpha"_s, u"Beta"_s, u"Gamma"_s, u"Empty"_s, u"Loose"_s, u"Trash"_s}},
        {"a folder up",
         empty,
         Qt::Key_Up,
         {u"Empty"_s, u"Full"_s, u"Alpha"_s, u"Beta"_s, u"Gamma"_s, u"Loose"_s, u"Trash"_s}},
        {"a folder into the one above it",
         empty,
         Qt::Key_Right,
         {u"Full"_s, u"Empty"_s, u"Alpha"_s, u"Beta"_s, u"Gamma"_s, u"Loose"_s, u"Trash"_s}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        state().selection().selectBinderRow(state().note(row.selected) ? note(row.selected)
                                                                       : folder(row.selected));
        QApplication::processEvents();
        const auto selected = state().selection().selectedBinderRowID();
        m_hand->press(row.arrow, Qt::AltModifier);
        EXPECT_EQ(shown(), row.after);
        EXPECT_EQ(state().selection().selectedBinderRowID(), selected);
        if (row.after != before || row.selected == loose) {
            ASSERT_TRUE(state().undoNotebookStep());
        }
        EXPECT_EQ(shown(), before);
    }
    EXPECT_EQ(state().note(loose)->folderID, state().projectRootContainerID());

    state().openNote(notes[0]);
    QApplication::processEvents();
    m_hand->press(Qt::Key_Down, Qt::ShiftModifier);
    m_hand->press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shown(), (QStringList{u"Full"_s, u"Gamma"_s, u"Empty"_s, u"Alpha"_s, u"Beta"_s,
                                    u"Loose"_s, u"Trash"_s}));
    EXPECT_EQ(state().selection().rows(), (QList{note(notes[0]), note(notes[1])}));
    ASSERT_TRUE(state().undoNotebookStep());
    EXPECT_EQ(shown(), before) << "both in one step";
}

TEST_F(BinderViewTest, TheRailGivesATagToAllRowsThatAreSelectedAndTakesIt)
{
    (void)state().updateNoteTags(notes[0], {u"R&D"_s});
    (void)state().updateNoteTags(notes[2], {u"tide"_s});
    m_hand->press(Qt::Key_Down, Qt::ShiftModifier);
    const auto take = [&](const QString& tag, bool wasOn) {
        press(u"Tags"_s);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(itemsOf(*menu), (QStringList{u"R&&D"_s, u"tide"_s}));
        EXPECT_EQ(menu->actions().at(tag == u"tide"_s)->isChecked(), wasOn);
        choose(*menu, tag);
    };
    take(u"R&&D"_s, false); // only one of them has it
    EXPECT_EQ(state().tagsForNote(notes[1]), QStringList{u"R&D"_s});
    take(u"tide"_s, false);
    take(u"R&&D"_s, true);
    for (const QUuid& each : {notes[0], notes[1]})
        EXPECT_EQ(state().tagsForNote(each), QStringList{u"tide"_s});
    ASSERT_TRUE(state().undoNotebookStep());
    EXPECT_EQ(state().tagsForNote(notes[0]), (QStringList{u"R&D"_s, u"tide"_s})) << "one step";
}

TEST_F(BinderViewTest, RowsAreMovedToAFolderThatIsSearchedFor)
{
    m_hand->press(Qt::Key_Down, Qt::ShiftModifier);
    QMenu* menu = menuAt(rectOf(note(notes[1])).center());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(itemsOf(*menu), (QStringList{u"Move To…"_s, u"Pin"_s, u"Move to Trash"_s}));
    choose(*menu, u"Move To…"_s);
    EXPECT_EQ(sheetTitle(), u"Move 2 notes to…"_s);
    m_hand->type(u"emp"_s);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(sheetTitle(), QString());
    EXPECT_EQ(state().note(notes[0])->folderID, empty);
    EXPECT_EQ(state().note(notes[1])->folderID, empty);

    state().openNote(notes[2]);
    QApplication::processEvents();
    menu = menuAt(rectOf(note(notes[2])).center());
    ASSERT_NE(menu, nullptr);
    choose(*menu, u"Move To…"_s);
    press(u"New Folder"_s);
    m_hand->type(u"Deeper"_s);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(sheetTitle(), QString());
    EXPECT_EQ(state().folder(state().note(notes[2])->folderID)->name, u"Deeper"_s);
    ASSERT_TRUE(state().undoNotebookStep());
    EXPECT_EQ(state().note(notes[2])->folderID, full);
    EXPECT_EQ(state().folders().size(), 3) << "made and moved in one step";
}

TEST_F(BinderViewTest, ANoteComesBackToWhereItLayOrSaysSo)
{
    (void)state().moveNoteToTrash(notes[0]);
    (void)state().moveNoteToTrash(notes[1]);
    EXPECT_TRUE(state().note(notes[0])->trashedAt);
    state().toggleExpanded(FolderRecord::trashFolderID);
    const auto restore = [this](const QUuid& id) {
        state().openNote(id);
        QApplication::processEvents();
        QMenu* menu = menuAt(rectOf(note(id)).center());
        ASSERT_NE(menu, nullptr);
        choose(*menu, u"Restore"_s);
    };
    restore(notes[0]);
    EXPECT_EQ(state().note(notes[0])->folderID, full);
    EXPECT_FALSE(state().note(notes[0])->trashedAt);
    (void)state().deleteFolder(full);
    EXPECT_TRUE(answering([&] { restore(notes[1]); },
                          [&] { EXPECT_EQ(sheetTitle(), u"Restored to the Top Level"_s); }));
    EXPECT_EQ(state().note(notes[1])->folderID, state().projectRootContainerID());
}

} // namespace
} // namespace orvane
