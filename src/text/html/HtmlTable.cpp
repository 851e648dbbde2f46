// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/HtmlTable.h"

#include "text/html/CssDeclarations.h"

#include <numeric>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr int mostColumns = 1'000;
constexpr int mostRowsSpanned = 10'000;
constexpr double borderPoints = 0.75;
constexpr double defaultPadding = 3;

int span(const QString& value, int most)
{
    return std::clamp(value.toInt(), 1, most);
}

} // namespace

HtmlTable::HtmlTable(const HtmlToken& token, const QUuid& id)
    : m_look(readLook(token))
{
    m_table.id = id;
    const QString border = token.attribute(u"border");
    if (!border.isNull())
        m_look.hasBorder = border.trimmed() != u"0";
    const auto padding = parseCssLength(token.attribute(u"cellpadding"), 0, 0);
    m_padding = std::clamp(padding.value_or(defaultPadding), 0.0, 72.0);
}

HtmlTable::Look HtmlTable::readLook(const HtmlToken& token)
{
    Look look;
    const auto setWidth = [&](const QString& value) {
        if (const auto width = parseCssLength(value, 12, 100); width && *width > 0) {
            look.width = *width;
            look.isPercent = value.trimmed().endsWith(u'%');
        }
    };
    setWidth(token.attribute(u"width"));
    look.background = parseCssColor(token.attribute(u"bgcolor"));
    for (const auto& [name, value] : parseCssDeclarations(token.attribute(u"style"))) {
        if (name == u"width") {
            setWidth(value);
        } else if (name == u"background" || name == u"background-color") {
            look.background = parseCssColor(value);
        } else if (name == u"border" || name == u"border-top" || name == u"border-bottom") {
            look.hasBorder = !value.contains(u"none") && !value.startsWith(u'0');
            for (const QString& word : value.split(u' '))
                look.borderColor = look.borderColor ? look.borderColor : parseCssColor(word);
        } else if (name == u"border-color") {
            look.borderColor = parseCssColor(value);
        }
    }
    return look;
}

void HtmlTable::beginRow()
{
    ++m_row;
    m_column = 0;
}

bool HtmlTable::beginCell(const HtmlToken& token)
{
    endCell({});
    if (m_row < 0)
        beginRow();
    while (m_column < m_coveredUntil.size() && m_coveredUntil[m_column] > m_row)
        ++m_column;
    if (m_column >= mostColumns)
        return false;
    Cell cell;
    cell.row = m_row;
    cell.column = m_column;
    cell.rowSpan = span(token.attribute(u"rowspan"), mostRowsSpanned);
    cell.columnSpan = span(token.attribute(u"colspan"), mostColumns - m_column);
    if (!token.attributes.isEmpty())
        cell.look = std::make_shared<const Look>(readLook(token));
    m_column += cell.columnSpan;
    if (m_coveredUntil.size() < m_column)
        m_coveredUntil.resize(m_column, 0);
    std::fill_n(m_coveredUntil.begin() + cell.column, cell.columnSpan, m_row + cell.rowSpan);
    m_table.columns = std::max(m_table.columns, m_column);
    m_cells.append(cell);
    m_isCellOpen = true;
    m_hasLine = false;
    return true;
}

void HtmlTable::appendLine(const AttributedString& line, const SharedParagraphStyle& paragraph)
{
    if (m_hasLine) {
        m_contents.append(QStringView(&lineSeparator, 1),
                          m_contents.characterStyle(m_contents.length() - 1));
    } else {
        m_cells.last().paragraph = paragraph;
    }
    line.forEachCharacterRun(line.fullRange(), [&](TextRange run, const auto& style) {
        m_contents.append(QStringView(line.text()).sliced(run.location, run.length), style);
    });
    m_hasLine = m_hasLine || !line.isEmpty();
}

void HtmlTable::endCell(const SharedCharacterStyle& style)
{
    if (!m_isCellOpen)
        return;
    m_contents.append(u"\n", style);
    m_cells.last().end = m_contents.length();
    m_isCellOpen = false;
}

QList<double> HtmlTable::columnPercents() const
{
    QList<double> percents(m_table.columns, 0);
    QList<double> points(m_table.columns, 0);
    for (const Cell& cell : m_cells) {
        if (!cell.look || cell.columnSpan != 1 || cell.look->width <= 0)
            continue;
        QList<double>& widths = cell.look->isPercent ? percents : points;
        if (widths[cell.column] == 0)
            widths[cell.column] = cell.look->width;
    }
    if (!points.contains(0.0))
        percents = points;
    const double taken = std::reduce(percents.begin(), percents.end());
    const auto open = std::count(percents.begin(), percents.end(), 0.0);
    for (double& percent : percents) {
        if (percent == 0)
            percent = std::max(1.0, (100 - taken) / double(open));
    }
    const double total = std::reduce(percents.begin(), percents.end());
    for (double& percent : percents)
        percent *= 100 / total;
    return percents;
}

TableCellBlock HtmlTable::block(const Cell& cell, const QList<double>& percents) const
{
    static const Look plain;
    const Look& look = cell.look ? *cell.look : plain;
    TableCellBlock block;
    block.table = m_table;
    block.row = cell.row;
    block.column = cell.column;
    block.rowSpan = std::min(cell.rowSpan, m_row + 1 - cell.row);
    block.columnSpan = cell.columnSpan;
    const auto first = percents.begin() + cell.column;
    block.widthPercent = std::reduce(first, first + cell.columnSpan);
    block.padding.fill(m_padding);
    if (look.hasBorder.value_or(m_look.hasBorder.value_or(false)))
        block.borderWidth.fill(borderPoints);
    block.borderColor.fill(look.borderColor.value_or(m_look.borderColor.value_or(RgbaColor{})));
    block.background = look.background ? look.background : m_look.background;
    return block;
}

void HtmlTable::appendTo(AttributedString& text, StyleInterner<ParagraphStyle>& styles)
{
    endCell({});
    if (m_cells.isEmpty())
        return;
    const QList<double> percents = columnPercents();
    qsizetype from = 0;
    for (const Cell& cell : m_cells) {
        ParagraphStyle paragraph = *cell.paragraph;
        paragraph.cell = block(cell, percents);
        const SharedParagraphStyle style = styles.intern(paragraph, {});
        m_contents.forEachCharacterRun(
            TextRange::between(from, cell.end), [&](TextRange run, const auto& characters) {
                text.append(QStringView(m_contents.text()).sliced(run.location, run.length),
                            characters, style);
            });
        from = cell.end;
    }
}

} // namespace orvane
