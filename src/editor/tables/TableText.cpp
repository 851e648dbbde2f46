// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Tables from text, and text from tables.
#include "editor/tables/TableText.h"

#include "editor/view/TextMime.h"
#include "text/value/TableWalk.h"

#include <QCoreApplication>

#include <algorithm>

namespace orvane {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(TableEngine)
};

/// Where a cell in quotes that begins at `from` ends: behind its closing quote.
qsizetype pastQuotes(QStringView text, qsizetype from)
{
    for (qsizetype i = from + 1; i < text.size(); ++i) {
        if (text[i] != u'"')
            continue;
        if (i + 1 < text.size() && text[i + 1] == u'"')
            ++i;
        else
            return i + 1;
    }
    return from; // never closed: the quote is a letter
}

QString unquoted(QStringView text)
{
    QString words = text.sliced(1, text.size() - 2).toString();
    return words.replace(QStringLiteral("\"\""), QStringLiteral("\""))
        .replace(u'\n', QChar(lineSeparator));
}

/// The cells of a line, between separators.
QList<TextRange> partsOf(QStringView line, QChar separator)
{
    QList<TextRange> parts;
    qsizetype from = 0;
    for (qsizetype i = 0; i <= line.size(); ++i) {
        if (separator == u',' && i == from && i < line.size() && line[i] == u'"')
            i = pastQuotes(line, i);
        if (i < line.size() && line[i] != separator)
            continue;
        parts.append(TextRange::between(from, i));
        from = i + 1;
    }
    return parts;
}

AttributedString trimmed(AttributedString text)
{
    while (!text.isEmpty() && text.text().back() == u' ')
        text.remove({text.length() - 1, 1});
    while (!text.isEmpty() && text.text().front() == u' ')
        text.remove({0, 1});
    return text;
}

QList<AttributedString> cellsOfLine(const AttributedString& line, QChar separator)
{
    AttributedString text = line;
    // Bars may also stand at both ends.
    if (separator == u'|') {
        text = trimmed(std::move(text));
        if (text.text().startsWith(separator))
            text.remove({0, 1});
        if (text.text().endsWith(separator))
            text.remove({text.length() - 1, 1});
    }
    QList<AttributedString> cells;
    for (const TextRange part : partsOf(text.text(), separator)) {
        AttributedString cell = text.sliced(part);
        if (separator != u'\t')
            cell = trimmed(std::move(cell));
        const QString& words = cell.text();
        const bool isQuoted = separator == u',' && words.size() >= 2 && words.startsWith(u'"') &&
                              pastQuotes(words, 0) == words.size();
        if (isQuoted)
            cell = AttributedString(unquoted(words), cell.characterStyle(0));
        cells.append(cell);
    }
    return cells;
}

QChar separatorOf(const QStringList& lines)
{
    const auto has = [&](QChar c) {
        return std::ranges::any_of(lines, [c](const QString& line) { return line.contains(c); });
    };
    return has(u'\t') ? u'\t' : has(u'|') ? u'|' : u',';
}

} // namespace

CellContents cellsOfTabbedText(QStringView text)
{
    CellContents rows;
    QList<AttributedString> row;
    if (text.endsWith(u'\n'))
        text.chop(1);
    qsizetype from = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        bool isQuoted = false;
        if (i == from && i < text.size() && text[i] == u'"') {
            const qsizetype past = pastQuotes(text, i);
            isQuoted = past > i && (past == text.size() || text[past] == u'\t' ||
                                    text[past] == u'\n' || text[past] == u'\r');
            i = isQuoted ? past : i;
        }
        const bool endsRow = i == text.size() || text[i] == u'\n';
        if (!endsRow && text[i] != u'\t')
            continue;
        QStringView cell = text.sliced(from, i - from);
        if (endsRow && cell.endsWith(u'\r'))
            cell.chop(1);
        row.append(AttributedString(isQuoted ? unquoted(cell) : cell.toString()));
        if (endsRow)
            rows.append(std::exchange(row, {}));
        from = i + 1;
    }
    return rows;
}

CellContents cellsOfTable(const AttributedString& text)
{
    CellContents rows;
    bool isAlone = true;
    walkParagraphsAndTables(
        text,
        [&](const TextParagraph& paragraph) { isAlone = isAlone && paragraph.range.isEmpty(); },
        [&](const TableRows& table) {
            isAlone = isAlone && rows.isEmpty();
            for (const auto& places : table.rows) {
                QList<AttributedString> row;
                for (const TablePlace& place : places) {
                    AttributedString cell;
                    for (const TextParagraph& paragraph : place.paragraphs) {
                        if (&paragraph != &place.paragraphs.first())
                            cell.append(QStringView(&lineSeparator, 1), {});
                        cell.append(text.sliced(paragraph.range));
                    }
                    row.append(cell);
                    for (int i = 1; i < place.columns; ++i)
                        row.append(AttributedString());
                }
                rows.append(row);
            }
        });
    return isAlone ? rows : CellContents();
}

CellContents cellsIn(const QMimeData& data)
{
    if (const auto imported = textMime::decode(data, TextFormatting::rich, {})) {
        if (CellContents rows = cellsOfTable(imported->text); !rows.isEmpty())
            return rows;
    }
    const QString text = data.hasText() ? data.text() : QString();
    return text.contains(u'\t') ? cellsOfTabbedText(text) : CellContents();
}

QString tabbedText(const AttributedString& text)
{
    QString plain;
    walkParagraphsAndTables(
        text,
        [&](const TextParagraph& paragraph) {
            plain +=
                QStringView(text.text()).sliced(paragraph.range.location, paragraph.range.length);
            if (paragraph.range.end() < text.length())
                plain += u'\n';
        },
        [&](const TableRows& table) {
            for (const auto& row : table.rows) {
                for (const TablePlace& place : row) {
                    if (&place != &row.first())
                        plain += u'\t';
                    for (const TextParagraph& paragraph : place.paragraphs)
                        plain += text.text()
                                     .sliced(paragraph.range.location, paragraph.range.length)
                                     .replace(QChar(lineSeparator), u' ');
                }
                plain += u'\n';
            }
        });
    return plain;
}

namespace TableEngine {

Result convertToTable(EditGateway& gateway, TextRange range, const TableStyle& style)
{
    const TextStore& store = gateway.store();
    if (!gateway.isEditable())
        return std::unexpected(TableRefusal::notEditable);
    const TextRange touched = store.paragraphsRange(range);
    for (qsizetype at = touched.location;;) {
        if (store.paragraphStyle(at)->cell)
            return std::unexpected(TableRefusal::withinTable);
        const qsizetype next = store.paragraphRange(at).end();
        if (next == at || next >= touched.end())
            break;
        at = next;
    }
    AttributedString text = store.attributedText(touched);
    const bool endsParagraph = text.text().endsWith(u'\n');
    if (endsParagraph)
        text.remove({text.length() - 1, 1});
    const QStringList lines = text.text().split(u'\n');
    const QChar separator = separatorOf(lines);
    CellContents rows;
    qsizetype at = 0;
    qsizetype columns = 1;
    for (const QString& line : lines) {
        rows.append(cellsOfLine(text.sliced({at, line.size()}), separator));
        columns = std::max(columns, rows.last().size());
        at += line.size() + 1;
    }
    if (columns > TableGrid::mostColumns || columns * rows.size() > mostCells)
        return std::unexpected(TableRefusal::tooLarge);
    AttributedString table = tableOf(rows, style);
    // Its own line before it is there already, and the one behind where there is more.
    table.remove({0, 1});
    table.remove({table.length() - 1, 1});
    table.setParagraphStyle({table.length(), 0}, endsParagraph
                                                     ? *store.paragraphStyle(touched.end())
                                                     : ParagraphStyle());
    gateway.performUndoableDocumentEdit(
        Words::tr("Convert Text to Table"),
        [&](DocumentEditor& editor) {
            editor.replace(touched, table);
            editor.setSelection(TextSelection::caret(touched.location));
        },
        EditEffect::changesText);
    return {};
}

Result convertToText(EditGateway& gateway, qsizetype position)
{
    const TextStore& store = gateway.store();
    if (!gateway.isEditable())
        return std::unexpected(TableRefusal::notEditable);
    const auto grid = tableAt(store, position);
    if (!grid)
        return std::unexpected(TableRefusal::noTable);
    const TextRange range = grid->range();
    AttributedString text;
    int row = 0;
    for (const GridCell& cell : grid->cells) {
        AttributedString content = store.attributedText(cell.range);
        if (content.text().endsWith(u'\n'))
            content.remove({content.length() - 1, 1});
        if (&cell != &grid->cells.first())
            text.append(cell.row == row ? u"\t" : u"\n", {}, ParagraphStyle{});
        row = cell.row;
        ParagraphStyle paragraph = *content.paragraphStyle(0);
        paragraph.cell.reset();
        QString words = content.text();
        words.replace(u'\n', QChar(lineSeparator));
        content.forEachCharacterRun(content.fullRange(), [&](TextRange run, const auto& style) {
            text.append(QStringView(words).sliced(run.location, run.length), style, paragraph);
        });
    }
    gateway.performUndoableDocumentEdit(
        Words::tr("Convert Table to Text"),
        [&](DocumentEditor& editor) {
            const qsizetype length = store.length();
            const bool isLast = range.end() == length &&
                                (range.isEmpty() || store.characterAt(length - 1) != u'\n');
            if (!isLast)
                text.append(u"\n", {}, ParagraphStyle{});
            text.setParagraphStyle({text.length(), 0},
                                   isLast ? ParagraphStyle() : *store.paragraphStyle(range.end()));
            editor.replace(range, text);
            editor.setSelection(TextSelection::caret(range.location));
        },
        EditEffect::changesText);
    return {};
}

} // namespace TableEngine
} // namespace orvane
