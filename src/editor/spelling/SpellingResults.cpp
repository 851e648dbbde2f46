// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/SpellingResults.h"

#include "text/store/TextStore.h"

#include <QElapsedTimer>
#include <QTimerEvent>

namespace orvane {

namespace {

/// In milliseconds. A slice leaves room for a key in a frame.
constexpr qint64 sliceLength = 3;
constexpr int pauseLength = 150;
/// More than a screen has; what was scrolled past need not be found out.
constexpr qsizetype mostWanted = 200;
/// How far to look for white space to end a piece at.
constexpr qsizetype longestRun = 200;

/// Where the piece begins that should begin at `offset` of a paragraph.
qsizetype pieceStart(const TextStore& store, TextRange paragraph, qsizetype offset)
{
    if (offset <= 0)
        return paragraph.location;
    const qsizetype wanted = paragraph.location + offset;
    const qsizetype last = std::min(wanted + longestRun, paragraph.end());
    for (qsizetype position = wanted; position < last; ++position) {
        if (store.characterAt(position).isSpace())
            return position;
    }
    return last;
}

} // namespace

QList<TextRange> spellingPieces(const TextStore& store, const QTextBlock& block, TextRange range)
{
    const TextRange paragraph{block.position(), block.length() - 1};
    const qsizetype from = std::max(range.location, paragraph.location);
    const qsizetype to = std::min(range.end(), paragraph.end());
    QList<TextRange> pieces;
    if (from > to)
        return pieces;
    const auto number = (from - paragraph.location) / spellingPieceLength;
    qsizetype offset = std::max<qsizetype>(number - 1, 0) * spellingPieceLength;
    qsizetype start = pieceStart(store, paragraph, offset);
    while (start <= to) {
        offset += spellingPieceLength;
        const qsizetype end = pieceStart(store, paragraph, offset);
        if (end > from || end == paragraph.end())
            pieces.append(TextRange::between(start, end));
        if (end == paragraph.end())
            break;
        start = end;
    }
    return pieces;
}

void SpellingResults::setChecker(SpellChecker* checker)
{
    m_checker = checker;
    forget();
}

void SpellingResults::forget()
{
    m_known.clear();
    m_wanted.clear();
    m_timer.stop();
    m_waits = false;
}

const QList<TextRange>* SpellingResults::find(const QString& piece)
{
    if (const auto* known = m_known.object(piece))
        return known;
    if (!m_wanted.contains(piece))
        m_wanted.append(piece);
    if (m_wanted.size() > mostWanted)
        m_wanted.removeFirst();
    if (!m_timer.isActive())
        m_timer.start(0, this);
    return nullptr;
}

QList<TextRange> SpellingResults::check(const QString& piece)
{
    if (const auto* known = m_known.object(piece))
        return *known;
    const QList<TextRange> misspelt =
        m_checker ? m_checker->misspellings(piece) : QList<TextRange>();
    m_known.insert(piece, new QList<TextRange>(misspelt));
    return misspelt;
}

void SpellingResults::waitForPause()
{
    m_waits = true;
    m_timer.start(pauseLength, this);
}

void SpellingResults::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return QObject::timerEvent(event);
    // What is wanted from before the pause may no longer be the text.
    if (std::exchange(m_waits, false))
        m_wanted.clear();
    QElapsedTimer time;
    time.start();
    while (!m_wanted.isEmpty() && time.elapsed() < sliceLength)
        static_cast<void>(check(m_wanted.takeFirst()));
    if (m_wanted.isEmpty()) {
        m_timer.stop();
        emit found();
    } else {
        m_timer.start(0, this);
    }
}

} // namespace orvane
