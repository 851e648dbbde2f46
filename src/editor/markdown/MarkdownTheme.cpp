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

Theme Theme::standard(const QColor& textColor, const QColor& pageColor)
{
    const bool isDark = pageColor.lightnessF() < 0.5f;
    Theme theme;
    theme.headingColor = textColor;
    theme.boldColor = textColor;
    theme.emphasisColor = textColor;
    theme.codeColor = isDark ? QColor(0xff, 0xa6, 0x57) : QColor(0xb3, 0x54, 0x00);
    theme.linkColor = isDark ? QColor(0x6c, 0xb2, 0xff) : QColor(0x0b, 0x5f, 0xc4);
    theme.listMarkerColor = isDark ? QColor(0xcf, 0x9c, 0xf5) : QColor(0x84, 0x3c, 0xb8);
    theme.taskCheckboxColor = isDark ? QColor(0x6f, 0xd6, 0x86) : QColor(0x1d, 0x7d, 0x3a);
    theme.blockquoteColor = faded(textColor, 0.72);
    theme.syntaxPunctuationColor = faded(textColor, 0.45);
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
