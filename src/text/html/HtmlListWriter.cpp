// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/HtmlListWriter.h"

#include "text/lists/ListMarker.h"

#include <algorithm>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t deepest = 9;

/// What stands behind `type=` in a numbered list.
char numberType(EditorListStyle style)
{
    switch (style) {
    case EditorListStyle::upperRoman:
        return 'I';
    case EditorListStyle::lowerRoman:
        return 'i';
    case EditorListStyle::upperAlpha:
        return 'A';
    case EditorListStyle::lowerAlpha:
        return 'a';
    default:
        return '1';
    }
}

/// The value of `list-style-type` for a bullet: a word where there is one, else a string.
QByteArray bulletCss(const ListItem& item, QStringView bullet)
{
    if (item.style == EditorListStyle::checkbox)
        return "none";
    if (bullet == u"•")
        return "disc";
    if (bullet == u"○")
        return "circle";
    if (bullet == u"■")
        return "square";
    QString text = bullet.toString();
    text.remove(u'\'').remove(u';').remove(u'\\');
    return "'" + text.toHtmlEscaped().toUtf8() + " '";
}

} // namespace

void HtmlListWriter::beginItem(const ListItem& item, QStringView marker, const QByteArray& css)
{
    const bool isBox = item.style == EditorListStyle::checkbox;
    const QStringView bullet = isNumbered(item.style) || isBox ? QStringView() : marker;
    const std::size_t depth = std::min(std::size_t(std::max(0, item.level)) + 1, deepest);
    while (m_lists.size() > depth)
        close();
    if (m_lists.size() == depth) {
        const List& list = m_lists.back();
        if (list.style != item.style || list.bullet != bullet)
            close();
        else if (list.hasItem)
            m_html.append("</li>");
    }
    while (m_lists.size() < depth)
        open(item, bullet);
    List& list = m_lists.back();
    m_html.append("<li");
    if (isNumbered(item.style) && list.next != item.number)
        m_html.append(" value=\"" + QByteArray::number(item.number) + '"');
    list.next = item.number + 1;
    list.hasItem = true;
    m_html.append(" style=\"" + css + "\">");
    if (isBox) {
        const bool isTicked = marker.startsWith(QChar(ListContinuationHelper::tickedBox));
        m_html.append("<input type=\"checkbox\" disabled");
        m_html.append(isTicked ? " checked>" : ">");
    }
}

void HtmlListWriter::open(const ListItem& item, QStringView bullet)
{
    static const QByteArray place("margin:0;padding-left:24pt;");
    if (isNumbered(item.style)) {
        m_html.append(QByteArray("<ol type=\"") + numberType(item.style) + '"');
        if (item.number != 1)
            m_html.append(" start=\"" + QByteArray::number(item.number) + '"');
        m_html.append(" style=\"" + place + "\">");
    } else {
        m_html.append("<ul style=\"" + place + "list-style-type:" + bulletCss(item, bullet) +
                      "\">");
    }
    m_lists.push_back({item.style, bullet.toString(), item.number});
}

void HtmlListWriter::close()
{
    if (m_lists.back().hasItem)
        m_html.append("</li>");
    m_html.append(isNumbered(m_lists.back().style) ? "</ol>" : "</ul>");
    m_lists.pop_back();
}

void HtmlListWriter::end()
{
    if (m_lists.empty())
        return;
    while (!m_lists.empty())
        close();
    m_html.append('\n');
}

} // namespace orvane
