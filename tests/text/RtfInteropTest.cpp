// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/attachments/AttachmentManager.h"
#include "text/html/HtmlReader.h"
#include "text/html/HtmlWriter.h"
#include "text/lists/ListItems.h"
#include "text/lists/ListMarker.h"
#include "text/rtf/ImportedList.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"
#include "text/rtf/RtfReader.h"
#include "text/value/LinkTargets.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// Lets the word processor open a file and save it as RTF.
class WordProcessor : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_program = QStandardPaths::findExecutable(u"soffice"_s);
        if (m_program.isEmpty())
            GTEST_SKIP() << "no soffice: install libreoffice-writer-nogui to exchange RTF with it";
        ASSERT_TRUE(m_folder.isValid());
    }

    AttributedString resaved(const QByteArray& contents, const QString& name)
    {
        const auto content = readRtf(converted(contents, name, u"rtf"_s));
        EXPECT_TRUE(content.has_value());
        return content ? content->text : AttributedString();
    }

    /// What the program makes of a file when it saves it in another form.
    QByteArray converted(const QByteArray& contents, const QString& name, const QString& form)
    {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        file.close();
        QProcess process;
        process.start(m_program, {u"--headless"_s,
                                  u"-env:UserInstallation=file://"_s + m_folder.filePath(u"user"_s),
                                  u"--convert-to"_s, form, u"--outdir"_s,
                                  m_folder.filePath(u"out"_s), file.fileName()});
        EXPECT_TRUE(process.waitForFinished(120'000));
        QFile saved(m_folder.filePath(u"out/"_s + name.section(u'.', 0, 0) + u'.' + form));
        EXPECT_TRUE(saved.open(QIODevice::ReadOnly)) << process.readAll().toStdString();
        return saved.readAll();
    }

private:
    QString m_program;
    QTemporaryDir m_folder;
};

const CharacterStyle* styleOf(const AttributedString& text, const QString& words)
{
    const qsizetype position = text.text().indexOf(words);
    EXPECT_GE(position, 0) << words.toStdString();
    return position < 0 ? nullptr : &*text.characterStyle(position);
}

const ParagraphStyle* paragraphOf(const AttributedString& text, const QString& words)
{
    const qsizetype position = text.text().indexOf(words);
    EXPECT_GE(position, 0) << words.toStdString();
    return position < 0 ? nullptr : &*text.paragraphStyle(position);
}

TEST_F(WordProcessor, KeepsWhatWeWrite)
{
    struct Run {
        QString words;
        std::function<void(CharacterStyle&)> change;
    };
    const Run runs[] = {
        {u"Plain"_s,
         [](auto&) {
         }},
        {u"bold"_s,
         [](auto& style) {
             style.font->weight = 700;
         }},
        {u"italic"_s,
         [](auto& style) {
             style.font->italic = true;
         }},
        {u"large"_s,
         [](auto& style) {
             style.font->size = 20.5;
         }},
        {u"red"_s,
         [](auto& style) {
             style.foreground = rgbaFromHex(u"#CC1122");
         }},
        {u"marked"_s,
         [](auto& style) {
             style.background = rgbaFromHex(u"#12AB34");
         }},
        {u"underlined"_s,
         [](auto& style) {
             style.underline = TextLine::wavy;
         }},
        {u"struck"_s,
         [](auto& style) {
             style.strikethrough = TextLine::single;
         }},
        {u"linked"_s,
         [](auto& style) {
             style.link = u"https://example.org/a?b=c"_s;
         }},
        {u"größe — 漢字 \U0001F600"_s,
         [](auto&) {
         }},
    };
    CharacterStyle base;
    base.font = TextFont{u"Charis SIL"_s, 11};
    ParagraphStyle indented;
    indented.headIndent = 36;
    indented.firstLineHeadIndent = 18;
    indented.spacingAfter = 6;
    indented.lineHeightMultiple = 1.5;
    AttributedString text;
    for (const Run& run : runs) {
        CharacterStyle style = base;
        run.change(style);
        text.append(run.words, style, indented);
        text.append(u" ", base, indented);
    }
    text.append(u"\n", base, indented);
    TextTable table{QUuid::createUuid(), 2};
    for (int i = 0; i < 4; ++i) {
        ParagraphStyle cell;
        cell.cell = TableCellBlock{.table = table, .row = i / 2, .column = i % 2};
        CellLook look;
        look.widthPercent = i % 2 ? 30 : 70;
        look.padding = {3, 4, 5, 6};
        look.borderWidth = {1, 1, 1, 1};
        look.borderColor.fill(*rgbaFromHex(u"#0000FF"));
        look.background = i < 2 ? rgbaFromHex(u"#CCE0FF") : std::nullopt;
        cell.cell->look = look;
        text.append(u"cell %1\n"_s.arg(i), base, cell);
    }
    QImage green(20, 10, QImage::Format_RGB32);
    green.fill(Qt::green);
    text.append(AttributedString::object(OrvaneNoteImageAttachment::fromImageData(
        *AttachmentManager::pngData(green), QSizeF(100, 50), QUuid::createUuid())));
    text.append(u"end", base);

    const AttributedString back = resaved(*OrvaneWorkspaceRTF::data(text, {}), u"ours.rtf"_s);
    EXPECT_EQ(back.text().trimmed(), text.text().trimmed());
    for (const Run& run : runs) {
        CharacterStyle expected = base;
        run.change(expected);
        const CharacterStyle* style = styleOf(back, run.words);
        EXPECT_TRUE(style && *style == expected) << run.words.toStdString();
    }
    const ParagraphStyle* paragraph = paragraphOf(back, u"Plain"_s);
    ASSERT_TRUE(paragraph);
    EXPECT_EQ(paragraph->headIndent, 36);
    EXPECT_EQ(paragraph->firstLineHeadIndent, 18);
    EXPECT_EQ(paragraph->spacingAfter, 6);
    EXPECT_EQ(paragraph->lineHeightMultiple, 1.5);
    for (int i = 0; i < 4; ++i) {
        const ParagraphStyle* before = paragraphOf(text, u"cell %1"_s.arg(i));
        const ParagraphStyle* after = paragraphOf(back, u"cell %1"_s.arg(i));
        ASSERT_TRUE(after && after->cell) << i;
        TableCellBlock cell = *after->cell;
        cell.table = table;
        CellLook look = *cell.look;
        look.widthPercent = std::round(look.widthPercent);
        cell.look = look;
        EXPECT_TRUE(cell == *before->cell) << i;
    }
    const CharacterStyle* image = styleOf(back, QString(QChar(objectCharacter)));
    ASSERT_TRUE(image && image->imageAttachment());
    EXPECT_NEAR(image->imageAttachment()->renderedSize.width(), 100, 0.5);
}

TEST_F(WordProcessor, ItsOwnDocumentsReadWell)
{
    QFile source(QStringLiteral(ORVANE_TEST_DATA "/lists-and-table.fodt"));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    const AttributedString text = resaved(source.readAll(), u"theirs.fodt"_s);
    EXPECT_EQ(text.text(), u"Plain bold link\n"
                           u"• bullet\n\t• nested\n"
                           u"1. number one\n2. number two\n"
                           u"wide\ntall\nb\nc\n"
                           u"end\n");
    const CharacterStyle* bold = styleOf(text, u"bold"_s);
    ASSERT_TRUE(bold);
    EXPECT_EQ(bold->font->weight, 700);
    EXPECT_EQ(bold->font->size, 18);
    EXPECT_EQ(bold->foreground, rgbaFromHex(u"#FF0000"));
    EXPECT_EQ(styleOf(text, u"link"_s)->link, u"https://example.org/");
    EXPECT_EQ(paragraphOf(text, u"bullet"_s)->headIndent, 18);
    EXPECT_EQ(paragraphOf(text, u"nested"_s)->headIndent, 42);
    EXPECT_EQ(paragraphOf(text, u"number"_s)->textLists.value(0).marker, ListMarker::decimal);
    EXPECT_EQ(paragraphOf(text, u"wide"_s)->cell->columnSpan, 2);
    EXPECT_EQ(paragraphOf(text, u"tall"_s)->cell->rowSpan, 2);
    EXPECT_EQ(paragraphOf(text, u"c\n"_s)->cell->column, 1);
}

/// 47 list items of every kind, two of them in a cell, 6 headings, a table, links, highlights and a
/// page break.
AttributedString structuredDocument()
{
    namespace lists = ListContinuationHelper;
    CharacterStyle base;
    base.font = TextFont{u"Charis SIL"_s, 16};
    AttributedString text;
    const auto item = [&](EditorListStyle style, int level, int number) {
        const ParagraphStyle look =
            ImportedList::style({}, lists::markerPrefix(style, 0, number).trimmed(), level);
        text.append(lists::markerPrefix(style, level, number) + u"item %1\n"_s.arg(text.length()),
                    base, look);
    };
    const auto paragraph = [&](const QString& words) {
        text.append(words + u'\n', base, ParagraphStyle{});
    };
    for (int level = 1; level <= 6; ++level) {
        CharacterStyle heading = base;
        heading.font->weight = 700;
        heading.font->size = HeadingSizes().headings[std::size_t(level) - 1];
        text.append(u"heading %1\n"_s.arg(level), heading, ParagraphStyle{});
        paragraph(u"below it"_s);
    }
    for (int style = 0; style < editorListStyleCount; ++style) {
        item(EditorListStyle(style), 0, 1);
        item(EditorListStyle(style), 0, 2);
    }
    paragraph(u"between"_s);
    for (int number = 3; number <= 5; ++number) {
        item(EditorListStyle::decimal, 0, number);
        item(EditorListStyle::lowerAlpha, 1, 1);
        item(EditorListStyle::disc, 2, 1);
        item(EditorListStyle::lowerAlpha, 1, 2);
        item(EditorListStyle::lowerAlpha, 1, 3);
    }
    CharacterStyle marked = base;
    marked.background = rgbaFromHex(u"#FFE066");
    CharacterStyle linked = base;
    linked.link = u"https://example.org/"_s;
    text.append(u"marked"_s, marked, ParagraphStyle{});
    text.append(u" and "_s, base);
    text.append(u"linked\n"_s, linked);
    paragraph(u"\f"_s);
    paragraph(u"behind the page"_s);
    const TextTable table{QUuid::createUuid(), 2};
    for (int i = 0; i < 4; ++i) {
        ParagraphStyle cell;
        cell.cell = TableCellBlock{.table = table, .row = i / 2, .column = i % 2};
        text.append(i < 3 ? u"cell %1\n"_s.arg(i) : u"cell\u2028• one\u2028• two\n"_s, base, cell);
    }
    text.append(u"end", base, ParagraphStyle{});
    return text;
}

/// What other programs build an outline from.
struct Structure {
    QStringList items;
    QStringList headings;
    qsizetype cells = 0;
    QStringList links;
    QStringList marked;

    bool operator==(const Structure&) const = default;
};

Structure structureOf(const AttributedString& text)
{
    Structure structure;
    for (const ListItem& item : listItems(text)) {
        structure.items += u"%1 %2 %3"_s.arg(item.level)
                               .arg(rawValue(item.style),
                                    text.text().sliced(item.marker.location, item.marker.length));
    }
    text.forEachParagraph([&](TextRange range, const SharedParagraphStyle& style) {
        const int level = headingLevel(text, range, {});
        if (level > 0)
            structure.headings += QString::number(level);
        structure.cells += style->cell.has_value();
    });
    const auto wordsAt = [&](TextRange range) {
        return text.text().sliced(range.location, range.length).trimmed();
    };
    text.enumerate(&CharacterStyle::link, text.fullRange(), [&](TextRange range, const auto& link) {
        if (!link.isEmpty())
            structure.links += wordsAt(range);
    });
    text.enumerate(&CharacterStyle::background, text.fullRange(),
                   [&](TextRange range, const auto& color) {
                       if (color)
                           structure.marked += wordsAt(range);
                   });
    return structure;
}

TEST_F(WordProcessor, KeepsTheStructureTripAfterTrip)
{
    const AttributedString text = structuredDocument();
    const Structure structure = structureOf(text);
    ASSERT_EQ(structure.items.size(), 47);
    ASSERT_EQ(structure.headings.size(), 6);
    AttributedString back = text;
    for (const char* trip : {"first", "second"}) {
        back = resaved(*OrvaneWorkspaceRTF::data(back, {}), u"structure.rtf"_s);
        EXPECT_EQ(back.text().trimmed().toStdString(), text.text().trimmed().toStdString()) << trip;
        const Structure kept = structureOf(back);
        EXPECT_EQ(kept.items.join(u'\n').toStdString(), structure.items.join(u'\n').toStdString())
            << trip;
        EXPECT_TRUE(kept == structure) << trip;
    }
}

/// Without what the program's HTML has no words for: bullets of one's own, boxes, and with which
/// number a list begins.
QString withoutMarkers(const AttributedString& text)
{
    QString words = text.text();
    const QList<ListItem> items = listItems(text);
    for (auto item = items.rbegin(); item != items.rend(); ++item)
        words.replace(item->marker.location, item->marker.length,
                      isNumbered(item->style) ? u"1."_s : u"•"_s);
    return words.trimmed();
}

TEST_F(WordProcessor, KeepsTheStructureOfHtmlTripAfterTrip)
{
    const AttributedString text = structuredDocument();
    Structure structure = structureOf(text);
    structure.items.clear();
    AttributedString back = text;
    for (const char* trip : {"first", "second"}) {
        back = readHtmlBytes(converted(writeHtml(back, {}), u"structure.html"_s, u"html"_s)).text;
        EXPECT_EQ(withoutMarkers(back).toStdString(), withoutMarkers(text).toStdString()) << trip;
        Structure kept = structureOf(back);
        EXPECT_EQ(kept.items.size(), 47) << trip;
        kept.items.clear();
        EXPECT_TRUE(kept == structure) << trip;
    }
}

TEST_F(WordProcessor, SeesListsAndHeadingsAsSuch)
{
    const AttributedString text = structuredDocument();
    const std::pair<QString, QByteArray> files[] = {
        {u"outline.rtf"_s, *OrvaneWorkspaceRTF::data(text, {})},
        {u"outline.html"_s, writeHtml(text, {})},
    };
    for (const auto& [name, contents] : files) {
        const QByteArray seen = converted(contents, name, u"fodt"_s);
        EXPECT_EQ(seen.count("<text:list-item"), 47) << name.toStdString();
        for (int level = 1; level <= 6; ++level)
            EXPECT_EQ(seen.count("text:outline-level=\"" + QByteArray::number(level) + "\">"), 1)
                << name.toStdString() << level;
    }
}

TEST_F(WordProcessor, KeepsFootnotes)
{
    const auto content = readRtf("{\\rtf1 one{\\super\\chftn{\\footnote note {\\b a}}} two"
                                 "{\\super\\chftn{\\footnote note b}}\\par end}");
    ASSERT_TRUE(content.has_value());
    const AttributedString back =
        resaved(*OrvaneWorkspaceRTF::data(content->text, {}), u"notes.rtf"_s);
    EXPECT_EQ(back.text().toStdString(), "one1 two2\nend\n1. note a\n2. note b");
    EXPECT_EQ(footnotes(back).size(), 2);
}

} // namespace
} // namespace orvane
