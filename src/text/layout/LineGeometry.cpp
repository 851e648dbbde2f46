// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/LineGeometry.h"

#include <QGlyphRun>
#include <QRawFont>

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane {

namespace {

using Stretch = std::pair<qreal, qreal>;

/// Less than this far apart, two carets are one.
constexpr qreal sameCaret = 0.01;

bool isRightToLeft(QChar character)
{
    if (character.unicode() < 0x590)
        return false;
    // Halves of pairs have no direction; these begin the scripts that run right to left.
    const char16_t unit = character.unicode();
    if (character.isHighSurrogate())
        return unit == 0xd802 || unit == 0xd803 || unit == 0xd83a || unit == 0xd83b;
    const QChar::Direction direction = character.direction();
    return direction == QChar::DirR || direction == QChar::DirAL || direction == QChar::DirAN ||
           direction == QChar::DirRLE || direction == QChar::DirRLO || direction == QChar::DirRLI;
}

bool isLeftToRight(QChar character)
{
    const QChar::Direction direction = character.direction();
    return direction == QChar::DirL || direction == QChar::DirEN || direction == QChar::DirLRE ||
           direction == QChar::DirLRO || direction == QChar::DirLRI;
}

} // namespace

LineGeometry::LineGeometry(const QTextLayout& layout, const QTextLine& line, QStringView text)
    : m_layout(layout)
    , m_line(line)
    , m_lineText(text.mid(line.textStart(), line.textLength()))
    , m_runsRightToLeft(layout.textOption().textDirection() == Qt::RightToLeft)
    , m_hasBothDirections(std::any_of(m_lineText.begin(), m_lineText.end(),
                                      m_runsRightToLeft ? isLeftToRight : isRightToLeft))
{
    if (m_hasBothDirections || m_runsRightToLeft)
        findUndrawnBlanks();
}

void LineGeometry::findUndrawnBlanks()
{
    const int end = m_line.textStart() + m_line.textLength();
    int first = end;
    while (first > m_line.textStart() && m_lineText[first - 1 - m_line.textStart()].isSpace() &&
           m_line.glyphRuns(first - 1, 1).isEmpty())
        --first;
    if (first == end)
        return;
    qreal left = std::numeric_limits<qreal>::max();
    qreal right = std::numeric_limits<qreal>::lowest();
    for (int place = first; place < end; ++place) {
        for (const QTextLine::Edge edge : {QTextLine::Leading, QTextLine::Trailing}) {
            const qreal x = m_line.cursorToX(place, edge);
            left = std::min(left, x);
            right = std::max(right, x);
        }
    }
    m_undrawn = right - left;
    m_undrawnRight = right;
}

qreal LineGeometry::caretX(int place) const
{
    const qreal x = m_line.cursorToX(place);
    if (m_undrawn == 0)
        return x;
    const qreal closedUp = x > m_undrawnRight - sameCaret ? m_undrawn : 0;
    return x + (m_runsRightToLeft ? m_undrawn : 0) - closedUp;
}

int LineGeometry::placeAt(qreal x) const
{
    const int start = m_line.textStart();
    const int end = start + m_line.textLength();
    int nearest = start;
    qreal distance = std::numeric_limits<qreal>::max();
    for (int place = start; place <= end; ++place) {
        const qreal away = std::abs(caretX(place) - x);
        if (away < distance - sameCaret && m_layout.isValidCursorPosition(place)) {
            nearest = place;
            distance = away;
        }
    }
    return nearest;
}

// It has no glyph, and runs as the paragraph does whatever stands beside it (UAX #9, L1). So it
// reaches to the next caret on that side.
Stretch LineGeometry::stretchOfTab(int tab) const
{
    const qreal start = caretX(tab);
    qreal end = start;
    for (int place = m_line.textStart(); place <= m_line.textStart() + m_lineText.size(); ++place) {
        const qreal x = caretX(place);
        const bool isBehind = m_runsRightToLeft ? x < start - sameCaret : x > start + sameCaret;
        if (isBehind && (end == start || std::abs(x - start) < std::abs(end - start)))
            end = x;
    }
    return {std::min(start, end), std::max(start, end)};
}

QList<Stretch> LineGeometry::stretchesOf(int from, int to) const
{
    if (!m_hasBothDirections) {
        const qreal a = caretX(from);
        const qreal b = caretX(to);
        return {{std::min(a, b), std::max(a, b)}};
    }
    QList<Stretch> glyphs;
    for (const QGlyphRun& run : m_line.glyphRuns(from, to - from)) {
        const QList<QPointF> positions = run.positions();
        const QList<QPointF> advances = run.rawFont().advancesForGlyphIndexes(run.glyphIndexes());
        for (qsizetype i = 0; i < positions.size(); ++i)
            glyphs.append({positions[i].x(), positions[i].x() + advances[i].x()});
    }
    for (int place = from; place < to; ++place) {
        if (m_lineText[place - m_line.textStart()] == u'\t')
            glyphs.append(stretchOfTab(place));
    }
    std::sort(glyphs.begin(), glyphs.end());
    // Kerning and justification leave small gaps between neighbours.
    const qreal gap = (m_line.ascent() + m_line.descent()) / 6;
    QList<Stretch> joined;
    for (const Stretch& glyph : glyphs) {
        if (!joined.isEmpty() && glyph.first <= joined.last().second + gap)
            joined.last().second = std::max(joined.last().second, glyph.second);
        else
            joined.append(glyph);
    }
    return joined;
}

} // namespace orvane
