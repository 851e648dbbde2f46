// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/find/FindSession.h"

#include "ViewFixture.h"

#include <QSignalSpy>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class FindSessionTest : public ViewFixture {
protected:
    CountingBeeper beeper;
    FindSession session{view, beeper};

    /// How many pixels of a character's line are in the marks' colour.
    int markedPixels(qsizetype position)
    {
        const QImage image = picture();
        const QPoint at = pointOf(position);
        int count = 0;
        for (int y = at.y() - 8; y < at.y() + 8; ++y)
            count += image.pixelColor(at.x(), y) == QColor(Qt::green);
        return count;
    }
};

TEST_F(FindSessionTest, FindsRoundTheText)
{
    set(u"|Tide and tide, TIDE"_s);
    session.setQuery(u"tide"_s);
    EXPECT_EQ(session.matchCount(), 3);
    EXPECT_EQ(session.selectedMatch(), 0);
    QList<qsizetype> visited;
    for (const auto direction :
         {FindDirection::forward, FindDirection::forward, FindDirection::forward,
          FindDirection::forward, FindDirection::backward}) {
        EXPECT_TRUE(session.find(direction));
        visited.append(session.selectedMatch());
    }
    EXPECT_EQ(visited, (QList<qsizetype>{1, 2, 3, 1, 3}));
    session.setQuery(u"ebb"_s);
    EXPECT_FALSE(session.find(FindDirection::forward));
    EXPECT_EQ(beeper.count, 1);
    EXPECT_EQ(view.selection(), (TextSelection{15, 19}));
}

TEST_F(FindSessionTest, ReplacesOneAndAll)
{
    CharacterStyle linked;
    linked.link = u"orvaneworkspace://note/1"_s;
    AttributedString text(u"a tide, a "_s);
    text.append(u"tide"_s, linked);
    view.gateway().load(text, {});
    session.setQuery(u"TIDE"_s);

    EXPECT_TRUE(session.replaceCurrent(u"flood"_s));
    EXPECT_EQ(marked(), u"a flood, a [tide]"_s);
    EXPECT_EQ(view.gateway().undoName(), u"Replace"_s);
    EXPECT_TRUE(session.replaceCurrent(u"flood"_s));
    EXPECT_EQ(view.plainText(), u"a flood, a flood"_s);
    EXPECT_EQ(view.store().characterStyle(12)->link, linked.link);
    EXPECT_FALSE(session.replaceCurrent(u"flood"_s));
    EXPECT_EQ(beeper.count, 1);

    session.setQuery(u"flood"_s);
    EXPECT_EQ(session.replaceAll(u"ebb and flood"_s), 2);
    EXPECT_EQ(view.plainText(), u"a ebb and flood, a ebb and flood"_s);
    EXPECT_EQ(session.matchCount(), 2);
    view.undo();
    EXPECT_EQ(view.plainText(), u"a flood, a flood"_s);

    session.setQuery(u"nothing"_s);
    view.gateway().breakUndoCoalescing();
    const QString undoName = view.gateway().undoName();
    EXPECT_EQ(session.replaceAll(u"x"_s), 0);
    EXPECT_EQ(view.gateway().undoName(), undoName);
}

TEST_F(FindSessionTest, MarksFollowTyping)
{
    set(u"|tide and tide"_s);
    EditorLook look = view.look();
    look.match = Qt::green;
    look.matchEdge = Qt::red;
    look.selectedMatch = Qt::blue;
    view.setLook(look);
    session.setQuery(u"tide"_s);
    EXPECT_GT(markedPixels(2), 4);
    EXPECT_EQ(markedPixels(6), 0);
    EXPECT_GT(markedPixels(10), 2);
    QSignalSpy changed(&session, &FindSession::matchesChanged);
    type(u"x "_s);
    EXPECT_GE(changed.size(), 2);
    EXPECT_GT(markedPixels(4), 4);
    view.setSelection(TextSelection::caret(4));
    type(u"x"_s);
    EXPECT_EQ(session.matchCount(), 1);
    EXPECT_EQ(markedPixels(3), 0);
    session.setQuery(QString());
    EXPECT_EQ(markedPixels(12), 0);
}

} // namespace
} // namespace orvane
