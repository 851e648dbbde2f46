// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/MarkGeometry.h"

#include "editor/view/EditorExtension.h"
#include "editor/view/EditorView.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

namespace orvane {

TextRange visibleText(const EditorView& view, const EditorPaint& paint)
{
    ParagraphLayout& layout = view.layout();
    const auto pageY = [&](qreal y) {
        return (y - paint.origin.y()) / paint.scale;
    };
    return layout.textBetween(pageY(paint.clip.top()), pageY(paint.clip.bottom()));
}

QList<QRectF> markRects(const EditorView& view, const EditorPaint& paint, TextRange range)
{
    const qreal height = view.layout().caretRect(int(range.location)).height();
    QList<QRectF> rects = view.layout().rectsOf(range);
    for (QRectF& rect : rects) {
        const QPointF center = rect.center();
        rect.setHeight(std::min(height, rect.height()));
        rect.moveCenter(center);
        rect = QRectF(paint.origin + rect.topLeft() * paint.scale, rect.size() * paint.scale);
    }
    return rects;
}

} // namespace orvane
