// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/SpellingMarks.h"

#include "ViewFixture.h"
#include "support/TestServices.h"

#include <QMenu>
#include <QSignalSpy>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class SpellingMarksTest : public ViewFixture {
protected:
    SpellingMarksTest()
    {
        write(u"en_US.aff"_s, "SET UTF-8\nTRY esianrtolcd\n");
        write(u"en_US.dic"_s, "3\nhello\nworld\nthe\n");
        spelling = std::make_unique<Spelling>(services.defaults, folder.filePath(u"words.txt"_s),
                                              QStringList{folder.path()}, u"en_US"_s);
        marks = std::make_unique<SpellingMarks>(view, *spelling);
        marks->setMarkColor(Qt::red);
        marks->setNote(note);
        QSignalSpy ready(spelling->checkerFor(note), &SpellChecker::changed);
        EXPECT_TRUE(spelling->checkerFor(note)->isReady() || ready.wait());
    }
    void write(const QString& name, const QByteArray& bytes)
    {
        EXPECT_TRUE(writeFileAtomically(folder.filePath(name), bytes));
    }

    /// Whether the word at `position` has a mark under it.
    bool isMarked(qsizetype position)
    {
        const QImage image = picture();
        const QPoint at = pointOf(position);
        for (int y = at.y(); y < at.y() + 16; ++y) {
            for (int x = at.x() - 4; x < at.x() + 4; ++x) {
                const QColor color = image.pixelColor(x, y);
                if (color.red() > 180 && color.green() < 90 && color.blue() < 90)
                    return true;
            }
        }
        return false;
    }

    std::unique_ptr<QMenu> menuAt(qsizetype position)
    {
        auto menu = std::make_unique<QMenu>();
        marks->addToContextMenu(*menu, {}, position);
        return menu;
    }
    static QAction* action(const QMenu& menu, const QString& text)
    {
        for (QAction* action : menu.actions()) {
            if (action->text() == text)
                return action;
        }
        return nullptr;
    }

    TestServices services;
    QTemporaryDir folder;
    QUuid note = QUuid::createUuid();
    std::unique_ptr<Spelling> spelling;
    std::unique_ptr<SpellingMarks> marks;
};

TEST_F(SpellingMarksTest, MarksWhatIsWrongButNotWhatIsBeingTyped)
{
    set(u"hello wrold|"_s);
    EXPECT_FALSE(isMarked(2));
    EXPECT_TRUE(isMarked(8));
    type(u" thhe"_s);
    EXPECT_TRUE(isMarked(8));
    EXPECT_FALSE(isMarked(14));
    type(u" "_s);
    EXPECT_TRUE(isMarked(14));
    EXPECT_EQ(view.store().attributedText(), AttributedString(u"hello wrold thhe "_s));

    marks->setCodeSource([](const QTextBlock&) { return QList<TextRange>{{6, 5}}; });
    EXPECT_FALSE(isMarked(8));
    EXPECT_TRUE(isMarked(14));
    spelling->setEnabled(false);
    EXPECT_FALSE(isMarked(14));
}

TEST_F(SpellingMarksTest, TheContextMenuHelps)
{
    set(u"|hello wrold wrold"_s);
    EXPECT_EQ(action(*menuAt(2), u"Learn Word"_s), nullptr);
    const auto menu = menuAt(8);
    QAction* world = action(*menu, u"world"_s);
    ASSERT_TRUE(world);
    world->trigger();
    EXPECT_EQ(view.plainText(), u"hello world wrold"_s);
    EXPECT_EQ(view.gateway().undoName(), u"Correct Spelling"_s);

    EXPECT_TRUE(isMarked(14));
    action(*menuAt(14), u"Learn Word"_s)->trigger();
    EXPECT_FALSE(isMarked(14));
    EXPECT_EQ(readFile(folder.filePath(u"words.txt"_s)), QByteArray("wrold\n"));

    const auto last = menuAt(2);
    const QMenu* languages = action(*last, u"Spelling"_s)->menu();
    EXPECT_TRUE(action(*languages, u"English (United States)"_s)->isChecked());
}

} // namespace
} // namespace orvane
