// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/find/FindMatches.h"

#include <algorithm>

namespace orvane {

namespace {

/// How far a change reaches by what it joins or parts: an accent, a family of emoji.
constexpr qsizetype joinedAround = 16;

} // namespace

void FindMatches::search(const QString& query, QStringView text)
{
    m_search = TextSearch(query);
    m_ranges = m_search.all(text);
}

void FindMatches::clear()
{
    m_search = TextSearch();
    m_ranges.clear();
}

void FindMatches::update(const TextChange& change, qsizetype length, const ReadText& read)
{
    if (m_search.isEmpty())
        return;
    const qsizetype shift = change.lengthAfter - change.lengthBefore;
    const qsizetype reach = m_search.longestMatch();
    const auto isBefore = [](TextRange match, qsizetype position) {
        return match.end() < position;
    };
    const auto begin = std::lower_bound(m_ranges.cbegin(), m_ranges.cend(),
                                        change.location - joinedAround, isBefore);
    const qsizetype first = begin - m_ranges.cbegin();
    auto old = begin;

    // Looks anew from before the change up to a place that neither the matches found now nor those
    // of before cross: from there on both are the same.
    QList<TextRange> found;
    qsizetype from = std::max(first == 0 ? 0 : m_ranges.at(first - 1).end(),
                              change.location - joinedAround - reach);
    qsizetype common = std::min(length, change.location + change.lengthAfter + joinedAround);
    for (;;) {
        const qsizetype end = std::min(length, common + reach + joinedAround);
        const qsizetype start = std::max<qsizetype>(0, from - joinedAround);
        const QString text = read(TextRange::between(start, end));
        for (auto match = m_search.first(text, from - start);
             match && start + match->location < common;
             match = m_search.first(text, match->end())) {
            found.append({start + match->location, match->length});
            from = found.last().end();
        }
        qsizetype furthest = from;
        for (; old != m_ranges.cend() && old->location + shift < common; ++old)
            furthest = std::max(furthest, old->end() + shift);
        if (furthest <= common)
            break;
        common = furthest;
    }
    const qsizetype gone = old - begin;
    if (found.size() > gone)
        m_ranges.insert(first, found.size() - gone, {});
    else
        m_ranges.remove(first, gone - found.size());
    const auto behind = std::copy(found.cbegin(), found.cend(), m_ranges.begin() + first);
    if (shift != 0)
        std::for_each(behind, m_ranges.end(),
                      [shift](TextRange& match) { match.location += shift; });
}

std::pair<qsizetype, qsizetype> FindMatches::touching(TextRange range) const
{
    const auto first = std::lower_bound(
        m_ranges.begin(), m_ranges.end(), range.location,
        [](TextRange match, qsizetype position) { return match.end() <= position; });
    const auto end = std::lower_bound(
        first, m_ranges.end(), range.end(),
        [](TextRange match, qsizetype position) { return match.location < position; });
    return {first - m_ranges.begin(), end - m_ranges.begin()};
}

qsizetype FindMatches::indexOf(TextRange range) const
{
    const qsizetype index = touching(range).first;
    return index < m_ranges.size() && m_ranges[index] == range ? index : -1;
}

TextEdits replacingAll(QStringView text, const QList<TextRange>& matches,
                       const QString& replacement, TextRange selection)
{
    TextEdits edits;
    edits.name = QStringLiteral("Replace All");
    for (const TextRange match : matches) {
        if (text.sliced(match.location, match.length) != replacement)
            edits.replacements.append({match, replacement, match.location});
    }
    edits.selection = TextRange::between(
        positionAfter(edits.replacements, selection.location, InsertionSide::before),
        positionAfter(edits.replacements, selection.end(), InsertionSide::before));
    return edits;
}

} // namespace orvane
