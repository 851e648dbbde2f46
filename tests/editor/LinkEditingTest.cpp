// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/LinkEditing.h"

#include "editor/writing/LinkAddress.h"
#include "text/store/EditGateway.h"
#include "text/store/TextStore.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

TEST(LinkAddress, IsWhatCanBeOpened)
{
    struct Case {
        const char* name;
        QString typed;
        QString address; // empty for none
    };
    const QString note = u"orvaneworkspace://note/0F8FAD5B-D9CB-469F-A165-70867728950E"_s;
    const Case cases[] = {
        {"a page", u" https://example.org/a?b=c#d "_s, u"https://example.org/a?b=c#d"_s},
        {"without a scheme", u"example.org/a b"_s, u""_s},
        {"with a path", u"www.example.org/über:uns"_s, u"https://www.example.org/über:uns"_s},
        {"with a port", u"example.org:8080/x"_s, u"https://example.org:8080/x"_s},
        {"mail", u"mara@example.org"_s, u"mailto:mara@example.org"_s},
        {"mail with its scheme", u"mailto:mara@example.org"_s, u"mailto:mara@example.org"_s},
        {"a note", u"OrvaneWorkspace://note/0f8fad5b-d9cb-469f-a165-70867728950e"_s, note},
        {"a place in a note", note + u"#fn-2"_s, note + u"#fn-2"_s},
        {"a place in the same note", u" #fn-2 "_s, u"#fn-2"_s},
        {"no place", u"#"_s, u""_s},
        {"nothing", u"  "_s, u""_s},
        {"a word", u"witness"_s, u""_s},
        {"a sentence", u"No witness. None"_s, u""_s},
        {"no host", u"https://"_s, u""_s},
        {"no name", u"mailto:"_s, u""_s},
        {"a file", u"file:///etc/passwd"_s, u""_s},
        {"a script", u"javascript:alert(1)"_s, u""_s},
        {"a program's own scheme", u"vnd.tool://run"_s, u""_s},
        {"a path", u"/home/mara/notes.txt"_s, u""_s},
    };
    for (const Case& one : cases)
        EXPECT_EQ(linkAddress(one.typed).value_or(QString()).toStdString(),
                  one.address.toStdString())
            << one.name;
}

/// "see the survey here", with a link on "the survey" of which "the" is bold.
struct LinkEditingTest : ::testing::Test {
    const QString address = u"https://example.org"_s;
    TextStore store;
    EditGateway gateway{store};

    LinkEditingTest()
    {
        AttributedString text(u"see the survey here\nnext"_s);
        text.setAttribute(&CharacterStyle::link, address, {4, 10});
        text.setAttribute(&CharacterStyle::underline, TextLine::single, {4, 3});
        gateway.load(text, {});
    }
    LinkPlace placeAt(qsizetype anchor, qsizetype position)
    {
        gateway.setSelection({anchor, position});
        return linkPlaceAt(store, gateway.selection());
    }
    /// The text with its links as "<words|address>".
    QString told() const
    {
        QString result;
        store.attributedText().enumerate(
            &CharacterStyle::link, store.fullRange(), [&](TextRange range, const QString& link) {
                const QString words = store.text(range);
                result += link.isEmpty() ? words : u"<%1|%2>"_s.arg(words, link);
            });
        return result;
    }
};

TEST_F(LinkEditingTest, FindsTheLinkThatIsMeant)
{
    const LinkPlace whole{{4, 10}, u"the survey"_s, address};
    EXPECT_EQ(placeAt(6, 6), whole);
    EXPECT_EQ(placeAt(4, 4), whole) << "at its start";
    EXPECT_EQ(placeAt(14, 14), whole) << "and at its end";
    EXPECT_EQ(placeAt(2, 2), (LinkPlace{{2, 0}, {}, {}}));
    EXPECT_EQ(placeAt(20, 20), (LinkPlace{{20, 0}, {}, {}}));
    EXPECT_EQ(placeAt(0, 7), (LinkPlace{{0, 7}, u"see the"_s, address})) << "a selection is meant";
    EXPECT_EQ(placeAt(0, 4).range, (TextRange{0, 3})) << "without the blank behind it";
    EXPECT_EQ(placeAt(3, 4).range, (TextRange{3, 1})) << "unless it is all";
    EXPECT_FALSE(placeAt(16, 22).isOneLine());
}

TEST_F(LinkEditingTest, MakesChangesAndTakesLinksInOneStep)
{
    struct Case {
        const char* name;
        TextSelection selection;
        QString text;
        QString after;
    };
    const Case cases[] = {
        {"puts text in",
         {3, 3},
         u" ours"_s,
         u"see< ours|a:b> <the survey|https://example.org> here\nnext"_s},
        {"or the address",
         {3, 3},
         u""_s,
         u"see<a:b|a:b> <the survey|https://example.org> here\nnext"_s},
        {"links the selection",
         {15, 19},
         u"here"_s,
         u"see <the survey|https://example.org> <here|a:b>\nnext"_s},
        {"over two paragraphs",
         {15, 24},
         u""_s,
         u"see <the survey|https://example.org> <here\nnext|a:b>"_s},
        {"changes the address", {9, 9}, u"the survey"_s, u"see <the survey|a:b> here\nnext"_s},
        {"and the words", {9, 9}, u"it"_s, u"see <it|a:b> here\nnext"_s},
    };
    const AttributedString before = store.attributedText();
    for (const Case& one : cases) {
        EXPECT_TRUE(setLink(gateway, placeAt(one.selection.anchor, one.selection.position),
                            one.text, u"a:b"_s));
        EXPECT_EQ(told().toStdString(), one.after.toStdString()) << one.name;
        EXPECT_TRUE(gateway.typingStyle()->link.isEmpty() || !gateway.selection().isEmpty() ||
                    one.text == u"the survey"_s)
            << one.name << ": typing goes on without the link";
        gateway.undo();
        EXPECT_EQ(store.attributedText(), before) << one.name;
    }
    const LinkPlace place = placeAt(9, 9);
    setLink(gateway, place, place.text, u"a:b"_s);
    EXPECT_EQ(store.characterStyle(5)->underline, TextLine::single) << "words that stay keep looks";
    gateway.undo();
    EXPECT_TRUE(removeLink(gateway, place));
    EXPECT_EQ(told(), u"see the survey here\nnext"_s);
    EXPECT_EQ(gateway.undoName(), u"Remove Link"_s);
    gateway.setSelection(TextSelection::caret(0));
    gateway.type(u"Now "_s);
    EXPECT_FALSE(setLink(gateway, place, u"x"_s, u"a:b"_s)) << "the place is gone";
    EXPECT_EQ(told(), u"Now see the survey here\nnext"_s);
}

} // namespace
} // namespace orvane
