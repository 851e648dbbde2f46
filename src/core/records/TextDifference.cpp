// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/TextDifference.h"

#include "core/records/SequenceDifference.h"

#include <QHash>

namespace orvane {

namespace {

using Kind = TextPiece::Kind;

constexpr qint64 paragraphBudget = 8'000'000;
constexpr qint64 wordBudget = 16'000'000;

/// A unit of comparison and the whole of the text that goes with it.
struct Token {
    QStringView key;
    QStringView text;
};

using Tokens = std::vector<Token>;

bool isBreak(QChar c)
{
    return c == u'\n' || c == QChar::ParagraphSeparator || c == QChar::LineSeparator;
}

Tokens paragraphsOf(QStringView text)
{
    Tokens paragraphs;
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = start;
        while (end < text.size() && !isBreak(text[end]))
            ++end;
        end = qMin(end + 1, text.size());
        const QStringView all = text.sliced(start, end - start);
        paragraphs.push_back({all, all});
        start = end;
    }
    return paragraphs;
}

/// Words and line breaks, each with the spaces after it; spaces at the very front stand alone.
Tokens wordsOf(QStringView text)
{
    Tokens words;
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = start;
        if (isBreak(text[end])) {
            ++end;
        } else {
            while (end < text.size() && !text[end].isSpace())
                ++end;
        }
        const QStringView key = text.sliced(start, end - start);
        while (end < text.size() && text[end].isSpace() && !isBreak(text[end]))
            ++end;
        words.push_back({key, text.sliced(start, end - start)});
        start = end;
    }
    return words;
}

/// The same number for the same key in both.
std::pair<std::vector<int>, std::vector<int>> numbered(const Tokens& before, const Tokens& after)
{
    QHash<QStringView, int> numbers;
    const auto number = [&numbers](const Tokens& tokens) {
        std::vector<int> result;
        result.reserve(tokens.size());
        for (const Token& token : tokens) {
            const auto known = numbers.constFind(token.key);
            const int value = known == numbers.cend() ? int(numbers.size()) : *known;
            if (known == numbers.cend())
                numbers.insert(token.key, value);
            result.push_back(value);
        }
        return result;
    };
    std::vector<int> first = number(before);
    return {std::move(first), number(after)};
}

/// Tokens that agree, or that one side lost and the other gained in the same place.
struct Stretch {
    bool isSame;
    size_t beforeStart, beforeEnd;
    size_t afterStart, afterEnd;
};

std::vector<Stretch> stretches(const Tokens& before, const Tokens& after, qint64& budget)
{
    const auto [first, second] = numbered(before, after);
    const SequenceDifference difference = sequenceDifference(first, second, budget);
    std::vector<Stretch> result;
    size_t i = 0;
    size_t j = 0;
    while (i < before.size() || j < after.size()) {
        Stretch next{false, i, i, j, j};
        while (i < before.size() && difference.removed[i])
            ++i;
        while (j < after.size() && difference.added[j])
            ++j;
        if (i == next.beforeStart && j == next.afterStart) {
            next.isSame = true;
            while (i < before.size() && j < after.size() && !difference.removed[i] &&
                   !difference.added[j])
                ++i, ++j;
        }
        next.beforeEnd = i;
        next.afterEnd = j;
        result.push_back(next);
    }
    return result;
}

qsizetype length(const Tokens& tokens, size_t start, size_t end)
{
    return start == end
               ? 0
               : tokens[end - 1].key.data() + tokens[end - 1].key.size() - tokens[start].key.data();
}

/// Joins changes that only a few words part: where the words between are fewer than what changed
/// on both sides, they agree by chance.
std::vector<Stretch> joined(const std::vector<Stretch>& parts, const Tokens& before,
                            const Tokens& after)
{
    const auto changed = [&](const Stretch& part) {
        return qMax(length(before, part.beforeStart, part.beforeEnd),
                    length(after, part.afterStart, part.afterEnd));
    };
    std::vector<Stretch> result;
    for (const Stretch& part : parts) {
        const bool joins = !part.isSame && result.size() >= 2 && result.back().isSame &&
                           !result[result.size() - 2].isSame;
        const qsizetype between =
            joins ? length(after, result.back().afterStart, result.back().afterEnd) : 0;
        if (joins && between <= changed(part) && between <= changed(result[result.size() - 2])) {
            result.pop_back();
            result.back().beforeEnd = part.beforeEnd;
            result.back().afterEnd = part.afterEnd;
        } else {
            result.push_back(part);
        }
    }
    return result;
}

class Pieces {
public:
    void add(Kind kind, QStringView text)
    {
        if (text.isEmpty())
            return;
        if (!m_pieces.isEmpty() && m_pieces.last().kind == kind)
            m_pieces.last().text += text;
        else
            m_pieces.append({kind, text.toString()});
    }
    QList<TextPiece> take() { return std::move(m_pieces); }

private:
    QList<TextPiece> m_pieces;
};

/// The text from one token to another; tokens of one text lie side by side in it.
QStringView textOf(const Tokens& tokens, size_t start, size_t end)
{
    if (start == end)
        return {};
    const QStringView last = tokens[end - 1].text;
    return {tokens[start].text.data(), last.data() + last.size()};
}

void addChangedWords(QStringView before, QStringView after, qint64& budget, Pieces& pieces)
{
    const Tokens first = wordsOf(before);
    const Tokens second = wordsOf(after);
    for (const Stretch& part : joined(stretches(first, second, budget), first, second)) {
        const QStringView now = textOf(second, part.afterStart, part.afterEnd);
        if (part.isSame) {
            pieces.add(Kind::Same, now);
        } else {
            pieces.add(Kind::Removed, textOf(first, part.beforeStart, part.beforeEnd));
            pieces.add(Kind::Added, now);
        }
    }
}

} // namespace

QList<TextPiece> textDifference(const QString& before, const QString& after)
{
    const Tokens first = paragraphsOf(before);
    const Tokens second = paragraphsOf(after);
    qint64 forParagraphs = paragraphBudget;
    qint64 forWords = wordBudget;
    Pieces pieces;
    for (const Stretch& part : stretches(first, second, forParagraphs)) {
        const QStringView then = textOf(first, part.beforeStart, part.beforeEnd);
        const QStringView now = textOf(second, part.afterStart, part.afterEnd);
        if (part.isSame) {
            pieces.add(Kind::Same, now);
        } else if (then.isEmpty() || now.isEmpty() || forWords <= 0) {
            pieces.add(Kind::Removed, then);
            pieces.add(Kind::Added, now);
        } else {
            addChangedWords(then, now, forWords, pieces);
        }
    }
    return pieces.take();
}

} // namespace orvane
