// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellFixture.h"
#include "appearance/IconChoices.h"
#include "shell/binder/IconsAndTitlesWindow.h"

#include <QLineEdit>
#include <QListView>
#include <QPushButton>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using Kind = TitledItem::Kind;

class IconsAndTitlesTest : public ShellTest {
protected:
    void SetUp() override
    {
        dismissWelcome();
        start();
        m_project =
            state().projectSession().createProject(u"Tidewater"_s, u"sf:archivebox.fill"_s).value();
        state().selection().selectProjectRoot();
        m_note = state().createNote(u"Low water\nMara counts."_s, {}).value();
        state().selection().selectProjectRoot();
        m_folder = state().createFolder(u"Manuscript"_s).value();
    }
    void open(Kind kind, const QUuid& id)
    {
        m_window = IconsAndTitlesWindow::open({kind, id}, state(), m_app->look(), &window());
        ASSERT_NE(m_window, nullptr);
        ASSERT_TRUE(TourHand::waitFor([this] { return m_window->isActiveWindow(); }));
        m_keys = std::make_unique<TourHand>(*m_window);
    }
    template <typename T>
    T* part(const QString& name)
    {
        for (T* each : m_window->findChildren<T*>()) {
            if (each->accessibleName() == name || each->property("text").toString() == name)
                return each;
        }
        return nullptr;
    }

    QUuid m_project;
    QUuid m_note;
    QUuid m_folder;
    QPointer<IconsAndTitlesWindow> m_window;
    std::unique_ptr<TourHand> m_keys;
};

TEST_F(IconsAndTitlesTest, AnIconIsFoundByAWordAndChosenByTheKeyboard)
{
    open(Kind::Note, m_note);
    m_keys->type(u"travel mar\n"_s); // nothing goes by both words
    EXPECT_EQ(state().note(m_note)->iconName, std::nullopt);
    auto* search = part<QLineEdit>(u"Search icons"_s);
    search->clear();
    m_keys->type(u"ribbon\n"_s);
    EXPECT_EQ(state().note(m_note)->iconName, u"bookmark"_s);
    search->clear();
    m_keys->press(Qt::Key_Down);
    m_keys->press(Qt::Key_End);
    m_keys->press(Qt::Key_Space);
    EXPECT_EQ(state().note(m_note)->iconName, iconChoices().last().name);
    m_keys->click(*part<QPushButton>(u"Remove Icon"_s));
    EXPECT_EQ(state().note(m_note)->iconName, std::nullopt);
    m_keys->press(Qt::Key_Escape);
    EXPECT_TRUE(TourHand::waitFor([this] { return !m_window; }));
}

TEST_F(IconsAndTitlesTest, ATitleIsTakenOverAndOneWindowServesAll)
{
    open(Kind::Folder, m_folder);
    auto* title = part<QLineEdit>(u"Title"_s);
    m_keys->click(*title);
    title->selectAll();
    m_keys->type(u"Part One"_s);
    const QPointer<IconsAndTitlesWindow> first = m_window;
    open(Kind::Project, m_project); // writes what was typed first
    EXPECT_EQ(m_window, first);
    EXPECT_EQ(state().folder(m_folder)->name, u"Part One"_s);
    EXPECT_EQ(title->text(), u"Tidewater"_s);
    m_keys->click(*title);
    title->selectAll();
    m_keys->type(u"The Flats\n"_s);
    EXPECT_EQ(state().projectSession().project(m_project)->name, u"The Flats"_s);
    EXPECT_EQ(state().projectSession().project(m_project)->iconName, u"sf:archivebox.fill"_s);
}

TEST_F(IconsAndTitlesTest, AnUnknownValueStaysUntilAnotherIsChosen)
{
    state().updateFolderIcon(m_folder, u"from:another.version"_s);
    open(Kind::Folder, m_folder);
    auto* title = part<QLineEdit>(u"Title"_s);
    m_keys->click(*title);
    m_keys->type(u"x\n"_s);
    EXPECT_EQ(state().folder(m_folder)->iconName, u"from:another.version"_s);
    EXPECT_EQ(IconsAndTitlesWindow::open({Kind::Note, QUuid::createUuid()}, state(), m_app->look(),
                                         &window()),
              nullptr);
    EXPECT_TRUE(TourHand::waitFor([this] { return !m_window; }));
}

TEST_F(IconsAndTitlesTest, GoesWithItsItem)
{
    open(Kind::Folder, m_folder);
    state().deleteFolder(m_folder);
    EXPECT_TRUE(TourHand::waitFor([this] { return !m_window; }));
}

TEST(IconChoicesTest, EveryChoiceHasADrawingOfItsOwnName)
{
    QSet<QString> names;
    for (const IconChoice& choice : iconChoices()) {
        names.insert(choice.name);
        const QImage image = storedIconPixmap(choice.name, 16, Qt::black).toImage();
        bool isEmpty = true;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                isEmpty = isEmpty && qAlpha(image.pixel(x, y)) == 0;
        }
        EXPECT_FALSE(isEmpty) << qUtf8Printable(choice.name);
    }
    EXPECT_EQ(names.size(), iconChoices().size());
    EXPECT_EQ(iconChoiceName(u"sf:archivebox.fill"_s), u"archive"_s);
    EXPECT_FALSE(hasIconDrawing(u"from:another.version"_s));
}

} // namespace
} // namespace orvane
