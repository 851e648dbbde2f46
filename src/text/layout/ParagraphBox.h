// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/layout/PieceLayout.h"

#include <QRectF>
#include <QTextBlockUserData>

#include <optional>
#include <vector>

namespace orvane {

/// One line in its piece. Lengths are in layout units; positions count from the paragraph's start,
/// without an input method's text.
struct BrokenLine {
    qreal top = 0;    ///< from the top of the piece
    qreal height = 0; ///< with the room that line height and spacing add
    int start = 0;
    int length = 0;
};

/// Some whole lines of a paragraph, laid out by themselves. Most paragraphs are one piece; a long
/// one is made of many, of which only those that are seen have lines.
struct ParagraphPiece {
    int start = 0;    ///< in the paragraph
    int length = 0;   ///< up to where the next piece begins
    qreal height = 0; ///< in layout units; an estimate while there are no lines
    /// Whether it begins where the lines before it were found to end. Else its start is a guess.
    bool isFirm = false;
    std::unique_ptr<PieceLayout> layout; ///< null while there are no lines, or of former lines
    std::vector<BrokenLine> lines;

    [[nodiscard]] int end() const { return start + length; }
    [[nodiscard]] bool hasLines() const { return !lines.empty(); }
    void release()
    {
        layout.reset();
        lines.clear();
    }
    /// How many lines stand above those that a change at `from`, which is in this piece, may break
    /// elsewhere: the one it is in and the one before, which may have room for a shorter word.
    [[nodiscard]] int linesOutOfReach(int from) const;
    /// Keeps that many lines. What stood behind them is a piece without lines.
    [[nodiscard]] ParagraphPiece splitBehind(int lines);
    /// Follows a change of `distance` characters before it; its lines stay as they are.
    void moveBy(int distance);
};

/// A piece that has just been broken into lines.
struct BrokenPiece {
    std::unique_ptr<PieceLayout> layout;
    std::vector<BrokenLine> lines;
    int length = 0; ///< of its text
    qreal height = 0;
};

/// What is known of a paragraph, beside its text. In layout units, from the top left of the
/// paragraph, which for a table cell is that of its row.
///
/// Pieces cover the paragraph's text without gaps. Where two neighbours have lines, the lower ones
/// begin where the upper ones end: a place at which the paragraph would be wrapped anyway, so
/// nobody sees where one piece ends.
struct ParagraphBox {
    int generation = 0; ///< of the layout that it was arranged for
    qreal column = 0;   ///< width for the lines
    QRectF content;     ///< where the lines stand; pieces count from its top
    QRectF cell;        ///< a table cell with its borders; null for other paragraphs
    SharedParagraphStyle style;
    bool rightToLeft = false;
    /// The first character that decides on a direction, or the paragraph's length.
    int directionAt = -1;
    /// Where lines after the first begin, if a list's marker decides on it.
    std::optional<qreal> hanging;
    std::vector<ParagraphPiece> pieces; ///< none: not cut yet

    /// How pieces are cut. A paragraph of up to twice the length is one piece.
    struct Cutting {
        int length = 0;              ///< of a piece
        qreal unitsPerCharacter = 0; ///< of height, as an estimate
    };

    [[nodiscard]] int textLength() const { return pieces.empty() ? 0 : pieces.back().end(); }
    [[nodiscard]] bool isWhole() const { return pieces.size() == 1; }
    [[nodiscard]] bool hasAllLines() const;
    /// Whether any line is shown with a decoration.
    [[nodiscard]] bool isDecorated() const;
    /// The lines that there are, from the top of the content.
    [[nodiscard]] std::vector<BrokenLine> knownLines() const;
    /// The index of the piece that holds `position`; at the end of the text the last one.
    [[nodiscard]] int pieceAt(int position) const;
    /// The index of the piece at `y` units below the top of the content, or the nearest one.
    [[nodiscard]] int pieceAtHeight(qreal y) const;
    /// From the top of the content; for the number of pieces the height of all.
    [[nodiscard]] qreal topOf(int piece) const;

    /// Forgets all pieces and cuts `length` characters anew.
    void cut(int length, const Cutting& cutting);
    /// Follows a change of the text: what it touched loses its lines, everything else keeps them.
    /// `lineLength` is about how far back a line may depend on what comes behind it.
    void replace(int from, int removed, int added, int lineLength, const Cutting& cutting);
    /// Takes the lines of what lies in [from, to), whose text is the same but looks different.
    void release(int from, int to);
    /// Gives a piece its lines. They may end elsewhere than where the next piece began; that one
    /// then begins there, without lines.
    void place(int piece, BrokenPiece broken, const Cutting& cutting);
    /// Moves a guessed start by `distance` characters.
    void moveStart(int piece, int distance);

private:
    void splitLong(int piece, const Cutting& cutting);
};

/// What layouts keep at a paragraph of the store: it goes with the paragraph.
class ParagraphBoxes : public QTextBlockUserData {
public:
    /// What `layout` keeps at `block`, or null.
    [[nodiscard]] static ParagraphBox* find(const QTextBlock& block, const void* layout);
    [[nodiscard]] static ParagraphBox& make(const QTextBlock& block, const void* layout);
    static void remove(const QTextBlock& block, const void* layout);

private:
    struct Entry {
        const void* layout;
        std::unique_ptr<ParagraphBox> box;
    };
    std::vector<Entry> m_entries;
};

} // namespace orvane
