// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/commands/FuzzyMatch.h"

#include <QVarLengthArray>

#include <algorithm>
#include <limits>

namespace orvane {

namespace {

constexpr int letterScore = 4;
constexpr int wordStartBonus = 12;
constexpr int textStartBonus = 2;
constexpr int runBonus = 13;
constexpr int gapPenalty = 1;
constexpr int longestGapCounted = 12;
constexpr int missedWordStartPenalty = 10;
constexpr int disorderPenalty = 15;
constexpr int impossible = std::numeric_limits<int>::min() / 2;

struct PatternLetter {
    QChar letter;
    bool beginsWord = false;
};
using PatternLetters = QVarLengthArray<PatternLetter, 32>;

PatternLetters lettersOf(QStringView pattern)
{
    PatternLetters letters;
    bool beginsWord = false;
    for (const QChar unit : pattern) {
        if (unit.isSpace()) {
            beginsWord = !letters.isEmpty();
            continue;
        }
        letters.append({unit, beginsWord});
        beginsWord = false;
    }
    return letters;
}

bool isSubsequence(const PatternLetters& letters, QStringView text)
{
    qsizetype found = 0;
    for (const QChar unit : text) {
        found += unit == letters[found].letter ? 1 : 0;
        if (found == letters.size())
            return true;
    }
    return false;
}

bool isWordStart(QStringView text, qsizetype at)
{
    return text[at].isLetterOrNumber() && (at == 0 || !text[at - 1].isLetterOrNumber());
}

int scoreOfPlace(QStringView text, qsizetype at, const PatternLetter& letter)
{
    int score = letterScore;
    if (isWordStart(text, at))
        score += at == 0 ? wordStartBonus + textStartBonus : wordStartBonus;
    else if (letter.beginsWord)
        score -= missedWordStartPenalty;
    return score;
}

/// The best score of a match whose letter number `row` stands at `column`, and where the letter
/// before it stands then.
struct Cell {
    int score = impossible;
    qsizetype previous = -1;
};

/// Finds the best places of all letters, row by row.
std::optional<FuzzyMatch> bestPlaces(const PatternLetters& letters, QStringView text)
{
    const qsizetype width = text.size();
    QVarLengthArray<Cell, 1024> cells(letters.size() * width);
    const auto cell = [&](qsizetype row, qsizetype column) -> Cell& {
        return cells[row * width + column];
    };
    for (qsizetype row = 0; row < letters.size(); ++row) {
        // The best cell of the row above so far, with the gap to it paid up to this column.
        Cell reach{row == 0 ? 0 : impossible, -1};
        for (qsizetype column = 0; column < width; ++column) {
            if (row > 0 && column > 0) {
                if (reach.previous >= 0 && column - reach.previous <= longestGapCounted)
                    reach.score -= gapPenalty;
                const int fresh = cell(row - 1, column - 1).score;
                if (fresh > reach.score)
                    reach = {fresh, column - 1};
            }
            if (text[column] != letters[row].letter || reach.score <= impossible)
                continue;
            Cell best = reach;
            if (row > 0 && column > 0 && cell(row - 1, column - 1).score > impossible) {
                const int joined = cell(row - 1, column - 1).score + runBonus;
                if (joined >= best.score)
                    best = {joined, column - 1};
            }
            cell(row, column) = {best.score + scoreOfPlace(text, column, letters[row]),
                                 best.previous};
        }
    }
    const qsizetype last = letters.size() - 1;
    qsizetype column = 0;
    for (qsizetype i = 1; i < width; ++i) {
        if (cell(last, i).score > cell(last, column).score)
            column = i;
    }
    FuzzyMatch match{cell(last, column).score, {}, false};
    if (match.score <= impossible)
        return std::nullopt;
    for (qsizetype row = last; row >= 0; --row) {
        match.positions.prepend(column);
        column = cell(row, column).previous;
    }
    return match;
}

std::optional<FuzzyMatch> matchInOrder(QStringView pattern, QStringView text)
{
    const PatternLetters letters = lettersOf(pattern);
    if (letters.isEmpty())
        return FuzzyMatch{};
    if (!isSubsequence(letters, text))
        return std::nullopt;
    return bestPlaces(letters, text);
}

/// Whether a run of found letters neither begins a word nor is long enough to mean something.
bool isScattered(const QList<qsizetype>& positions, QStringView text, QStringView pattern)
{
    constexpr qsizetype leastWithinWord = 3;
    for (qsizetype from = 0; from < positions.size();) {
        qsizetype to = from + 1;
        while (to < positions.size() && positions[to] == positions[to - 1] + 1)
            ++to;
        const bool isWholePattern = to - from == positions.size() && pattern.size() == to - from;
        if (!isWordStart(text, positions[from]) && to - from < leastWithinWord && !isWholePattern)
            return true;
        from = to;
    }
    return false;
}

} // namespace

QString foldedForMatch(QStringView text)
{
    QString folded(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), folded.begin(), [](QChar unit) {
        if (unit.unicode() < 0x80)
            return unit.toLower();
        if (unit.decompositionTag() == QChar::Canonical)
            unit = unit.decomposition().front();
        return unit.toCaseFolded();
    });
    return folded;
}

std::optional<FuzzyMatch> fuzzyMatch(QStringView pattern, QStringView text)
{
    if (auto match = matchInOrder(pattern, text)) {
        match->isScattered = isScattered(match->positions, text, pattern);
        return match;
    }
    const auto words = pattern.split(u' ', Qt::SkipEmptyParts);
    if (words.size() < 2)
        return std::nullopt;
    FuzzyMatch whole{-disorderPenalty, {}, false};
    for (const QStringView word : words) {
        const auto match = matchInOrder(word, text);
        if (!match)
            return std::nullopt;
        whole.score += match->score;
        whole.positions += match->positions;
    }
    std::sort(whole.positions.begin(), whole.positions.end());
    whole.positions.erase(std::unique(whole.positions.begin(), whole.positions.end()),
                          whole.positions.end());
    whole.isScattered = isScattered(whole.positions, text, pattern);
    return whole;
}

} // namespace orvane
