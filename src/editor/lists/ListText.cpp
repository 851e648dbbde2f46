// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/lists/ListText.h"

#include "editor/lists/ListLines.h"

namespace orvane {

ListText ListText::of(const AttributedString& text, const QList<CustomBullet>& bullets,
                      ListForm form)
{
    return {text.text(), [&text](qsizetype position) { return text.paragraphStyle(position); },
            bullets, form};
}

namespace ListContinuationHelper {

namespace {

std::optional<Context> contextOf(const ListText& text, const ListLine& line, TextRange full)
{
    if (!line.isItem())
        return std::nullopt;
    Context context;
    context.style = *line.item;
    context.kind = isNumbered(*line.item) ? Kind::numbered : Kind::bullet;
    context.level = line.level;
    context.prefixRange = {line.range.location, line.prefixLength};
    context.contentRange = TextRange::between(context.prefixRange.end(), line.range.end());
    context.fullLineRange = full;
    if (const auto match = matchOf(text, line); match && match->customBullet) {
        context.customBulletCharacter = match->customBullet->character;
        context.customBulletColor = match->customBullet->color();
    }
    return context;
}

} // namespace

std::optional<Context> listContext(const ListText& text, qsizetype position)
{
    const qsizetype clamped = std::clamp<qsizetype>(position, 0, text.text.size());
    const TextRange full = lineRange(text.text, clamped);
    return contextOf(text, recognisedLine(text, full), full);
}

std::optional<Context> listContextInRun(const ListText& text, qsizetype position)
{
    const ListLines lines(text);
    return contextOf(text, lines[lines.indexAt(position)], lineRange(text.text, position));
}

TextRange lineRange(QStringView text, qsizetype position)
{
    const auto ends = [](QChar c) {
        return c == u'\n' || c == lineSeparator;
    };
    qsizetype from = position;
    while (from > 0 && !ends(text[from - 1]))
        --from;
    qsizetype to = position;
    while (to < text.size() && !ends(text[to]))
        ++to;
    return TextRange::between(from, std::min(to + 1, text.size()));
}

QList<TextRange> paragraphLineRanges(QStringView text, TextRange range)
{
    QList<TextRange> lines{lineRange(text, range.location)};
    while (lines.last().end() < range.end())
        lines.append(lineRange(text, lines.last().end()));
    return lines;
}

ParagraphStyle listParagraphStyle(EditorListStyle style, int level)
{
    ParagraphStyle paragraph;
    paragraph.firstLineHeadIndent = indentPerLevel * level;
    paragraph.headIndent = paragraph.firstLineHeadIndent + markerWidth;
    paragraph.tabStops = {{paragraph.headIndent, TabAlignment::left}};
    paragraph.defaultTabInterval = indentPerLevel;
    paragraph.textLists = {{isNumbered(style) ? ListMarker::decimal : ListMarker::disc, 1}};
    return paragraph;
}

ParagraphStyle plainParagraphStyle(ParagraphStyle style)
{
    style.firstLineHeadIndent = 0;
    style.headIndent = 0;
    style.textLists.clear();
    return style;
}

} // namespace ListContinuationHelper
} // namespace orvane
