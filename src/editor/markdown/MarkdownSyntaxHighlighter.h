// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"
#include "editor/markdown/MarkdownStyle.h"

#include <QColor>
#include <QString>

#include <span>

/// Colours Markdown by a fixed list of patterns, applied one after the other, so that later ones
/// paint over earlier ones. Nothing is parsed: what a pattern matches is decorated, whatever stands
/// around it. Only what lies in a fenced block is left to the first pattern.
///
/// | pattern | what it decorates |
/// |---|---|
/// | fenced code | the block with its fences, as code |
/// | heading | the line: bold, larger by level; its "#" as punctuation |
/// | bold, italic, strikethrough | the text between the delimiters, these as punctuation |
/// | inline code | as code, the backticks as punctuation |
/// | link | text and target, the brackets as punctuation |
/// | blockquote | the line, its ">" as punctuation |
/// | unordered, ordered, task list | marker and box |
/// | horizontal rule | as punctuation |
namespace orvane::MarkdownSyntaxHighlighter {

/// The colours and the code font of decoration.
struct Theme {
    QColor headingColor;
    QColor boldColor;     ///< not applied: bold text keeps its colour
    QColor emphasisColor; ///< not applied: italic text keeps its colour
    QColor codeColor;
    QString codeFontName = QStringLiteral("Menlo");
    QColor linkColor;
    QColor blockquoteColor;
    QColor listMarkerColor;
    QColor taskCheckboxColor;
    QColor syntaxPunctuationColor;

    bool operator==(const Theme&) const = default;

    /// The colours of the look's page.
    [[nodiscard]] static Theme of(const Tokens& tokens);
    [[nodiscard]] QColor colorOf(MarkdownColor color, const QColor& textColor) const;
};

/// How much larger than the base font a heading of a level from 1 to 6 is.
[[nodiscard]] double headingScale(int level);

/// Takes colours and strikethrough back; fonts and underlines stay until the text is loaded anew.
void resetToBase(std::span<MarkdownStyle> styles);

/// Applies all patterns to `text`, which is made of whole lines. `styles` has one element for each
/// UTF-16 unit. The patterns see nothing outside `text`. Takes time in proportion to its length.
void applyAllPatterns(QStringView text, std::span<MarkdownStyle> styles);

} // namespace orvane::MarkdownSyntaxHighlighter
