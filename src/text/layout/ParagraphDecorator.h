// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QTextLayout>

class QTextBlock;

namespace orvane {

/// Gives text attributes while it is shown that are not stored with it. They may change fonts, so
/// they take part in the layout.
class ParagraphDecorator {
public:
    virtual ~ParagraphDecorator() = default;

    /// The formats of the characters [from, to) of `block`, counted from its start and within them,
    /// by rising start; of their fonts only what differs from the text's own, in sizes set by
    /// `setFont`. Asked each time these characters are laid out.
    [[nodiscard]] virtual QList<QTextLayout::FormatRange> decorationOf(const QTextBlock& block,
                                                                       int from, int to) const = 0;
};

} // namespace orvane
