// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/ParagraphLayout.h"

#include "text/LayoutUnits.h"
#include "text/TextStore.h"

#include <QFontMetricsF>
#include <QTextCursor>
#include <QTextDocument>

#include <cmath>
#include <numeric>
#include <private/qtextengine_p.h>

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

ParagraphLayout::ParagraphLayout(QTextDocument& document, const StyleTable& styles)
    : QAbstractTextDocumentLayout(&document)
    , m_styles(styles)
{
    document.setDefaultFont(referenceFont(m_baseFont));
}

ParagraphLayout::~ParagraphLayout() = default;

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
    m_isMeasured = true;
    m_baseFont = font;
    m_settings = settings;
    const QFont reference = referenceFont(font);
    const QFontMetricsF metrics(reference);
    const QString sample = QStringLiteral("the quick brown fox jumps over a lazy dog. ");
    m_characterWidth = metrics.horizontalAdvance(sample) / qreal(sample.size());
    m_plainLineHeight =
        (metrics.ascent() + metrics.descent()) * lineStretch(reference, settings.lineHeight);
    m_settingFont = true;
    document()->setDefaultFont(reference);
    m_settingFont = false;
    invalidateAll();
}

void ParagraphLayout::setObjectPainter(ObjectPainter* painter)
{
    m_objects = painter;
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
    heights.reserve(std::size_t(document()->blockCount()));
    for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next())
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

bool ParagraphLayout::isLaidOut(const QTextBlock& block) const
{
    const auto* data = static_cast<const ParagraphBox*>(block.userData());
    return data && data->generation == m_generation;
}

void ParagraphLayout::ensureLaidOut(const QTextBlock& block)
{
    if (!block.isValid() || isLaidOut(block))
        return;
    if (isCell(block, m_styles))
        layOutRow(block);
    else
        layOutParagraph(block);
}

ParagraphBox& ParagraphLayout::boxFor(const QTextBlock& block)
{
    auto* data = static_cast<ParagraphBox*>(block.userData());
    if (!data) {
        data = new ParagraphBox;
        QTextBlock(block).setUserData(data);
        m_laidOut.push_back(block);
        m_laidOutCharacters += block.length();
    }
    data->generation = m_generation;
    return *data;
}

const ParagraphBox& ParagraphLayout::box(const QTextBlock& block) const
{
    Q_ASSERT(isLaidOut(block));
    return *static_cast<const ParagraphBox*>(block.userData());
}

void ParagraphLayout::setDecorator(const ParagraphDecorator* decorator)
{
    if (decorator == m_decorator)
        return;
    m_decorator = decorator;
    invalidateAll();
}

void ParagraphLayout::decorationChanged(int first, int count)
{
    const QTextBlock firstBlock = document()->findBlockByNumber(first);
    const QTextBlock lastBlock = document()->findBlockByNumber(first + count - 1);
    if (!firstBlock.isValid() || !lastBlock.isValid())
        return;
    const qreal top = topOf(firstBlock);
    const qreal bottom = bottomOf(lastBlock);
    m_changed = {};
    for (QTextBlock block = firstBlock;; block = block.next()) {
        if (auto* data = static_cast<ParagraphBox*>(block.userData()))
            data->generation = 0;
        if (block == lastBlock)
            break;
    }
    emit paragraphsChanged(firstBlock, lastBlock, top, bottom);
}

/// The layout's public function would tell the document of a change of the text.
void ParagraphLayout::decorate(const QTextBlock& block)
{
    QTextLayout& layout = *block.layout();
    if (!m_decorator && layout.formats().isEmpty())
        return;
    QList<QTextLayout::FormatRange> formats;
    if (m_decorator)
        formats = m_decorator->decorationOf(block);
    // An input method's text moves what stands behind it, and takes the format it stands in.
    const int preeditAt = layout.preeditAreaPosition();
    const auto preeditLength = int(layout.preeditAreaText().size());
    for (QTextLayout::FormatRange& range : formats) {
        if (preeditLength == 0 || range.start + range.length <= preeditAt)
            continue;
        (range.start >= preeditAt ? range.start : range.length) += preeditLength;
    }
    layout.engine()->setFormats(formats);
}

void ParagraphLayout::breakInto(const QTextBlock& block, ParagraphBox& box)
{
    decorate(block);
    breakLines(block, *m_styles.styleOf(block.blockFormat()), m_settings, box);
}

void ParagraphLayout::layOutParagraph(const QTextBlock& block)
{
    const ParagraphStyle& style = *m_styles.styleOf(block.blockFormat());
    ParagraphBox& box = boxFor(block);
    box.cell = {};
    box.column = m_width * u;
    box.content = QRectF(0, std::max(0.0, style.spacingBefore) * u, box.column, 0);
    breakInto(block, box);
    m_heights.set(block.blockNumber(),
                  box.content.bottom() / u + std::max(0.0, style.spacingAfter));
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
        box.column = std::max(u, box.cell.width() - inset(BoxEdge::left) - inset(BoxEdge::right));
        const auto standing = filled.constFind(column);
        const qreal top = (standing == filled.constEnd() ? inset(BoxEdge::top) : *standing) +
                          std::max(0.0, style.spacingBefore) * u;
        box.content = QRectF(left, top, box.column, 0);
        breakInto(block, box);
        const qreal bottom = box.content.bottom() + std::max(0.0, style.spacingAfter) * u;
        filled.insert(column, bottom);
        rowHeight = std::max(rowHeight, bottom + inset(BoxEdge::bottom));
        cells.push_back(block);
        if (block == row.last)
            break;
    }
    const int first = row.first.blockNumber();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        boxFor(cells[i]).cell.setHeight(rowHeight);
        m_heights.set(first + int(i), i == 0 ? rowHeight / u : 0);
    }
}

void ParagraphLayout::forgetLines(const QTextBlock& block)
{
    if (!block.isValid())
        return;
    QTextBlock(block).setUserData(nullptr);
    TextStore::dropLayout(block);
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
        hasPreedit() ? document()->findBlock(m_preedit.position) : QTextBlock();
    std::vector<QTextBlock> kept;
    m_laidOutCharacters = 0;
    for (const QTextBlock& block : m_laidOut) {
        if (!block.isValid() || !block.userData())
            continue;
        const int number = block.blockNumber();
        if ((number >= first && number <= last) || block == composing) {
            kept.push_back(block);
            m_laidOutCharacters += block.length();
        } else {
            forgetLines(block);
        }
    }
    m_laidOut = std::move(kept);
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
    return rowStart(document()->findBlockByNumber(int(m_heights.indexAt(y))));
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

void ParagraphLayout::documentChanged(int from, int charsRemoved, int charsAdded)
{
    if (m_settingFont)
        return;
    const int count = document()->blockCount();
    const auto known = int(m_heights.size());
    QTextBlock first = document()->findBlock(from);
    QTextBlock last = document()->findBlock(from + charsAdded);
    if (!first.isValid())
        first = document()->lastBlock();
    if (!last.isValid())
        last = document()->lastBlock();
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
    if (first == last && !isStructural && isLaidOut(first) && !isCell(first, m_styles)) {
        m_changed = {first,      from - first.position(), charsAdded - charsRemoved,
                     charsAdded, box(first).lines,        !first.layout()->formats().isEmpty()};
    }
    std::vector<double> heights;
    for (QTextBlock block = first;; block = block.next()) {
        if (auto* data = static_cast<ParagraphBox*>(block.userData()))
            data->generation = 0;
        heights.push_back(estimate(block));
        if (block == last)
            break;
    }
    m_heights.replace(firstNumber, stood, heights);
    emit paragraphsChanged(first, last, top, oldBottom);
}

std::pair<qreal, qreal> ParagraphLayout::changedPart(const QTextBlock& block)
{
    ensureLaidOut(block);
    const ParagraphBox& now = box(block);
    const auto& before = m_changed.linesBefore;
    // A decoration may change far from what was typed.
    const bool isDecorated = !block.layout()->formats().isEmpty() || m_changed.wasDecorated;
    if (m_changed.block != block || before.empty() || isDecorated)
        return {topOf(block), bottomOf(block)};
    const auto isSame = [&](std::size_t i) {
        const ParagraphBox::Line& line = now.lines[i];
        const ParagraphBox::Line& old = before[i];
        if (line.top != old.top || line.height != old.height || line.length != old.length)
            return false;
        if (line.start + line.length < m_changed.from)
            return line.start == old.start;
        return line.start > m_changed.from + m_changed.added &&
               line.start == old.start + m_changed.growth;
    };
    std::size_t first = 0;
    const std::size_t shared = std::min(before.size(), now.lines.size());
    while (first < shared && isSame(first))
        ++first;
    std::size_t past = now.lines.size();
    const bool sameCount = before.size() == now.lines.size();
    while (sameCount && past > first && isSame(past - 1))
        --past;
    if (first >= past)
        return {bottomOf(block), bottomOf(block)};
    const auto onPage = [&](qreal inContent) {
        return topOf(block) + (now.content.top() + inContent) / u;
    };
    const ParagraphBox::Line& last = now.lines[past - 1];
    return {onPage(now.lines[first].top), onPage(last.top + last.height)};
}

void ParagraphLayout::setPreedit(int position, const QString& text, int caret,
                                 const QList<QTextLayout::FormatRange>& formats)
{
    const auto place = [](const QTextBlock& block, int at, const QString& shown) {
        // The document takes note of this as of a change, and would add it to the range of the
        // next one. An empty edit makes it tell at once, while nobody but the layout listens.
        QTextCursor cursor(block);
        cursor.beginEditBlock();
        block.layout()->setPreeditArea(shown.isEmpty() ? -1 : at - block.position(), shown);
        cursor.endEditBlock();
    };
    const QTextBlock before = document()->findBlock(m_preedit.position);
    const QTextBlock block = document()->findBlock(position);
    if (hasPreedit() && before.isValid() && (before != block || text.isEmpty()))
        place(before, m_preedit.position, QString());
    if (!text.isEmpty())
        place(block, position, text);
    m_preedit = {position, text, caret, formats};
}

QSizeF ParagraphLayout::documentSize() const
{
    return {m_width, height()};
}

QRectF ParagraphLayout::frameBoundingRect(QTextFrame* /*frame*/) const
{
    return {QPointF(), documentSize()};
}

QRectF ParagraphLayout::blockBoundingRect(const QTextBlock& block) const
{
    return {0, topOf(block), m_width, bottomOf(block) - topOf(block)};
}

int ParagraphLayout::hitTest(const QPointF& point, Qt::HitTestAccuracy /*accuracy*/) const
{
    return const_cast<ParagraphLayout*>(this)->positionAt(point);
}

} // namespace orvane
