// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/lists/ListEditing.h"

#include "editor/lists/CustomBulletLibrary.h"
#include "editor/view/EditorView.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

namespace orvane {

namespace lists = ListContinuationHelper;

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

ListText ListEditing::paragraphAt(qsizetype position, qsizetype& start) const
{
    const TextStore& store = m_view.store();
    const TextRange paragraph = store.paragraphRange(position);
    start = paragraph.location;
    return {store.text(paragraph),
            [&store, start](qsizetype within) { return store.paragraphStyle(start + within); },
            m_library.bullets(), m_form};
}

std::optional<lists::Context> ListEditing::listContext(qsizetype position) const
{
    qsizetype start = 0;
    const ListText paragraph = paragraphAt(position, start);
    auto context = lists::listContext(paragraph, position - start);
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

bool ListEditing::command(EditAction command)
{
    const TextRange selection = m_view.selection().range();
    if (!selection.isEmpty() || !m_view.isEditable() || !listContext(selection.location))
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
        replacement.styleFrom = *box;
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
