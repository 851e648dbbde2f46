// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/lists/CustomBulletLibrary.h"
#include "editor/lists/ListContinuationHelper.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
namespace lists = ListContinuationHelper;

CustomBullet flower()
{
    CustomBullet bullet;
    bullet.id = QUuid::createUuid();
    bullet.character = u"✿"_s;
    bullet.name = u"Flower"_s;
    bullet.setColor(RgbaColor{1, 0, 0, 1});
    return bullet;
}

/// A text written as people see it: "|" is the caret, "[" and "]" the selection, and a line that
/// begins with a number in braces belongs to a paragraph labelled as a list item of that level.
struct Written {
    AttributedString text;
    TextRange selection;
};

Written read(const QString& notation)
{
    Written written;
    const QStringList lines = notation.split(u'\n');
    qsizetype from = -1;
    qsizetype to = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QString line = lines[i];
        SharedParagraphStyle style;
        if (line.startsWith(u'{')) {
            style = lists::listParagraphStyle(EditorListStyle::disc, line[1].digitValue());
            line = line.sliced(3);
        }
        QString plain;
        for (const QChar c : line) {
            const qsizetype here = written.text.length() + plain.size();
            if (c == u'|')
                from = to = here;
            else if (c == u'[')
                from = here;
            else if (c == u']')
                to = here;
            else
                plain += c;
        }
        if (i + 1 < lines.size())
            plain += u'\n';
        AttributedString piece(plain, {}, style);
        written.text.append(piece);
        if (plain.isEmpty())
            written.text.setParagraphStyle({written.text.length(), 0}, style);
    }
    written.selection =
        TextRange::between(std::max<qsizetype>(0, from), std::max<qsizetype>(0, to));
    return written;
}

QString show(const AttributedString& text, TextRange selection)
{
    QString shown;
    text.forEachParagraph([&](TextRange range, const SharedParagraphStyle& style) {
        if (range.location > 0)
            shown += u'\n';
        if (!style->textLists.isEmpty())
            shown += u"{%1}"_s.arg(style->firstLineHeadIndent / lists::indentPerLevel);
        for (qsizetype i = range.location; i <= range.end(); ++i) {
            if (selection.isEmpty() && i == selection.location)
                shown += u'|';
            else if (!selection.isEmpty() && i == selection.location)
                shown += u'[';
            else if (!selection.isEmpty() && i == selection.end())
                shown += u']';
            if (i < range.end())
                shown += text.text()[i];
        }
    });
    return shown;
}

enum class Key { enter, tab, backTab };

std::optional<TextEdits> press(Key key, const ListText& text, TextRange selection)
{
    switch (key) {
    case Key::enter:
        return lists::handleReturn(text, selection);
    case Key::tab:
        return lists::updateListIndent(text, selection, 1);
    case Key::backTab:
        break;
    }
    return lists::updateListIndent(text, selection, -1);
}

TEST(ListContinuation, Keys)
{
    struct Row {
        const char* name;
        Key key;
        QString before;
        QString after; // empty if the key is not handled
    };
    const Row rows[] = {
        {"goes on", Key::enter, u"{0}• one|"_s, u"{0}• one\n{0}• |"_s},
        {"splits an item", Key::enter, u"{0}• one| two\nx"_s, u"{0}• one\n{0}• | two\nx"_s},
        {"hand-typed items", Key::enter, u"1. a\n2. b|"_s, u"1. a\n2. b\n{0}3. |"_s},
        {"an item in the middle counts the rest", Key::enter, u"{0}1. a|\n{0}2. b\n{0}3. c"_s,
         u"{0}1. a\n{0}2. |\n{0}3. b\n{0}4. c"_s},
        {"a caret in the marker", Key::enter, u"{0}|1. a"_s, u"{0}1. \n{0}2. |a"_s},
        {"a ticked box goes on unticked", Key::enter, u"{0}☑ done|"_s, u"{0}☑ done\n{0}☐ |"_s},
        {"a hyphen goes on as a dash", Key::enter, u"- a|"_s, u"- a\n{0}– |"_s},
        {"a bullet of one's own", Key::enter, u"{1}\t✿ a|"_s, u"{1}\t✿ a\n{1}\t✿ |"_s},
        {"roman", Key::enter, u"{0}i. a\n{0}ii. b\n{0}iii. c|"_s,
         u"{0}i. a\n{0}ii. b\n{0}iii. c\n{0}iv. |"_s},
        {"letters stay letters", Key::enter, u"{0}A. a\n{0}B. b\n{0}C. c|\n{0}D. d"_s,
         u"{0}A. a\n{0}B. b\n{0}C. c\n{0}D. |\n{0}E. d"_s},
        {"letters beyond z", Key::enter, u"{0}Y. a\n{0}Z. b|"_s, u"{0}A. a\n{0}B. b\n{0}C. |"_s},
        {"an empty item ends the list", Key::enter, u"{0}1. a\n{0}2. |\n{0}3. c"_s,
         u"{0}1. a\n|\n{0}1. c"_s},
        {"only spaces are empty", Key::enter, u"{2}\t\t•  | "_s, u" | "_s},
        {"a plain line", Key::enter, u"{0}• a\nplain|"_s, QString()},
        {"the empty line after a list", Key::enter, u"{0}• a\n|"_s, QString()},
        {"a selection", Key::enter, u"{0}• [one]"_s, QString()},
        {"an empty text", Key::enter, u"|"_s, QString()},
        {"a sentence is not counted", Key::enter, u"J. Smith\n{0}1. a|\nM. Black\n1984. A year"_s,
         u"J. Smith\n{0}1. a\n{0}2. |\nM. Black\n1984. A year"_s},
        {"a labelled list elsewhere heals", Key::enter, u"{0}• x|\n\n{0}1. a\n{0}3. b\n\n7. c"_s,
         u"{0}• x\n{0}• |\n\n{0}1. a\n{0}2. b\n\n7. c"_s},

        {"indent", Key::tab, u"{0}• one| two"_s, u"{1}\t• one| two"_s},
        {"indent makes a list of its own", Key::tab, u"{0}1. a\n{0}2. |b\n{0}3. c"_s,
         u"{0}1. a\n{1}\t1. |b\n{0}2. c"_s},
        {"a caret in the marker goes to the text", Key::tab, u"{0}|• one"_s, u"{1}\t• |one"_s},
        {"the paragraph style outranks tabs", Key::tab, u"{3}• a|"_s, u"{4}\t\t\t\t• a|"_s},
        {"a selection has no indent", Key::tab, u"{0}• [a]"_s, QString()},
        {"outdent", Key::backTab, u"{3}\t\t\t• |a"_s, u"{2}\t\t• |a"_s},
        {"outdent of the first level", Key::backTab, u"{0}1. a\n{0}2. b|cd\n{0}3. e"_s,
         u"{0}1. a\nb|cd\n{0}1. e"_s},
        {"outdent before an emoji", Key::backTab, u"{0}• |\U0001F600b"_s, u"|\U0001F600b"_s},
        {"outdent behind an emoji", Key::backTab, u"{0}• \U0001F600|\U0001F600"_s,
         u"\U0001F600|\U0001F600"_s},
        {"outdent of an item with the caret in its marker", Key::backTab, u"{0}|• one"_s,
         u"|one"_s},
    };
    const QList<CustomBullet> bullets{flower()};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Written written = read(row.before);
        const auto edits = press(row.key, ListText::of(written.text, bullets), written.selection);
        EXPECT_EQ(edits.has_value(), !row.after.isEmpty());
        if (!edits)
            continue;
        apply(*edits, written.text, {});
        EXPECT_EQ(show(written.text, edits->selection).toStdString(), row.after.toStdString());
    }
}

TEST(ListContinuation, Toggling)
{
    struct Row {
        const char* name;
        EditorListStyle style;
        QString before;
        QString after;
    };
    using enum EditorListStyle;
    const Row rows[] = {
        {"an empty line", disc, u"|"_s, u"{0}• |"_s},
        {"a caret keeps its letter", disc, u"ab|c"_s, u"{0}• ab|c"_s},
        {"several lines", decimal, u"[a\nb\nc]\nd"_s, u"[{0}1. a\n{0}2. b\n{0}3. c]\nd"_s},
        {"the line behind the selection stays", disc, u"[a\n]b"_s, u"[{0}• a\n]b"_s},
        {"off", disc, u"{0}• [a\n{1}\t• b]"_s, u"[a\nb]"_s},
        {"one line that is not decides", disc, u"[{0}• a\nb]"_s, u"[{0}• a\n{0}• b]"_s},
        {"another style keeps the level", star, u"{2}\t\t1. |a"_s, u"{2}\t\t★ |a"_s},
        {"all three letters go off", upperAlpha, u"[{0}A. a\n{0}B. b\n{0}C. c]"_s, u"[a\nb\nc]"_s},
        {"roman after letters", lowerRoman, u"{0}a. x\n{0}b. |y"_s, u"{0}a. x\n{0}ii. |y"_s},
        {"off in the middle", decimal, u"{0}1. a\n{0}2. |b\n{0}3. c"_s, u"{0}1. a\n|b\n{0}1. c"_s},
        {"what the marker hid is left alone", disc, u"{0}• |OK. Go"_s, u"|OK. Go"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QString notation = row.before;
        notation.replace(u"[{0}"_s, u"{0}["_s);
        QString expected = row.after;
        expected.replace(u"[{0}"_s, u"{0}["_s);
        Written written = read(notation);
        const TextEdits edits =
            lists::toggleList(ListText::of(written.text), written.selection, row.style);
        apply(edits, written.text, {});
        EXPECT_EQ(show(written.text, edits.selection).toStdString(), expected.toStdString());
    }
}

TEST(ListContinuation, CustomBullets)
{
    const RgbaColor green{0, 1, 0, 1};
    Written written = read(u"[a\n{1}\t• b]\nc"_s);
    TextEdits edits =
        lists::toggleCustomBullet(ListText::of(written.text), written.selection, u"❧"_s, green);
    apply(edits, written.text, {});
    EXPECT_EQ(show(written.text, {0, 0}), u"|{0}❧ a\n{1}\t❧ b\nc"_s.replace(u"|{0}"_s, u"{0}|"_s));
    QList<TextRange> colored;
    written.text.enumerate(&CharacterStyle::foreground, written.text.fullRange(),
                           [&](TextRange range, const std::optional<RgbaColor>& color) {
                               if (color == green)
                                   colored.append(range);
                           });
    EXPECT_EQ(colored, (QList<TextRange>{{0, 1}, {5, 1}}));

    edits = lists::toggleCustomBullet(ListText::of(written.text), edits.selection, u"❧"_s, green);
    apply(edits, written.text, {});
    EXPECT_EQ(written.text.text(), u"a\nb\nc"_s);

    const QList<CustomBullet> bullets{flower()};
    Written mixed = read(u"[✿ a\n• b\n{1}\t✿ c]"_s);
    apply(lists::removeAnyCustomBullet(ListText::of(mixed.text, bullets), mixed.selection),
          mixed.text, {});
    EXPECT_EQ(mixed.text.text(), u"a\n• b\nc"_s);
}

TEST(ListContinuation, Checkboxes)
{
    Written written = read(u"{0}☐ milk\n\t☑ bread"_s);
    const auto tick = [&](qsizetype position) {
        const auto edits = lists::toggleCheckbox(ListText::of(written.text), position);
        if (edits)
            apply(*edits, written.text, {});
        return edits.has_value();
    };
    EXPECT_TRUE(tick(0));
    EXPECT_FALSE(tick(1));
    EXPECT_TRUE(tick(8));
    EXPECT_FALSE(tick(written.text.length()));
    EXPECT_EQ(written.text.text(), u"☑ milk\n\t☐ bread"_s);
}

TEST(ListContinuation, CellsAndPlainText)
{
    ParagraphStyle cell;
    cell.cell = TableCellBlock{};
    AttributedString table(u"• a\n"_s, {}, cell);
    auto edits = lists::handleReturn(ListText::of(table), {3, 0});
    ASSERT_TRUE(edits);
    apply(*edits, table, {});
    EXPECT_EQ(table.text(), u"• a\u2028• \n"_s);
    edits = lists::updateListIndent(ListText::of(table), edits->selection, 1);
    ASSERT_TRUE(edits);
    apply(*edits, table, {});
    EXPECT_EQ(table.text(), u"• a\u2028\t• \n"_s);
    EXPECT_TRUE(table.paragraphStyle(0)->cell);

    AttributedString plain(u"- a"_s);
    edits = lists::handleReturn(ListText::of(plain, {}, ListForm::plain), {3, 0});
    ASSERT_TRUE(edits);
    apply(*edits, plain, {});
    EXPECT_EQ(plain, AttributedString(u"- a\n- "_s));
}

TEST(ListMarkers, AreReadInOrder)
{
    struct Row {
        const char* name;
        QString line;
        std::optional<EditorListStyle> style;
        qsizetype length = 0;
    };
    using enum EditorListStyle;
    const Row rows[] = {
        {"bullet", u"• a"_s, disc, 2},
        {"hyphen", u"- a"_s, dash, 2},
        {"ticked", u"☑ a"_s, checkbox, 2},
        {"library", u"✿ a"_s, disc, 2},
        {"no space", u"•a"_s, std::nullopt},
        {"decimal", u"12. a"_s, decimal, 4},
        {"decimal before a tab", u"1.\ta"_s, decimal, 3},
        {"one letter that is a digit", u"c. a"_s, lowerRoman, 3},
        {"m is a letter", u"m. a"_s, lowerAlpha, 3},
        {"M is lower Roman", u"M. a"_s, lowerRoman, 3},
        {"word of digits", u"MIX. a"_s, upperRoman, 5},
        {"word of letters", u"OK. a"_s, upperAlpha, 4},
        {"two lower letters", u"aa. a"_s, std::nullopt},
        {"no full stop", u"a b"_s, std::nullopt},
        {"nothing behind", u"1."_s, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto match = lists::matchedPrefix(row.line, {flower()});
        ASSERT_EQ(match.has_value(), row.style.has_value());
        if (!match)
            continue;
        EXPECT_EQ(match->style, *row.style);
        EXPECT_EQ(match->prefixLength, row.length);
    }
    for (int number : {1, 4, 9, 26, 27, 49, 702, 703, 1994, 3999}) {
        EXPECT_EQ(lists::alphaNumber(lists::alphaString(number)), number);
        EXPECT_EQ(lists::romanNumber(lists::romanString(number)), number);
    }
    EXPECT_EQ(lists::romanString(0) + lists::alphaString(0), u"IA"_s);
    EXPECT_EQ(lists::alphaString(27) + lists::romanString(1994), u"AAMCMXCIV"_s);
}

QString greekLettersOf(const QString& text)
{
    QString letters;
    for (const QChar c : text) {
        if (c.script() == QChar::Script_Greek)
            letters += c;
    }
    return letters;
}

/// Whatever the lines look like, operations change nothing but markers.
TEST(ListContinuation, RandomOperationsKeepTheWords)
{
    const QString markers[] = {u"• "_s, u"1. "_s, u"iv. "_s, u"B. "_s,  u"a. "_s,
                               u"☑ "_s, u""_s,    u""_s,     u"OK. "_s, u"\t- "_s};
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        QStringList lines;
        for (int i = 0; i < 12; ++i)
            lines.append(markers[random() % std::size(markers)] + QChar(char16_t(u'α' + i)) + u'ω');
        AttributedString text(lines.join(u'\n'));
        const QString words = greekLettersOf(text.text());
        for (int step = 0; step < 20; ++step) {
            const ListText before = ListText::of(text);
            const TextRange caret{qsizetype(random() % unsigned(text.length() + 1)), 0};
            const TextRange selection{
                caret.location, qsizetype(random() % unsigned(text.length() - caret.location + 1))};
            std::optional<TextEdits> edits;
            switch (random() % 4) {
            case 0:
                edits = lists::handleReturn(before, caret);
                break;
            case 1:
                edits = lists::updateListIndent(before, caret, random() % 2 ? 1 : -1);
                break;
            case 2:
                edits = lists::toggleList(before, selection, EditorListStyle(random() % 15));
                break;
            default:
                edits = lists::removeListMarker(before, caret.location);
            }
            if (!edits)
                continue;
            apply(*edits, text, {});
            ASSERT_EQ(greekLettersOf(text.text()), words);
            ASSERT_LE(edits->selection.end(), text.length());
        }
    }
}

TEST(ListContinuation, ALongListChangesOnlyItsLaterMarkers)
{
    AttributedString text;
    const SharedParagraphStyle style(lists::listParagraphStyle(EditorListStyle::decimal, 0));
    for (int i = 1; i <= 5000; ++i)
        text.append(u"%1. item\n"_s.arg(i), {}, style);
    const qsizetype caret = text.text().indexOf(u"2500. item"_s) + 10;
    const auto edits = lists::handleReturn(ListText::of(text), {caret, 0});
    ASSERT_TRUE(edits);
    EXPECT_EQ(edits->replacements.size(), 2501);
    EXPECT_TRUE(edits->restylings.isEmpty());
    apply(*edits, text, {});
    EXPECT_TRUE(text.text().endsWith(u"\n5001. item\n"_s));
}

TEST(CustomBulletLibrary, StoresAnnouncesAndMigrates)
{
    TestServices services;
    const CustomBullet bullet = flower();
    services.defaults.set(u"OrvaneNotes.customBulletLibrary"_s,
                          DefaultsValue(customBulletsToJson({bullet})));
    CustomBulletLibrary library(services.defaults, services.notifications);
    EXPECT_EQ(library.bullets(), QList<CustomBullet>{bullet});
    EXPECT_FALSE(services.defaults.contains(u"OrvaneNotes.customBulletLibrary"_s));

    QList<qsizetype> seen;
    const auto observation =
        services.notifications.observe(customBulletLibraryDidChange, [&](const NoPayload&) {
            seen.append(library.bullets().size());
        });
    library.setBullets({});
    library.setBullets({bullet});
    EXPECT_EQ(seen, (QList<qsizetype>{0, 1}));

    services.defaults.set(u"OrvaneWorkspace.customBulletLibrary"_s,
                          DefaultsValue(QByteArray("[{\"id\":1}]")));
    EXPECT_EQ(library.bullets(), QList<CustomBullet>{bullet});
}

} // namespace
} // namespace orvane
