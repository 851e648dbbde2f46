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
