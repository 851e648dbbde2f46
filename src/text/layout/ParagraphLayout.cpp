// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/ParagraphLayout.h"

#include "text/store/Graphemes.h"
#include "text/store/TextStore.h"
#include "text/value/LayoutUnits.h"

#include <QFontMetricsF>
#include <QTextCursor>
#include <QTextDocument>

#include <cmath>
#include <numeric>

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
        // It knows some of what stands behind it.
        const int end = piece.layout->toLayout(piece.end()) - piece.layout->lead() + piece.start;
        for (QTextLayout::FormatRange range : piece.layout->decorations()) {
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

void ParagraphLayout::estimateAll()
{
    std::vector<double> heights;
    heights.reserve(std::size_t(document().blockCount()));
    for (QTextBlock block = document().firstBlock(); block.isValid(); block = block.next())
        heights.push_back(estimate(block));
    m_heights.assign(heights);
}

double ParagraphLayout::estimate(const QTextBlock& block) const
{
    const ParagraphStyle& style = *m_styles.styleOf(block.blockFormat());
    if (!style.cell)
        return estimateText(block, m_width * u) + style.spacingBefore + style.spacingAfter;
    if (continuesRow(block, m_styles))
        return 0;
    double height = 0;
    const TableRow row = rowOf(block, m_styles);
    for (QTextBlock cell = row.first;; cell = cell.next()) {
        const TableCellBlock& about = *cellOf(cell, m_styles);
        const qreal column = m_width * u / std::max(1, about.table.columns);
        height = std::max(height, estimateText(cell, column) + about.look->padding[0] +
                                      about.look->padding[2]);
        if (cell == row.last)
            return height;
    }
}

double ParagraphLayout::estimateText(const QTextBlock& block, qreal column) const
{
    const qreal inLine = std::max(1.0, column / m_characterWidth);
    const qreal lines = std::max(1.0, std::ceil(qreal(block.length() - 1) / inLine));
    return lines * m_plainLineHeight / u;
}

double ParagraphLayout::expected(const QTextBlock& block) const
{
    const ParagraphBox* known = existingBox(block);
    if (!known || known->pieces.empty() || isCell(block, m_styles))
        return estimate(block);
    return (known->content.top() + known->topOf(int(known->pieces.size()))) / u +
           std::max(0.0, known->style->spacingAfter);
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

ParagraphBox::Cutting ParagraphLayout::cutting() const
{
    const qreal inLine = std::max(1.0, m_width * u / m_characterWidth);
    return {m_pieceLength, m_plainLineHeight / inLine};
}

ParagraphSource ParagraphLayout::sourceFor(const QTextBlock& block, const ParagraphBox& box)
{
    ParagraphSource source{m_store, block,       *box.style, m_settings,
                           m_font,  m_decorator, m_objects,  m_fonts};
    if (hasPreedit() && block.contains(m_preedit.position))
        source.preedit = &m_preedit;
    source.column = box.column;
    source.characterWidth = m_characterWidth;
    source.rightToLeft = box.rightToLeft;
    return source;
}

/// Cuts the paragraph into pieces, unless it is cut and its lines stand in the same way.
void ParagraphLayout::prepare(const QTextBlock& block, ParagraphBox& box, qreal column)
{
    const SharedParagraphStyle& style = m_styles.styleOf(block.blockFormat());
    const bool isSame =
        box.column == column && box.style == style && box.textLength() == block.length() - 1;
    if (!isSame)
        box.pieces.clear();
    box.column = column;
    box.style = style;
    box.generation = m_generation;
    if (box.pieces.empty() || box.directionAt < 0) {
        const BaseDirection direction = baseDirection(m_store, block, style->direction);
        if (direction.rightToLeft != box.rightToLeft)
            box.pieces.clear();
        box.rightToLeft = direction.rightToLeft;
        box.directionAt = direction.decidedAt;
    }
    if (box.pieces.empty())
        box.cut(block.length() - 1, cutting());
}

void ParagraphLayout::arrangeParagraph(const QTextBlock& block, ParagraphBox& box)
{
    const ParagraphStyle& style = *m_styles.styleOf(block.blockFormat());
    prepare(block, box, m_width * u);
    box.cell = {};
    box.content = QRectF(0, std::max(0.0, style.spacingBefore) * u, box.column, 0);
    updateHeight(block, box);
}

ParagraphBox& ParagraphLayout::arrange(const QTextBlock& block)
{
    ParagraphBox& known = boxFor(block);
    if (isCell(block, m_styles)) {
        if (!isLaidOut(block))
            layOutRow(block);
    } else if (known.generation != m_generation) {
        arrangeParagraph(block, known);
    }
    return known;
}

void ParagraphLayout::updateHeight(const QTextBlock& block, ParagraphBox& box)
{
    box.content.setHeight(box.topOf(int(box.pieces.size())));
    if (box.cell.isNull()) {
        m_heights.set(block.blockNumber(),
                      box.content.bottom() / u + std::max(0.0, box.style->spacingAfter));
    }
}

/// A guessed start is moved to where a line might begin.
void ParagraphLayout::chooseStart(const QTextBlock& block, ParagraphBox& box, int piece) const
{
    constexpr int searched = 200;
    const int start = box.pieces[std::size_t(piece)].start;
    const int reach = std::min(searched, box.pieces[std::size_t(piece)].length - 1);
    const qsizetype at = block.position() + start;
    const QString behind = m_store.text({at, std::max(0, reach)});
    qsizetype found = behind.indexOf(QChar(lineSeparator));
    if (found < 0)
        found = behind.indexOf(u' ');
    if (found >= 0)
        box.moveStart(piece, int(found) + 1);
    else if (const auto whole = aroundWholeGraphemes(m_store, TextSelection::caret(at)).position;
             whole - at < reach)
        box.moveStart(piece, int(whole - at));
}

void ParagraphLayout::breakPieceAt(const QTextBlock& block, ParagraphBox& box, int index)
{
    const ParagraphSource source = sourceFor(block, box);
    const ParagraphPiece& piece = box.pieces[std::size_t(index)];
    if (piece.start > 0 && !box.hanging && !box.style->textLists.isEmpty())
        (void)breakPiece(source, 0, 1, box.hanging);
    // What has grown or shrunk too far is cut elsewhere.
    const bool isLast = piece.end() == box.textLength();
    const bool isFitting =
        piece.length <= 2 * m_pieceLength && (isLast || 2 * piece.length >= m_pieceLength);
    const int wanted = isFitting ? piece.length : m_pieceLength;
    BrokenPiece broken = breakPiece(source, piece.start, wanted, box.hanging);
    m_laidOutCharacters += broken.length;
    box.place(index, std::move(broken), cutting());
}

int ParagraphLayout::layOutPiece(const QTextBlock& block, ParagraphBox& box, int position)
{
    bool isChanged = false;
    int index = box.pieceAt(position);
    for (;; index = box.pieceAt(position)) {
        const ParagraphPiece& piece = box.pieces[std::size_t(index)];
        if (piece.hasLines() && piece.isFirm)
            break;
        isChanged = true;
        if (piece.isFirm) {
            breakPieceAt(block, box, index);
            continue;
        }
        // Lines that begin at different places soon come to end at the same, so where this piece
        // begins is found by those of the piece before it, wherever they begin.
        const ParagraphPiece& before = box.pieces[std::size_t(index) - 1];
        if (!before.isFirm && !before.hasLines())
            chooseStart(block, box, index - 1);
        breakPieceAt(block, box, index - 1);
    }
    if (isChanged)
        updateHeight(block, box);
    return index;
}

void ParagraphLayout::layOutAllPieces(const QTextBlock& block, ParagraphBox& box)
{
    for (int position = 0;;) {
        const int index = layOutPiece(block, box, position);
        const ParagraphPiece& piece = box.pieces[std::size_t(index)];
        if (index + 1 == int(box.pieces.size()))
            return;
        position = piece.end();
    }
}

void ParagraphLayout::ensureLaidOut(const QTextBlock& block)
{
    if (!block.isValid())
        return;
    ParagraphBox& known = arrange(block);
    layOutAllPieces(block, known);
}

void ParagraphLayout::ensureLaidOut(const QTextBlock& block, qreal top, qreal bottom)
{
    ParagraphBox& known = arrange(block);
    if (isOnePart(block)) {
        layOutAllPieces(block, known);
        return;
    }
    const qreal first = (top - topOf(block)) * u - known.content.top();
    int position = known.pieces[std::size_t(known.pieceAtHeight(first))].start;
    for (;;) {
        const int index = layOutPiece(block, known, position);
        const ParagraphPiece& piece = known.pieces[std::size_t(index)];
        if (index + 1 == int(known.pieces.size()) || pieceTop(block, known, index + 1) >= bottom)
            return;
        position = piece.end();
    }
}

bool ParagraphLayout::isOnePart(const QTextBlock& block) const
{
    const ParagraphBox* known = existingBox(block);
    return isCell(block, m_styles) || (known && known->isWhole());
}

PagePart ParagraphLayout::layOutPartAt(qsizetype position)
{
    const QTextBlock block = m_store.blockAt(position);
    ParagraphBox& known = arrange(block);
    const int index = layOutPiece(block, known, int(position) - block.position());
    if (isOnePart(block))
        return {rowStart(block).position(), topOf(block), bottomOf(block)};
    const bool isLast = index + 1 == int(known.pieces.size());
    const qreal top = index == 0 ? topOf(block) : pieceTop(block, known, index);
    const qreal bottom = isLast ? bottomOf(block) : pieceTop(block, known, index + 1);
    return {block.position() + known.pieces[std::size_t(index)].start, top, bottom};
}

std::optional<PagePart> ParagraphLayout::layOutPartBelow(const PagePart& part)
{
    const QTextBlock block = m_store.blockAt(part.position);
    const ParagraphBox& known = arrange(block);
    if (!isOnePart(block)) {
        const int index = known.pieceAt(int(part.position) - block.position());
        if (index + 1 < int(known.pieces.size()))
            return layOutPartAt(block.position() + known.pieces[std::size_t(index) + 1].start);
    }
    const QTextBlock next = below(block);
    return next.isValid() ? std::optional(layOutPartAt(next.position())) : std::nullopt;
}

std::optional<PagePart> ParagraphLayout::layOutPartAbove(const PagePart& part)
{
    const QTextBlock block = m_store.blockAt(part.position);
    const ParagraphBox& known = arrange(block);
    if (!isOnePart(block)) {
        const int index = known.pieceAt(int(part.position) - block.position());
        if (index > 0)
            return layOutPartAt(block.position() + known.pieces[std::size_t(index)].start - 1);
    }
    const QTextBlock previous = above(block);
    if (!previous.isValid())
        return std::nullopt;
    return layOutPartAt(isCell(previous, m_styles) ? previous.position()
                                                   : previous.position() + previous.length() - 1);
}

PagePlace ParagraphLayout::placeAt(qsizetype position)
{
    const QTextBlock block = m_store.blockAt(position);
    if (isCell(block, m_styles) || block.length() - 1 <= 2 * m_pieceLength)
        return {rowStart(block).position(), topOf(block)};
    const ParagraphBox& known = arrange(block);
    const int inBlock = int(position) - block.position();
    const int index = known.pieceAt(inBlock);
    const ParagraphPiece& piece = known.pieces[std::size_t(index)];
    const BrokenLine none{0, 0, piece.start, 0};
    const BrokenLine* line = &none;
    for (const BrokenLine& one : piece.lines) {
        if (one.start <= inBlock)
            line = &one;
    }
    if (line->start == 0)
        return {block.position(), topOf(block)};
    return {block.position() + line->start, pieceTop(block, known, index) + line->top / u};
}

qreal ParagraphLayout::bottomAt(qsizetype position)
{
    const QTextBlock block = m_store.blockAt(position);
    if (isCell(block, m_styles) || block.length() - 1 <= 2 * m_pieceLength)
        return bottomOf(block);
    const ParagraphBox& known = arrange(block);
    const int index = known.pieceAt(int(position) - block.position());
    return index + 1 == int(known.pieces.size()) ? bottomOf(block)
                                                 : pieceTop(block, known, index + 1);
}

TextRange ParagraphLayout::textBetween(qreal top, qreal bottom)
{
    const qsizetype first = placeAtY(top).position;
    const qsizetype last = placeAtY(bottom).position;
    const QTextBlock block = m_store.blockAt(last);
    const QTextBlock next = below(block);
    qsizetype end = next.isValid() ? qsizetype(next.position()) : m_store.length();
    if (last > block.position() || !isOnePart(block)) {
        const ParagraphBox& known = arrange(block);
        const int index = known.pieceAt(int(last) - block.position());
        if (index + 1 < int(known.pieces.size()))
            end = block.position() + known.pieces[std::size_t(index)].end();
    }
    return TextRange::between(first, end);
}

PagePlace ParagraphLayout::placeAtY(qreal y)
{
    const QTextBlock block = blockAtY(y);
    if (isCell(block, m_styles) || block.length() - 1 <= 2 * m_pieceLength)
        return {block.position(), topOf(block)};
    const ParagraphBox& known = arrange(block);
    const qreal inContent = (y - topOf(block)) * u - known.content.top();
    const int index = known.pieceAtHeight(inContent);
    const ParagraphPiece& piece = known.pieces[std::size_t(index)];
    const qreal inPiece = inContent - known.topOf(index);
    int position = piece.start;
    for (const BrokenLine& line : piece.lines) {
        if (line.top <= inPiece)
            position = line.start;
    }
    return placeAt(block.position() + position);
}

/// Where the columns of a row begin, and last where the row ends. Columns that name no width share
/// what is left; where nothing is left for them, all share alike.
std::vector<qreal> ParagraphLayout::columnEdges(const TableRow& row, qreal width) const
{
    constexpr int mostColumns = 200;
    const int columns = std::clamp(cellOf(row.first, m_styles)->table.columns, 1, mostColumns);
    std::vector<double> percents(std::size_t(columns), 0);
    for (QTextBlock block = row.first;; block = block.next()) {
        const TableCellBlock& cell = *cellOf(block, m_styles);
        if (cell.column >= 0 && cell.column < columns && cell.columnSpan == 1)
            percents[std::size_t(cell.column)] = std::clamp(cell.look->widthPercent, 0.0, 100.0);
        if (block == row.last)
            break;
    }
    const double named = std::accumulate(percents.begin(), percents.end(), 0.0);
    const auto unnamed = std::count(percents.begin(), percents.end(), 0.0);
    const bool sharesAlike = named == 0 || (unnamed > 0 && named >= 100);
    std::vector<qreal> edges{0};
    for (const double percent : percents) {
        double share =
            percent > 0 ? percent / std::max(named, 100.0) : (100 - named) / 100 / double(unnamed);
        if (sharesAlike)
            share = 1.0 / columns;
        else if (unnamed == 0)
            share = percent / named;
        edges.push_back(edges.back() + share * width);
    }
    return edges;
}

void ParagraphLayout::layOutRow(const QTextBlock& cell)
{
    const TableRow row = rowOf(cell, m_styles);
    const TableCellBlock& table = *cellOf(row.first, m_styles);
    const qreal percent = std::clamp(table.table.contentWidthPercent, 1.0, 100.0);
    const std::vector<qreal> edges = columnEdges(row, m_width * u * percent / 100);
    const int columns = int(edges.size()) - 1;

    // Cells stand at their column, each paragraph of a cell below the one before.
    qreal rowHeight = 0;
    QHash<int, qreal> filled;
    std::vector<QTextBlock> cells;
    for (QTextBlock block = row.first;; block = block.next()) {
        const ParagraphStyle& style = *m_styles.styleOf(block.blockFormat());
        const TableCellBlock& about = *style.cell;
        const int column = std::clamp(about.column, 0, columns - 1);
        const int span = std::clamp(about.columnSpan, 1, columns - column);
        const auto inset = [&](BoxEdge edge) {
            const auto i = std::size_t(edge);
            return std::clamp(about.look->padding[i], 0.0, 100.0) * u +
                   std::clamp(about.look->borderWidth[i], 0.0, 20.0) * u;
        };
        ParagraphBox& box = boxFor(block);
        const qreal start = edges[std::size_t(column)];
        box.cell = QRectF(start, 0, edges[std::size_t(column + span)] - start, 0);
        const qreal left = box.cell.left() + inset(BoxEdge::left);
        prepare(block, box,
                std::max(u, box.cell.width() - inset(BoxEdge::left) - inset(BoxEdge::right)));
        const auto standing = filled.constFind(column);
        const qreal top = (standing == filled.constEnd() ? inset(BoxEdge::top) : *standing) +
                          std::max(0.0, style.spacingBefore) * u;
        box.content = QRectF(left, top, box.column, 0);
        layOutAllPieces(block, box);
        updateHeight(block, box);
        const qreal bottom = box.content.bottom() + std::max(0.0, style.spacingAfter) * u;
        filled.insert(column, bottom);
        rowHeight = std::max(rowHeight, bottom + inset(BoxEdge::bottom));
        cells.push_back(block);
        if (block == row.last)
            break;
    }
    const int first = row.first.blockNumber();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        existingBox(cells[i])->cell.setHeight(rowHeight);
        m_heights.set(first + int(i), i == 0 ? rowHeight / u : 0);
    }
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

qreal ParagraphLayout::topOf(const QTextBlock& block) const
{
    return m_heights.topOf(rowStart(block).blockNumber());
}

qreal ParagraphLayout::bottomOf(const QTextBlock& block) const
{
    const int number = rowStart(block).blockNumber();
    return m_heights.topOf(number) + m_heights.at(number);
}

QTextBlock ParagraphLayout::rowStart(const QTextBlock& block) const
{
    QTextBlock start = block;
    while (continuesRow(start, m_styles))
        start = start.previous();
    return start;
}

QTextBlock ParagraphLayout::blockAtY(qreal y) const
{
    return rowStart(document().findBlockByNumber(int(m_heights.indexAt(y))));
}

QTextBlock ParagraphLayout::below(const QTextBlock& block) const
{
    QTextBlock next = block.next();
    while (next.isValid() && continuesRow(next, m_styles))
        next = next.next();
    return next;
}

QTextBlock ParagraphLayout::above(const QTextBlock& block) const
{
    const QTextBlock previous = rowStart(block).previous();
    return previous.isValid() ? rowStart(previous) : previous;
}

void ParagraphLayout::textReplaced(int from, int removed, int added)
{
    // The text that an input method shows goes on standing where it stood, whoever edits.
    if (from < m_preedit.position)
        m_preedit.position = std::max(from, m_preedit.position + added - removed);
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
        m_changed = {block, from, added - removed, added, knownLines(*known), isDecorated(*known)};
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

bool ParagraphLayout::isDecorated(const ParagraphBox& box)
{
    return std::any_of(box.pieces.begin(), box.pieces.end(), [](const ParagraphPiece& piece) {
        return piece.hasLines() && !piece.layout->decorations().isEmpty();
    });
}

/// The lines that a paragraph has, from the top of its content.
std::vector<BrokenLine> ParagraphLayout::knownLines(const ParagraphBox& box)
{
    std::vector<BrokenLine> lines;
    qreal top = 0;
    for (const ParagraphPiece& piece : box.pieces) {
        for (BrokenLine line : piece.lines) {
            line.top += top;
            lines.push_back(line);
        }
        top += piece.height;
    }
    return lines;
}

std::pair<qreal, qreal> ParagraphLayout::changedPart(const QTextBlock& block)
{
    const ParagraphBox& now = arrange(block);
    const auto& before = m_changed.linesBefore;
    // A decoration may change far from what was typed.
    if (m_changed.block != block || before.empty() || m_changed.wasDecorated || isDecorated(now))
        return {topOf(block), bottomOf(block)};
    const std::vector<BrokenLine> lines = knownLines(now);
    const auto isSame = [&](std::size_t i) {
        const BrokenLine& line = lines[i];
        const BrokenLine& old = before[i];
        if (line.top != old.top || line.height != old.height || line.length != old.length)
            return false;
        if (line.start + line.length < m_changed.from)
            return line.start == old.start;
        return line.start > m_changed.from + m_changed.added &&
               line.start == old.start + m_changed.growth;
    };
    std::size_t first = 0;
    const std::size_t shared = std::min(before.size(), lines.size());
    while (first < shared && isSame(first))
        ++first;
    std::size_t past = lines.size();
    const bool sameCount = before.size() == lines.size();
    while (sameCount && past > first && isSame(past - 1))
        --past;
    if (first >= past)
        return {bottomOf(block), bottomOf(block)};
    const auto onPage = [&](qreal inContent) {
        return topOf(block) + (now.content.top() + inContent) / u;
    };
    // Where there are fewer lines, what stood in the last of them is gone.
    const BrokenLine& last = lines[past - 1];
    return {onPage(lines[first].top), sameCount ? onPage(last.top + last.height) : bottomOf(block)};
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
