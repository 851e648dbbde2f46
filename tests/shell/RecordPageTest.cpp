// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/window/RecordPage.h"

#include "ShellFixture.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/window/NoRecordPage.h"

#include <QLabel>
#include <QTest>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class RecordPageTest : public ShellTest {
protected:
    void SetUp() override
    {
        dismissWelcome();
        start();
        ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}).has_value());
        m_note = state().createNote(u"Ledger\nThe ledger was kept by four hands."_s, {}).value();
        m_other = state().createNote(u"Low water\nMara counts the posts."_s, {}).value();
    }
    bool shows(const QString& text)
    {
        const auto labels = window().findChild<RecordPage*>()->findChildren<QLabel*>();
        return std::ranges::any_of(labels, [&](const QLabel* label) {
            return label->isVisible() && label->text() == text;
        });
    }
    void select(const std::optional<QUuid>& note)
    {
        note ? state().selection().selectNote(*note) : state().selection().selectProjectRoot();
        TourHand::settle();
    }

    QUuid m_note;
    QUuid m_other;
};

TEST_F(RecordPageTest, WithoutANoteThereIsOneButton)
{
    select(std::nullopt);
    EXPECT_TRUE(shows(u"No Note Selected"_s));
    EXPECT_TRUE(shows(u"Create a note or select one from the list."_s));
    EXPECT_EQ(button(u"Open It Anyway"_s), nullptr);
    const qsizetype before = state().notes().size();
    auto* make = window().findChild<NoRecordPage*>()->findChild<QPushButton*>();
    ASSERT_EQ(make->text(), u"New Note"_s);
    make->setFocus();
    QTest::keyClick(make, Qt::Key_Return);
    EXPECT_EQ(state().notes().size(), before + 1);
    TourHand::settle();
    EXPECT_FALSE(shows(u"No Note Selected"_s));

    select(std::nullopt);
    state().services().licence.setPolicy([] { return false; });
    state().projectSession().closeProject();
    state().projectSession().openProject(state().projectSession().projects().first().id, false);
    select(std::nullopt);
    EXPECT_TRUE(shows(u"No Note Selected"_s));
    EXPECT_FALSE(make->isVisible()) << "no note can be made";
}

TEST_F(RecordPageTest, ANoteThatEndedTheProgramIsOpenedByAPersonAlone)
{
    select(m_note);
    SessionKeys::launchDestination.write(defaults(), u"lastNote"_s);
    const auto startAgain = [this] {
        quit();
        {
            UserDefaults stored(UserFolders::below(m_home.path()).configuration +
                                u"/settings.json"_s);
            SessionKeys::writeUuids(stored, SessionKeys::slowNoteIDs, {m_note});
        }
        start();
        TourHand::settle();
    };
    startAgain();
    ASSERT_EQ(state().selection().noteHeldBack(), m_note);
    ASSERT_EQ(state().selection().selectedNoteID(), std::nullopt);
    EXPECT_TRUE(shows(u"“Ledger” took too long to show, so it wasn’t opened."_s));
    QAbstractButton* open = button(u"Open It Anyway"_s);
    ASSERT_TRUE(open);
    EXPECT_TRUE(open->focusPolicy() & Qt::TabFocus);
    open->setFocus();
    QTest::keyClick(open, Qt::Key_Space);
    EXPECT_EQ(state().selection().selectedNoteID(), m_note);
    EXPECT_EQ(state().selection().noteHeldBack(), std::nullopt);
    select(m_other);
    select(std::nullopt);
    EXPECT_TRUE(shows(u"Create a note or select one from the list."_s));

    select(m_other);
    startAgain();
    EXPECT_EQ(state().selection().selectedNoteID(), m_other) << "another note is opened as ever";
}

} // namespace
} // namespace orvane
