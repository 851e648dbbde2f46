// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellFixture.h"
#include "core/tags/TagColorPalette.h"
#include "editor/formatting/ColorPopup.h"
#include "editor/images/ImageControls.h"
#include "editor/images/ImageEditing.h"
#include "editor/images/ImagePopover.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/tables/TableEngine.h"
#include "editor/view/EditorView.h"
#include "shell/inspector/ImageSection.h"
#include "shell/inspector/InspectorView.h"
#include "shell/inspector/TableSection.h"
#include "shell/inspector/TagActions.h"
#include "shell/inspector/TagChip.h"
#include "shell/inspector/TagField.h"
#include "shell/inspector/VersionListView.h"
#include "support/Versions.h"
#include "text/attachments/AttachmentManager.h"

#include <QAccessible>
#include <QDir>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class InspectorTest : public ShellTest {
protected:
    void SetUp() override
    {
        dismissWelcome();
        start();
        ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}).has_value());
        state().selection().selectProjectRoot();
        m_other = state().createNote(u"Low water\nMara counts the posts."_s, {}).value();
        m_note = state().createNote(u"Ledger\nThe ledger was kept by four hands."_s, {}).value();
        TourHand::settle();
    }

    QStringList chips()
    {
        QStringList tags;
        for (auto* chip : window().findChildren<TagChip*>()) {
            if (chip->isVisible())
                tags.append(chip->tag());
        }
        tags.sort();
        return tags;
    }
    /// Opens the chip's menu as a person does and takes an entry, in a submenu by "A/B".
    void choose(const QString& tag, const QString& entry)
    {
        auto* chip = find<TagChip>(u"Tag "_s + tag);
        ASSERT_NE(chip, nullptr);
        m_hand->click(*chip, chip->rect().center(), Qt::RightButton);
        for (const QString& part : entry.split(u'/')) {
            QMenu* menu = nullptr;
            QAction* action = nullptr;
            ASSERT_TRUE(TourHand::waitFor([&] {
                menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                for (QAction* each : menu ? menu->actions() : QList<QAction*>()) {
                    if (each->text().startsWith(part))
                        action = each;
                }
                return action != nullptr;
            })) << qUtf8Printable(part);
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            TourHand::settle();
        }
    }
    bool says(const QString& text)
    {
        QWidget* sheet = window().sheets().topSheet();
        for (auto* label : (sheet ? sheet : &window())->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text() == text)
                return true;
        }
        return false;
    }

    QUuid m_note;
    QUuid m_other;
};

TEST_F(InspectorTest, TagsComeAndGoByTheKeyboard)
{
    state().updateNoteTags(m_other, {u"Tide"_s});
    auto* field = find<TagField>();
    m_hand->click(*field);
    m_hand->type(u"witness, harbour\n"_s);
    EXPECT_EQ(state().tagsForNote(m_note), (QStringList{u"harbour"_s, u"witness"_s}));
    m_hand->type(u"tide\n"_s); // as it is spelt already
    EXPECT_EQ(chips(), (QStringList{u"Tide"_s, u"harbour"_s, u"witness"_s}));
    m_hand->type(u"TIDE\n"_s);
    EXPECT_EQ(state().tagsForNote(m_note).size(), 3);
    // The list of completions takes the activation with it here.
    window().activateWindow();
    ASSERT_TRUE(TourHand::waitFor([this] { return window().isActiveWindow(); }));

    m_hand->press(Qt::Key_Backspace); // to the last chip, then removes it
    EXPECT_EQ(state().tagsForNote(m_note).size(), 3);
    m_hand->press(Qt::Key_Backspace);
    EXPECT_EQ(chips(), (QStringList{u"Tide"_s, u"harbour"_s}));
    EXPECT_TRUE(field->hasFocus());
    m_hand->press(Qt::Key_Left);
    m_hand->press(Qt::Key_Left);
    m_hand->press(Qt::Key_Delete);
    EXPECT_EQ(state().tagsForNote(m_note), QStringList{u"Tide"_s});

    state().selection().selectNote(m_other);
    m_hand->type({});
    EXPECT_EQ(chips(), QStringList{u"Tide"_s});
    choose(u"Tide"_s, u"Remove from This Note"_s);
    EXPECT_EQ(chips(), QStringList());
}

TEST_F(InspectorTest, CompletesFromTheTagsOfTheProject)
{
    state().updateNoteTags(m_other, {u"tide"_s, u"witness"_s});
    m_hand->click(*find<TagField>());
    m_hand->type(u"tn"_s);
    m_hand->press(Qt::Key_Down);
    m_hand->press(Qt::Key_Return);
    EXPECT_TRUE(TourHand::waitFor([&] { return chips() == QStringList{u"witness"_s}; }));
}

TEST_F(InspectorTest, ATagIsChangedEverywhereAfterItsReachIsTold)
{
    state().updateNoteTags(m_note, {u"tide"_s, u"witness"_s});
    state().updateNoteTags(m_other, {u"tide"_s});
    const QUuid folder = state().createFolder(u"Manuscript"_s).value();
    state().updateFolderTags(folder, {u"tide"_s});
    state().selection().selectNote(m_note);
    EXPECT_EQ(inWords(tagReach(state(), u"TIDE"_s)), u"2 notes and 1 folder"_s);

    choose(u"tide"_s, u"Rename Everywhere"_s);
    EXPECT_TRUE(says(u"It changes on 2 notes and 1 folder."_s));
    m_hand->type(u"TIDE"_s);
    press(u"Rename"_s);
    EXPECT_EQ(sheetTitle(), u"Rename “tide” Everywhere"_s); // the same tag: stays open
    m_hand->press(Qt::Key_A, Qt::ControlModifier);
    m_hand->type(u"flood"_s);
    press(u"Rename"_s);
    EXPECT_EQ(sheetTitle(), QString());
    EXPECT_EQ(chips(), (QStringList{u"flood"_s, u"witness"_s}));
    EXPECT_EQ(state().folder(folder)->tags, QStringList{u"flood"_s});

    choose(u"flood"_s, u"Rename Everywhere"_s);
    m_hand->type(u"witness"_s);
    EXPECT_TRUE(answering([&] { press(u"Rename"_s); }, [&] { press(u"Cancel"_s); }));
    EXPECT_EQ(tagReach(state(), u"flood"_s), (TagReach{2, 1}));
    m_hand->press(Qt::Key_Escape);

    EXPECT_TRUE(answering([&] { choose(u"flood"_s, u"Remove from Library"_s); },
                          [&] { press(u"Cancel"_s); }));
    EXPECT_EQ(tagReach(state(), u"flood"_s), (TagReach{2, 1}));
    EXPECT_TRUE(answering([&] { choose(u"flood"_s, u"Remove from Library"_s); },
                          [&] {
                              EXPECT_EQ(sheetTitle(), u"Remove “flood” from the Library?"_s);
                              press(u"Remove"_s);
                          }));
    EXPECT_EQ(tagReach(state(), u"flood"_s), TagReach{});
    EXPECT_EQ(chips(), QStringList{u"witness"_s});
}

TEST_F(InspectorTest, ATagHasAColourAndAliases)
{
    state().updateNoteTags(m_note, {u"Tide"_s});
    auto* chip = find<TagChip>(u"Tag Tide"_s);
    const auto dot = [&] {
        return chip->grab().toImage().pixel(13, TagChip::chipHeight / 2);
    };
    EXPECT_EQ(dot(), TagColorPalette::autoColor(u"tide"_s).toQColor().rgb());
    choose(u"Tide"_s, u"Colour/Violet"_s);
    EXPECT_EQ(state().tagSettings().colorHexes.value(u"tide"_s),
              toHex(TagColorPalette::colors.at(6)));
    EXPECT_NE(dot(), TagColorPalette::autoColor(u"tide"_s).toQColor().rgb());
    choose(u"Tide"_s, u"Colour/Automatic"_s);
    EXPECT_TRUE(state().tagSettings().colorHexes.isEmpty());

    choose(u"Tide"_s, u"Aliases"_s);
    EXPECT_TRUE(says(u"No aliases yet."_s));
    m_hand->type(u"flood\nebb\n"_s);
    EXPECT_EQ(state().tagSettings().aliases.value(u"tide"_s), (QStringList{u"ebb"_s, u"flood"_s}));
    auto* list = find<QListWidget>();
    ASSERT_NE(list, nullptr);
    m_hand->click(*list->viewport(), list->visualItemRect(list->item(0)).center());
    m_hand->press(Qt::Key_Delete);
    EXPECT_EQ(state().tagSettings().aliases.value(u"tide"_s), QStringList{u"flood"_s});
    m_hand->press(Qt::Key_Escape);
    EXPECT_EQ(sheetTitle(), QString());
}

TEST_F(InspectorTest, AVersionIsReadRestoredAndDeleted)
{
    press(u"Versions"_s);
    EXPECT_TRUE(says(u"No snapshots yet."_s));
    press(u"Save a Version"_s);
    ASSERT_TRUE(TourHand::waitFor([this] { return versionsOf(state(), m_note).size() == 1; }));
    EXPECT_EQ(versionsOf(state(), m_note).first().label, u"Manual Save"_s);
    NoteContent content = NoteContent::of(*state().note(m_note));
    const QString before = content.body;
    content.body = u"Ledger\nThe ledger was kept by two hands in the dark."_s;
    state().updateNote(m_note, content);
    TourHand::settle();
    EXPECT_TRUE(says(u"Select a snapshot to preview or restore."_s));
    auto* list = find<VersionListView>();
    ASSERT_NE(list, nullptr);
    const int made = int(versionsOf(state(), m_note).size());
    EXPECT_TRUE(says(made == 1 ? u"1 snapshot"_s : u"%1 snapshots"_s.arg(made)));

    list->setFocus(Qt::TabFocusReason);
    m_hand->press(Qt::Key_End);
    EXPECT_EQ(list->selectedVersion(), made - 1);
    EXPECT_TRUE(list->currentIndex()
                    .data(Qt::AccessibleTextRole)
                    .toString()
                    .contains(u"Manual Save, 8 words"_s));
    m_hand->press(Qt::Key_Return);
    auto* text = find<QTextEdit>();
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->toPlainText().contains(u"four hands.two hands in the dark."_s));
    press(u"Mark what has changed since"_s);
    EXPECT_TRUE(text->toPlainText().endsWith(before));
    press(u"Restore"_s);
    TourHand::settle();
    EXPECT_EQ(state().note(m_note)->body, before);
    EXPECT_EQ(sheetTitle(), QString());
    EXPECT_TRUE(list->model()
                    ->index(2, 0)
                    .data(Qt::AccessibleTextRole)
                    .toString()
                    .startsWith(u"Today, "_s));
    EXPECT_TRUE(list->model()
                    ->index(2, 0)
                    .data(Qt::AccessibleTextRole)
                    .toString()
                    .contains(u"Before Restore"_s));

    const int rows = list->model()->rowCount();
    m_hand->press(Qt::Key_Home);
    EXPECT_TRUE(answering([&] { m_hand->press(Qt::Key_Delete); }, [&] { press(u"Cancel"_s); }));
    EXPECT_EQ(list->model()->rowCount(), rows);
    EXPECT_TRUE(answering([&] { press(u"Delete"_s); }, [&] { press(u"Delete"_s); }));
    EXPECT_EQ(list->model()->rowCount(), rows - 1);
    EXPECT_EQ(versionsOf(state(), m_note).size(), rows - 3);
}

TEST_F(InspectorTest, TheRailsSectionIsKeptOverARestartAndHasItsCommand)
{
    const auto* details = find<QToolButton>(u"Details"_s);
    const auto* versions = find<QToolButton>(u"Versions"_s);
    ASSERT_TRUE(details && versions);
    EXPECT_TRUE(details->isChecked());
    EXPECT_EQ(find<VersionListView>(), nullptr);
    state().appendVersionSnapshot(m_note, u"Manual Save"_s);
    m_hand->press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    m_hand->type(u"show versions\n"_s);
    ASSERT_NE(find<VersionListView>(), nullptr);
    EXPECT_TRUE(find<VersionListView>()->hasFocus());
    EXPECT_TRUE(versions->isChecked());
    EXPECT_EQ(find<TagField>(), nullptr);
    state().selection().selectNote(m_other);
    TourHand::settle();
    EXPECT_TRUE(says(u"No snapshots yet."_s));

    const QUuid project = state().projectSession().currentProject()->id;
    quit();
    start();
    state().projectSession().openProject(project, false);
    state().selection().selectNote(m_note);
    TourHand::settle();
    ASSERT_NE(find<VersionListView>(), nullptr);
    press(u"Details"_s);
    EXPECT_NE(find<TagField>(), nullptr);
}

TEST_F(InspectorTest, SaysWhenVersionsCantBeReadAndRestoresNothingThen)
{
    const QString path =
        VersionFiles::filePath(state().projectSession().currentProject()->rootPath, m_note);
    ASSERT_TRUE(state().appendVersionSnapshot(m_note, u"Manual Save"_s));
    NoteContent content = NoteContent::of(*state().note(m_note));
    content.body = u"other words"_s;
    state().updateNote(m_note, content);
    TourHand::settle();
    press(u"Versions"_s);
    find<VersionListView>()->setFocus(Qt::TabFocusReason);
    // What a failing disk is to a file, a folder in its place is for good.
    ASSERT_TRUE(QFile::rename(path, path + u".whole"_s));
    ASSERT_TRUE(QDir().mkdir(path));
    QString told;
    EXPECT_TRUE(answering([&] { press(u"Restore"_s); },
                          [&] {
                              told = sheetTitle();
                              press(u"OK"_s);
                          }));
    EXPECT_EQ(told, u"The Version Can't Be Read"_s);
    EXPECT_EQ(state().note(m_note)->body, u"other words"_s);
    QTimer ok;
    bool saidWhy = false;
    QObject::connect(&ok, &QTimer::timeout, &ok, [&] {
        if (sheetTitle() != u"The Snapshot Was Not Deleted"_s)
            return;
        saidWhy = true;
        ok.stop();
        press(u"OK"_s);
    });
    ok.start(5);
    EXPECT_TRUE(answering([&] { press(u"Delete"_s); }, [&] { press(u"Delete"_s); }));
    EXPECT_TRUE(saidWhy);

    const auto reload = [&] {
        state().selection().selectNote(m_other);
        TourHand::settle();
        EXPECT_TRUE(says(u"No snapshots yet."_s));
        state().selection().selectNote(m_note);
        TourHand::settle();
        EXPECT_FALSE(says(u"No snapshots yet."_s));
    };
    reload();
    EXPECT_TRUE(says(u"The snapshots of this note can't be read at the moment. Nothing is changed "
                     "in their file."_s));
    ASSERT_TRUE(QDir().rmdir(path));
    ASSERT_TRUE(writeFileAtomically(path, "[{"));
    reload();
    EXPECT_TRUE(says(u"The snapshots of this note are damaged. Their file stays as it is and is "
                     "set aside when the next snapshot is kept."_s));
    ASSERT_TRUE(QFile::remove(path) && QFile::rename(path + u".whole"_s, path));
    reload();
    EXPECT_TRUE(says(u"Select a snapshot to preview or restore."_s));
}

TEST_F(InspectorTest, AHundredTagsAreShownAtATime)
{
    QStringList tags;
    for (int i = 0; i < 230; ++i)
        tags.append(u"tag %1"_s.arg(i, 3, 10, QLatin1Char('0')));
    state().updateNoteTags(m_note, tags);
    TourHand::settle();
    EXPECT_EQ(chips(), tags.first(100));
    button(u"130 more"_s)->setFocus(Qt::TabFocusReason); // which scrolls it into sight
    TourHand::settle();
    m_hand->press(Qt::Key_Space);
    EXPECT_EQ(chips(), tags.first(200));
    EXPECT_TRUE(find<TagChip>(u"Tag tag 100"_s)->hasFocus());
    m_hand->press(Qt::Key_Delete);
    EXPECT_EQ(state().tagsForNote(m_note).size(), 229);
    EXPECT_EQ(chips().size(), 200);
    button(u"29 more"_s)->setFocus(Qt::TabFocusReason);
    TourHand::settle();
    m_hand->press(Qt::Key_Space);
    EXPECT_EQ(chips().size(), 229);
    state().selection().selectNote(m_other);
    state().selection().selectNote(m_note);
    TourHand::settle();
    EXPECT_EQ(chips().size(), 100);
}

TEST_F(InspectorTest, MoreTagsThanAMenuHoldsAreFoundInASheet)
{
    const auto openMenu = [&]() -> QMenu* {
        press(u"Filter by Tag"_s);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    };
    QStringList tags;
    for (int i = 0; i < 60; ++i)
        tags.append(u"tag %1"_s.arg(i, 2, 10, QLatin1Char('0')));
    state().updateNoteTags(m_note, tags.first(40));
    QMenu* menu = openMenu();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().size(), 40);
    EXPECT_EQ(menu->actions().first()->text(), u"tag 00  (1)"_s);
    menu->close();
    state().updateNoteTags(m_other, tags.sliced(40));
    menu = openMenu();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().last()->text(), u"Find a Tag…"_s);
    menu->actions().last()->trigger();
    menu->close();
    EXPECT_EQ(sheetTitle(), u"Filter by Tag"_s);
    auto* list = find<QListView>();
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->model()->rowCount(), 60);
    m_hand->type(u"g 5"_s);
    EXPECT_EQ(list->model()->rowCount(), 10);
    m_hand->press(Qt::Key_Down);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(state().activeTagFilter(), QSet<QString>{u"tag 51"_s});
    EXPECT_EQ(list->currentIndex().data(Qt::CheckStateRole), Qt::Checked);
    EXPECT_EQ(state().tagFilteredNotes().size(), 1);
    press(u"Done"_s);
    menu = openMenu();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_EQ(menu->actions().first()->text(), u"tag 51  (1)"_s);
    EXPECT_TRUE(menu->actions().first()->isChecked());
    menu->close();
}

TEST_F(InspectorTest, AFolderHasTagsAndTheTrashACount)
{
    const QUuid folder = state().createFolder(u"Manuscript"_s).value();
    state().selection().selectFolder(folder);
    m_hand->click(*find<TagField>());
    m_hand->type(u"part one\n"_s);
    EXPECT_EQ(state().folder(folder)->tags, QStringList{u"part one"_s});
    EXPECT_EQ(find<VersionListView>(), nullptr);
    state().moveNoteToTrash(m_other);
    state().selection().selectFolder(FolderRecord::trashFolderID);
    TourHand::settle();
    EXPECT_EQ(find<TagField>(), nullptr);
    press(u"Versions"_s);
    EXPECT_EQ(button(u"Save a Version"_s), nullptr) << "there is no note";
    state().selection().selectNote(m_note);
    EXPECT_TRUE(button(u"Save a Version"_s));
    state().selection().selectNote(m_other);
    EXPECT_EQ(button(u"Save a Version"_s), nullptr) << "it can't be changed";
    press(u"Details"_s);
    state().selection().selectFolder(FolderRecord::trashFolderID);
    TourHand::settle();
    const QLabel* name = nullptr;
    for (const auto* label : window().findChildren<QLabel*>()) {
        if (label->isVisible() && label->text() == u"Notes"_s && label->buddy())
            name = label;
    }
    ASSERT_NE(name, nullptr);
    const auto* count = static_cast<const QLabel*>(name->buddy());
    EXPECT_EQ(count->text(), u"1"_s);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(name->buddy())->text(QAccessible::Name), u"1"_s)
        << "the value is read, its label stands beside it";
}

TEST(VersionRowsTest, SayWhenAndHowMuch)
{
    const auto at = [](int year, int month, int day, int hour, int minute) {
        return Timestamp{QDateTime(QDate(year, month, day), QTime(hour, minute), Qt::LocalTime)
                             .toMSecsSinceEpoch()};
    };
    const auto version = [&](Timestamp when, int words, const std::optional<QString>& label) {
        NoteVersionSummary version;
        version.capturedAt = when;
        version.wordCount = words;
        version.label = label;
        return version;
    };
    using enum VersionRow::Kind;
    const QList<VersionRow> expected{
        {Now, u"Now"_s, u"2,011 words"_s, {}, -1},
        {Day, u"Today"_s, {}, {}, -1},
        {Version, u"14:02"_s, u"1,964 words"_s, u"47 fewer"_s, 0},
        {Version, u"00:00"_s, u"Manual Save, 1,964 words"_s, {}, 1},
        {Day, u"Yesterday"_s, {}, {}, -1},
        {Version, u"23:59"_s, u"2,000 words"_s, u"36 more"_s, 2},
        {Day, u"2 November"_s, {}, {}, -1},
        {Version, u"22:15"_s, u"3 words"_s, u"1,997 fewer"_s, 3},
        {Day, u"2 November 2025"_s, {}, {}, -1},
        {Version, u"22:15"_s, u"1 word"_s, u"2 fewer"_s, 4},
    };
    EXPECT_EQ(versionRows({version(at(2026, 11, 21, 14, 2), 1964, std::nullopt),
                           version(at(2026, 11, 21, 0, 0), 1964, u"Manual Save"_s),
                           version(at(2026, 11, 20, 23, 59), 2000, std::nullopt),
                           version(at(2026, 11, 2, 22, 15), 3, QString()),
                           version(at(2025, 11, 2, 22, 15), 1, std::nullopt)},
                          2011, at(2026, 11, 21, 23, 0)),
              expected);
}

TEST_F(InspectorTest, TheImageThatIsSelectedIsToldAndChanged)
{
    EditorPaneView& pane = window().editorPane();
    EditorView& view = pane.textView();
    pane.session().setMode(EditorMode::richText);
    pane.focusText();
    const auto section = [this] {
        TourHand::settle();
        return find<ImageSection>();
    };
    QImage picture(900, 600, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    view.setSelection(TextSelection::caret(0));
    ASSERT_TRUE(ImageEditing::insert(view.gateway(),
                                     {{*AttachmentManager::pngData(picture), {900, 600}, {}}}));
    const auto image = [&] {
        return ImageEditing::imageAt(view.store(), 0);
    };
    EXPECT_FALSE(section()) << "none is selected";
    view.setSelection({0, 1});
    ASSERT_TRUE(section());
    for (const QString& told : {u"Image"_s, u"In Line with Text"_s, u"440 × 293"_s, u"900 × 600"_s})
        EXPECT_TRUE(says(told)) << qUtf8Printable(told);
    // By the keyboard its controls stand here; a click on the image brings them there.
    auto* controls = section()->findChild<ImageControls*>();
    ASSERT_TRUE(controls->isVisible());
    const auto pressIn = [&](const QString& name) {
        for (auto* each : controls->findChildren<QAbstractButton*>()) {
            if (each->text() == name || each->accessibleName() == name)
                return m_hand->click(*each);
        }
        ADD_FAILURE() << qUtf8Printable(name);
    };
    pressIn(u"Behind Text"_s);
    EXPECT_EQ(image()->wrapMode, OrvaneNoteImageWrapMode::behindText);
    EXPECT_TRUE(section() && says(u"Behind Text"_s));
    pressIn(u"In Line with Text"_s);
    auto* width = controls->findChildren<QDoubleSpinBox*>().first();
    width->setValue(300);
    EXPECT_EQ(image()->renderedSize, QSizeF(300, 200));
    pressIn(u"Reset"_s);
    EXPECT_NEAR(image()->renderedSize.width(), 440, 0.1);
    const QPointF middle = view.toViewport(view.layout().objectRect(0)).center();
    m_hand->click(*view.viewport(), middle.toPoint());
    ASSERT_TRUE(section());
    EXPECT_FALSE(controls->isVisible());
    ASSERT_TRUE(find<ImagePopover>());
    m_hand->press(Qt::Key_Escape);
    EXPECT_FALSE(section());
    EXPECT_FALSE(find<ImagePopover>());
    view.setSelection({0, 1});
    state().selection().selectNote(m_other);
    EXPECT_FALSE(section()) << "of another note";
}

TEST_F(InspectorTest, TheTableOfTheCaretIsToldAndFilled)
{
    EditorPaneView& pane = window().editorPane();
    EditorView& view = pane.textView();
    pane.session().setMode(EditorMode::richText);
    pane.focusText();
    const auto section = [this] {
        TourHand::settle();
        return find<TableSection>();
    };
    EXPECT_FALSE(section());
    state().services().notifications.post(TableCommands::insertOfSize, TableSize{3, 4, {}});
    ASSERT_TRUE(section());
    EXPECT_TRUE(says(u"1 cell"_s));
    state().services().notifications.post(TableCommands::selectRow, {});
    TourHand::settle();
    for (const QString& told : {u"Table"_s, u"3"_s, u"4"_s, u"4 cells"_s})
        EXPECT_TRUE(says(told)) << qUtf8Printable(told);
    // The swatches open our palette, and what is chosen goes to the cells.
    const auto pressIn = [&](const QString& name) {
        for (auto* each : section()->findChildren<QAbstractButton*>()) {
            if (each->accessibleName() == name || each->text() == name)
                return m_hand->click(*each);
        }
        ADD_FAILURE() << qUtf8Printable(name);
    };
    pressIn(u"Header Fill Color"_s);
    auto* popup = qobject_cast<ColorPopup*>(QApplication::activePopupWidget());
    ASSERT_TRUE(popup);
    EXPECT_EQ(popup->windowTitle(), u"Header Fill Color");
    const auto fill = [&] {
        const auto grid = tableAt(view.store(), view.selection().position);
        return TableEngine::cellBackground(view.store(), grid->cells.first());
    };
    const auto before = fill();
    emit popup->chosen(Qt::red);
    popup->close();
    EXPECT_NE(fill(), before);
    pressIn(u"Clear Cell Fill"_s);
    EXPECT_FALSE(fill());
    // Gone with the caret, with another mode and another note.
    state().selection().selectNote(m_other);
    EXPECT_FALSE(section());
    state().selection().selectNote(m_note);
    view.setSelection(TextSelection::caret(view.plainText().indexOf(u"Header 2")));
    EXPECT_TRUE(section());
    pressIn(u"Delete Table"_s);
    EXPECT_FALSE(section());
    EXPECT_FALSE(view.plainText().contains(u"Header 2"));
}

} // namespace
} // namespace orvane
