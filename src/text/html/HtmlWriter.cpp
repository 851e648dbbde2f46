// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/HtmlWriter.h"

#include "text/attachments/AttachmentManager.h"
#include "text/html/HtmlListWriter.h"
#include "text/layout/LineBreaker.h"
#include "text/value/TableWalk.h"

#include <QHash>

#include <array>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

void appendEscaped(QByteArray& html, QStringView text)
{
    QString escaped;
    escaped.reserve(text.size());
    for (const QChar c : text) {
        switch (c.unicode()) {
        case u'<':
            escaped += u"&lt;";
            break;
        case u'>':
            escaped += u"&gt;";
            break;
        case u'&':
            escaped += u"&amp;";
            break;
        case u'"':
            escaped += u"&quot;";
            break;
        case u'\u2028':
            escaped += u"<br>";
            break;
        default:
            escaped += c;
        }
    }
    html.append(escaped.toUtf8());
}

QByteArray number(double value)
{
    return QByteArray::number(value, 'g', 8);
}

QByteArray css(const RgbaColor& color)
{
    const QRgb rgb = color.toQColor().rgba();
    const QByteArray channels = QByteArray::number(qRed(rgb)) + ',' +
                                QByteArray::number(qGreen(rgb)) + ',' +
                                QByteArray::number(qBlue(rgb));
    if (qAlpha(rgb) == 255)
        return "rgb(" + channels + ')';
    return "rgba(" + channels + ',' + number(color.alpha) + ')';
}

QByteArray characterCss(const CharacterStyle& style)
{
    QByteArray text;
    if (style.font) {
        QString family = style.font->family;
        family.remove(u'\'').remove(u';').remove(u'"');
        if (!family.isEmpty())
            text += "font-family:'" + family.toHtmlEscaped().toUtf8() + "';";
        text += "font-size:" + number(style.font->size) + "pt;";
        text += "font-weight:" + QByteArray::number(style.font->weight) + ';';
        text += style.font->italic ? "font-style:italic;" : "font-style:normal;";
    }
    if (style.foreground)
        text += "color:" + css(*style.foreground) + ';';
    if (style.background)
        text += "background-color:" + css(*style.background) + ';';
    if (style.underline != TextLine::none || style.strikethrough != TextLine::none) {
        text += "text-decoration:";
        text += style.underline != TextLine::none ? "underline " : "";
        text += style.strikethrough != TextLine::none ? "line-through;" : ";";
    }
    return text;
}

QByteArray tabCss(const ParagraphStyle& style)
{
    QByteArray text;
    if (!style.tabStops.isEmpty()) {
        static constexpr std::array<const char*, 4> kinds{"left", "center", "right", "decimal"};
        text += "tab-stops:";
        for (const TextTab& tab : style.tabStops)
            text +=
                QByteArray(kinds[std::size_t(tab.alignment)]) + ' ' + number(tab.location) + "pt ";
        text.back() = ';';
    }
    if (style.defaultTabInterval > 0)
        text += "tab-size:" + number(style.defaultTabInterval) + "pt;";
    return text;
}

QByteArray paragraphCss(const ParagraphStyle& style)
{
    QByteArray text = "white-space:pre-wrap;";
    static constexpr std::array<const char*, 5> alignments{
        "", "text-align:left;", "text-align:center;", "text-align:right;", "text-align:justify;"};
    static constexpr std::array<const char*, 3> directions{"", "direction:ltr;", "direction:rtl;"};
    text += alignments[std::size_t(style.alignment)];
    text += directions[std::size_t(style.direction)];
    text += "margin:" + number(std::max(0.0, style.spacingBefore)) + "pt " +
            number(std::max(0.0, -style.tailIndent)) + "pt " +
            number(std::max(0.0, style.spacingAfter)) + "pt " +
            number(std::max(0.0, style.headIndent)) + "pt;";
    if (style.firstLineHeadIndent != style.headIndent)
        text += "text-indent:" + number(style.firstLineHeadIndent - style.headIndent) + "pt;";
    if (style.lineHeightMultiple > 0)
        text += "line-height:" + number(style.lineHeightMultiple) + ';';
    else if (style.minimumLineHeight > 0)
        text += "line-height:" + number(style.minimumLineHeight) + "pt;";
    if (style.background)
        text += "background-color:" + css(*style.background) + ';';
    if (style.frame == ParagraphFrame::bar)
        text += "border-left:3pt solid " +
                (style.background ? css(RgbaColor{style.background->red, style.background->green,
                                                  style.background->blue, 1})
                                  : QByteArray("gray")) +
                ';';
    else if (style.frame == ParagraphFrame::ruleAbove)
        text += "border-top:thin solid gray;";
    else if (style.frame == ParagraphFrame::dashed)
        text += "border:thin dashed gray;";
    return text + tabCss(style);
}

// A list item's indents and tab stop come from its list.
QByteArray itemCss(ParagraphStyle style)
{
    style.headIndent = style.firstLineHeadIndent = style.defaultTabInterval = 0;
    style.tabStops.clear();
    return paragraphCss(style);
}

QByteArray cellAttributes(const TableCellBlock& cell)
{
    static constexpr std::array<const char*, 4> edges{"top", "right", "bottom", "left"};
    QByteArray text;
    if (cell.rowSpan > 1)
        text += " rowspan=\"" + QByteArray::number(cell.rowSpan) + '"';
    if (cell.columnSpan > 1)
        text += " colspan=\"" + QByteArray::number(cell.columnSpan) + '"';
    text += " style=\"vertical-align:top;";
    if (cell.look->widthPercent > 0)
        text += "width:" + number(cell.look->widthPercent) + "%;";
    for (std::size_t i = 0; i < edges.size(); ++i) {
        text += QByteArray("padding-") + edges[i] + ':' + number(cell.look->padding[i]) + "pt;";
        if (cell.look->borderWidth[i] > 0) {
            text += QByteArray("border-") + edges[i] + ':' + number(cell.look->borderWidth[i]) +
                    "pt solid " + css(cell.look->borderColor[i]) + ';';
        }
    }
    if (cell.look->background)
        text += "background-color:" + css(*cell.look->background) + ';';
    return text + '"';
}

class Writer {
public:
    Writer(const AttributedString& text, const HeadingSizes& headings)
        : m_text(text)
        , m_headings(headings)
        , m_items(listItems(text))
        , m_lists(m_html)
    {}

    QByteArray write();

private:
    void paragraph(const TextParagraph& paragraph);
    [[nodiscard]] const ListItem* nextItem(qsizetype upTo) const;
    void item(const TextParagraph& paragraph, const ListItem& item);
    void cell(const TextParagraph& paragraph);
    void contents(TextRange range);
    void table(const TableRows& table);
    [[nodiscard]] bool isPageBreak(TextRange range) const
    {
        return range.length == 1 && m_text.text()[range.location] == QChar(pageBreakCharacter);
    }
    void runs(TextRange range);
    void run(QStringView text, const SharedCharacterStyle& style);
    void picture(const CharacterStyle& style);
    const AttributedString& m_text;
    HeadingSizes m_headings;
    QList<ListItem> m_items;
    qsizetype m_nextItem = 0;
    QByteArray m_html;
    HtmlListWriter m_lists;
    QHash<const void*, QByteArray> m_spans;
    bool m_isPageBreak = false;       // what is being written is one
    bool m_hasColoredMarkers = false; // so far
    bool m_isInColor = false;         // what is round the text being written has a colour
};

QByteArray Writer::write()
{
    m_html.reserve(2 * m_text.length());
    m_html.append("<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"></head><body>\n");
    if (!m_text.text().contains(u'\n') && !isPageBreak(m_text.fullRange())) {
        m_html.append("<span style=\"white-space:pre-wrap\">");
        runs(m_text.fullRange());
        m_html.append("</span>");
    } else {
        bool followsTable = false;
        walkParagraphsAndTables(
            m_text,
            [&](const TextParagraph& one) {
                // The empty paragraph that every text ends in behind a table is the reader's own.
                const bool isLast = one.range.end() == m_text.length();
                if (!followsTable || !one.range.isEmpty() || !isLast)
                    paragraph(one);
                followsTable = false;
            },
            [&](const TableRows& rows) {
                table(rows);
                followsTable = true;
            });
        m_lists.end();
    }
    m_html.append("\n</body></html>\n");
    return m_html;
}

void Writer::paragraph(const TextParagraph& paragraph)
{
    const TextRange range = paragraph.range;
    if (const ListItem* next = nextItem(range.location))
        return item(paragraph, *next);
    m_lists.end();
    const int level = headingLevel(m_text, range, m_headings);
    const QByteArray tag = level > 0 ? 'h' + QByteArray::number(level) : QByteArray("p");
    m_html.append('<' + tag + " style=\"" + paragraphCss(*paragraph.style) + "\">");
    m_isPageBreak = isPageBreak(range);
    contents(range);
    m_isPageBreak = false;
    m_html.append("</" + tag + ">\n");
}

const ListItem* Writer::nextItem(qsizetype upTo) const
{
    const bool isThere =
        m_nextItem < m_items.size() && m_items[m_nextItem].paragraph.location <= upTo;
    return isThere ? &m_items[m_nextItem] : nullptr;
}

// The marker has the colour of its item; text without one says so.
void Writer::item(const TextParagraph& paragraph, const ListItem& item)
{
    ++m_nextItem;
    const QStringView marker =
        QStringView(m_text.text()).sliced(item.marker.location, item.marker.length);
    QByteArray style = itemCss(*paragraph.style);
    const auto color = m_text.characterStyle(item.marker.location)->foreground;
    m_hasColoredMarkers = m_hasColoredMarkers || color;
    if (color)
        style += "color:" + css(*color) + ';';
    else if (m_hasColoredMarkers && item.level > 0)
        style += "color:initial;"; // not that of the item round it
    m_lists.beginItem(item, marker, style);
    m_isInColor = color.has_value();
    contents(TextRange::between(item.contentStart(), item.paragraph.end()));
    m_isInColor = false;
}

// The lines between items are paragraphs.
void Writer::cell(const TextParagraph& paragraph)
{
    qsizetype from = paragraph.range.location;
    while (const ListItem* next = nextItem(paragraph.range.end())) {
        if (next->paragraph.location > from)
            this->paragraph(
                {TextRange::between(from, next->paragraph.location - 1), paragraph.style});
        from = next->paragraph.end() + 1;
        item(paragraph, *next);
    }
    if (from <= paragraph.range.end())
        this->paragraph({TextRange::between(from, paragraph.range.end()), paragraph.style});
    m_lists.end();
}

void Writer::contents(TextRange range)
{
    runs(range);
    // A line break that ends a block counts for nothing, so one more is needed.
    if (range.isEmpty() || m_text.text()[range.end() - 1] == QChar(lineSeparator))
        m_html.append("<br>");
}

void Writer::table(const TableRows& table)
{
    m_lists.end();
    m_html.append("<table border=\"0\" style=\"border-collapse:collapse;width:100%\"");
    const bool isMirrored = table.runsRightToLeft();
    m_html.append(isMirrored ? " dir=\"rtl\">\n" : ">\n");
    for (const QList<TablePlace>& row : table.rows) {
        m_html.append("<tr>");
        for (const TablePlace& place : row) {
            if (place.kind == TablePlace::Kind::reachedFromAbove)
                continue; // the cell above says so
            if (place.kind == TablePlace::Kind::empty) {
                m_html.append("<td></td>");
                continue;
            }
            m_html.append("<td" + cellAttributes(place.cell()));
            // A paragraph without a direction of its own doesn't take the table's.
            m_html.append(isMirrored ? " dir=\"auto\">" : ">");
            for (const TextParagraph& one : place.paragraphs)
                cell(one);
            m_html.append("</td>");
        }
        m_html.append("</tr>\n");
    }
    m_html.append("</table>\n");
}

void Writer::runs(TextRange range)
{
    m_text.forEachCharacterRun(range, [&](TextRange stretch, const SharedCharacterStyle& style) {
        run(QStringView(m_text.text()).sliced(stretch.location, stretch.length), style);
    });
}

void Writer::run(QStringView text, const SharedCharacterStyle& style)
{
    auto span = m_spans.constFind(style.identity());
    if (span == m_spans.constEnd())
        span = m_spans.insert(style.identity(), "<span style=\"" + characterCss(*style) + "\">");
    m_html.append(*span);
    if (m_isInColor && !style->foreground)
        m_html.insert(m_html.size() - 2, "color:initial;");
    const QString& name = style->targetName;
    const bool isAnchor = !style->link.isEmpty() || !name.isEmpty();
    if (isAnchor) {
        m_html.append("<a");
        if (!name.isEmpty())
            m_html.append(" id=\"" + name.toHtmlEscaped().toUtf8() + '"');
        if (!style->link.isEmpty())
            m_html.append(" href=\"" + style->link.toHtmlEscaped().toUtf8() + '"');
        m_html.append('>');
    }
    // Within the span, which says the size that it makes smaller.
    const bool isShifted = style->baselineShift != BaselineShift::none;
    const QByteArray shift = style->baselineShift == BaselineShift::superscript ? "sup>" : "sub>";
    if (isShifted)
        m_html.append('<' + shift);
    for (const QChar& c : text) {
        if (!style->hasAttachment()) {
            if (m_isPageBreak)
                m_html.append("<br style=\"page-break-before:always\">");
            else
                appendEscaped(m_html, text);
            break;
        }
        if (c == QChar(objectCharacter))
            picture(*style);
        else
            appendEscaped(m_html, QStringView(&c, 1));
    }
    if (isShifted)
        m_html.append("</" + shift);
    if (isAnchor)
        m_html.append("</a>");
    m_html.append("</span>");
}

void Writer::picture(const CharacterStyle& style)
{
    const auto picture = AttachmentManager::exchangedPicture(style.attachment);
    if (!picture)
        return;
    constexpr double pixelsPerPoint = 96.0 / 72;
    m_html.append("<img width=\"" + number(picture->size.width() * pixelsPerPoint) +
                  "\" height=\"" + number(picture->size.height() * pixelsPerPoint) +
                  "\" src=\"data:image/");
    m_html.append(picture->format == AttachmentManager::PictureFormat::jpeg ? "jpeg" : "png");
    m_html.append(";base64," + picture->data.toBase64() + "\">");
}

} // namespace

QByteArray writeHtml(const AttributedString& text, const HeadingSizes& headings)
{
    return Writer(text, headings).write();
}

} // namespace orvane
