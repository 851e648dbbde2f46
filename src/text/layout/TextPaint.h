// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/CharacterStyle.h"
#include "text/value/TextRange.h"

#include <QColor>
#include <QList>
#include <QPointF>
#include <QRectF>

class QPainter;

namespace orvane {

/// The colours of text that is shown, where the text itself names none.
struct TextColors {
    QColor text;
    QColor link;
    QColor selection;
    QColor separator; ///< the lines of page breaks
    QColor label;     ///< what stands on them
    QColor page;      ///< what stands behind the text
    QColor dimmed;    ///< text out of focus

    bool operator==(const TextColors&) const = default;
};

/// What one drawing of a text needs to know.
struct TextPaint {
    QPointF origin;  ///< where the text's top left stands, in the painter's coordinates
    qreal scale = 1; ///< painter's units for a point of the page
    QRectF clip;     ///< in the painter's coordinates
    TextColors colors;
    TextRange selection;
    /// Only what lies in here has its own colours; everything else is dimmed.
    std::optional<TextRange> focus;
};

/// Measures and draws what stands on object characters.
class ObjectPainter {
public:
    virtual ~ObjectPainter() = default;

    /// The room that the object takes in its line, in points.
    [[nodiscard]] virtual QSizeF sizeOf(const CharacterStyle& style) const = 0;
    /// Draws the object into `rect`.
    virtual void paintObject(QPainter& painter, const QRectF& rect,
                             const CharacterStyle& style) = 0;
};

/// The room that an attachment says it takes; a small square for an object character without one.
[[nodiscard]] QSizeF attachmentSize(const CharacterStyle& style);

} // namespace orvane
