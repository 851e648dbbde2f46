// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextRange.h"

#include <QList>
#include <QRectF>

namespace orvane {

struct EditorPaint;
class EditorView;

// Where extensions draw marks on words, in the painter's coordinates.

/// The text of the paragraphs that are being painted.
[[nodiscard]] TextRange visibleText(const EditorView& view, const EditorPaint& paint);

/// What `range` covers, line by line, as high as its letters are rather than its lines.
[[nodiscard]] QList<QRectF> markRects(const EditorView& view, const EditorPaint& paint,
                                      TextRange range);

} // namespace orvane
