// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/lists/ListEditing.h"

#include "editor/lists/CustomBulletLibrary.h"
#include "editor/lists/ListLines.h"
#include "editor/view/EditorView.h"
#include "text/layout/LineBreaker.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

#include <QCoreApplication>

namespace orvane {

namespace lists = ListContinuationHelper;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ListEditing)
};

/// How far back a list is read to tell letters from Roman digits.
constexpr int longestRun = 800;

} // namespace

ListEditing::ListEditing(EditorView& view, const CustomBulletLibrary& library)
    : m_view(view)
    , m_library(library)
{
    m_view.addExtension(this, ExtensionPriority::lists);
}

ListEditing::~ListEditing()
{
    m_view.removeExtension(this);
}

ListText ListEditing::wholeText() const
{
    const TextStore& store = m_view.store();
    return {store.text(), [&store](qsizetype position) { return store.paragraphStyle(position); },
            m_library.bullets(), m_form};
}

ListText ListEditing::textOf(TextRange range) const
{
    const TextStore& store = m_view.store();
    const qsizetype start = range.location;
    return {store.text(range),
            [&store, start](qsizetype within) { return store.paragraphStyle(start + within); },
            m_library.bullets(), m_form};
}

ListText ListEditing::paragraphAt(qsizetype position, qsizetype& start) const
{
    const TextRange paragraph = m_view.store().paragraphRange(position);
    start = paragraph.location;
    return textOf(paragraph);
}

/// `paragraph` with the items above it, as far as they are of one list.
TextRange ListEditing::runAbove(TextRange paragraph) const
{
    TextRange run = paragraph;
    for (int i = 0; i < longestRun && run.location > 0; ++i) {
        const TextRange above = m_view.store().paragraphRange(run.location - 1);
        const ListText text = textOf(above);
        const lists::ListLine line =
            lists::recognisedLine(text, lists::lineRange(text.text, text.text.size() - 1));
        if (!line.isItem() && !lists::dependsOnLinesAbove(text, line))
            break;
        run = TextRange::between(above.location, run.end());
    }
    return run;
}

std::optional<lists::Context> ListEditing::listContext(qsizetype position) const
{
    qsizetype start = 0;
    const ListText paragraph = paragraphAt(position, start);
    auto context = lists::listContext(paragraph, position - start);
    const qsizetype within = std::clamp<qsizetype>(position - start, 0, paragraph.text.size());
    const lists::ListLine line =
        lists::recognisedLine(paragraph, lists::lineRange(paragraph.text, within));
    if (lists::dependsOnLinesAbove(paragraph, line)) {
        const TextRange run = runAbove(m_view.store().paragraphRange(position));
        start = run.location;
        context = lists::listContextInRun(textOf(run), position - start);
    }
    if (context) {
        context->prefixRange.location += start;
        context->contentRange.location += start;
        context->fullLineRange.location += start;
    }
    return context;
}

bool ListEditing::apply(const std::optional<TextEdits>& edits)
{
    if (!edits)
        return false;
    // A refusal is an answer, too: the key must not do something else instead.
    orvane::apply(*edits, m_view.gateway());
    return true;
}

/// Takes out `gap`, from a line's end to where the words of a line below begin; what is then one
/// paragraph has `style`.
bool ListEditing::joinLines(TextRange gap, const SharedParagraphStyle& style)
{
    EditGateway& gateway = m_view.gateway();
    if (!gateway.shouldChangeText(gap, {}))
        return true;
    gateway.performUndoableDocumentEdit(
        Words::tr("Delete"),
        [&](DocumentEditor& editor) {
            editor.remove(gap);
            editor.setParagraphStyle({gap.location, 0}, style);
            editor.setSelection(TextSelection::caret(gap.location));
            orvane::apply(lists::renumberOrderedLists(wholeText(), {gap.location, 0}), gateway);
        },
        EditEffect::changesText);
    return true;
}

/// Behind a marker it goes, and before one two lines become one without it.
bool ListEditing::deleteBackward(qsizetype caret)
{
    const TextStore& store = m_view.store();
    const auto item = listContext(caret);
    if (!item)
        return false;
    if (caret == item->contentRange.location)
        return apply(lists::removeListMarker(wholeText(), caret));
    const TextRange here = store.paragraphRange(caret);
    if (caret != here.location || caret == 0)
        return false;
    const TextRange above = store.paragraphRange(caret - 1);
    const SharedParagraphStyle style = store.paragraphStyle(above.location);
    if (style->cell || store.paragraphStyle(caret)->cell || isPageBreak(store.blockAt(caret - 1)))
        return false;
    if (above.length == 1)
        return joinLines(above, store.paragraphStyle(caret));
    return joinLines(TextRange::between(caret - 1, item->contentRange.location), style);
}

bool ListEditing::deleteForward(qsizetype caret)
{
    const TextStore& store = m_view.store();
    const TextRange here = store.paragraphRange(caret);
    if (caret + 1 != here.end() || here.end() >= store.length() ||
        store.characterAt(caret) != u'\n')
        return false;
    const auto below = listContext(here.end());
    const SharedParagraphStyle style = store.paragraphStyle(caret);
    if (!below || style->cell || store.paragraphStyle(here.end())->cell)
        return false;
    if (here.length == 1)
        return joinLines(here, store.paragraphStyle(here.end()));
    return joinLines(TextRange::between(caret, below->contentRange.location), style);
}

bool ListEditing::command(EditAction command)
{
    const TextRange selection = m_view.selection().range();
    if (!selection.isEmpty() || !m_view.isEditable())
        return false;
    if (command == EditAction::deleteForward)
        return deleteForward(selection.location);
    if (command == EditAction::deleteBackward)
        return deleteBackward(selection.location);
    if (!listContext(selection.location))
        return false;
    switch (command) {
    case EditAction::insertNewline:
        return apply(lists::handleReturn(wholeText(), selection));
    case EditAction::insertTab:
        return apply(lists::updateListIndent(wholeText(), selection, 1));
    case EditAction::insertBacktab:
        return apply(lists::updateListIndent(wholeText(), selection, -1));
    default:
        return false;
    }
}

void ListEditing::toggleList(EditorListStyle style)
{
    apply(lists::toggleList(wholeText(), m_view.selection().range(), style));
}

void ListEditing::toggleCustomBullet(const QString& character,
                                     const std::optional<RgbaColor>& color)
{
    apply(lists::toggleCustomBullet(wholeText(), m_view.selection().range(), character, color));
}

void ListEditing::removeAnyCustomBullet()
{
    apply(lists::removeAnyCustomBullet(wholeText(), m_view.selection().range()));
}

std::optional<qsizetype> ListEditing::boxAt(QPointF page) const
{
    const qsizetype near = m_view.positionAt(m_view.toViewport(page));
    const auto context = listContext(near);
    if (!context || context->style != EditorListStyle::checkbox)
        return std::nullopt;
    const qsizetype box = context->contentRange.location - 2;
    const QChar character = m_view.store().characterAt(box);
    if (character != lists::emptyBox && character != lists::tickedBox)
        return std::nullopt;
    const QList<QRectF> rects = m_view.layout().rectsOf({box, 1});
    const bool isHit = std::any_of(rects.begin(), rects.end(),
                                   [&](const QRectF& rect) { return rect.contains(page); });
    return isHit ? std::optional(box) : std::nullopt;
}

bool ListEditing::mousePressed(const EditorMouse& mouse)
{
    if (mouse.button != Qt::LeftButton || mouse.modifiers != Qt::NoModifier || !m_view.isEditable())
        return false;
    const auto box = boxAt(mouse.page);
    if (!box)
        return false;
    qsizetype start = 0;
    const ListText paragraph = paragraphAt(*box, start);
    auto edits = lists::toggleCheckbox(paragraph, *box - start);
    if (!edits)
        return false;
    for (TextReplacement& replacement : edits->replacements) {
        replacement.range.location += start;
        replacement.styleFrom = box;
    }
    edits->selection = m_view.selection().range();
    return apply(edits);
}

std::optional<Qt::CursorShape> ListEditing::cursorAt(QPointF page)
{
    if (!m_view.isEditable() || !boxAt(page))
        return std::nullopt;
    return Qt::PointingHandCursor;
}

} // namespace orvane
