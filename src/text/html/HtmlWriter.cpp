// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/HtmlWriter.h"

#include "text/attachments/AttachmentManager.h"
#include "text/layout/LineBreaker.h"

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
    return text;
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
    explicit Writer(const AttributedString& text)
        : m_text(text)
    {}

    QByteArray write();

private:
    void paragraph(TextRange range, const ParagraphStyle& style);
    void cell(TextRange range, const ParagraphStyle& style);
    [[nodiscard]] bool isPageBreak(TextRange range) const
    {
        return range.length == 1 && m_text.text()[range.location] == QChar(pageBreakCharacter);
    }
    void runs(TextRange range);
    void run(QStringView text, const SharedCharacterStyle& style);
    void picture(const CharacterStyle& style);
    void endTable();

    const AttributedString& m_text;
    QByteArray m_html;
    QHash<const void*, QByteArray> m_spans;
    bool m_isPageBreak = false; // what is being written is one
    std::optional<TableCellBlock> m_previousCell;
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
        m_text.forEachParagraph([&](TextRange range, const SharedParagraphStyle& style) {
            if (style->cell && range.end() < m_text.length())
                return cell(range, *style);
            // The empty paragraph that every text ends in behind a table is the reader's own.
            const bool endsTable = m_previousCell.has_value();
            endTable();
            if (!endsTable || !range.isEmpty() || range.end() < m_text.length())
                paragraph(range, *style);
        });
    }
    endTable();
    m_html.append("\n</body></html>\n");
    return m_html;
}

void Writer::paragraph(TextRange range, const ParagraphStyle& style)
{
    m_html.append("<p style=\"" + paragraphCss(style) + "\">");
    m_isPageBreak = isPageBreak(range);
    runs(range);
    m_isPageBreak = false;
    // A line break that ends a block counts for nothing, so one more is needed.
    if (range.isEmpty() || m_text.text()[range.end() - 1] == QChar(lineSeparator))
        m_html.append("<br>");
    m_html.append("</p>\n");
}

void Writer::cell(TextRange range, const ParagraphStyle& style)
{
    const TableCellBlock& block = *style.cell;
    if (m_previousCell && m_previousCell->table.id != block.table.id)
        endTable();
    if (!m_previousCell)
        m_html.append("<table style=\"border-collapse:collapse;width:100%\">\n<tr>");
    else if (m_previousCell->row != block.row)
        m_html.append("</tr>\n<tr>");
    m_previousCell = block;
    m_html.append("<td" + cellAttributes(block) + '>');
    paragraph(range, style);
    m_html.append("</td>");
}

void Writer::endTable()
{
    if (m_previousCell)
        m_html.append("</tr></table>\n");
    m_previousCell.reset();
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
    if (!style->link.isEmpty())
        m_html.append("<a href=\"" + style->link.toHtmlEscaped().toUtf8() + "\">");
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
    if (!style->link.isEmpty())
        m_html.append("</a>");
    m_html.append("</span>");
}

void Writer::picture(const CharacterStyle& style)
{
    QByteArray data;
    QSizeF size;
    if (const auto* image = style.imageAttachment()) {
        data = image->imageData;
        size = image->renderedSize;
    } else if (const auto* chart = style.chartAttachment()) {
        data = chart->renderedImageData;
        size = {chart->chartBlock.width, chart->chartBlock.height};
    }
    const bool isJpeg = data.startsWith("\xff\xd8\xff");
    if (!isJpeg && !data.startsWith("\x89PNG"))
        data = AttachmentManager::imageDataFromBytes(data).value_or(QByteArray());
    if (data.isEmpty())
        return;
    constexpr double pixelsPerPoint = 96.0 / 72;
    m_html.append("<img width=\"" + number(size.width() * pixelsPerPoint) + "\" height=\"" +
                  number(size.height() * pixelsPerPoint) + "\" src=\"data:image/");
    m_html.append(isJpeg ? "jpeg" : "png");
    m_html.append(";base64," + data.toBase64() + "\">");
}

} // namespace

QByteArray writeHtml(const AttributedString& text)
{
    return Writer(text).write();
}

} // namespace orvane
