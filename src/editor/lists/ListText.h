// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/lists/ListMarker.h"
#include "text/value/AttributedString.h"

#include <functional>

namespace orvane {

/// How much of a list is written down.
enum class ListForm {
    /// Markers in their usual form, with a paragraph style that indents the item.
    rich,
    /// For text without styles: markers alone, and a hyphen stays a hyphen.
    plain
};

/// What list functions read of a text.
struct ListText {
    QString text; ///< lines end at "\n" and at U+2028
    /// The style of the paragraph that holds a position.
    std::function<SharedParagraphStyle(qsizetype position)> paragraphStyleAt;
    QList<CustomBullet> bullets; ///< of the library
    ListForm form = ListForm::rich;

    /// Reads from `text`, which must outlive it.
    [[nodiscard]] static ListText of(const AttributedString& text,
                                     const QList<CustomBullet>& bullets = {},
                                     ListForm form = ListForm::rich);
};

namespace ListContinuationHelper {

enum class Kind { bullet, numbered };

/// One line that is a list item.
struct Context {
    EditorListStyle style = EditorListStyle::disc;
    Kind kind = Kind::bullet;
    int level = 0;         ///< how deeply nested, from 0
    TextRange prefixRange; ///< the tabs and the marker with its space
    TextRange contentRange;
    TextRange fullLineRange; ///< with what ends the line
    std::optional<QString> customBulletCharacter;
    std::optional<RgbaColor> customBulletColor;

    bool operator==(const Context&) const = default;
};

/// The item in the line that holds `position`, which is moved into the text if it lies outside;
/// nothing if the line is no item.
[[nodiscard]] std::optional<Context> listContext(const ListText& text, qsizetype position);

/// The same, read with all lines of `text` above it: the last of a run that ends with the line.
[[nodiscard]] std::optional<Context> listContextInRun(const ListText& text, qsizetype position);

/// The line that holds `position`, with what ends it.
[[nodiscard]] TextRange lineRange(QStringView text, qsizetype position);
/// The lines that `range` touches, in order; an empty range touches one.
[[nodiscard]] QList<TextRange> paragraphLineRanges(QStringView text, TextRange range);

/// The paragraph style of an item. The marker that people see is text; the style's `TextList` only
/// labels the paragraph.
[[nodiscard]] ParagraphStyle listParagraphStyle(EditorListStyle style, int level);
/// `style` without indents and list label.
[[nodiscard]] ParagraphStyle plainParagraphStyle(ParagraphStyle style);

} // namespace ListContinuationHelper
} // namespace orvane
