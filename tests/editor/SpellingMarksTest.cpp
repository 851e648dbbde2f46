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
        EditorLook look = view.look();
        look.misspelling = Qt::red;
        view.setLook(look);
        marks->setNote(note);
        QSignalSpy ready(spelling->checkerFor(note), &SpellChecker::changed);
        EXPECT_TRUE(spelling->checkerFor(note)->isReady() || ready.wait());
    }
    void write(const QString& name, const QByteArray& bytes)
    {
        EXPECT_TRUE(writeFileAtomically(folder.filePath(name), bytes));
    }

    /// Whether the word at `position` gets a mark under it.
    bool isMarked(qsizetype position)
    {
        return QTest::qWaitFor([&] { return showsMark(position); }, 400);
    }
    /// Whether it has one now.
    bool showsMark(qsizetype position)
    {
        const QImage image = picture();
        const QPoint at = pointOf(position);
        for (int y = at.y(); y < at.y() + 16; ++y) {
            for (int x = at.x() - 4; x < at.x() + 4; ++x) {
                const QColor color = image.pixelColor(x, y);
                if (color.red() - std::max(color.green(), color.blue()) > 60)
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
    EXPECT_TRUE(isMarked(8));
    EXPECT_FALSE(showsMark(2));
    type(u" thhe"_s);
    EXPECT_TRUE(showsMark(8)) << "marks stay while one types";
    EXPECT_FALSE(isMarked(14));
    type(u" "_s);
    EXPECT_TRUE(isMarked(14));
    EXPECT_EQ(view.store().attributedText(), AttributedString(u"hello wrold thhe "_s));

    marks->setCodeSource([](const QTextBlock&) { return QList<TextRange>{{6, 5}}; });
    EXPECT_FALSE(showsMark(8));
    EXPECT_TRUE(isMarked(14));
    spelling->setEnabled(false);
    EXPECT_FALSE(showsMark(14));
}

TEST_F(SpellingMarksTest, MarksGoAlongWithTheirWordsUntilTheTextIsChecked)
{
    set(u"|hello wrold wrold\nwrold"_s);
    EXPECT_TRUE(isMarked(8) && isMarked(14) && isMarked(20));
    type(u"the "_s);
    EXPECT_TRUE(showsMark(12) && showsMark(18) && showsMark(24));
    EXPECT_FALSE(showsMark(6));
    view.setSelection(TextSelection::caret(12));
    type(u"x"_s);
    EXPECT_FALSE(showsMark(12)) << "the word has been changed";
    EXPECT_TRUE(showsMark(19));
    view.undo();
    EXPECT_TRUE(isMarked(12));
    set(u"|world world wrold"_s);
    EXPECT_TRUE(isMarked(14));
    EXPECT_FALSE(showsMark(8)) << "no mark of another text";
}

TEST_F(SpellingMarksTest, ALongParagraphIsCheckedByPieces)
{
    const QString line = u"hello world the "_s;
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view.setPlainText(line.repeated(2'000) + u"wrold "_s + line.repeated(2'000));
    const QTextBlock block = view.store().blockAt(0);
    qsizetype end = 0;
    for (const TextRange piece : spellingPieces(view.store(), block, view.store().fullRange())) {
        EXPECT_EQ(piece.location, end);
        EXPECT_LE(piece.length, spellingPieceLength + 16);
        end = piece.end();
        EXPECT_TRUE(end == view.store().length() || view.store().characterAt(end) == u' ');
    }
    EXPECT_EQ(end, view.store().length());
    const qsizetype word = line.size() * 2'000;
    EXPECT_EQ(marks->misspellingsIn({word + 2, 0}), (QList<TextRange>{{word, 5}}));
    view.setSelection(TextSelection::caret(word));
    view.ensureCaretVisible();
    EXPECT_TRUE(isMarked(word + 2));
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
    EXPECT_FALSE(showsMark(14));
    EXPECT_EQ(readFile(folder.filePath(u"words.txt"_s)), QByteArray("wrold\n"));

    const auto last = menuAt(2);
    const QMenu* languages = action(*last, u"Spelling"_s)->menu();
    EXPECT_TRUE(action(*languages, u"English (United States)"_s)->isChecked());
}

} // namespace
} // namespace orvane
