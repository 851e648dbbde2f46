// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QRectF>
#include <QTextBlockUserData>

#include <vector>

namespace orvane {

/// What is known of a paragraph that has been laid out, beside the lines that its `QTextLayout`
/// holds. In layout units, from the top left of the paragraph, which for a table cell is that of
/// its row.
struct ParagraphBox : QTextBlockUserData {
    struct Line {
        qreal top = 0;
        qreal height = 0; ///< with the room that line height and spacing add
        int start = 0;    ///< of its characters in the paragraph
        int length = 0;
    };

    int generation = 0; ///< of the layout that it was made for
    qreal column = 0;   ///< width for the lines
    QRectF content;     ///< where the lines stand; line tops count from its top
    QRectF cell;        ///< a table cell with its borders; null for other paragraphs
    std::vector<Line> lines;
};

} // namespace orvane
