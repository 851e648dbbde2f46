// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

#include <QTextDocument>
#include <gtest/gtest.h>

#include <string>

namespace orvane {

/// How wide the texts of these tests are laid out, in points.
inline constexpr qreal laidWidth = 400;

/// All paragraphs laid out, by place and height, and where each line of text begins.
struct Laid {
    QList<QRectF> paragraphs;
    QList<qsizetype> lines;

    explicit Laid(const TextStore& store, int pieceLength = 0)
    {
        ParagraphLayout layout(store);
        layout.setWidth(laidWidth);
        if (pieceLength > 0)
            layout.setPieceLength(pieceLength);
        read(layout, store);
    }
    Laid(ParagraphLayout& layout, const TextStore& store) { read(layout, store); }

    void read(ParagraphLayout& layout, const TextStore& store)
    {
        QTextBlock block = store.document().begin();
        for (; block.isValid(); block = block.next())
            layout.ensureLaidOut(block);
        for (block = store.document().begin(); block.isValid(); block = block.next()) {
            paragraphs.append(QRectF(0, layout.topOf(block), layout.width(),
                                     layout.bottomOf(block) - layout.topOf(block)));
            for (const TextRange line : layout.linesOf(block))
                lines.append(line.location);
        }
    }
};

inline void expectSame(const Laid& left, const Laid& right, const std::string& where)
{
    ASSERT_EQ(left.lines, right.lines) << where;
    ASSERT_EQ(left.paragraphs.size(), right.paragraphs.size()) << where;
    for (qsizetype i = 0; i < left.paragraphs.size(); ++i) {
        ASSERT_NEAR(left.paragraphs[i].top(), right.paragraphs[i].top(), 0.01)
            << where << " paragraph " << i;
        ASSERT_NEAR(left.paragraphs[i].height(), right.paragraphs[i].height(), 0.01)
            << where << " paragraph " << i;
    }
}

} // namespace orvane
