// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/HtmlTable.h"

#include "text/html/CssDeclarations.h"

#include <array>
#include <numeric>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr int mostColumns = 1'000;
constexpr int mostRowsSpanned = 10'000;
constexpr double borderPoints = 0.75;
constexpr double defaultPadding = 3;
constexpr double widestBorder = 36;
constexpr double widestPadding = 72;
constexpr std::array<QStringView, 4> edgeNames{u"-top", u"-right", u"-bottom", u"-left"};

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
    const bool isSaid = m_look.saysBorder || !border.isNull();
    if (!border.isNull())
        m_look.border.fill(border.trimmed() == u"0" ? 0 : borderPoints);
    m_hasOwnBorders = isSaid;
    const auto padding = parseCssLength(token.attribute(u"cellpadding"), 0, 0);
    m_look.padding.fill(std::clamp(padding.value_or(defaultPadding), 0.0, widestPadding));
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
        if (name == u"width")
            setWidth(value);
        else if (name == u"background" || name == u"background-color")
            look.background = parseCssColor(value);
        else if (name.startsWith(u"border"))
            readBorder(look, name, value);
        else if (name.startsWith(u"padding"))
            readPadding(look, name, value);
    }
    return look;
}

// "border: 1px solid #abc" and its like for one edge; the pieces may come in any order.
void HtmlTable::readBorder(Look& look, QStringView name, const QString& value)
{
    std::optional<double> width;
    std::optional<RgbaColor> color;
    QString compact = value;
    compact.replace(u", "_s, u","_s);
    for (const QString& word : compact.split(u' ', Qt::SkipEmptyParts)) {
        if (word == u"none" || word == u"hidden")
            width = 0;
        else if (const auto points = parseCssLength(word, 12, 0))
            width = std::clamp(*points, 0.0, widestBorder);
        else if (const auto found = parseCssColor(word))
            color = found;
        else if (!width && (word == u"solid" || word == u"dotted" || word == u"dashed"))
            width = borderPoints;
    }
    look.saysBorder = look.saysBorder || width.has_value();
    for (std::size_t edge = 0; edge < edgeNames.size(); ++edge) {
        const bool isMeant = name == u"border" || name == u"border-color" ||
                             name == u"border-width" || name == u"border-style" ||
                             name.sliced(6).startsWith(edgeNames[edge]);
        if (isMeant && width)
            look.border[edge] = width;
        if (isMeant && color)
            look.borderColor[edge] = color;
    }
}

void HtmlTable::readPadding(Look& look, QStringView name, const QString& value)
{
    const QStringList sides = value.split(u' ', Qt::SkipEmptyParts);
    for (std::size_t edge = 0; edge < edgeNames.size(); ++edge) {
        if (name != u"padding" && !name.sliced(7).startsWith(edgeNames[edge]))
            continue;
        // One value is for all edges, two for upright and level, a missing left is the right's.
        const auto index = name != u"padding" ? 0 : qsizetype(edge);
        const QString side = index < sides.size()
                                 ? sides[index]
                                 : sides.value(index == 3 && sides.size() > 1 ? 1 : 0);
        if (const auto points = parseCssLength(side, 12, 0))
            look.padding[edge] = std::clamp(*points, 0.0, widestPadding);
    }
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
    const Look look = readLook(token);
    m_hasOwnBorders = m_hasOwnBorders || look.saysBorder;
    if (look != Look{})
        cell.look = std::make_shared<const Look>(look);
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

CellLook HtmlTable::cellLook(const Cell& cell, const QList<double>& percents) const
{
    static const Look plain;
    const Look& own = cell.look ? *cell.look : plain;
    CellLook look;
    const auto first = percents.begin() + cell.column;
    look.widthPercent = std::reduce(first, first + cell.columnSpan);
    for (std::size_t edge = 0; edge < 4; ++edge) {
        look.padding[edge] = own.padding[edge].value_or(*m_look.padding[edge]);
        look.borderWidth[edge] = own.border[edge].value_or(m_look.border[edge].value_or(0));
        look.borderColor[edge] =
            own.borderColor[edge].value_or(m_look.borderColor[edge].value_or(RgbaColor{}));
    }
    look.background = own.background ? own.background : m_look.background;
    return look;
}

void HtmlTable::appendTo(AttributedString& text, StyleInterner<ParagraphStyle>& styles,
                         StyleInterner<CellLook>& looks)
{
    endCell({});
    if (m_cells.isEmpty())
        return;
    // Without lines nobody sees that there is a table.
    if (!m_hasOwnBorders)
        m_look.border.fill(borderPoints);
    const QList<double> percents = columnPercents();
    qsizetype from = 0;
    for (const Cell& cell : m_cells) {
        ParagraphStyle paragraph = *cell.paragraph;
        paragraph.cell = TableCellBlock{.table = m_table, .row = cell.row, .column = cell.column};
        paragraph.cell->rowSpan = std::min(cell.rowSpan, m_row + 1 - cell.row);
        paragraph.cell->columnSpan = cell.columnSpan;
        paragraph.cell->look = looks.intern(cellLook(cell, percents), {});
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
