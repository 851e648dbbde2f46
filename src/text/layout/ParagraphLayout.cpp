// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/ParagraphLayout.h"

#include "text/store/TextStore.h"
#include "text/value/LayoutUnits.h"

#include <QFontMetricsF>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr qreal u = layoutUnitsPerPoint;
/// Lines are let go of only beyond this many characters: a dozen screens of text.
constexpr qsizetype keptCharacters = 60'000;

QFont referenceFont(const TextFont& font)
{
    QFont result = font.toQFont();
    result.setPixelSize(std::max(1, int(std::round(font.size * u))));
    result.setHintingPreference(QFont::PreferNoHinting);
    return result;
}

} // namespace

ParagraphLayout::ParagraphLayout(const TextStore& store)
    : m_store(store)
    , m_styles(store.styles())
    , m_font(referenceFont(m_baseFont))
    , m_objects{m_styles}
{
    store.addObserver(*this);
    estimateAll();
}

ParagraphLayout::ParagraphLayout(const TextStore& store, qreal width, const TextFont& font,
                                 const LineSettings& settings)
    : m_store(store)
    , m_styles(store.styles())
    , m_width(std::max(1.0, width))
    , m_objects{m_styles}
{
    store.addObserver(*this);
    measure(font, settings);
    estimateAll();
}

ParagraphLayout::~ParagraphLayout()
{
    m_store.removeObserver(*this);
    releaseLines();
}

void ParagraphLayout::setWidth(qreal points)
{
    points = std::max(1.0, points);
    if (points == m_width)
        return;
    m_width = points;
    invalidateAll();
}

void ParagraphLayout::setSettings(const TextFont& font, const LineSettings& settings)
{
    if (m_isMeasured && font == m_baseFont && settings == m_settings)
        return;
    measure(font, settings);
    invalidateAll();
}

void ParagraphLayout::measure(const TextFont& font, const LineSettings& settings)
{
    m_isMeasured = true;
    m_baseFont = font;
    m_settings = settings;
    m_font = referenceFont(font);
    m_fonts.clear();
    const QFontMetricsF metrics(m_font);
    const QString sample = QStringLiteral("the quick brown fox jumps over a lazy dog. ");
    m_characterWidth = metrics.horizontalAdvance(sample) / qreal(sample.size());
    m_plainLineHeight =
        (metrics.ascent() + metrics.descent()) * lineStretch(m_font, settings.lineHeight);
}

void ParagraphLayout::setObjectPainter(ObjectPainter* painter)
{
    m_objects.painter = painter;
}

void ParagraphLayout::setTallestObject(qreal points)
{
    if (std::exchange(m_tallestObject, points) != points)
        invalidateAll();
}

void ParagraphLayout::setPieceLength(int characters)
{
    m_pieceLength = std::max(1, characters);
    invalidateAll();
}

QList<TextRange> ParagraphLayout::linesOf(const QTextBlock& block) const
{
    QList<TextRange> lines;
    if (const ParagraphBox* known = existingBox(block)) {
        for (const ParagraphPiece& piece : known->pieces) {
            for (const BrokenLine& line : piece.lines)
                lines.append({block.position() + line.start, line.length});
        }
    }
    return lines;
}

QList<QTextLayout::FormatRange> ParagraphLayout::decorationsOf(const QTextBlock& block)
{
    ensureLaidOut(block);
    QList<QTextLayout::FormatRange> decorations;
    for (const ParagraphPiece& piece : box(block).pieces) {
        // It knows some of what stands before and behind it.
        const int end =
            piece.layout->toLayout(piece.end()) - piece.layout->lead() + piece.layout->start();
        for (QTextLayout::FormatRange range : piece.layout->decorations()) {
            const int before = std::max(0, piece.start - range.start);
            range.start += before;
            range.length -= before;
            range.length = std::min(range.length, end - range.start);
            if (range.length > 0)
                decorations.append(range);
        }
    }
    return decorations;
}

void ParagraphLayout::releaseLines()
{
    for (const QTextBlock& block : m_laidOut)
        forgetLines(block);
    m_laidOut.clear();
    m_laidOutCharacters = 0;
}

void ParagraphLayout::invalidateAll()
{
    ++m_generation;
    releaseLines();
    estimateAll();
    emit everythingChanged();
}

ParagraphBox* ParagraphLayout::existingBox(const QTextBlock& block) const
{
    return ParagraphBoxes::find(block, this);
}

bool ParagraphLayout::isLaidOut(const QTextBlock& block) const
{
    const ParagraphBox* known = existingBox(block);
    return known && known->generation == m_generation && known->hasAllLines();
}

ParagraphBox& ParagraphLayout::boxFor(const QTextBlock& block)
{
    if (ParagraphBox* known = existingBox(block))
        return *known;
    m_laidOut.push_back(block);
    return ParagraphBoxes::make(block, this);
}

const ParagraphBox& ParagraphLayout::box(const QTextBlock& block) const
{
    const ParagraphBox* known = existingBox(block);
    Q_ASSERT(known && known->generation == m_generation);
    return *known;
}

void ParagraphLayout::setDecorator(const ParagraphDecorator* decorator)
{
    if (decorator == m_decorator)
        return;
    m_decorator = decorator;
    // A layout that nobody has looked at yet goes on with its estimates.
    if (!m_laidOut.empty())
        invalidateAll();
}

void ParagraphLayout::decorationChanged(TextRange range)
{
    const QTextBlock first = m_store.blockAt(range.location);
    const QTextBlock last = m_store.blockAt(std::min(range.end(), m_store.length()));
    const qreal top = topOf(first);
    const qreal bottom = bottomOf(last);
    m_changed = {};
    for (QTextBlock block = first;; block = block.next()) {
        if (ParagraphBox* known = existingBox(block); known && !known->pieces.empty()) {
            known->release(std::max(0, int(range.location) - block.position()),
                           int(range.end()) - block.position());
            known->generation = 0;
        }
        if (block == last)
            break;
    }
    emit paragraphsChanged(first, last, top, bottom);
}

void ParagraphLayout::forgetLines(const QTextBlock& block)
{
    if (block.isValid())
        ParagraphBoxes::remove(block, this);
}

void ParagraphLayout::evictFarFrom(qreal top, qreal bottom)
{
    if (m_laidOutCharacters <= keptCharacters)
        return;
    const qreal margin = 2 * (bottom - top);
    const int first = blockAtY(top - margin).blockNumber();
    const QTextBlock lastBlock = blockAtY(bottom + margin);
    const int last = isCell(lastBlock, m_styles) ? rowOf(lastBlock, m_styles).last.blockNumber()
                                                 : lastBlock.blockNumber();
    const QTextBlock composing =
        hasPreedit() ? document().findBlock(m_preedit.position) : QTextBlock();
    std::vector<QTextBlock> kept;
    m_laidOutCharacters = 0;
    for (const QTextBlock& block : m_laidOut) {
        ParagraphBox* known = block.isValid() ? existingBox(block) : nullptr;
        if (!known)
            continue;
        const int number = block.blockNumber();
        const bool isNear = (number >= first && number <= last) || block == composing;
        if (!isNear && (isOnePart(block) || known->generation != m_generation)) {
            forgetLines(block);
            continue;
        }
        kept.push_back(block);
        if (!isOnePart(block) && known->generation == m_generation)
            evictPieces(block, *known, top - margin, bottom + margin);
        for (const ParagraphPiece& piece : known->pieces)
            m_laidOutCharacters += piece.hasLines() ? piece.length : 0;
        ++m_laidOutCharacters;
    }
    m_laidOut = std::move(kept);
}

/// The pieces of a long paragraph are kept without their lines, as their starts and heights are
/// known.
void ParagraphLayout::evictPieces(const QTextBlock& block, ParagraphBox& box, qreal top,
                                  qreal bottom) const
{
    qreal y = pieceTop(block, box, 0);
    for (ParagraphPiece& piece : box.pieces) {
        const qreal end = y + piece.height / u;
        const int composed = hasPreedit() ? m_preedit.position - block.position() : -1;
        const bool composes = composed >= piece.start && composed <= piece.end();
        if ((end < top || y > bottom) && !composes)
            piece.release();
        y = end;
    }
}

void ParagraphLayout::textReplaced(int from, int removed, int added)
{
    // The text that an input method shows goes on standing where it stood, whoever edits.
    if (from < m_preedit.position)
        m_preedit.position = std::max(from, m_preedit.position + added - removed);
    // A document that was cleared has given back what its paragraphs were kept in; they can't even
    // be asked whether they are valid.
    if (from == 0 && !document().findBlock(added).next().isValid()) {
        m_laidOut.clear();
        for (QTextBlock block = document().begin(); block.isValid(); block = block.next()) {
            if (existingBox(block))
                m_laidOut.push_back(block);
        }
    }
    const int count = document().blockCount();
    const auto known = int(m_heights.size());
    QTextBlock first = document().findBlock(from);
    QTextBlock last = document().findBlock(from + added);
    if (!first.isValid())
        first = document().lastBlock();
    if (!last.isValid())
        last = document().lastBlock();
    const QTextBlock changedFirst = first;
    const QTextBlock changedLast = last;
    // The cells beside a changed one change with it, and so do rows that lose or gain a cell.
    const bool isStructural = count != known;
    if (const QTextBlock before = first.previous(); isCell(before, m_styles)) {
        if (isStructural || !isCell(first, m_styles))
            first = before;
    }
    if (const QTextBlock next = last.next(); isCell(next, m_styles)) {
        if (isStructural || !isCell(last, m_styles))
            last = next;
    }
    if (isCell(first, m_styles))
        first = rowOf(first, m_styles).first;
    if (isCell(last, m_styles))
        last = rowOf(last, m_styles).last;

    const int firstNumber = first.blockNumber();
    const int lastNumber = last.blockNumber();
    const int stood = lastNumber - firstNumber + 1 - (count - known);
    if (stood < 0 || firstNumber + stood > known) {
        invalidateAll();
        return;
    }
    const qreal top = m_heights.topOf(firstNumber);
    const qreal oldBottom = m_heights.topOf(firstNumber + stood);
    m_changed = {};
    if (changedFirst == changedLast && !isStructural)
        noteChangeIn(changedFirst, from - changedFirst.position(), removed, added);
    else
        forgetPieces(changedFirst, changedLast);
    std::vector<double> heights;
    for (QTextBlock block = first;; block = block.next()) {
        if (ParagraphBox* box = existingBox(block))
            box->generation = 0;
        heights.push_back(expected(block));
        if (block == last)
            break;
    }
    m_heights.replace(firstNumber, stood, heights);
    emit paragraphsChanged(first, last, top, oldBottom);
}

/// A change within one paragraph leaves the lines that it didn't touch.
void ParagraphLayout::noteChangeIn(const QTextBlock& block, int from, int removed, int added)
{
    ParagraphBox* known = existingBox(block);
    if (!known || known->pieces.empty())
        return;
    const bool isWithin = from + removed <= known->textLength() &&
                          known->textLength() + added - removed == block.length() - 1 &&
                          known->style == m_styles.styleOf(block.blockFormat());
    if (!isWithin) {
        known->pieces.clear();
        return;
    }
    if (known->generation == m_generation && known->cell.isNull())
        m_changed = {block, from, removed, added, known->knownLines(), known->isDecorated()};
    known->replace(from, removed, added, lineReach(known->column, m_characterWidth), cutting());
}

void ParagraphLayout::forgetPieces(const QTextBlock& first, const QTextBlock& last)
{
    for (QTextBlock block = first; block.isValid(); block = block.next()) {
        if (ParagraphBox* known = existingBox(block))
            known->pieces.clear();
        if (block == last)
            return;
    }
}

std::pair<qreal, qreal> ParagraphLayout::changedPart(const QTextBlock& block)
{
    const ParagraphBox& now = arrange(block);
    const std::vector<BrokenLine>& before = m_changed.linesBefore;
    // A decoration may change far from what was typed.
    if (m_changed.block != block || before.empty() || m_changed.wasDecorated || now.isDecorated())
        return {topOf(block), bottomOf(block)};
    const std::vector<BrokenLine> lines = now.knownLines();
    const LineStretch changed = changedLines(m_changed, lines);
    if (changed.first >= changed.past)
        return {bottomOf(block), bottomOf(block)};
    const auto onPage = [&](qreal inContent) {
        return topOf(block) + (now.content.top() + inContent) / u;
    };
    // Where there are fewer lines, what stood in the last of them is gone.
    const BrokenLine& last = lines[changed.past - 1];
    const bool sameCount = before.size() == lines.size();
    return {onPage(lines[changed.first].top),
            sameCount ? onPage(last.top + last.height) : bottomOf(block)};
}

void ParagraphLayout::setPreedit(int position, const QString& text, int caret,
                                 const QList<QTextLayout::FormatRange>& formats)
{
    const Preedit before = std::exchange(m_preedit, {position, text, caret, formats});
    const int end = document().characterCount() - 1;
    const bool moves = before.position != position || text.isEmpty();
    if (!before.text.isEmpty() && moves && before.position <= end)
        textReplaced(before.position, 0, 0);
    if (!text.isEmpty())
        textReplaced(position, 0, 0);
}

} // namespace orvane
