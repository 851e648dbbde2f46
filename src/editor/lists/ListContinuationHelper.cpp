// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/lists/ListContinuationHelper.h"

#include "editor/lists/ListLines.h"

namespace orvane::ListContinuationHelper {

using namespace Qt::StringLiterals;

namespace {

const auto listName = u"List"_s;

/// What an item that goes on with `line`'s marker begins with, at `level`.
QString continuingPrefix(const ListText& text, const ListLine& line, int level)
{
    const auto match = matchOf(text, line);
    if (match && match->customBullet)
        return markerPrefix(match->customBullet->character, level);
    if (text.form == ListForm::plain) {
        if (text.text[line.contentStart() - 2] == u'-')
            return markerPrefix(u"-"_s, level);
        if (text.text[line.contentStart() - 2] == u']')
            return markerPrefix(u"- [ ]"_s, level);
    }
    return markerPrefix(*line.item, level);
}

std::optional<RgbaColor> continuingColor(const ListText& text, const ListLine& line)
{
    const auto match = matchOf(text, line);
    return match && match->customBullet ? match->customBullet->color() : std::nullopt;
}

TextEdits finish(ListLines& lines, const QString& name, qsizetype caret)
{
    lines.renumber();
    TextEdits edits = lines.edits(name);
    edits.selection = {positionAfter(edits.replacements, caret, InsertionSide::after), 0};
    return edits;
}

/// The selection covers the same characters as before; a caret goes behind a new marker.
TextEdits finishWithSelection(ListLines& lines, const QString& name, TextRange selection)
{
    lines.renumber();
    TextEdits edits = lines.edits(name);
    const auto startSide = selection.isEmpty() ? InsertionSide::after : InsertionSide::before;
    edits.selection = TextRange::between(
        positionAfter(edits.replacements, selection.location, startSide),
        positionAfter(edits.replacements, selection.end(), InsertionSide::after));
    return edits;
}

/// What an item begins with that only moves to another level: a ticked box stays ticked.
QString movedPrefix(const ListText& text, const ListLine& line, int level)
{
    if (line.item != EditorListStyle::checkbox)
        return continuingPrefix(text, line, level);
    QString marker = text.text.sliced(line.range.location, line.prefixLength).trimmed();
    return markerPrefix(marker, level);
}

bool isPageBreak(const ListText& text, const ListLine& line)
{
    return line.range.length == 1 && text.text[line.range.location] == u'\f';
}

TextEdits withoutMarkers(ListLines& lines, ListLines::Span span, const QString& name,
                         TextRange selection)
{
    for (qsizetype i = span.first; i < span.end; ++i) {
        if (lines[i].isItem())
            lines.setPlain(i);
    }
    return finishWithSelection(lines, name, selection);
}

} // namespace

std::optional<TextEdits> handleReturn(const ListText& text, TextRange selection)
{
    if (!selection.isEmpty())
        return std::nullopt;
    ListLines lines(text);
    const qsizetype index = lines.indexAt(selection.location);
    const ListLine line = lines[index];
    if (!line.isItem() || lines.isProseAt(index))
        return std::nullopt;
    const QStringView content =
        QStringView(text.text).sliced(line.contentStart(), line.range.end() - line.contentStart());
    if (content.trimmed().isEmpty()) {
        lines.setPlain(index);
        return finish(lines, listName, selection.location);
    }
    const qsizetype caret = std::clamp(selection.location, line.contentStart(), line.range.end());
    lines.split(index, caret, *line.item, line.level, continuingPrefix(text, line, line.level));
    if (const auto color = continuingColor(text, line))
        lines.setMarkerColor(index + 1, color);
    return finish(lines, listName, caret);
}

std::optional<TextEdits> removeListMarker(const ListText& text, qsizetype position)
{
    ListLines lines(text);
    const qsizetype index = lines.indexAt(position);
    if (!lines[index].isItem())
        return std::nullopt;
    lines.setPlain(index);
    return finish(lines, listName, position);
}

std::optional<TextEdits> updateListIndent(const ListText& text, TextRange selection, int delta)
{
    if (!selection.isEmpty())
        return std::nullopt;
    const QString name = delta > 0 ? u"Indent"_s : u"Outdent"_s;
    ListLines lines(text);
    const qsizetype index = lines.indexAt(selection.location);
    const ListLine line = lines[index];
    if (!line.isItem())
        return std::nullopt;
    const int level = line.level + delta;
    if (level < 0) {
        lines.setPlain(index);
        return finish(lines, name, std::max(selection.location, line.contentStart()));
    }
    lines.setItem(index, *line.item, level, movedPrefix(text, line, level));
    if (const auto color = continuingColor(text, line))
        lines.setMarkerColor(index, color);
    return finish(lines, name, std::max(selection.location, line.contentStart()));
}

TextEdits renumberOrderedLists(const ListText& text, TextRange touched)
{
    ListLines lines(text);
    lines.touch(lines.touchedBy(touched));
    return finishWithSelection(lines, listName, touched);
}

TextEdits toggleList(const ListText& text, TextRange selection, EditorListStyle style)
{
    const auto name = u"List Style"_s;
    ListLines lines(text);
    const ListLines::Span span = lines.touchedBy(selection);
    bool removes = true;
    for (qsizetype i = span.first; i < span.end && removes; ++i)
        removes = lines[i].item == style || isPageBreak(text, lines[i]);
    if (removes)
        return withoutMarkers(lines, span, name, selection);
    for (qsizetype i = span.first; i < span.end; ++i) {
        if (isPageBreak(text, lines[i]))
            continue;
        const int level = lines[i].isItem() ? lines[i].level : 0;
        lines.setItem(i, style, level, markerPrefix(style, level));
    }
    return finishWithSelection(lines, name, selection);
}

TextEdits toggleCustomBullet(const ListText& text, TextRange selection, const QString& character,
                             const std::optional<RgbaColor>& color)
{
    const auto name = u"Custom Bullet"_s;
    ListText withBullet = text;
    CustomBullet bullet;
    bullet.character = character;
    withBullet.bullets.append(bullet);
    ListLines lines(withBullet);
    const ListLines::Span span = lines.touchedBy(selection);
    const QString marker = markerPrefix(character, 0);
    const auto carries = [&](const ListLine& line) {
        QStringView content = QStringView(text.text).sliced(line.range.location, line.range.length);
        while (content.startsWith(u'\t'))
            content = content.sliced(1);
        return line.isItem() && content.startsWith(marker);
    };
    bool removes = true;
    for (qsizetype i = span.first; i < span.end && removes; ++i)
        removes = carries(lines[i]) || isPageBreak(text, lines[i]);
    if (removes)
        return withoutMarkers(lines, span, name, selection);
    for (qsizetype i = span.first; i < span.end; ++i) {
        if (isPageBreak(text, lines[i]))
            continue;
        const int level = lines[i].isItem() ? lines[i].level : 0;
        lines.setItem(i, EditorListStyle::disc, level, markerPrefix(character, level));
        lines.setMarkerColor(i, color);
    }
    return finishWithSelection(lines, name, selection);
}

TextEdits removeAnyCustomBullet(const ListText& text, TextRange selection)
{
    ListLines lines(text);
    const ListLines::Span span = lines.touchedBy(selection);
    for (qsizetype i = span.first; i < span.end; ++i) {
        const auto match = matchOf(text, lines[i]);
        if (match && match->customBullet)
            lines.setPlain(i);
    }
    return finishWithSelection(lines, u"Custom Bullet"_s, selection);
}

std::optional<TextEdits> toggleCheckbox(const ListText& text, qsizetype position)
{
    if (position < 0 || position >= text.text.size())
        return std::nullopt;
    const ListLine line = recognisedLine(text, lineRange(text.text, position));
    const bool isTicked = text.text[position] == tickedBox;
    if (line.item != EditorListStyle::checkbox || position != line.contentStart() - 2 ||
        (!isTicked && text.text[position] != emptyBox))
        return std::nullopt;
    TextEdits edits;
    edits.name = isTicked ? u"Untick"_s : u"Tick"_s;
    edits.replacements = {
        {{position, 1}, QString(QChar(isTicked ? emptyBox : tickedBox)), position}};
    edits.selection = {position, 0};
    return edits;
}

} // namespace orvane::ListContinuationHelper
