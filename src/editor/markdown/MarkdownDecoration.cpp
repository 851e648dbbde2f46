// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/markdown/MarkdownDecoration.h"

#include "editor/markdown/MarkdownSyntaxHighlighter.h"

#include <algorithm>

namespace orvane {

namespace {

MarkdownSpans spansOf(std::span<const MarkdownStyle> styles)
{
    MarkdownSpans spans;
    const auto isBase = [](MarkdownStyle style) {
        return style == MarkdownStyle{};
    };
    if (std::all_of(styles.begin(), styles.end(), isBase))
        return spans;
    for (std::size_t from = 0; from < styles.size();) {
        std::size_t to = from + 1;
        while (to < styles.size() && styles[to] == styles[from])
            ++to;
        if (!isBase(styles[from]))
            spans.append({int(from), int(to - from), styles[from]});
        from = to;
    }
    return spans;
}

QList<MarkdownLine> linesFrom(QStringView text, std::span<const MarkdownStyle> styles)
{
    QList<MarkdownLine> lines;
    qsizetype from = 0;
    for (;;) {
        const qsizetype newline = text.indexOf(u'\n', from);
        const qsizetype length = (newline < 0 ? text.size() : newline) - from;
        lines.append({length, spansOf(styles.subspan(std::size_t(from), std::size_t(length)))});
        if (newline < 0)
            return lines;
        from = newline + 1;
    }
}

} // namespace

void MarkdownDecoration::load(QStringView text)
{
    QList<MarkdownStyle> styles(text.size());
    MarkdownSyntaxHighlighter::applyAllPatterns(text, styles);
    m_lines = linesFrom(text, styles);
}

qsizetype MarkdownDecoration::countAfter(const MarkdownChange& change) const
{
    return m_lines.size() - change.linesBefore + change.linesAfter;
}

LineSpan MarkdownDecoration::neighbourhood(const MarkdownChange& change) const
{
    const qsizetype first = std::max<qsizetype>(0, change.firstLine - 1);
    const qsizetype end = std::min(countAfter(change), change.firstLine + change.linesAfter + 1);
    return {first, end - first};
}

/// The styles of whole lines, one for each UTF-16 unit, line breaks between them included.
QList<MarkdownStyle> MarkdownDecoration::stylesOf(LineSpan lines) const
{
    qsizetype length = 0;
    for (qsizetype i = 0; i < lines.count; ++i)
        length += m_lines[lines.first + i].length + 1;
    QList<MarkdownStyle> styles(length);
    qsizetype start = 0;
    for (qsizetype i = 0; i < lines.count; ++i) {
        const MarkdownLine& line = m_lines[lines.first + i];
        for (const MarkdownSpan& span : line.spans)
            std::fill_n(styles.begin() + start + span.start, span.length, span.style);
        start += line.length + 1;
    }
    return styles;
}

LineSpan MarkdownDecoration::update(const MarkdownChange& change, QStringView text)
{
    const LineSpan after = neighbourhood(change);
    const LineSpan before{after.first, after.count - change.linesAfter + change.linesBefore};

    // Fonts stay with their characters: what was removed goes, what is new has none.
    QList<MarkdownStyle> styles = stylesOf(before);
    qsizetype at = change.offset;
    for (qsizetype line = before.first; line < change.firstLine; ++line)
        at += m_lines[line].length + 1;
    at = std::min(at, styles.size());
    styles.remove(at, std::min(change.lengthBefore, styles.size() - at));
    styles.insert(at, change.lengthAfter, MarkdownStyle{});
    styles.resize(text.size()); // the last line may have no line break

    MarkdownSyntaxHighlighter::resetToBase(styles);
    MarkdownSyntaxHighlighter::applyAllPatterns(text, styles);

    const bool isLast = after.first + after.count == countAfter(change);
    QList<MarkdownLine> lines = linesFrom(isLast ? text : text.chopped(1), styles);
    const auto isKept = [&](qsizetype line) {
        const qsizetype old =
            line < change.firstLine ? line : line - change.linesAfter + change.linesBefore;
        return lines[line - after.first].spans == m_lines[old].spans;
    };
    qsizetype first = change.firstLine;
    qsizetype end = change.firstLine + change.linesAfter;
    if (first > after.first && !isKept(first - 1))
        --first;
    if (end < after.first + after.count && !isKept(end))
        ++end;

    if (before.count == lines.size()) {
        std::move(lines.begin(), lines.end(), m_lines.begin() + before.first);
    } else {
        m_lines.remove(before.first, before.count);
        m_lines.insert(before.first, lines.size(), MarkdownLine{});
        std::move(lines.begin(), lines.end(), m_lines.begin() + before.first);
    }
    return {first, end - first};
}

} // namespace orvane
