// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/find/TextSearch.h"
#include "editor/view/TextEdits.h"
#include "text/value/TextSelection.h"

#include <functional>

namespace orvane {

/// All matches of a query in one text, kept up to date while the text is edited: a change looks at
/// the text round it only.
class FindMatches {
public:
    /// Reads a range of the text that is being searched.
    using ReadText = std::function<QString(TextRange)>;

    void search(const QString& query, QStringView text);
    /// Follows a change. `length` is that of the text as it stands now.
    void update(const TextChange& change, qsizetype length, const ReadText& read);
    void clear();

    [[nodiscard]] const TextSearch& query() const { return m_search; }
    /// In order, none overlapping another.
    [[nodiscard]] const QList<TextRange>& ranges() const { return m_ranges; }
    /// Those that touch `range`, as indices from the first up to the end.
    [[nodiscard]] std::pair<qsizetype, qsizetype> touching(TextRange range) const;
    /// The index of the match that is exactly `range`, or -1.
    [[nodiscard]] qsizetype indexOf(TextRange range) const;

private:
    TextSearch m_search;
    QList<TextRange> m_ranges;
};

/// Replaces all of `matches` in `text` that are not `replacement` already; named "Replace All". The
/// selection keeps its place.
[[nodiscard]] TextEdits replacingAll(QStringView text, const QList<TextRange>& matches,
                                     const QString& replacement, TextRange selection);

} // namespace orvane
