// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QString>

namespace orvane {

/// A run of text that two versions share, or that only one of them has.
struct TextPiece {
    enum class Kind { Same, Removed, Added };

    Kind kind = Kind::Same;
    QString text;

    bool operator==(const TextPiece&) const = default;
};

/// What changed from `before` to `after`, in reading order. `Same` and `Added` joined give `after`
/// to the unit; `Same` and `Removed` give `before` but for the spaces between words, which are not
/// compared. In one place what was removed stands before what was added, and a few words that
/// happen to agree in the middle of a rewritten passage count as rewritten.
///
/// Paragraphs are matched first and the words inside those that differ second, each by Myers'
/// linear-space algorithm ("An O(ND) difference algorithm and its variations", 1986). Both have a
/// bound on their work: past it the rest is told by whole paragraphs, so that texts of any length
/// take a fraction of a second.
[[nodiscard]] QList<TextPiece> textDifference(const QString& before, const QString& after);

} // namespace orvane
