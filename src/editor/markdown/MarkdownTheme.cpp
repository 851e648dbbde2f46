// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/markdown/MarkdownSyntaxHighlighter.h"

namespace orvane::MarkdownSyntaxHighlighter {

namespace {

QColor faded(QColor color, double share)
{
    color.setAlphaF(float(color.alphaF() * share));
    return color;
}

} // namespace

Theme Theme::of(const Tokens& tokens)
{
    Theme theme;
    theme.headingColor = tokens.pageText;
    theme.boldColor = tokens.pageText;
    theme.emphasisColor = tokens.pageText;
    theme.codeColor = tokens.markdown.code;
    theme.linkColor = tokens.markdown.link;
    theme.blockquoteColor = tokens.markdown.blockquote;
    theme.listMarkerColor = tokens.markdown.listMarker;
    theme.taskCheckboxColor = tokens.markdown.taskCheckbox;
    theme.syntaxPunctuationColor = tokens.markdown.punctuation;
    return theme;
}

QColor Theme::colorOf(MarkdownColor color, const QColor& textColor) const
{
    switch (color) {
    case MarkdownColor::heading:
        return headingColor;
    case MarkdownColor::code:
        return codeColor;
    case MarkdownColor::link:
        return linkColor;
    case MarkdownColor::linkTarget:
        return faded(linkColor, 0.6);
    case MarkdownColor::blockquote:
        return blockquoteColor;
    case MarkdownColor::listMarker:
        return listMarkerColor;
    case MarkdownColor::taskCheckbox:
        return taskCheckboxColor;
    case MarkdownColor::punctuation:
        return syntaxPunctuationColor;
    case MarkdownColor::text:
        break;
    }
    return textColor;
}

} // namespace orvane::MarkdownSyntaxHighlighter
