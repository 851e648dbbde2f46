// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/HeightIndex.h"
#include "text/LineBreaker.h"
#include "text/ParagraphBox.h"
#include "text/ParagraphDecorator.h"
#include "text/StyleTable.h"
#include "text/TableRow.h"
#include "text/TextPaint.h"
#include "text/TextRange.h"

#include <QAbstractTextDocumentLayout>
#include <QHash>

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

/// Puts the paragraphs of a document on one endless page: lines, table rows, objects in the line.
///
/// Only paragraphs that someone asks for are laid out; the heights of all others are estimates. So
/// positions on the page are firm relative to paragraphs that are laid out, and move as a whole
/// when paragraphs above become known. Functions that answer for one position lay out what they
/// need.
///
/// All lengths and positions are in points from the top left of the text, whatever the zoom.
class ParagraphLayout : public QAbstractTextDocumentLayout {
    Q_OBJECT
public:
    ParagraphLayout(QTextDocument& document, const StyleTable& styles);
    ~ParagraphLayout() override;

    // What the layout depends on. Each change forgets all lines and estimates all heights anew.

    void setWidth(qreal points);
    [[nodiscard]] qreal width() const { return m_width; }
    /// `font` is that of text that names none.
    void setSettings(const TextFont& font, const LineSettings& settings);
    [[nodiscard]] const TextFont& baseFont() const { return m_baseFont; }
    [[nodiscard]] const LineSettings& lineSettings() const { return m_settings; }
    /// Who draws and measures attachments; must outlive the layout or be taken away with null.
    void setObjectPainter(ObjectPainter* painter);

    /// Who decorates paragraphs; must outlive the layout or be taken away with null.
    void setDecorator(const ParagraphDecorator* decorator);
    /// The decoration of `count` paragraphs from number `first` on has changed.
    void decorationChanged(int first, int count);

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

    void ensureLaidOut(const QTextBlock& block);
    /// What of a paragraph looks different since the change that was told last, from and up to
    /// where on the page: the lines that the change touched or broke anew. The whole paragraph
    /// where that can't be told.
    [[nodiscard]] std::pair<qreal, qreal> changedPart(const QTextBlock& block);
    [[nodiscard]] bool isLaidOut(const QTextBlock& block) const;
    /// Lets go of the lines of paragraphs that are far from the stretch `top` to `bottom`, when
    /// there are many. Their heights stay known.
    void evictFarFrom(qreal top, qreal bottom);
    /// Lets go of all lines; for a text that is no longer shown.
    void releaseLines();

    // Positions

    /// The caret at `position`; its width is 0. Within an input method's text that stands here, it
    /// is where the input method wants it.
    [[nodiscard]] QRectF caretRect(int position, CaretSide side = CaretSide::lowerLine);
    /// The position nearest to `point`. `side` tells which line was meant.
    [[nodiscard]] int positionAt(QPointF point, CaretSide* side = nullptr);
    /// The same among the positions of one line.
    [[nodiscard]] int positionInLine(const LaidOutLine& line, qreal x, CaretSide* side = nullptr);
    [[nodiscard]] LaidOutLine lineAt(int position, CaretSide side = CaretSide::lowerLine);
    /// The lines above and below, through table cells column by column; nothing at the ends.
    [[nodiscard]] std::optional<LaidOutLine> lineAbove(const LaidOutLine& line, qreal x);
    [[nodiscard]] std::optional<LaidOutLine> lineBelow(const LaidOutLine& line, qreal x);
    /// What `range` covers, line by line.
    [[nodiscard]] QList<QRectF> rectsOf(TextRange range);
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

    // QAbstractTextDocumentLayout

    void draw(QPainter* painter, const PaintContext& context) override;
    [[nodiscard]] int hitTest(const QPointF& point, Qt::HitTestAccuracy accuracy) const override;
    [[nodiscard]] int pageCount() const override { return 1; }
    [[nodiscard]] QSizeF documentSize() const override;
    [[nodiscard]] QRectF frameBoundingRect(QTextFrame* frame) const override;
    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock& block) const override;

signals:
    /// The paragraphs that stood from `top` to `oldBottom` have changed, and `first` is now the
    /// first of them; `last` is the last.
    void paragraphsChanged(const QTextBlock& first, const QTextBlock& last, qreal top,
                           qreal oldBottom);
    /// Everything is to be laid out anew.
    void everythingChanged();

protected:
    void documentChanged(int from, int charsRemoved, int charsAdded) override;
    void resizeInlineObject(QTextInlineObject item, int position,
                            const QTextFormat& format) override;
    void positionInlineObject(QTextInlineObject item, int position,
                              const QTextFormat& format) override;
    void drawInlineObject(QPainter* painter, const QRectF& rect, QTextInlineObject object,
                          int position, const QTextFormat& format) override;

private:
    struct Preedit {
        int position = 0;
        QString text;
        int caret = 0;
        QList<QTextLayout::FormatRange> formats;
    };

    /// The lines of the one paragraph that the last change was in, as they were before it.
    struct ChangedParagraph {
        QTextBlock block;
        int from = 0; ///< in the paragraph
        int growth = 0;
        int added = 0;
        std::vector<ParagraphBox::Line> linesBefore;
        bool wasDecorated = false;
    };

    void invalidateAll();
    void estimateAll();
    [[nodiscard]] double estimate(const QTextBlock& block) const;
    [[nodiscard]] double estimateText(const QTextBlock& block, qreal column) const;
    void layOutParagraph(const QTextBlock& block);
    void layOutRow(const QTextBlock& cell);
    [[nodiscard]] std::vector<qreal> columnEdges(const TableRow& row, qreal width) const;
    ParagraphBox& boxFor(const QTextBlock& block);
    [[nodiscard]] const ParagraphBox& box(const QTextBlock& block) const;
    void breakInto(const QTextBlock& block, ParagraphBox& box);
    void decorate(const QTextBlock& block);
    void forgetLines(const QTextBlock& block);

    [[nodiscard]] int toLayoutPosition(const QTextBlock& block, int position) const;
    [[nodiscard]] int toDocumentPosition(const QTextBlock& block, int layoutPosition) const;
    [[nodiscard]] LaidOutLine lineOf(const QTextBlock& block, int lineNumber);
    [[nodiscard]] int lineNumberAt(const QTextBlock& block, int layoutPosition,
                                   CaretSide side) const;
    [[nodiscard]] LaidOutLine lineAtY(const QTextBlock& block, qreal y);
    [[nodiscard]] QTextBlock cellAt(const QTextBlock& rowStart, QPointF point);
    [[nodiscard]] QList<QRectF> rectsInBlock(const QTextBlock& block, int from, int to,
                                             bool fillsLines);

    friend class ParagraphPainter;

    const StyleTable& m_styles;
    HeightIndex m_heights;
    qreal m_width = 600;
    TextFont m_baseFont{QString(), 16};
    LineSettings m_settings;
    ObjectPainter* m_objects = nullptr;
    const ParagraphDecorator* m_decorator = nullptr;
    Preedit m_preedit;
    bool m_settingFont = false;
    int m_generation = 1;
    /// Guesses until the first settings, so that a text that is never shown opens no font.
    qreal m_characterWidth = 16; ///< an average, in units
    qreal m_plainLineHeight = 40;
    bool m_isMeasured = false;
    ChangedParagraph m_changed;
    std::vector<QTextBlock> m_laidOut;
    qsizetype m_laidOutCharacters = 0;
};

} // namespace orvane
