// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/TextUnits.h"

#include "text/store/Graphemes.h"
#include "text/store/TextStore.h"

#include <QTextLayout>

namespace orvane {

namespace {

/// So near to the border of a window, a boundary may be there for want of more text.
constexpr qsizetype nearness = 16;
constexpr qsizetype usualWindow = 128;

/// Text round a position, of one paragraph.
struct Window {
    TextRange range;
    TextRange paragraph; ///< without its separator
    QString text;

    Window(const TextStore& store, qsizetype position, qsizetype reach)
    {
        const QTextBlock block = store.blockAt(position);
        paragraph = {block.position(), block.length() - 1};
        range = TextRange::between(std::max(paragraph.location, position - reach),
                                   std::min(paragraph.end(), position + reach));
        text = store.text(range);
    }
    /// Whether a boundary found at `position` would be found in the whole paragraph, too.
    [[nodiscard]] bool tellsAbout(qsizetype position) const
    {
        const bool isBehindStart =
            range.location == paragraph.location || position >= range.location + nearness;
        const bool isBeforeEnd =
            range.end() == paragraph.end() || position <= range.end() - nearness;
        return isBehindStart && isBeforeEnd;
    }
};

using CursorStep = int (QTextLayout::*)(int, QTextLayout::CursorMode) const;

qsizetype wordStep(const TextStore& store, qsizetype position, CursorStep step)
{
    for (qsizetype reach = usualWindow;; reach *= 8) {
        const Window window(store, position, reach);
        const QTextLayout layout(window.text);
        const qsizetype found =
            window.range.location +
            (layout.*step)(int(position - window.range.location), QTextLayout::SkipWords);
        if (window.tellsAbout(found))
            return found;
    }
}

} // namespace

TextRange unitAround(const TextStore& store, qsizetype position,
                     QTextBoundaryFinder::BoundaryType type)
{
    for (qsizetype reach = usualWindow;; reach *= 8) {
        const Window window(store, position, reach);
        QTextBoundaryFinder finder(type, window.text);
        finder.setPosition(position - window.range.location + 1);
        const qsizetype from = std::max<qsizetype>(0, finder.toPreviousBoundary());
        const qsizetype next = finder.toNextBoundary();
        const qsizetype to = next < 0 ? window.text.size() : next;
        if (window.tellsAbout(window.range.location + from) &&
            window.tellsAbout(window.range.location + to))
            return TextRange::between(window.range.location + from, window.range.location + to);
    }
}

qsizetype nextGrapheme(const TextStore& store, qsizetype position)
{
    return aroundWholeGraphemes(store, TextSelection::caret(position + 1)).position;
}

qsizetype previousGrapheme(const TextStore& store, qsizetype position)
{
    return aroundWholeGraphemes(store, {position - 1, position}).anchor;
}

qsizetype nextWordStart(const TextStore& store, qsizetype position)
{
    return wordStep(store, position, &QTextLayout::nextCursorPosition);
}

qsizetype previousWordStart(const TextStore& store, qsizetype position)
{
    return wordStep(store, position, &QTextLayout::previousCursorPosition);
}

} // namespace orvane
