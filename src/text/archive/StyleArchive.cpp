// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/archive/StyleArchive.h"

#include <cmath>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr quint64 mostCells = 100'000;
constexpr qsizetype mostTabs = 1'024;
constexpr qsizetype mostLists = 64;

// Map keys of a character style.
enum CharacterKey : quint64 {
    fontKey = 1,
    foregroundKey,
    backgroundKey,
    underlineKey,
    strikethroughKey,
    linkKey,
    attachmentKey,
    chartDataKey,
    autoTagSizeKey,
    baselineShiftKey,
    targetNameKey,
};

// Map keys of a paragraph style. Those of plain lengths are in `paragraphLengths`.
enum ParagraphKey : quint64 {
    alignmentKey = 1,
    directionKey = 2,
    tabStopsKey = 6,
    keepTogetherKey = 15,
    keepWithNextKey = 16,
    paragraphBackgroundKey = 17,
    textListsKey = 18,
    cellKey = 19,
    widowControlKey = 20,
    frameKey = 21,
};

struct LengthRow {
    quint64 key;
    double ParagraphStyle::*member;
};

constexpr LengthRow paragraphLengths[] = {
    {3, &ParagraphStyle::firstLineHeadIndent}, {4, &ParagraphStyle::headIndent},
    {5, &ParagraphStyle::tailIndent},          {7, &ParagraphStyle::defaultTabInterval},
    {8, &ParagraphStyle::lineHeightMultiple},  {9, &ParagraphStyle::minimumLineHeight},
    {10, &ParagraphStyle::maximumLineHeight},  {11, &ParagraphStyle::lineSpacing},
    {12, &ParagraphStyle::spacingBefore},      {13, &ParagraphStyle::spacingAfter},
    {14, &ParagraphStyle::hyphenationFactor},
};

void writeFloat(QCborStreamWriter& writer, double value)
{
    writer.append(std::isfinite(value) ? value : 0.0);
}

void write(QCborStreamWriter& writer, const RgbaColor& color)
{
    writer.startArray(4);
    for (const double channel : {color.red, color.green, color.blue, color.alpha})
        writeFloat(writer, channel);
    writer.endArray();
}

RgbaColor readColor(CborCursor& cursor)
{
    RgbaColor color;
    cursor.enterArray(4);
    for (double* channel : {&color.red, &color.green, &color.blue, &color.alpha})
        *channel = cursor.readFloat();
    cursor.leave();
    return color;
}

// A map whose members are written only when they are not the default: they are counted first, by
// running `members` without a writer.
template <typename Members>
void writeMap(QCborStreamWriter& writer, Members&& members)
{
    quint64 count = 0;
    members([&](quint64, bool isPresent, auto&&) { count += isPresent; });
    writer.startMap(count);
    members([&](quint64 key, bool isPresent, auto&& value) {
        if (isPresent) {
            writer.append(key);
            value();
        }
    });
    writer.endMap();
}

template <typename Member>
void readMap(CborCursor& cursor, Member&& member)
{
    quint64 previous = 0;
    for (qsizetype i = cursor.enterMap(); i > 0 && !cursor.hasFailed(); --i) {
        const quint64 key = cursor.readUnsigned(100);
        cursor.require(key > previous);
        previous = key;
        if (!cursor.hasFailed())
            member(key);
    }
    cursor.leave();
}

TextFont readFont(CborCursor& cursor)
{
    TextFont font;
    cursor.enterArray(4);
    font.family = cursor.readText();
    font.size = cursor.readFloat();
    font.weight = int(cursor.readUnsigned(1000));
    font.italic = cursor.readBool();
    cursor.leave();
    cursor.require(font.weight >= 1);
    return font;
}

TextLine readLine(CborCursor& cursor)
{
    const auto line = TextLine(cursor.readUnsigned(quint64(TextLine::wavy)));
    cursor.require(line != TextLine::none);
    return line;
}

BaselineShift readShift(CborCursor& cursor)
{
    const auto shift = BaselineShift(cursor.readUnsigned(quint64(BaselineShift::subscript)));
    cursor.require(shift != BaselineShift::none);
    return shift;
}

template <typename Value>
Value readIndexed(CborCursor& cursor, const QList<Value>& values)
{
    const auto index = qsizetype(cursor.readUnsigned(quint64(values.size())));
    cursor.require(index < values.size());
    return values.value(index);
}

void write(QCborStreamWriter& writer, const TableCellBlock& cell, ArchiveTables& tables)
{
    writer.startArray(6);
    writer.append(quint64(tables.tables.indexOf(cell.table)));
    writer.append(quint64(tables.looks.indexOf(cell.look)));
    for (const int number : {cell.row, cell.column})
        writer.append(quint64(std::max(0, number)));
    for (const int span : {cell.rowSpan, cell.columnSpan})
        writer.append(quint64(std::max(1, span)));
    writer.endArray();
}

TableCellBlock readCell(CborCursor& cursor, const ArchiveTables& tables)
{
    TableCellBlock cell;
    cursor.enterArray(6);
    cell.table = readIndexed(cursor, tables.tables.values);
    cell.look = readIndexed(cursor, tables.looks.values);
    for (int* number : {&cell.row, &cell.column, &cell.rowSpan, &cell.columnSpan})
        *number = int(cursor.readUnsigned(mostCells));
    cursor.require(cell.rowSpan > 0 && cell.columnSpan > 0);
    cursor.leave();
    return cell;
}

void writeTabStops(QCborStreamWriter& writer, const QList<TextTab>& tabs)
{
    const qsizetype count = std::min(tabs.size(), mostTabs);
    writer.startArray(quint64(count));
    for (const TextTab& tab : tabs.first(count)) {
        writer.startArray(2);
        writeFloat(writer, tab.location);
        writer.append(quint64(tab.alignment));
        writer.endArray();
    }
    writer.endArray();
}

QList<TextTab> readTabStops(CborCursor& cursor)
{
    QList<TextTab> tabs;
    const qsizetype count = cursor.enterArray();
    cursor.require(count <= mostTabs);
    for (qsizetype i = 0; i < count && !cursor.hasFailed(); ++i) {
        cursor.enterArray(2);
        const double location = cursor.readFloat();
        tabs.append({location, TabAlignment(cursor.readUnsigned(quint64(TabAlignment::decimal)))});
        cursor.leave();
    }
    cursor.leave();
    return tabs;
}

void writeTextLists(QCborStreamWriter& writer, const QList<TextList>& lists)
{
    const qsizetype count = std::min(lists.size(), mostLists);
    writer.startArray(quint64(count));
    for (const TextList& list : lists.first(count)) {
        writer.startArray(2);
        writer.append(quint64(list.marker));
        writer.append(qint64(list.startingNumber));
        writer.endArray();
    }
    writer.endArray();
}

QList<TextList> readTextLists(CborCursor& cursor)
{
    QList<TextList> lists;
    const qsizetype count = cursor.enterArray();
    cursor.require(count <= mostLists);
    for (qsizetype i = 0; i < count && !cursor.hasFailed(); ++i) {
        cursor.enterArray(2);
        const auto marker = ListMarker(cursor.readUnsigned(quint64(ListMarker::upperAlpha)));
        lists.append({marker, int(cursor.readInteger(std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()))});
        cursor.leave();
    }
    cursor.leave();
    return lists;
}

bool readTrue(CborCursor& cursor)
{
    const bool value = cursor.readBool();
    cursor.require(value);
    return value;
}

} // namespace

std::size_t qHash(const TextTable& table, std::size_t seed) noexcept
{
    return qHash(table.id, seed);
}

void collect(const CharacterStyle& style, ArchiveTables& tables)
{
    const void* identity = style.attachment.identity();
    if (!style.hasAttachment() || tables.attachmentIndex.contains(identity))
        return;
    tables.attachmentIndex.insert(identity, tables.attachments.size());
    tables.attachments.append(style.attachment);
}

void collect(const ParagraphStyle& style, ArchiveTables& tables)
{
    if (!style.cell)
        return;
    (void)tables.tables.indexOf(style.cell->table);
    (void)tables.looks.indexOf(style.cell->look);
}

void write(QCborStreamWriter& writer, const CharacterStyle& style, ArchiveTables& tables)
{
    writeMap(writer, [&](auto&& member) {
        member(fontKey, style.font.has_value(), [&] {
            writer.startArray(4);
            writer.append(style.font->family);
            writeFloat(writer, style.font->size);
            writer.append(quint64(std::clamp(style.font->weight, 1, 1000)));
            writer.append(style.font->italic);
            writer.endArray();
        });
        member(foregroundKey, style.foreground.has_value(),
               [&] { write(writer, *style.foreground); });
        member(backgroundKey, style.background.has_value(),
               [&] { write(writer, *style.background); });
        member(underlineKey, style.underline != TextLine::none,
               [&] { writer.append(quint64(style.underline)); });
        member(strikethroughKey, style.strikethrough != TextLine::none,
               [&] { writer.append(quint64(style.strikethrough)); });
        member(linkKey, !style.link.isEmpty(), [&] { writer.append(style.link); });
        member(attachmentKey, style.hasAttachment(), [&] {
            writer.append(quint64(tables.attachmentIndex.value(style.attachment.identity())));
        });
        member(chartDataKey, !style.chartBlockData.isEmpty(),
               [&] { writer.append(style.chartBlockData); });
        member(autoTagSizeKey, style.autoTagBaseFontSize.has_value(),
               [&] { writeFloat(writer, *style.autoTagBaseFontSize); });
        member(baselineShiftKey, style.baselineShift != BaselineShift::none,
               [&] { writer.append(quint64(style.baselineShift)); });
        member(targetNameKey, !style.targetName.isEmpty(),
               [&] { writer.append(style.targetName); });
    });
}

CharacterStyle readCharacterStyle(CborCursor& cursor, const ArchiveTables& tables)
{
    CharacterStyle style;
    readMap(cursor, [&](quint64 key) {
        switch (key) {
        case fontKey:
            style.font = readFont(cursor);
            return;
        case foregroundKey:
            style.foreground = readColor(cursor);
            return;
        case backgroundKey:
            style.background = readColor(cursor);
            return;
        case underlineKey:
            style.underline = readLine(cursor);
            return;
        case strikethroughKey:
            style.strikethrough = readLine(cursor);
            return;
        case linkKey:
            style.link = cursor.readText();
            return;
        case attachmentKey:
            style.attachment = readIndexed(cursor, tables.attachments);
            return;
        case chartDataKey:
            style.chartBlockData = cursor.readBytes();
            return;
        case autoTagSizeKey:
            style.autoTagBaseFontSize = cursor.readFloat();
            return;
        case baselineShiftKey:
            style.baselineShift = readShift(cursor);
            return;
        case targetNameKey:
            style.targetName = cursor.readText();
            return;
        default:
            cursor.fail();
        }
    });
    return style;
}

void write(QCborStreamWriter& writer, const ParagraphStyle& style, ArchiveTables& tables)
{
    writeMap(writer, [&](auto&& member) {
        const auto lengths = [&](quint64 from, quint64 to) {
            for (const auto& [key, field] : paragraphLengths) {
                const double value = style.*field;
                if (key >= from && key <= to)
                    member(key, value != 0, [&] { writeFloat(writer, value); });
            }
        };
        member(alignmentKey, style.alignment != TextAlignment::natural,
               [&] { writer.append(quint64(style.alignment)); });
        member(directionKey, style.direction != WritingDirection::natural,
               [&] { writer.append(quint64(style.direction)); });
        lengths(3, 5);
        member(tabStopsKey, !style.tabStops.isEmpty(),
               [&] { writeTabStops(writer, style.tabStops); });
        lengths(7, 14);
        member(keepTogetherKey, style.keepLinesTogether, [&] { writer.append(true); });
        member(keepWithNextKey, style.keepWithNext, [&] { writer.append(true); });
        member(paragraphBackgroundKey, style.background.has_value(),
               [&] { write(writer, *style.background); });
        member(textListsKey, !style.textLists.isEmpty(),
               [&] { writeTextLists(writer, style.textLists); });
        member(cellKey, style.cell.has_value(), [&] { write(writer, *style.cell, tables); });
        member(widowControlKey, style.widowControl, [&] { writer.append(true); });
        member(frameKey, style.frame != ParagraphFrame::none,
               [&] { writer.append(quint64(style.frame)); });
    });
}

ParagraphStyle readParagraphStyle(CborCursor& cursor, const ArchiveTables& tables)
{
    ParagraphStyle style;
    readMap(cursor, [&](quint64 key) {
        switch (key) {
        case alignmentKey:
            style.alignment = TextAlignment(cursor.readUnsigned(quint64(TextAlignment::justified)));
            return;
        case directionKey:
            style.direction =
                WritingDirection(cursor.readUnsigned(quint64(WritingDirection::rightToLeft)));
            return;
        case tabStopsKey:
            style.tabStops = readTabStops(cursor);
            return;
        case keepTogetherKey:
            style.keepLinesTogether = readTrue(cursor);
            return;
        case keepWithNextKey:
            style.keepWithNext = readTrue(cursor);
            return;
        case widowControlKey:
            style.widowControl = readTrue(cursor);
            return;
        case frameKey:
            style.frame = ParagraphFrame(cursor.readUnsigned(quint64(ParagraphFrame::dashed)));
            return;
        case paragraphBackgroundKey:
            style.background = readColor(cursor);
            return;
        case textListsKey:
            style.textLists = readTextLists(cursor);
            return;
        case cellKey:
            style.cell = readCell(cursor, tables);
            return;
        default:
            break;
        }
        const auto* row = std::ranges::find(paragraphLengths, key, &LengthRow::key);
        if (row == std::end(paragraphLengths))
            cursor.fail();
        else
            style.*(row->member) = cursor.readFloat();
    });
    return style;
}

void write(QCborStreamWriter& writer, const TextTable& table)
{
    writer.startArray(4);
    writer.append(table.id.toRfc4122());
    writer.append(quint64(std::clamp<int>(table.columns, 0, mostCells)));
    writeFloat(writer, table.contentWidthPercent);
    writer.append(table.hidesEmptyCells);
    writer.endArray();
}

TextTable readTable(CborCursor& cursor)
{
    TextTable table;
    cursor.enterArray(4);
    const QByteArray id = cursor.readBytes();
    cursor.require(id.size() == 16);
    table.id = QUuid::fromRfc4122(id);
    table.columns = int(cursor.readUnsigned(mostCells));
    table.contentWidthPercent = cursor.readFloat();
    table.hidesEmptyCells = cursor.readBool();
    cursor.leave();
    return table;
}

void write(QCborStreamWriter& writer, const CellLook& look)
{
    writer.startArray(5);
    writeFloat(writer, look.widthPercent);
    for (const PerEdge<double>& lengths : {look.padding, look.borderWidth}) {
        writer.startArray(4);
        for (const double length : lengths)
            writeFloat(writer, length);
        writer.endArray();
    }
    writer.startArray(4);
    for (const RgbaColor& color : look.borderColor)
        write(writer, color);
    writer.endArray();
    if (look.background)
        write(writer, *look.background);
    else
        writer.appendNull();
    writer.endArray();
}

CellLook readCellLook(CborCursor& cursor)
{
    CellLook look;
    cursor.enterArray(5);
    look.widthPercent = cursor.readFloat();
    for (PerEdge<double>* lengths : {&look.padding, &look.borderWidth}) {
        cursor.enterArray(4);
        for (double& length : *lengths)
            length = cursor.readFloat();
        cursor.leave();
    }
    cursor.enterArray(4);
    for (RgbaColor& color : look.borderColor)
        color = readColor(cursor);
    cursor.leave();
    if (!cursor.readNull())
        look.background = readColor(cursor);
    cursor.leave();
    return look;
}

} // namespace orvane
