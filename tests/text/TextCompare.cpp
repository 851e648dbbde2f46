// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/TextCompare.h"

#include "text/value/OrvaneNoteImageAttachment.h"

#include <cmath>

namespace orvane {

using namespace Qt::StringLiterals;

void forgetIdentities(AttributedString& text)
{
    QList<QUuid> tables;
    text.modifyParagraphStyles(text.fullRange(), [&](ParagraphStyle& style) {
        if (!style.cell)
            return;
        if (!tables.contains(style.cell->table.id))
            tables.append(style.cell->table.id);
        const auto number = uint(tables.indexOf(style.cell->table.id));
        style.cell->table.id = QUuid(number, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        CellLook look = *style.cell->look;
        look.widthPercent = std::round(look.widthPercent);
        style.cell->look = look;
    });
    text.modifyCharacterStyles(text.fullRange(), [](CharacterStyle& style) {
        if (const auto* image = style.imageAttachment()) {
            OrvaneNoteImageAttachment nameless = *image;
            nameless.attachmentID = {};
            style.attachment = TextAttachment(nameless);
        }
    });
}

static QString describe(const CharacterStyle& style)
{
    QStringList words;
    const TextFont font = style.font.value_or(TextFont{u"Charis"_s, 12});
    const auto add = [&](bool isThere, const QString& word) {
        if (isThere)
            words += word;
    };
    add(font.family != u"Charis", font.family);
    add(font.size != 12, QString::number(font.size));
    add(font.isBold(), u"b"_s);
    add(font.italic, u"i"_s);
    add(style.underline != TextLine::none, u"u"_s);
    add(style.strikethrough != TextLine::none, u"s"_s);
    add(style.baselineShift == BaselineShift::superscript, u"super"_s);
    add(style.baselineShift == BaselineShift::subscript, u"sub"_s);
    add(style.foreground.has_value(), toHex(style.foreground.value_or(RgbaColor())));
    add(style.background.has_value(), u"on "_s + toHex(style.background.value_or(RgbaColor())));
    add(!style.link.isEmpty(), u"->"_s + style.link);
    add(!style.targetName.isEmpty(), u"@"_s + style.targetName);
    add(style.hasAttachment(), u"object"_s);
    return words.join(u' ');
}

static QString describe(const ParagraphStyle& style)
{
    QString words;
    if (!style.textLists.isEmpty())
        words += u"L%1 "_s.arg(std::lround((style.headIndent - 18) / 24));
    if (style.background)
        words += u"fill %1 "_s.arg(toHex(*style.background));
    const bool hasTabs = style.textLists.isEmpty() && !style.tabStops.isEmpty();
    if (hasTabs) {
        words += u"tabs "_s;
        for (const TextTab& tab : style.tabStops)
            words += QString::number(tab.location) + u"lcrd"[int(tab.alignment)] + u' ';
        words += u"/%1 "_s.arg(style.defaultTabInterval);
    }
    if (style.cell)
        words += u"cell "_s;
    if (style.cell && style.cell->look->borderWidth[0] > 0)
        words += QString::number(style.cell->look->borderWidth[0]) + u' ';
    return words;
}

QStringList describeRuns(const AttributedString& text)
{
    QStringList runs;
    text.forEachParagraph([&](TextRange range, const SharedParagraphStyle& paragraph) {
        range.length += range.end() < text.length() ? 1 : 0;
        QString begin = describe(*paragraph);
        text.forEachCharacterRun(range, [&](TextRange run, const SharedCharacterStyle& style) {
            const QString words = (std::exchange(begin, {}) + describe(*style)).trimmed();
            const QString letters = text.text().sliced(run.location, run.length);
            if (!runs.isEmpty() && words.isEmpty() && runs.last().startsWith(u'|'))
                runs.last() += letters;
            else
                runs += words + u'|' + letters;
        });
    });
    return runs;
}

QStringList describeCells(const AttributedString& text)
{
    QStringList cells;
    text.forEachParagraph([&](TextRange range, const SharedParagraphStyle& style) {
        if (!style->cell)
            return;
        const TableCellBlock& cell = *style->cell;
        cells += u"%1,%2 %3×%4 %5 %6"_s.arg(cell.row)
                     .arg(cell.column)
                     .arg(cell.rowSpan)
                     .arg(cell.columnSpan)
                     .arg(std::lround(cell.look->widthPercent))
                     .arg(text.text().sliced(range.location, range.length));
    });
    return cells;
}

} // namespace orvane
