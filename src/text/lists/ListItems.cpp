// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/lists/ListItems.h"

#include "text/lists/ListMarker.h"
#include "text/value/TableWalk.h"

#include <algorithm>
#include <optional>

namespace orvane {
namespace {

namespace lists = ListContinuationHelper;

constexpr qsizetype longestBullet = 8;

/// The length of the bullet that a labelled line begins with, if it is none that is known: a sign,
/// or letters as in "(a)" and "1.2.".
qsizetype ownBulletLength(QStringView line)
{
    const qsizetype blank = line.first(std::min(line.size(), longestBullet + 1)).indexOf(u' ');
    const auto isLetter = [](QChar c) {
        return c.isLetterOrNumber();
    };
    if (blank <= 0)
        return 0;
    const bool isClosed = line[blank - 1] == u')' || line[blank - 1] == u'.';
    return isClosed || std::ranges::none_of(line.first(blank), isLetter) ? blank : 0;
}

class Reader {
public:
    explicit Reader(const AttributedString& text)
        : m_text(text)
    {}

    QList<ListItem> read();

private:
    enum class OwnBullets { taken, left };

    [[nodiscard]] std::optional<ListItem> itemAt(TextRange range, const ParagraphStyle& style,
                                                 OwnBullets own = OwnBullets::taken) const;
    [[nodiscard]] std::optional<ListItem> itemBefore(const ListItem& item, TextRange range) const;
    void readCell(TextRange cell, const ParagraphStyle& style);
    void endRun(qsizetype first, bool isLabelled);
    void remember(const ListItem& item);

    const AttributedString& m_text;
    std::vector<std::optional<ListItem>> m_latest; // of the present list, by level
    QList<ListItem> m_items;
};

std::optional<ListItem> Reader::itemAt(TextRange range, const ParagraphStyle& style,
                                       OwnBullets own) const
{
    const QStringView line = QStringView(m_text.text()).sliced(range.location, range.length);
    const auto tabs = std::ranges::find_if(line, [](QChar c) { return c != u'\t'; }) - line.begin();
    const QStringView content = line.sliced(tabs);
    ListItem item;
    item.paragraph = range;
    item.level = lists::listLevel(style, tabs);
    item.marker = {range.location + tabs, 0};
    if (std::size_t(item.level) < m_latest.size() && m_latest[std::size_t(item.level)]) {
        const ListItem& before = *m_latest[std::size_t(item.level)];
        const QString next = lists::markerPrefix(before.style, 0, before.number + 1);
        if (isNumbered(before.style) && content.startsWith(next)) {
            item.style = before.style;
            item.number = before.number + 1;
            item.marker.length = next.size() - 1;
            return item;
        }
    }
    if (const auto match = lists::matchedPrefix(content)) {
        item.style = match->style;
        item.marker.length = match->prefixLength - 1;
        if (isNumbered(item.style))
            item.number = lists::markerNumber(item.style, content.first(match->prefixLength - 2));
        return item;
    }
    item.marker.length = own == OwnBullets::taken ? ownBulletLength(content) : 0;
    return item.marker.length > 0 ? std::optional(item) : std::nullopt;
}

// The first item of a list may have been typed before it was one.
std::optional<ListItem> Reader::itemBefore(const ListItem& item, TextRange range) const
{
    const auto before = itemAt(range, *m_text.paragraphStyle(range.location));
    if (!before || before->style != item.style || before->level != item.level)
        return std::nullopt;
    const auto markerOf = [&](const ListItem& one) {
        return QStringView(m_text.text()).sliced(one.marker.location, one.marker.length);
    };
    const bool begins = isNumbered(item.style) ? before->number == 1 && item.number == 2
                                               : markerOf(*before) == markerOf(item);
    return begins ? before : std::nullopt;
}

void Reader::remember(const ListItem& item)
{
    m_latest.resize(std::size_t(item.level) + 1);
    m_latest.back() = item;
}

// The lines of a cell have one style, so their tabs alone tell how deep they are.
void Reader::readCell(TextRange cell, const ParagraphStyle& style)
{
    const bool isLabelled = !style.textLists.isEmpty();
    const QList<TextRange> lines = linesOf(m_text, cell);
    const bool isOneLine = lines.size() == 1;
    if (isOneLine && !isLabelled)
        return;
    qsizetype first = m_items.size(); // of the run
    for (const TextRange line : lines) {
        const auto item = itemAt(line, isOneLine ? style : ParagraphStyle(),
                                 isLabelled ? OwnBullets::taken : OwnBullets::left);
        if (item) {
            m_items.append(*item);
            remember(*item);
        } else {
            endRun(first, isLabelled);
            first = m_items.size();
        }
    }
    endRun(first, isLabelled);
}

void Reader::endRun(qsizetype first, bool isLabelled)
{
    m_latest.clear();
    const bool isOne = m_items.size() - first == 1;
    if (isLabelled || !isOne)
        return;
    if (isNumbered(m_items.last().style) || m_items.last().style == EditorListStyle::dash)
        m_items.removeLast();
}

QList<ListItem> Reader::read()
{
    std::optional<TextRange> before; // the paragraph before, where it is no item
    m_text.forEachParagraph([&](TextRange range, const SharedParagraphStyle& style) {
        if (style->cell) {
            m_latest.clear();
            before.reset();
            return readCell(range, *style);
        }
        const bool isLabelled = !style->textLists.isEmpty();
        const auto item = isLabelled ? itemAt(range, *style) : std::nullopt;
        if (!item) {
            m_latest.clear();
            before = range;
            return;
        }
        if (const auto first = before ? itemBefore(*item, *before) : std::nullopt)
            m_items.append(*first);
        before.reset();
        m_items.append(*item);
        remember(*item);
    });
    return std::move(m_items);
}

} // namespace

QList<ListItem> listItems(const AttributedString& text)
{
    return Reader(text).read();
}

} // namespace orvane
