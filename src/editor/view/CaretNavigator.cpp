// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/CaretNavigator.h"

#include "text/layout/LineBreaker.h"
#include "text/store/Graphemes.h"
#include "text/store/TextStore.h"
#include "text/store/TextUnits.h"

namespace orvane {

namespace {

bool isRightToLeft(const TextStore& store, qsizetype position)
{
    const WritingDirection direction = store.paragraphStyle(position)->direction;
    return baseDirection(store, store.blockAt(position), direction).rightToLeft;
}

CaretMove forDirection(const TextStore& store, qsizetype position, CaretMove move)
{
    const bool isHorizontal = move == CaretMove::left || move == CaretMove::right ||
                              move == CaretMove::wordLeft || move == CaretMove::wordRight;
    if (!isHorizontal || !isRightToLeft(store, position))
        return move;
    switch (move) {
    case CaretMove::left:
        return CaretMove::right;
    case CaretMove::right:
        return CaretMove::left;
    case CaretMove::wordLeft:
        return CaretMove::wordRight;
    default:
        return CaretMove::wordLeft;
    }
}

enum class StepWay { backward, forward };

/// `position`, or where a page break is passed by: nobody writes within one, so the caret goes from
/// the paragraph above straight to the one below.
qsizetype pastPageBreaks(const TextStore& store, qsizetype position, StepWay way)
{
    bool forward = way == StepWay::forward;
    QTextBlock block = store.blockAt(position);
    if (!isPageBreak(block))
        return position;
    const auto beyond = [&](bool below) {
        QTextBlock next = block;
        while (next.isValid() && isPageBreak(next))
            next = below ? next.next() : next.previous();
        return next;
    };
    QTextBlock next = beyond(forward);
    if (!next.isValid()) {
        forward = !forward;
        next = beyond(forward);
    }
    if (!next.isValid())
        return position;
    return next.position() + (forward ? 0 : next.length() - 1);
}

enum class StepUnit { character, word };

qsizetype plainStep(const TextStore& store, qsizetype position, StepWay way, StepUnit unit)
{
    const TextRange paragraph = paragraphTextAt(store, position);
    if (way == StepWay::forward) {
        if (position >= paragraph.end())
            return std::min(position + 1, store.length());
        return unit == StepUnit::word ? nextWordStart(store, position)
                                      : nextGrapheme(store, position);
    }
    if (position == paragraph.location)
        return std::max<qsizetype>(position - 1, 0);
    return unit == StepUnit::word ? previousWordStart(store, position)
                                  : previousGrapheme(store, position);
}

qsizetype step(const TextStore& store, qsizetype position, StepWay way, StepUnit unit)
{
    return pastPageBreaks(store, plainStep(store, position, way, unit), way);
}

qsizetype paragraphUp(const TextStore& store, qsizetype position)
{
    const qsizetype start = store.paragraphRange(position).location;
    return position > start || start == 0 ? start : store.paragraphRange(start - 1).location;
}

qsizetype paragraphDown(const TextStore& store, qsizetype position)
{
    return store.paragraphRange(position).end();
}

} // namespace

qsizetype nextCharacter(const TextStore& store, qsizetype position)
{
    return step(store, position, StepWay::forward, StepUnit::character);
}

qsizetype previousCharacter(const TextStore& store, qsizetype position)
{
    return step(store, position, StepWay::backward, StepUnit::character);
}

qsizetype nextWord(const TextStore& store, qsizetype position)
{
    return step(store, position, StepWay::forward, StepUnit::word);
}

qsizetype previousWord(const TextStore& store, qsizetype position)
{
    return step(store, position, StepWay::backward, StepUnit::word);
}

TextRange paragraphTextAt(const TextStore& store, qsizetype position)
{
    const QTextBlock block = store.blockAt(position);
    return {block.position(), block.length() - 1};
}

TextRange wordAt(const TextStore& store, qsizetype position)
{
    const TextRange paragraph = paragraphTextAt(store, position);
    if (paragraph.isEmpty())
        return {position, 0};
    return unitAround(store, std::min(position, paragraph.end() - 1), QTextBoundaryFinder::Word);
}

CaretPlace CaretNavigator::vertical(ParagraphLayout& layout, const TextStore& store,
                                    CaretPlace from, CaretWay way, qreal distance)
{
    const bool down = way == CaretWay::down;
    const QRectF caret = layout.caretRect(int(from.position), from.side);
    const qreal x = m_goalX.value_or(caret.x());
    LaidOutLine line = layout.lineAt(int(from.position), from.side);
    qreal travelled = 0;
    bool moved = false;
    const auto isInBreak = [&] {
        return isPageBreak(store.blockAt(line.range.location));
    };
    do {
        // How far each line is from the next is firm even where the page above is only estimated.
        const std::optional<LaidOutLine> next =
            down ? layout.lineBelow(line, x) : layout.lineAbove(line, x);
        if (!next)
            break;
        travelled += down ? next->rect.height() : line.rect.height();
        if (moved && travelled > distance && !isInBreak())
            break;
        line = *next;
        moved = true;
    } while (travelled < distance || isInBreak());
    m_goalX = x;
    if (!moved)
        return {down ? store.length() : 0};
    CaretPlace place;
    place.position = layout.positionInLine(line, x, &place.side);
    place.position =
        pastPageBreaks(store, place.position, down ? StepWay::forward : StepWay::backward);
    return place;
}

CaretPlace CaretNavigator::moved(ParagraphLayout& layout, const TextStore& store, CaretPlace from,
                                 CaretMove move, qreal pageHeight)
{
    const bool keepsGoal = move == CaretMove::lineUp || move == CaretMove::lineDown ||
                           move == CaretMove::pageUp || move == CaretMove::pageDown;
    if (!keepsGoal)
        forgetGoal();
    switch (forDirection(store, from.position, move)) {
    case CaretMove::left:
        return {previousCharacter(store, from.position)};
    case CaretMove::right:
        return {nextCharacter(store, from.position)};
    case CaretMove::wordLeft:
        return {previousWord(store, from.position)};
    case CaretMove::wordRight:
        return {nextWord(store, from.position)};
    case CaretMove::lineUp:
        return vertical(layout, store, from, CaretWay::up, 0);
    case CaretMove::lineDown:
        return vertical(layout, store, from, CaretWay::down, 0);
    case CaretMove::pageUp:
        return vertical(layout, store, from, CaretWay::up, pageHeight);
    case CaretMove::pageDown:
        return vertical(layout, store, from, CaretWay::down, pageHeight);
    case CaretMove::lineStart:
        return {layout.lineAt(int(from.position), from.side).range.location};
    case CaretMove::lineEnd: {
        const LaidOutLine line = layout.lineAt(int(from.position), from.side);
        CaretPlace end;
        end.position = layout.endOfLine(line, &end.side);
        return end;
    }
    case CaretMove::paragraphUp:
        return {pastPageBreaks(store, paragraphUp(store, from.position), StepWay::backward)};
    case CaretMove::paragraphDown:
        return {pastPageBreaks(store, paragraphDown(store, from.position), StepWay::forward)};
    case CaretMove::documentStart:
        return {0};
    case CaretMove::documentEnd:
        return {store.length()};
    }
    return from;
}

} // namespace orvane
