// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/lists/ListMarker.h"

#include <algorithm>
#include <array>

namespace orvane::ListContinuationHelper {

namespace {

constexpr std::array<char16_t, 10> bulletCharacters{u'\u2022', u'\u25CF', u'\u25B8', u'\u2013',
                                                    u'\u25CB', u'\u25A0', u'\u25C6', u'\u2605',
                                                    u'\u2713', emptyBox};

constexpr int largestNumber = 1'000'000;

struct RomanPair {
    int value;
    QLatin1String digits;
};
constexpr std::array<RomanPair, 13> romanPairs{{{1000, QLatin1String("M")},
                                                {900, QLatin1String("CM")},
                                                {500, QLatin1String("D")},
                                                {400, QLatin1String("CD")},
                                                {100, QLatin1String("C")},
                                                {90, QLatin1String("XC")},
                                                {50, QLatin1String("L")},
                                                {40, QLatin1String("XL")},
                                                {10, QLatin1String("X")},
                                                {9, QLatin1String("IX")},
                                                {5, QLatin1String("V")},
                                                {4, QLatin1String("IV")},
                                                {1, QLatin1String("I")}}};

std::optional<EditorListStyle> bulletStyle(QChar character)
{
    if (character == u'-')
        return EditorListStyle::dash;
    if (character == tickedBox)
        return EditorListStyle::checkbox;
    const auto found =
        std::find(bulletCharacters.begin(), bulletCharacters.end(), character.unicode());
    if (found == bulletCharacters.end())
        return std::nullopt;
    return EditorListStyle(found - bulletCharacters.begin());
}

bool isOneOf(QStringView set, QChar character)
{
    return set.contains(character);
}

/// The length of "<characters>. " at the start of `line`, 0 if it does not start so.
template <typename Predicate>
qsizetype numberedLength(QStringView line, qsizetype mostCharacters, Predicate isDigit)
{
    qsizetype count = 0;
    while (count < line.size() && count <= mostCharacters && isDigit(line[count]))
        ++count;
    const bool matches = count > 0 && count <= mostCharacters && line.size() >= count + 2 &&
                         line[count] == u'.' && line[count + 1].isSpace();
    return matches ? count + 2 : 0;
}

/// The length of "- [ ] " or "- [x] ".
constexpr qsizetype writtenBoxLength = 6;

bool beginsWithWrittenBox(QStringView line)
{
    return line.size() >= writtenBoxLength && line.startsWith(u"- [") && isOneOf(u" xX", line[3]) &&
           line[4] == u']' && line[5] == u' ';
}

std::optional<PrefixMatch> numberedMatch(QStringView line)
{
    constexpr qsizetype any = 1'000'000;
    const auto isDecimal = [](QChar c) {
        return c.isDigit();
    };
    const auto isLowerRoman = [](QChar c) {
        return isOneOf(u"ivxlcdM", c);
    };
    const auto isUpperRoman = [](QChar c) {
        return isOneOf(u"IVXLCDM", c);
    };
    const auto isLower = [](QChar c) {
        return c >= u'a' && c <= u'z';
    };
    const auto isUpper = [](QChar c) {
        return c >= u'A' && c <= u'Z';
    };
    if (const qsizetype length = numberedLength(line, any, isDecimal))
        return PrefixMatch{EditorListStyle::decimal, length, {}};
    if (const qsizetype length = numberedLength(line, any, isLowerRoman))
        return PrefixMatch{EditorListStyle::lowerRoman, length, {}};
    if (const qsizetype length = numberedLength(line, any, isUpperRoman))
        return PrefixMatch{EditorListStyle::upperRoman, length, {}};
    if (const qsizetype length = numberedLength(line, 1, isLower))
        return PrefixMatch{EditorListStyle::lowerAlpha, length, {}};
    if (const qsizetype length = numberedLength(line, any, isUpper))
        return PrefixMatch{EditorListStyle::upperAlpha, length, {}};
    return std::nullopt;
}

} // namespace

std::optional<PrefixMatch> matchedPrefix(QStringView line, const QList<CustomBullet>& bullets)
{
    if (line.size() < 2)
        return std::nullopt;
    if (beginsWithWrittenBox(line))
        return PrefixMatch{EditorListStyle::checkbox, writtenBoxLength, {}};
    if (line[1] == u' ') {
        if (const auto style = bulletStyle(line[0]))
            return PrefixMatch{*style, 2, {}};
    }
    if (const CustomBullet* bullet = matchingBullet(bullets, line))
        return PrefixMatch{EditorListStyle::disc, bullet->character.size() + 1, *bullet};
    return numberedMatch(line);
}

QString markerText(EditorListStyle style, int number)
{
    switch (style) {
    case EditorListStyle::decimal:
        return QString::number(number);
    case EditorListStyle::upperRoman:
        return romanString(number);
    case EditorListStyle::lowerRoman:
        return romanString(number).toLower();
    case EditorListStyle::upperAlpha:
        return alphaString(number);
    case EditorListStyle::lowerAlpha:
        return alphaString(number).toLower();
    default:
        return QString(QChar(bulletCharacters[std::size_t(style)]));
    }
}

int markerNumber(EditorListStyle style, QStringView letters)
{
    switch (style) {
    case EditorListStyle::decimal:
        return letters.toInt();
    case EditorListStyle::upperRoman:
    case EditorListStyle::lowerRoman:
        return romanNumber(letters);
    case EditorListStyle::upperAlpha:
    case EditorListStyle::lowerAlpha:
        return alphaNumber(letters);
    default:
        return 0;
    }
}

int listLevel(const ParagraphStyle& style, qsizetype leadingTabs)
{
    if (style.headIndent > markerWidth) {
        const double levels = (style.headIndent - markerWidth) / indentPerLevel;
        return int(std::min(levels, double(deepestStoredLevel)));
    }
    return int(std::min<qsizetype>(leadingTabs, 1'000'000));
}

std::optional<PrefixMatch> matchedLetters(QStringView line)
{
    constexpr qsizetype most = 3; // items beyond "zzz" nobody counts
    const auto isLower = [](QChar c) {
        return c >= u'a' && c <= u'z';
    };
    const qsizetype length = numberedLength(line, most, isLower);
    if (length < 4)
        return std::nullopt;
    return PrefixMatch{EditorListStyle::lowerAlpha, length, {}};
}

QString markerPrefix(EditorListStyle style, int level, int number)
{
    QString prefix(level, u'\t');
    prefix += markerText(style, number);
    if (isNumbered(style))
        prefix += u'.';
    return prefix + u' ';
}

QString markerPrefix(const QString& bullet, int level)
{
    return QString(level, u'\t') + bullet + u' ';
}

QString romanString(int number)
{
    int rest = std::max(1, number);
    QString digits;
    for (const RomanPair& pair : romanPairs) {
        for (; rest >= pair.value; rest -= pair.value)
            digits += pair.digits;
    }
    return digits;
}

QString alphaString(int number)
{
    QString letters;
    for (int rest = std::max(1, number); rest > 0; rest = (rest - 1) / 26)
        letters.prepend(QChar(char16_t(u'A' + (rest - 1) % 26)));
    return letters;
}

int alphaNumber(QStringView letters)
{
    int number = 0;
    for (const QChar letter : letters)
        number = std::min(largestNumber, number * 26 + (letter.toUpper().unicode() - u'A' + 1));
    return number;
}

int romanNumber(QStringView digits)
{
    int number = 0;
    int before = 0;
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        const QChar digit = digits[i].toUpper();
        const auto pair = std::find_if(romanPairs.begin(), romanPairs.end(), [&](const auto& p) {
            return p.digits.size() == 1 && p.digits[0] == digit;
        });
        const int value = pair == romanPairs.end() ? 0 : pair->value;
        number = std::min(largestNumber, number + (value < before ? -value : value));
        before = std::max(before, value);
    }
    return number;
}

} // namespace orvane::ListContinuationHelper
