// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/layout/TextPaint.h"
#include "text/value/ParagraphStyle.h"

#include <QFont>
#include <QHash>
#include <QTextBlock>
#include <QTextLayout>

#include <memory>

class QTextDocument;

namespace orvane {

class ParagraphDecorator;
class StyleTable;
class TextStore;

/// How lines are made in a whole text, beside what each paragraph says itself.
struct LineSettings {
    /// The least distance from line to line, as a multiple of the font size. Fonts whose own lines
    /// are higher keep theirs.
    qreal lineHeight = 1.0;
    /// Where a paragraph names no tab interval, in points.
    qreal tabInterval = 28;

    bool operator==(const LineSettings&) const = default;
};

/// An input method's text, which is shown at a position of the text without being part of it.
struct Preedit {
    int position = 0;
    QString text;
    int caret = 0; ///< within `text`
    QList<QTextLayout::FormatRange> formats;
};

struct ObjectRoom;

/// What stands on object characters, for whoever lays them out.
struct InlineObjects {
    const StyleTable& styles;
    ObjectPainter* painter = nullptr; ///< null: sizes as attachments say, nothing is drawn

    /// The room that an object takes in its line, in layout units.
    [[nodiscard]] QSizeF roomFor(const CharacterStyle& style, const ObjectRoom& room) const;
    /// Where it stands in that.
    [[nodiscard]] QRectF rectOf(const CharacterStyle& style, const QRectF& taken,
                                const ObjectRoom& room) const;
    [[nodiscard]] const CharacterStyle& styleOf(const QTextFormat& format) const;

private:
    [[nodiscard]] QSizeF sizeOf(const CharacterStyle& style) const;
};

/// Holds the fonts that a text is laid out with. The toolkit lets go of a font that nobody holds,
/// and reads its file again for the next line.
class HeldFonts {
public:
    void hold(const TextFont& font, const QTextCharFormat& format, const QFont& base);
    void clear() { m_fonts.clear(); }

private:
    QHash<TextFont, QFont> m_fonts;
};

/// The room that objects in the lines of a paragraph have, in layout units. What is larger is shown
/// smaller, with its proportions.
struct ObjectRoom {
    qreal width = 0;
    qreal tallest = 0; ///< 0 for no limit
    TextAlignment alignment = TextAlignment::natural;
    bool rightToLeft = false;

    [[nodiscard]] QSizeF fitted(QSizeF size) const;
    /// Where an object of this size stands in `line`, which it has for itself, moved sideways from
    /// where text would stand.
    [[nodiscard]] QRectF placed(const QRectF& line, QSizeF size, qreal moved) const;
};

/// All that the lines of one paragraph depend on.
struct ParagraphSource {
    const TextStore& store;
    QTextBlock block;
    const ParagraphStyle& style;
    const LineSettings& settings;
    QFont font; ///< of text that names none
    const ParagraphDecorator* decorator = nullptr;
    const InlineObjects& objects;
    HeldFonts& fonts;
    const Preedit* preedit = nullptr; ///< null where none stands in this paragraph
    qreal column = 0;                 ///< in layout units
    qreal characterWidth = 1;         ///< an average, in layout units
    bool rightToLeft = false;
    qreal tallestObject = 0; ///< in layout units; 0 for no limit

    [[nodiscard]] int textLength() const { return block.length() - 1; }
    [[nodiscard]] ObjectRoom objectRoom() const;
};

/// How far below or above every clip lines stand that are not shown, in layout units.
inline constexpr qreal outOfSight = 1e6;

/// The text of a stretch of a paragraph with its formats, to be broken into lines, and the way from
/// its positions to those of the paragraph: an input method's text stands between them, and signs
/// that carry on the direction of what stands before the stretch.
///
/// Most of the work is to choose the glyphs. So lines may begin behind the start of the stretch,
/// and begin elsewhere later, as they do with each key in an endless word above them.
class PieceLayout {
public:
    /// [start, end) of the paragraph; of the text from `end` on nothing is known to it.
    PieceLayout(const ParagraphSource& source, int start, int end);
    /// How many characters before `start` a stretch may begin for lines to begin there: they are
    /// characters that make no glyph together.
    [[nodiscard]] static int marginBefore(const ParagraphSource& source, int start);
    ~PieceLayout();
    Q_DISABLE_COPY_MOVE(PieceLayout)

    /// Lets all lines go, for new ones to be made from `start` on. False where none can begin
    /// there.
    [[nodiscard]] bool beginLines(int start);
    [[nodiscard]] QTextLayout& text() { return *m_layout; }
    [[nodiscard]] const QTextLayout& text() const { return *m_layout; }
    [[nodiscard]] int start() const { return m_start; }
    /// The lines from where they begin.
    [[nodiscard]] QTextLine line(int index) const { return m_layout->lineAt(index + m_hidden); }
    [[nodiscard]] int lineCount() const { return m_layout->lineCount() - m_hidden; }
    /// The number of the line that holds a place; less than 0 where there is none.
    [[nodiscard]] int lineAt(int inLayout) const
    {
        const QTextLine line = m_layout->lineForTextPosition(inLayout);
        return line.isValid() ? line.lineNumber() - m_hidden : -1;
    }
    /// The text, or how it looks, has changed up to a position before its lines, or from one behind
    /// them on; nothing of it is shown.
    void changedUpTo(int position) { m_goodFrom = std::max(m_goodFrom, position); }
    void changedFrom(int position) { m_hasGoodEnd = m_hasGoodEnd && position >= m_end; }
    /// Whether new lines from `start` on come out as those of a new layout.
    [[nodiscard]] bool isGoodFrom(int start) const
    {
        return start >= m_goodFrom && m_hasGoodEnd && m_preeditAt < 0;
    }
    /// The text before it has grown by `distance` characters.
    void moveBy(int distance);
    /// The characters that the lines are made of.
    [[nodiscard]] const QString& characters() const { return m_characters; }
    [[nodiscard]] int end() const { return m_end; }
    /// The room of its objects.
    [[nodiscard]] const ObjectRoom& objectRoom() const { return m_objectRoom; }
    /// How many signs stand before the first character.
    [[nodiscard]] int lead() const { return m_lead; }
    /// What a decorator gave it, from the start of the paragraph, with an input method's text among
    /// the characters.
    [[nodiscard]] const QList<QTextLayout::FormatRange>& decorations() const
    {
        return m_decorations;
    }

    /// The place of a position of the paragraph; where an input method's text stands, of its caret.
    [[nodiscard]] int toLayout(int inParagraph) const;
    [[nodiscard]] int toParagraph(int inLayout) const;
    /// Where the input method's text begins; -1 where none stands.
    [[nodiscard]] int preeditStart() const;
    /// Whether some of the input method's text, but none of what follows it, stands before a place.
    [[nodiscard]] bool partsPreedit(int inLayout) const;

private:
    void makeHosted(const ParagraphSource& source, const QString& text);

    int m_start;
    int m_end;
    int m_lead = 0;
    int m_goodFrom;
    bool m_hasGoodEnd = true;
    bool m_hasBegun = false;
    int m_hidden = 0;     ///< 1 where a line out of sight holds what stands before the lines
    int m_preeditAt = -1; ///< in the paragraph
    int m_preeditLength = 0;
    int m_preeditCaret = 0;
    QList<QTextLayout::FormatRange> m_decorations;
    ObjectRoom m_objectRoom;
    QString m_characters;
    /// Objects are measured and drawn only for the text of a document.
    std::unique_ptr<QTextDocument> m_host;
    std::unique_ptr<QTextLayout> m_layout;
};

} // namespace orvane
