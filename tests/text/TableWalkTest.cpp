// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/TableWalk.h"

#include "text/TextCompare.h"
#include "text/html/HtmlReader.h"
#include "text/html/HtmlWriter.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct CellOf {
    int table;
    int row;
    int column;
    int rowSpan = 1;
    int columnSpan = 1;
};

/// A text in which each paragraph is named by a letter; those with a place are cells.
struct Paragraph {
    QStringView text;
    std::optional<CellOf> cell = std::nullopt;
};

AttributedString textOf(const QList<Paragraph>& paragraphs)
{
    AttributedString text;
    for (const Paragraph& paragraph : paragraphs) {
        ParagraphStyle style;
        if (const auto& cell = paragraph.cell) {
            style.cell =
                TableCellBlock{.table = {QUuid(uint(cell->table), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0), 3},
                               .row = cell->row,
                               .column = cell->column,
                               .rowSpan = cell->rowSpan,
                               .columnSpan = cell->columnSpan};
        }
        const bool isLast = &paragraph == &paragraphs.last();
        text.append(isLast ? paragraph.text.toString() : paragraph.text.toString() + u'\n', {},
                    style);
    }
    return text;
}

/// "a" for a paragraph, "[b c|-|^2]" for a row: a cell with its paragraphs, an empty place, and one
/// of two columns that a cell reaches from above.
QString describe(const AttributedString& text)
{
    QString walked;
    const auto words = [&](const TextParagraph& one) {
        return text.text().sliced(one.range.location, one.range.length);
    };
    walkParagraphsAndTables(
        text, [&](const TextParagraph& one) { walked += words(one) + u' '; },
        [&](const TableRows& table) {
            walked += QString::number(table.columns);
            for (const QList<TablePlace>& row : table.rows) {
                QStringList places;
                for (const TablePlace& place : row) {
                    QStringList within;
                    for (const TextParagraph& one : place.paragraphs)
                        within += words(one);
                    if (place.kind == TablePlace::Kind::empty)
                        within += u"-"_s;
                    if (place.kind == TablePlace::Kind::reachedFromAbove)
                        within += u"^"_s;
                    places += within.join(u' ');
                    if (place.columns != 1)
                        places.last() += QString::number(place.columns);
                }
                walked += u'[' + places.join(u'|') + u']';
            }
            walked += u' ';
        });
    return walked.trimmed();
}

TEST(TableWalk, TakesParagraphsToRowsAndPlaces)
{
    struct Row {
        const char* name;
        QList<Paragraph> paragraphs;
        QString walked;
    };
    const Row rows[] = {
        {"between paragraphs",
         {{u"a"}, {u"b", CellOf{1, 0, 0}}, {u"c", CellOf{1, 0, 1}}, {u"d"}},
         u"a 2[b|c] d"_s},
        {"one below the other in a cell",
         {{u"a", CellOf{1, 0, 0}}, {u"b", CellOf{1, 0, 0}}, {u"c", CellOf{1, 0, 1}}, {u""}},
         u"2[a b|c]"_s},
        {"back to the left begins a row",
         {{u"a", CellOf{1, 0, 1}}, {u"b", CellOf{1, 0, 0}}, {u""}},
         u"2[-|a][b]"_s},
        {"one table below another",
         {{u"a", CellOf{1, 0, 0}}, {u"b", CellOf{2, 0, 0}}, {u""}},
         u"1[a] 1[b]"_s},
        {"gaps",
         {{u"a", CellOf{1, 0, 0}}, {u"b", CellOf{1, 0, 3}}, {u"c", CellOf{1, 1, 1}}, {u""}},
         u"4[a|-|-|b][-|c]"_s},
        {"reached from above, in the middle and at the end",
         {{u"a", CellOf{1, 0, 0, 2, 2}},
          {u"b", CellOf{1, 0, 2, 3}},
          {u"c", CellOf{1, 1, 3}},
          {u"d", CellOf{1, 2, 0}},
          {u"e", CellOf{1, 2, 1}},
          {u""}},
         u"4[a2|b][^2|^|c][d|e|^]"_s},
        {"the last paragraph is no cell",
         {{u"a", CellOf{1, 0, 0}}, {u"b", CellOf{1, 0, 1}}},
         u"1[a] b"_s},
        {"far out",
         {{u"a", CellOf{1, 0, 2'000'000'000, 1, 2'000'000'000}}, {u"b", CellOf{1, 1, 0}}, {u""}},
         u"1000["_s + u"-|"_s.repeated(1000) + u"a1000][b]"_s},
    };
    for (const Row& row : rows)
        EXPECT_EQ(describe(textOf(row.paragraphs)), row.walked) << row.name;
}

TEST(TableWalk, BothFormsHoldTheSameCells)
{
    const AttributedString text = textOf({{u"before"},
                                          {u"a", CellOf{1, 0, 0, 2}},
                                          {u"b", CellOf{1, 0, 1}},
                                          {u"c", CellOf{1, 0, 1}},
                                          {u"d", CellOf{1, 1, 2}},
                                          {u"after"}});
    const QStringList expected{u"0,0 2×1 33 a"_s, u"0,1 1×1 33 b\u2028c"_s, u"1,1 1×1 33 "_s,
                               u"1,2 1×1 33 d"_s};
    EXPECT_EQ(describeCells(readHtmlBytes(writeHtml(text, {})).text), expected);
    const auto rtf = OrvaneWorkspaceRTF::read(OrvaneWorkspaceRTF::data(text, {}).value());
    ASSERT_TRUE(rtf);
    EXPECT_EQ(describeCells(rtf->text), expected);
}

} // namespace
} // namespace orvane
