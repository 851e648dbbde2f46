// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace orvane {

/// `text` as it is compared: case folded and without diacritics, one UTF-16 unit for each of
/// `text`, so that places in one are places in the other.
[[nodiscard]] QString foldedForMatch(QStringView text);

/// How well a text is meant by what a person typed.
struct FuzzyMatch {
    int score = 0;
    /// The units of the text that were found, ascending.
    QList<qsizetype> positions;
    /// Only single letters, or pairs, stand within words: chance more than meaning.
    bool isScattered = false;
};

/// Finds the letters of `pattern` in `text`, both folded, in their order. Beginnings of words and
/// runs of letters count for more, gaps for less; a blank in the pattern asks for the beginning of
/// a word. When the words of the pattern don't come in their order, each is looked for by itself,
/// which counts for less. An empty pattern matches everything with the score 0.
[[nodiscard]] std::optional<FuzzyMatch> fuzzyMatch(QStringView pattern, QStringView text);

} // namespace orvane
