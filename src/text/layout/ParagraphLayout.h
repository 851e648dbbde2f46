// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/layout/HeightIndex.h"
#include "text/layout/LineBreaker.h"
#include "text/layout/ParagraphChange.h"
#include "text/layout/ParagraphDecorator.h"
#include "text/store/StyleTable.h"
#include "text/store/TableRow.h"
#include "text/store/TextStore.h"
#include "text/value/TextRange.h"

#include <QObject>

namespace orvane {

/// At a place where a line was wrapped one position stands for two places: the end of the upper
/// line and the start of the lower one.
enum class CaretSide { lowerLine, upperLine };

/// One line on the page.
struct LaidOutLine {
    TextRange range; ///< its characters; without the "\n"
    QRectF rect;     ///< in points on the page, with the line's full height
    bool endsParagraph = false;
};

/// What the page is made of, one part below the other: a paragraph, a row of cells, or a piece of a
/// long paragraph.
struct PagePart {
    qsizetype position = 0; ///< where it begins in the text
    qreal top = 0;
    qreal bottom = 0;
};

/// A place to hold on to while heights above become known: where a paragraph or row begins, or a
/// line of a long paragraph.
struct PagePlace {
    qsizetype position = 0;
    qreal top = 0;
};

/// Puts the paragraphs of a text on one endless page: lines, table rows, objects in the line.
///
/// Whoever shows a text makes a layout of it, with a width, fonts and an object painter of its own.
/// There may be several at once: all follow the text, and none knows of another. The text outlives
/// them. Main thread.
///
/// Only what someone asks for is laid out, paragraph by paragraph and in a long one piece by piece;
/// the heights of everything else are estimates. So positions on the page are firm relative to what
/// is laid out beside them, and move as a whole when something above becomes known. Functions that
/// answer for one position lay out what they need. Where lines are wrapped in the middle of a long
/// paragraph is known once those before them are: until then it may be found to be elsewhere.
///
/// All lengths and positions are in points from the top left of the text, whatever the zoom.
class ParagraphLayout : public QObject, private TextObserver {
    Q_OBJECT
public:
    /// With guesses for a font until there are settings, so that a text that is never shown opens
    /// none.
    explicit ParagraphLayout(const TextStore& store);
    ParagraphLayout(const TextStore& store, qreal width, const TextFont& font,
                    const LineSettings& settings);
    ~ParagraphLayout() override;

    // What the layout depends on. Each change forgets all lines and estimates all heights anew.

    void setWidth(qreal points);
    [[nodiscard]] qreal width() const { return m_width; }
    /// `font` is that of text that names none.
    void setSettings(const TextFont& font, const LineSettings& settings);
    [[nodiscard]] const TextFont& baseFont() const { return m_baseFont; }
    [[nodiscard]] const LineSettings& lineSettings() const { return m_settings; }
    /// How many characters a piece of a long paragraph has, about; a paragraph of up to twice as
    /// many is laid out at once. What is seen doesn't depend on it.
    void setPieceLength(int characters);
    /// Who draws and measures attachments; must outlive the layout or be taken away with null.
    void setObjectPainter(ObjectPainter* painter);
    /// Objects that are higher are shown at this height, in points; 0 for no limit.
    void setTallestObject(qreal points);

    /// Who decorates paragraphs; must outlive the layout or be taken away with null.
    void setDecorator(const ParagraphDecorator* decorator);
    /// The decoration of the paragraphs that hold `range` has changed within it.
    void decorationChanged(TextRange range);

    // The page

    [[nodiscard]] qreal height() const { return m_heights.total(); }
    /// Where the paragraph begins, or for a cell its row. Spacing before it is part of it.
    [[nodiscard]] qreal topOf(const QTextBlock& block) const;
    /// Up to where the paragraph or row reaches.
    [[nodiscard]] qreal bottomOf(const QTextBlock& block) const;
    /// The paragraph, or the first cell of the row, at `y`; the nearest one outside the text.
    [[nodiscard]] QTextBlock blockAtY(qreal y) const;
    /// The first paragraph of the row that `block` is in, or `block` itself.
    [[nodiscard]] QTextBlock rowStart(const QTextBlock& block) const;
    /// The paragraph, or first cell of the row, that stands below; invalid at the end.
    [[nodiscard]] QTextBlock below(const QTextBlock& block) const;
    [[nodiscard]] QTextBlock above(const QTextBlock& block) const;

    /// The part that holds `position`, laid out, and those below and above it, nothing at the ends.
    /// A part further off is as it was when it was told; what is laid out above may move its start.
    PagePart layOutPartAt(qsizetype position);
    std::optional<PagePart> layOutPartBelow(const PagePart& part);
    std::optional<PagePart> layOutPartAbove(const PagePart& part);
    /// The place at or before a position or a distance down the page. Lays nothing out.
    [[nodiscard]] PagePlace placeAt(qsizetype position);
    [[nodiscard]] PagePlace placeAtY(qreal y);
    /// The text that stands from `top` to `bottom`: whole paragraphs and rows, lines of long ones.
    [[nodiscard]] TextRange textBetween(qreal top, qreal bottom);
    /// Up to where the paragraph or row reaches that holds `position`, or the piece of a long one.
    [[nodiscard]] qreal bottomAt(qsizetype position);

    /// All of a paragraph, and for a cell of its row, however long it is.
    void ensureLaidOut(const QTextBlock& block);
    /// What of a paragraph stands from `top` to `bottom` on the page.
    void ensureLaidOut(const QTextBlock& block, qreal top, qreal bottom);
    /// What of a paragraph looks different since the change that was told last, from and up to
    /// where on the page: the lines that the change touched or broke anew. The whole paragraph
    /// where that can't be told.
    [[nodiscard]] std::pair<qreal, qreal> changedPart(const QTextBlock& block);
    /// Whether all of a paragraph is laid out.
    [[nodiscard]] bool isLaidOut(const QTextBlock& block) const;
    /// The lines of a paragraph that are laid out, in order.
    [[nodiscard]] QList<TextRange> linesOf(const QTextBlock& block) const;
    /// The decoration with which a paragraph is shown, from its start, with an input method's text
    /// among the characters. At the borders of pieces it is parted.
    [[nodiscard]] QList<QTextLayout::FormatRange> decorationsOf(const QTextBlock& block);
    /// Lets go of the lines that are far from the stretch `top` to `bottom`, when
    /// there are many. Their heights stay known.
    void evictFarFrom(qreal top, qreal bottom);

    // Positions

    /// The caret at `position`; its width is 0. Within an input method's text that stands here, it
    /// is where the input method wants it.
    [[nodiscard]] QRectF caretRect(int position, CaretSide side = CaretSide::lowerLine);
    /// The position nearest to `point`. `side` tells which line was meant.
    [[nodiscard]] int positionAt(QPointF point, CaretSide* side = nullptr);
    /// The same among the positions of one line.
    [[nodiscard]] int positionInLine(const LaidOutLine& line, qreal x, CaretSide* side = nullptr);
    /// Where a caret stands at the end of a line: of a wrapped one before its last blank or its
    /// line break, or, where a word was cut, at the cut itself.
    [[nodiscard]] int endOfLine(const LaidOutLine& line, CaretSide* side = nullptr) const;
    [[nodiscard]] LaidOutLine lineAt(int position, CaretSide side = CaretSide::lowerLine);
    /// The lines above and below, through table cells column by column; nothing at the ends.
    [[nodiscard]] std::optional<LaidOutLine> lineAbove(const LaidOutLine& line, qreal x);
    [[nodiscard]] std::optional<LaidOutLine> lineBelow(const LaidOutLine& line, qreal x);
    /// What `range` covers, line by line.
    [[nodiscard]] QList<QRectF> rectsOf(TextRange range);
    /// Where the object on the character at `position` is drawn; of one that floats, the place of
    /// its anchor.
    [[nodiscard]] QRectF objectRect(int position);
    /// The whole cell that `block` is, with its borders.
    [[nodiscard]] QRectF cellRect(const QTextBlock& block);

    // An input method's text, which is shown but is not part of the document

    /// Shows `text` at `position` with `formats` (counted from its start) and the caret at `caret`
    /// within it. An empty text ends it.
    void setPreedit(int position, const QString& text, int caret,
                    const QList<QTextLayout::FormatRange>& formats);
    [[nodiscard]] bool hasPreedit() const { return !m_preedit.text.isEmpty(); }
    [[nodiscard]] int preeditPosition() const { return m_preedit.position; }

    /// Draws what lies within `paint.clip`, which must be laid out.
    void paint(QPainter& painter, const TextPaint& paint);

signals:
    /// The paragraphs that stood from `top` to `oldBottom` have changed, and `first` is now the
    /// first of them; `last` is the last.
    void paragraphsChanged(const QTextBlock& first, const QTextBlock& last, qreal top,
                           qreal oldBottom);
    /// Everything is to be laid out anew.
    void everythingChanged();

private:
    /// A line of a paragraph by its piece and its number in that.
    struct LineIndex {
        int piece = 0;
        int line = 0;
    };

    /// Whether what covers a line's end goes on to the end of the column, as a selection does.
    enum class LineFill { textAlone, wholeLines };

    void textReplaced(int from, int removed, int added) override;
    [[nodiscard]] QTextDocument& document() const { return m_store.document(); }
    void measure(const TextFont& font, const LineSettings& settings);
    void releaseLines();
    void invalidateAll();
    void estimateAll();
    [[nodiscard]] double estimate(const QTextBlock& block) const;
    [[nodiscard]] double estimateText(const QTextBlock& block, qreal column) const;
    [[nodiscard]] double expected(const QTextBlock& block) const;

    [[nodiscard]] ParagraphBox* existingBox(const QTextBlock& block) const;
    ParagraphBox& boxFor(const QTextBlock& block);
    [[nodiscard]] const ParagraphBox& box(const QTextBlock& block) const;
    /// Sets where the lines of a paragraph stand and cuts it, where that isn't known.
    ParagraphBox& arrange(const QTextBlock& block);
    void arrangeParagraph(const QTextBlock& block, ParagraphBox& box);
    void prepare(const QTextBlock& block, ParagraphBox& box, qreal column);
    void layOutRow(const QTextBlock& cell);
    void layOutAllPieces(const QTextBlock& block, ParagraphBox& box);
    [[nodiscard]] ParagraphSource sourceFor(const QTextBlock& block, const ParagraphBox& box);
    [[nodiscard]] ParagraphBox::Cutting cutting() const;
    /// Lays out the piece that holds a position of the paragraph, and what it takes to know where
    /// that begins. Returns its index.
    int layOutPiece(const QTextBlock& block, ParagraphBox& box, int position);
    void breakPieceAt(const QTextBlock& block, ParagraphBox& box, int piece);
    void chooseStart(const QTextBlock& block, ParagraphBox& box, int piece) const;
    void updateHeight(const QTextBlock& block, ParagraphBox& box);
    [[nodiscard]] bool isOnePart(const QTextBlock& block) const;
    void forgetLines(const QTextBlock& block);
    void evictPieces(const QTextBlock& block, ParagraphBox& box, qreal top, qreal bottom) const;
    void noteChangeIn(const QTextBlock& block, int from, int removed, int added);
    void forgetPieces(const QTextBlock& first, const QTextBlock& last);

    [[nodiscard]] qreal pieceTop(const QTextBlock& block, const ParagraphBox& box, int piece) const;
    [[nodiscard]] LaidOutLine lineOf(const QTextBlock& block, LineIndex index);
    [[nodiscard]] LineIndex lineIndexAt(const QTextBlock& block, int position, CaretSide side);
    [[nodiscard]] LaidOutLine lineAtY(const QTextBlock& block, qreal y);
    [[nodiscard]] QTextBlock cellAt(const QTextBlock& rowStart, QPointF point);
    /// In the pieces that are laid out.
    [[nodiscard]] QList<QRectF> rectsInBlock(const QTextBlock& block, qsizetype from, qsizetype to,
                                             LineFill fill) const;
    [[nodiscard]] QList<QRectF> rectsInPiece(const QTextBlock& block, int piece, int from, int to,
                                             LineFill fill) const;

    friend class ParagraphPainter;

    const TextStore& m_store;
    const StyleTable& m_styles;
    HeightIndex m_heights;
    qreal m_width = 600;
    TextFont m_baseFont{QString(), 16};
    LineSettings m_settings;
    QFont m_font; ///< the base font as it is laid out
    InlineObjects m_objects;
    qreal m_tallestObject = 0;
    HeldFonts m_fonts;
    const ParagraphDecorator* m_decorator = nullptr;
    Preedit m_preedit;
    int m_pieceLength = 1'000;
    int m_generation = 1;
    /// Guesses until the first settings, so that a text that is never shown opens no font.
    qreal m_characterWidth = 16; ///< an average, in units
    qreal m_plainLineHeight = 40;
    bool m_isMeasured = false;
    ParagraphChange m_changed; ///< the last one
    std::vector<QTextBlock> m_laidOut;
    qsizetype m_laidOutCharacters = 0;
};

} // namespace orvane
