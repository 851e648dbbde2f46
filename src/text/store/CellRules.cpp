// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/CellRules.h"

#include "text/store/TableRow.h"
#include "text/store/TextStore.h"

#include <QHash>
#include <QSet>

namespace orvane::cellRules {

namespace {

TextRange textOf(const QTextBlock& block)
{
    return {block.position(), block.length()};
}

/// The paragraphs of the table that `cell` is in, which follow one another.
TableRow tableOf(const QTextBlock& cell, const StyleTable& styles)
{
    const QUuid id = cellOf(cell, styles)->table.id;
    const auto belongs = [&](const QTextBlock& block) {
        return isCell(block, styles) && cellOf(block, styles)->table.id == id;
    };
    TableRow table{cell, cell};
    while (belongs(table.first.previous()))
        table.first = table.first.previous();
    while (belongs(table.last.next()))
        table.last = table.last.next();
    return table;
}

class Removal {
public:
    Removal(const TextStore& store, TextRange range)
        : m_store(store)
        , m_range(range)
    {
        QTextBlock block = store.blockAt(range.location);
        while (block.isValid() && block.position() < range.end()) {
            if (!isCell(block, store.styles())) {
                addPlain(block);
                block = block.next();
                continue;
            }
            const TableRow table = tableOf(block, store.styles());
            if (covers(table)) {
                add(TextRange::between(table.first.position(), endOf(table.last)));
                block = table.last.next();
                continue;
            }
            add(TextRange::between(block.position(), block.position() + block.length() - 1));
            block = block.next();
        }
    }

    QList<TextRange> parts;

private:
    [[nodiscard]] qsizetype endOf(const QTextBlock& block) const
    {
        return std::min(textOf(block).end(), m_store.length());
    }

    [[nodiscard]] bool covers(const TableRow& table) const
    {
        return m_range.location <= table.first.position() && m_range.end() >= endOf(table.last);
    }

    /// The first paragraph after `block` that is not in a table that goes as a whole.
    [[nodiscard]] QTextBlock nextStaying(const QTextBlock& block) const
    {
        QTextBlock next = block.next();
        while (isCell(next, m_store.styles())) {
            const TableRow table = tableOf(next, m_store.styles());
            if (!covers(table))
                break;
            next = table.last.next();
        }
        return next;
    }

    void addPlain(const QTextBlock& block)
    {
        // Its end may only go where that does not join it to a cell.
        const bool goesWhole = m_range.location <= block.position();
        const bool meetsCell = isCell(nextStaying(block), m_store.styles());
        const qsizetype end =
            meetsCell && !goesWhole ? block.position() + block.length() - 1 : endOf(block);
        add(TextRange::between(block.position(), end));
    }

    void add(TextRange part)
    {
        const qsizetype from = std::max(part.location, m_range.location);
        const qsizetype to = std::min(part.end(), m_range.end());
        if (from >= to)
            return;
        if (!parts.isEmpty() && parts.last().end() == from)
            parts.last().length += to - from;
        else
            parts.append(TextRange::between(from, to));
    }

    const TextStore& m_store;
    TextRange m_range;
};

AttributedString asOneParagraph(const AttributedString& insertion,
                                const SharedParagraphStyle& paragraph)
{
    AttributedString flat;
    QString text = insertion.text();
    if (text.endsWith(u'\n'))
        text.chop(1);
    text.replace(u'\n', QChar(lineSeparator));
    insertion.forEachCharacterRun(
        {0, text.size()}, [&](TextRange run, const SharedCharacterStyle& style) {
            flat.append(QStringView(text).mid(run.location, run.length), style, paragraph);
        });
    return flat;
}

struct TableIn {
    QList<TextRange> cells; // with their "\n"
    bool isWhole = true;
};

/// The tables of `text` by their identity, each whole or not: all columns of all its rows, and
/// nothing cut off.
QHash<QUuid, TableIn> tablesIn(const AttributedString& text)
{
    QHash<QUuid, TableIn> tables;
    QHash<QUuid, int> expected;
    text.forEachParagraph([&](TextRange paragraph, const SharedParagraphStyle& style) {
        const bool isOnlyAnEnd = paragraph.location == text.length() && !text.isEmpty();
        if (!style->cell || isOnlyAnEnd)
            return;
        const TableCellBlock& cell = *style->cell;
        TableIn& table = tables[cell.table.id];
        int& next = expected[cell.table.id];
        const int columns = std::max(1, cell.table.columns);
        const int place = next++;
        if (cell.column != place % columns)
            table.isWhole = false;
        table.cells.append(paragraph);
    });
    for (auto it = tables.begin(); it != tables.end(); ++it) {
        const int columns =
            std::max(1, text.paragraphStyle(it->cells.first().location)->cell->table.columns);
        if (it->cells.size() % columns != 0)
            it->isWhole = false;
    }
    return tables;
}

AttributedString withOwnTables(AttributedString text)
{
    const QHash<QUuid, TableIn> tables = tablesIn(text);
    for (auto it = tables.cbegin(); it != tables.cend(); ++it) {
        const QUuid id = QUuid::createUuid();
        int place = 0;
        for (const TextRange& cell : it->cells) {
            text.modifyParagraphStyles({cell.location, 0}, [&](ParagraphStyle& style) {
                if (!it->isWhole) {
                    style.cell.reset();
                    return;
                }
                style.cell->table.id = id;
                style.cell->row = place / std::max(1, style.cell->table.columns);
            });
            ++place;
        }
    }
    return text;
}

} // namespace

QList<TextRange> removableParts(const TextStore& store, TextRange range)
{
    return Removal(store, range).parts;
}

bool isInCell(const TextStore& store, qsizetype position)
{
    return isCell(store.blockAt(position), store.styles());
}

AttributedString fitted(const TextStore& store, qsizetype position,
                        const AttributedString& insertion)
{
    if (isInCell(store, position))
        return asOneParagraph(insertion, store.paragraphStyle(position));
    AttributedString text = withOwnTables(insertion);
    const SharedParagraphStyle& here = store.paragraphStyle(position);
    const bool endsInCell = text.paragraphStyle(text.length())->cell.has_value();
    if (endsInCell && !text.text().endsWith(u'\n')) {
        AttributedString end(QStringLiteral("\n"), {}, text.paragraphStyle(text.length()));
        end.setParagraphStyle({1, 0}, here);
        text.append(end);
    } else if (endsInCell) {
        text.setParagraphStyle({text.length(), 0}, here);
    }
    const bool beginsInCell = text.paragraphStyle(0)->cell.has_value();
    if (beginsInCell && store.paragraphRange(position).location != position)
        text.insert(0, AttributedString(QStringLiteral("\n"), {}, here));
    if (!text.text().contains(u'\n'))
        text.setParagraphStyle(text.fullRange(), here);
    return text;
}

} // namespace orvane::cellRules
