// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/layout/ParagraphLayout.h"
#include "text/value/TextRange.h"

#include <optional>

namespace orvane {

class TextStore;

/// A step of the caret. Left and right are those of a left-to-right text; in a right-to-left
/// paragraph the arrow keys go the other way by themselves.
enum class CaretMove {
    left,
    right,
    wordLeft,
    wordRight,
    lineUp,
    lineDown,
    lineStart,
    lineEnd,
    paragraphUp,
    paragraphDown,
    pageUp,
    pageDown,
    documentStart,
    documentEnd,
};

/// Whether what is selected stays so and grows or shrinks with the caret.
enum class SelectionMode { replace, extend };

/// A position, and on which of two lines it is meant where one was wrapped.
struct CaretPlace {
    qsizetype position = 0;
    CaretSide side = CaretSide::lowerLine;

    bool operator==(const CaretPlace&) const = default;
};

/// Finds where the caret goes. Up and down move by where lines stand on the page, not by the order
/// of the text, so they pass from row to row in a table; they keep to the x at which the first of
/// them began.
class CaretNavigator {
public:
    /// The place to which `move` leads from `from`. A page is `pageHeight` points. Where there is
    /// no way to go, up leads to the start of the text and down to its end.
    [[nodiscard]] CaretPlace moved(ParagraphLayout& layout, const TextStore& store, CaretPlace from,
                                   CaretMove move, qreal pageHeight);
    /// The next move up or down begins at the caret's own x again.
    void forgetGoal() { m_goalX.reset(); }

private:
    enum class CaretWay { up, down };

    [[nodiscard]] CaretPlace vertical(ParagraphLayout& layout, const TextStore& store,
                                      CaretPlace from, CaretWay way, qreal distance);

    std::optional<qreal> m_goalX;
};

/// The next or previous place for a caret: grapheme by grapheme.
[[nodiscard]] qsizetype nextCharacter(const TextStore& store, qsizetype position);
[[nodiscard]] qsizetype previousCharacter(const TextStore& store, qsizetype position);
/// The start of the next word, and of the word that `position` is in or behind.
[[nodiscard]] qsizetype nextWord(const TextStore& store, qsizetype position);
[[nodiscard]] qsizetype previousWord(const TextStore& store, qsizetype position);
/// The word at `position`, or the blanks or the sign there.
[[nodiscard]] TextRange wordAt(const TextStore& store, qsizetype position);
/// The paragraph at `position` without its "\n".
[[nodiscard]] TextRange paragraphTextAt(const TextStore& store, qsizetype position);

} // namespace orvane
