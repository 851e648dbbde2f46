// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/PieceLayout.h"

#include "text/layout/DimmedObject.h"
#include "text/layout/ParagraphDecorator.h"
#include "text/store/TextStore.h"
#include "text/value/LayoutUnits.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

constexpr qreal u = layoutUnitsPerPoint;
/// Between an object that has its line for itself and what stands above.
constexpr qreal airAboveObject = 6 * u;

/// Lets a document's text be laid out line by line, and its objects be drawn.
class ObjectHost : public QAbstractTextDocumentLayout {
public:
    ObjectHost(QTextDocument& document, const InlineObjects& objects, const ObjectRoom& room)
        : QAbstractTextDocumentLayout(&document)
        , m_objects(objects)
        , m_room(room)
    {}

    void draw(QPainter* /*painter*/, const PaintContext& /*context*/) override {}
    [[nodiscard]] int hitTest(const QPointF& /*point*/,
                              Qt::HitTestAccuracy /*accuracy*/) const override
    {
        return -1;
    }
    [[nodiscard]] int pageCount() const override { return 1; }
    [[nodiscard]] QSizeF documentSize() const override { return {}; }
    [[nodiscard]] QRectF frameBoundingRect(QTextFrame* /*frame*/) const override { return {}; }
    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock& /*block*/) const override
    {
        return {};
    }

protected:
    void documentChanged(int /*from*/, int /*removed*/, int /*added*/) override {}
    void resizeInlineObject(QTextInlineObject item, int /*position*/,
                            const QTextFormat& format) override
    {
        // How high it really is, is the business of whoever sets the lines.
        const QFontMetricsF letters(
            format.toCharFormat().font().resolve(document()->defaultFont()));
        item.setWidth(m_objects.roomFor(m_objects.styleOf(format), m_room).width());
        item.setAscent(letters.ascent());
        item.setDescent(letters.descent());
    }
    void positionInlineObject(QTextInlineObject /*item*/, int /*position*/,
                              const QTextFormat& /*format*/) override
    {}
    void drawInlineObject(QPainter* painter, const QRectF& rect, QTextInlineObject object,
                          int /*position*/, const QTextFormat& format) override
    {
        if (!m_objects.painter)
            return;
        const CharacterStyle& style = m_objects.styleOf(format);
        const QSizeF taken = m_objects.roomFor(style, m_room);
        const qreal baseline = rect.top() + object.ascent();
        painter->save();
        if (format.hasProperty(dimmedObjectProperty))
            painter->setOpacity(painter->opacity() * dimmedObjectOpacity);
        m_objects.painter->paintObject(*painter,
                                       m_objects.rectOf(style,
                                                        {rect.left(), baseline - taken.height(),
                                                         taken.width(), taken.height()},
                                                        m_room),
                                       style);
        painter->restore();
    }

private:
    const InlineObjects& m_objects;
    const ObjectRoom m_room;
};

bool hasLineForItself(const CharacterStyle& style)
{
    const auto* image = style.imageAttachment();
    return image && image->wrapMode == OrvaneNoteImageWrapMode::topAndBottom;
}

constexpr char16_t leftToRightMark = 0x200e;
constexpr char16_t rightToLeftMark = 0x200f;
constexpr char16_t arabicLetterMark = 0x061c;

/// How far back direction is looked for: a sentence in other letters is shorter.
constexpr int directionWindow = 4'000;

/// What has to stand before a stretch of text for it to run as it would behind `before`: the
/// embeddings that are open there, and a mark of the last letter's direction (UAX #9).
QString directionLead(QStringView before, bool rightToLeft)
{
    QString open;
    QChar::Direction last = rightToLeft ? QChar::DirR : QChar::DirL;
    for (qsizetype i = 0; i < before.size(); ++i) {
        const QChar c = before[i];
        // Half a pair has no direction of its own.
        const bool isPair = c.isHighSurrogate() && i + 1 < before.size();
        const QChar::Direction direction =
            isPair ? QChar::direction(QChar::surrogateToUcs4(c, before[i + 1])) : c.direction();
        if (c.isLowSurrogate() && i > 0)
            continue;
        switch (direction) {
        case QChar::DirL:
        case QChar::DirR:
        case QChar::DirAL:
            last = direction;
            break;
        case QChar::DirLRE:
        case QChar::DirRLE:
        case QChar::DirLRO:
        case QChar::DirRLO:
        case QChar::DirLRI:
        case QChar::DirRLI:
        case QChar::DirFSI:
            open += c;
            break;
        case QChar::DirPDF:
        case QChar::DirPDI:
            open.chop(1);
            break;
        default:
            break;
        }
    }
    if (last == QChar::DirAL)
        open += QChar(arabicLetterMark);
    else if (!open.isEmpty() || (last == QChar::DirR) != rightToLeft)
        open += QChar(last == QChar::DirR ? rightToLeftMark : leftToRightMark);
    return open;
}

bool mayTurn(QChar c)
{
    return c.unicode() >= 0x590 && (c.unicode() < 0x900 || c.unicode() > 0x2000);
}

QString leadOf(const ParagraphSource& source, int start)
{
    if (start == 0)
        return {};
    const int from = std::max(0, start - directionWindow);
    const QString before =
        source.store.text({source.block.position() + from, qsizetype(start - from)});
    if (!source.rightToLeft && std::none_of(before.begin(), before.end(), mayTurn))
        return {};
    return directionLead(before, source.rightToLeft);
}

} // namespace

QSizeF ObjectRoom::fitted(QSizeF size) const
{
    const qreal widest = std::max(width, u);
    const qreal highest = tallest > 0 ? tallest : size.height();
    return size.width() > widest || size.height() > highest
               ? size.scaled(widest, highest, Qt::KeepAspectRatio)
               : size;
}

QRectF ObjectRoom::placed(const QRectF& line, QSizeF size, qreal moved) const
{
    const qreal spare = std::max(0.0, line.width() - size.width());
    const bool isRight =
        alignment == TextAlignment::right ||
        (alignment != TextAlignment::left && alignment != TextAlignment::center && rightToLeft);
    const qreal start = isRight ? spare : alignment == TextAlignment::center ? spare / 2 : 0;
    return {{line.left() + std::clamp(start + moved, 0.0, spare), line.bottom() - size.height()},
            size};
}

ObjectRoom ParagraphSource::objectRoom() const
{
    const qreal before = std::max({style.firstLineHeadIndent, style.headIndent, 0.0}) * u;
    const qreal end = style.tailIndent > 0 ? std::min(style.tailIndent * u, column)
                                           : column + style.tailIndent * u;
    return {std::max(end - before, u), tallestObject, style.alignment, rightToLeft};
}

const CharacterStyle& InlineObjects::styleOf(const QTextFormat& format) const
{
    return *styles.styleOf(format.toCharFormat());
}

QSizeF InlineObjects::sizeOf(const CharacterStyle& style) const
{
    return (painter ? painter->sizeOf(style) : attachmentSize(style)) * u;
}

QSizeF InlineObjects::roomFor(const CharacterStyle& style, const ObjectRoom& room) const
{
    QSizeF size = room.fitted(sizeOf(style));
    if (hasLineForItself(style))
        size = {room.width, size.height() + airAboveObject};
    return size;
}

QRectF InlineObjects::rectOf(const CharacterStyle& style, const QRectF& taken,
                             const ObjectRoom& room) const
{
    if (!hasLineForItself(style))
        return taken;
    return room.placed(taken, room.fitted(sizeOf(style)),
                       style.imageAttachment()->floatingOffset.x() * u);
}

void HeldFonts::hold(const TextFont& font, const QTextCharFormat& format, const QFont& base)
{
    if (m_fonts.contains(font))
        return;
    const QFont resolved = format.font().resolve(base);
    (void)QFontMetricsF(resolved).ascent(); // which finds it
    m_fonts.insert(font, resolved);
}

PieceLayout::PieceLayout(const ParagraphSource& source, int start, int end)
    : m_start(start)
    , m_end(end)
    , m_goodFrom(start)
    , m_objectRoom(source.objectRoom())
{
    const QString lead = leadOf(source, start);
    m_lead = int(lead.size());
    const int base = source.block.position();
    const TextRange range = TextRange::between(base + start, base + end);
    const QString text = lead + source.store.text(range);

    QList<QTextLayout::FormatRange> formats;
    if (text.contains(QChar(QChar::ObjectReplacementCharacter))) {
        makeHosted(source, text);
    } else {
        m_layout = std::make_unique<QTextLayout>(text, source.font);
        source.store.forEachFormat(range, [&](TextRange run, const QTextCharFormat& format) {
            if (format.isEmpty())
                return;
            formats.append({int(run.location - range.location) + m_lead, int(run.length), format});
            if (const auto& font = source.objects.styles.styleOf(format)->font)
                source.fonts.hold(*font, format, source.font);
        });
    }
    m_characters = text;
    if (source.preedit) {
        const int at = source.preedit->position - base;
        // At a border it stands in the piece that begins there.
        if (at >= start && (at < end || end == source.textLength())) {
            m_preeditAt = at;
            m_preeditLength = int(source.preedit->text.size());
            m_preeditCaret = source.preedit->caret;
            m_layout->setPreeditArea(at - start + m_lead, source.preedit->text);
            m_characters.insert(at - start + m_lead, source.preedit->text);
        }
    }
    // The input method's text moves what stands behind it, and takes the format of what stands
    // before it, which decorations end with.
    const int preedit = preeditStart();
    const auto moved = [&](QTextLayout::FormatRange range, int reach) {
        if (preedit >= 0 && range.start + range.length + reach > preedit)
            (range.start >= preedit ? range.start : range.length) += m_preeditLength;
        return range;
    };
    for (QTextLayout::FormatRange& format : formats)
        format = moved(format, 1);
    if (source.decorator) {
        for (QTextLayout::FormatRange decoration :
             source.decorator->decorationOf(source.block, start, end)) {
            decoration.start += m_lead - start;
            formats.append(moved(decoration, 0));
            m_decorations.append(formats.last());
            m_decorations.last().start -= m_lead - start;
        }
    }
    m_layout->setFormats(formats);
}

PieceLayout::~PieceLayout() = default;

int PieceLayout::marginBefore(const ParagraphSource& source, int start)
{
    constexpr int most = 64;
    if (source.preedit)
        return 0;
    const int length = std::min(start, most);
    const QString before =
        source.store.text({source.block.position() + start - length, qsizetype(length)});
    const auto standsAlone = [](QChar c) {
        const char16_t code = c.unicode();
        return (code >= u' ' && code < 0x300) || (code >= 0x4e00 && code < 0xa000) ||
               (code >= 0xac00 && code < 0xd7a4);
    };
    return int(std::find_if_not(before.crbegin(), before.crend(), standsAlone) - before.crbegin());
}

bool PieceLayout::beginLines(int start)
{
    // To begin the layout anew would choose all glyphs anew; lines can be made without.
    if (std::exchange(m_hasBegun, true))
        m_layout->clearLayout();
    else
        m_layout->beginLayout();
    const int hidden = start - m_start + m_lead;
    m_hidden = start > m_start ? 1 : 0;
    if (m_hidden == 0)
        return true;
    QTextLine line = m_layout->createLine();
    if (!line.isValid())
        return false;
    // A line is measured in glyphs, of which a font makes one for some pairs.
    constexpr int mostTries = 8;
    int columns = hidden;
    for (int i = 0; i < mostTries && columns > 0; ++i) {
        line.setNumColumns(columns);
        line.setPosition({0, -outOfSight});
        if (line.textLength() == hidden)
            return true;
        columns += hidden - line.textLength();
    }
    return false;
}

void PieceLayout::makeHosted(const ParagraphSource& source, const QString& text)
{
    m_host = std::make_unique<QTextDocument>();
    m_host->setUndoRedoEnabled(false);
    m_host->setDefaultFont(source.font);
    m_host->setDocumentLayout(new ObjectHost(*m_host, source.objects, m_objectRoom));
    QTextCursor cursor(m_host.get());
    cursor.insertText(text.first(m_lead));
    const qsizetype base = source.block.position() + m_start;
    source.store.forEachFormat(
        TextRange{base, text.size() - m_lead}, [&](TextRange run, const QTextCharFormat& format) {
            QString part = text.sliced(run.location - base + m_lead, run.length);
            part.replace(u'\r', u' '); // which would begin a paragraph
            cursor.insertText(part, format);
        });
    m_layout = std::make_unique<QTextLayout>(m_host->firstBlock());
}

void PieceLayout::moveBy(int distance)
{
    m_start += distance;
    m_end += distance;
    m_goodFrom += distance;
    if (m_preeditAt >= 0)
        m_preeditAt += distance;
    for (QTextLayout::FormatRange& decoration : m_decorations)
        decoration.start += distance;
}

int PieceLayout::toLayout(int inParagraph) const
{
    const int place = inParagraph - m_start + m_lead;
    if (m_preeditAt < 0 || inParagraph < m_preeditAt)
        return place;
    return place + (inParagraph == m_preeditAt ? m_preeditCaret : m_preeditLength);
}

int PieceLayout::toParagraph(int inLayout) const
{
    const int position = std::max(inLayout - m_lead, 0) + m_start;
    if (m_preeditAt < 0 || position <= m_preeditAt)
        return position;
    return std::max(m_preeditAt, position - m_preeditLength);
}

int PieceLayout::preeditStart() const
{
    return m_preeditAt < 0 ? -1 : m_preeditAt - m_start + m_lead;
}

bool PieceLayout::partsPreedit(int inLayout) const
{
    return m_preeditAt >= 0 && inLayout > preeditStart() && toParagraph(inLayout) == m_preeditAt;
}

} // namespace orvane
