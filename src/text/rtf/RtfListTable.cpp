// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfListTable.h"

#include "text/lists/ListMarker.h"
#include "text/rtf/RtfState.h"
#include "text/rtf/RtfText.h"

#include <algorithm>

namespace orvane {
namespace {

namespace lists = ListContinuationHelper;

constexpr int bulletFormat = 23;

/// The number of a marker's kind behind `\levelnfc`.
int numberFormat(EditorListStyle style)
{
    switch (style) {
    case EditorListStyle::decimal:
        return 0;
    case EditorListStyle::upperRoman:
        return 1;
    case EditorListStyle::lowerRoman:
        return 2;
    case EditorListStyle::upperAlpha:
        return 3;
    case EditorListStyle::lowerAlpha:
        return 4;
    default:
        return bulletFormat;
    }
}

} // namespace

RtfListTable::RtfListTable(const AttributedString& text)
{
    Levels levels;
    qsizetype first = 0; // of the items of the present list
    const auto close = [&] {
        if (first == m_items.size())
            return;
        const int number = listNumber(levels);
        for (; first < m_items.size(); ++first)
            m_items[first].list = number;
        levels = {};
    };
    for (const ListItem& item : listItems(text)) {
        const int level = std::clamp(item.level, 0, levelCount - 1);
        const QStringView bullet =
            isNumbered(item.style)
                ? QStringView()
                : QStringView(text.text()).sliced(item.marker.location, item.marker.length);
        const bool continues = !m_items.isEmpty() &&
                               m_items.last().item.paragraph.end() + 1 == item.paragraph.location;
        if (!continues || !fits(levels, level, item, bullet))
            close();
        count(levels, level, item, bullet);
        m_items.append({item, 0, level});
    }
    close();
}

bool RtfListTable::fits(const Levels& levels, int level, const ListItem& item, QStringView bullet)
{
    const std::optional<Level>& known = levels[std::size_t(level)];
    if (!known)
        return true;
    return known->style == item.style && known->bullet == bullet &&
           (!isNumbered(item.style) || known->next == item.number);
}

void RtfListTable::count(Levels& levels, int level, const ListItem& item, QStringView bullet)
{
    std::optional<Level>& own = levels[std::size_t(level)];
    if (!own)
        own = Level{item.style, bullet.toString(), item.number, item.number};
    ++own->next;
    for (auto deeper = std::size_t(level) + 1; deeper < levels.size(); ++deeper) {
        if (levels[deeper])
            levels[deeper]->next = levels[deeper]->start;
    }
}

QByteArray RtfListTable::levelWords(const std::optional<Level>& level, int index)
{
    const EditorListStyle style = level ? level->style : EditorListStyle::disc;
    const int format = numberFormat(style);
    QByteArray words("{\\listlevel");
    appendRtfWord(words, "\\levelnfc", format);
    appendRtfWord(words, "\\levelnfcn", format);
    appendRtfWord(words, "\\leveljc0\\leveljcn0\\levelfollow0\\levelstartat",
                  level && isNumbered(style) ? level->start : 1);
    words.append("{\\leveltext\\'0");
    if (format == bulletFormat) {
        const QString bullet = level ? level->bullet : lists::markerText(style, 1);
        words.append(char('0' + std::min<qsizetype>(bullet.size(), 9)));
        appendRtfText(words, bullet);
        words.append(";}{\\levelnumbers;}");
    } else {
        appendRtfWord(words, "2\\'0", index);
        words.append(".;}{\\levelnumbers\\'01;}");
    }
    const auto twips = [](double points) {
        return int(points * twipsPerPoint);
    };
    appendRtfWord(words, "\\fi", -twips(lists::markerWidth));
    appendRtfWord(words, "\\li", twips(lists::indentPerLevel * index + lists::markerWidth));
    words.append('}');
    return words;
}

// Lists that look alike share an entry of the list table. Numbers start anew by an override of
// their own.
int RtfListTable::listNumber(const Levels& levels)
{
    QByteArray words;
    int numbered = 0; // the levels up to the last one that counts
    for (int i = 0; i < levelCount; ++i) {
        const std::optional<Level>& level = levels[std::size_t(i)];
        std::optional<Level> shape = level;
        if (shape)
            shape->start = 1;
        words += levelWords(shape, i);
        if (level && isNumbered(level->style))
            numbered = i + 1;
    }
    int& id = m_lists[words];
    if (id == 0) {
        id = int(m_lists.size());
        appendRtfWord(m_listTable, "{\\list\\listtemplateid", id);
        m_listTable += "\\listhybrid" + words;
        appendRtfWord(m_listTable, "{\\listname ;}\\listid", id);
        m_listTable += "}\n";
    }
    int& known = m_bulletLists[id];
    if (numbered == 0 && known > 0)
        return known;
    known = ++m_listNumber;
    appendRtfWord(m_overrides, "{\\listoverride\\listid", id);
    const int overridden = numbered > 1 ? levelCount : numbered;
    appendRtfWord(m_overrides, "\\listoverridecount", overridden);
    for (int i = 0; i < overridden; ++i) {
        const std::optional<Level>& level = levels[std::size_t(i)];
        appendRtfWord(m_overrides, "{\\lfolevel\\listoverridestartat\\levelstartat",
                      level && isNumbered(level->style) ? level->start : 1);
        m_overrides += '}';
    }
    appendRtfWord(m_overrides, "\\ls", m_listNumber);
    m_overrides += "}\n";
    return m_listNumber;
}

void RtfListTable::skipTo(qsizetype position)
{
    while (m_next < m_items.size() && m_items[m_next].item.paragraph.location < position)
        ++m_next;
}

bool RtfListTable::hasItemsIn(TextRange paragraph)
{
    skipTo(paragraph.location);
    return m_next < m_items.size() && m_items[m_next].item.paragraph.location <= paragraph.end();
}

const RtfListTable::Item* RtfListTable::itemAt(qsizetype paragraphStart)
{
    skipTo(paragraphStart);
    const bool isItem =
        m_next < m_items.size() && m_items[m_next].item.paragraph.location == paragraphStart;
    return isItem ? &m_items[m_next] : nullptr;
}

void RtfListTable::appendTables(QByteArray& rtf) const
{
    if (m_items.isEmpty())
        return;
    rtf += "{\\*\\listtable\n" + m_listTable + "}\n{\\*\\listoverridetable\n" + m_overrides + "}\n";
}

} // namespace orvane
