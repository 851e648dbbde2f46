// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/markdown/MarkdownScanners.h"

#include <QHash>

namespace orvane {

namespace {

struct FenceLine {
    qsizetype start = 0;
    qsizetype ticks = 0;
    bool isLast = false; ///< no line break follows
    bool canClose = false;
};

QList<FenceLine> fenceLines(QStringView text)
{
    QList<FenceLine> lines;
    qsizetype from = 0;
    while (from <= text.size()) {
        const qsizetype newline = text.indexOf(u'\n', from);
        const qsizetype end = newline < 0 ? text.size() : newline;
        const QStringView line = text.sliced(from, end - from);
        if (line.startsWith(u"```")) {
            qsizetype ticks = 3;
            while (ticks < line.size() && line[ticks] == u'`')
                ++ticks;
            lines.append({from, ticks, newline < 0, line.sliced(ticks).trimmed().isEmpty()});
        }
        if (newline < 0)
            break;
        from = newline + 1;
    }
    return lines;
}

/// Where the white space behind a closing fence ends at the end of a line.
qsizetype endOfBlanks(QStringView text, qsizetype from)
{
    qsizetype lineEnd = text.size();
    for (qsizetype i = from; i < text.size(); ++i) {
        if (text[i] == u'\n')
            lineEnd = i;
        else if (!text[i].isSpace())
            return lineEnd;
    }
    return text.size();
}

/// Remembers where the next of one character stands, for positions that only rise.
class Next {
public:
    Next(QStringView text, QChar character)
        : m_text(text)
        , m_character(character)
    {}

    /// At or after `from`; -1 if there is none.
    qsizetype from(qsizetype from)
    {
        if (m_position >= 0 && m_position < from)
            m_position = m_text.indexOf(m_character, from);
        return m_position;
    }

private:
    QStringView m_text;
    QChar m_character;
    qsizetype m_position = 0;
};

} // namespace

QList<TextRange> fencedBlocks(QStringView text)
{
    const QList<FenceLine> lines = fenceLines(text);
    QHash<qsizetype, QList<qsizetype>> closers;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].canClose)
            closers[lines[i].ticks].append(i);
    }
    const auto closerAfter = [&](qsizetype opening) -> qsizetype {
        for (qsizetype ticks = lines[opening].ticks; ticks >= 3; --ticks) {
            const auto known = closers.constFind(ticks);
            if (known == closers.constEnd())
                continue;
            const auto found = std::upper_bound(known->begin(), known->end(), opening);
            if (found != known->end())
                return *found;
        }
        return -1;
    };

    QList<TextRange> blocks;
    qsizetype end = 0;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].start < end || lines[i].isLast)
            continue;
        const qsizetype closer = closerAfter(i);
        if (closer < 0)
            continue;
        end = endOfBlanks(text, lines[closer].start + lines[closer].ticks);
        blocks.append(TextRange::between(lines[i].start, end));
        i = closer;
    }
    return blocks;
}

QList<MarkdownLink> markdownLinks(QStringView text)
{
    QList<MarkdownLink> links;
    Next textClose(text, u']');
    Next targetClose(text, u')');
    for (qsizetype open = text.indexOf(u'['); open >= 0;) {
        const qsizetype close = textClose.from(open + 1);
        if (close < 0)
            break;
        const bool isLink = close > open + 1 && close + 2 < text.size() && text[close + 1] == u'(';
        const qsizetype end = isLink ? targetClose.from(close + 2) : -1;
        if (end > close + 2)
            links.append({open, close, end});
        open = text.indexOf(u'[', end > close + 2 ? end + 1 : open + 1);
    }
    return links;
}

} // namespace orvane
