// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/lists/ListItems.h"

#include "text/lists/ListMarker.h"

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
    [[nodiscard]] std::optional<ListItem> itemAt(TextRange range,
                                                 const ParagraphStyle& style) const;
    [[nodiscard]] std::optional<ListItem> itemBefore(const ListItem& item, TextRange range) const;
    void remember(const ListItem& item);

    const AttributedString& m_text;
    std::vector<std::optional<ListItem>> m_latest; // of the present list, by level
};

std::optional<ListItem> Reader::itemAt(TextRange range, const ParagraphStyle& style) const
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
    item.marker.length = ownBulletLength(content);
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

QList<ListItem> Reader::read()
{
    QList<ListItem> items;
    std::optional<TextRange> before; // the paragraph before, where it is no item
    m_text.forEachParagraph([&](TextRange range, const SharedParagraphStyle& style) {
        const bool isLabelled = !style->textLists.isEmpty() && !style->cell;
        const auto item = isLabelled ? itemAt(range, *style) : std::nullopt;
        if (!item) {
            m_latest.clear();
            before = style->cell ? std::nullopt : std::optional(range);
            return;
        }
        if (const auto first = before ? itemBefore(*item, *before) : std::nullopt)
            items.append(*first);
        before.reset();
        items.append(*item);
        remember(*item);
    });
    return items;
}

} // namespace

QList<ListItem> listItems(const AttributedString& text)
{
    return Reader(text).read();
}

} // namespace orvane
