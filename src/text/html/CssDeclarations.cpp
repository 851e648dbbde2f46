// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/CssDeclarations.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orvane {
namespace {

constexpr qsizetype mostDeclarations = 64;
constexpr qsizetype longestValue = 512;
constexpr double longestPoints = 10'000;

struct Unit {
    QStringView name;
    double points;
};

constexpr std::array<Unit, 6> units{
    {{u"px", 0.75}, {u"pt", 1}, {u"pc", 12}, {u"in", 72}, {u"cm", 72 / 2.54}, {u"mm", 7.2 / 2.54}}};

struct SizeWord {
    QStringView name;
    double factor;
};

constexpr std::array<SizeWord, 7> sizeWords{{{u"xx-small", 0.5625},
                                             {u"x-small", 0.625},
                                             {u"small", 0.8125},
                                             {u"medium", 1},
                                             {u"large", 1.125},
                                             {u"x-large", 1.5},
                                             {u"xx-large", 2}}};

// "10px" into 10 and "px".
std::optional<double> splitNumber(QStringView value, QStringView& unit)
{
    const auto end = std::find_if_not(value.begin(), value.end(), [](QChar c) {
        return (c >= u'0' && c <= u'9') || c == u'.' || c == u'-' || c == u'+';
    });
    bool isNumber = false;
    const double number = value.first(end - value.begin()).toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        return std::nullopt;
    unit = value.sliced(end - value.begin()).trimmed();
    return number;
}

std::optional<RgbaColor> parseChannels(QStringView value)
{
    const qsizetype open = value.indexOf(u'(');
    const qsizetype close = value.indexOf(u')');
    if (open < 0 || close < open)
        return std::nullopt;
    QString list = value.sliced(open + 1, close - open - 1).toString();
    list.replace(u',', u' ').replace(u'/', u' ');
    const QStringList parts = list.split(u' ', Qt::SkipEmptyParts);
    if (parts.size() < 3)
        return std::nullopt;
    std::array<double, 4> channels{0, 0, 0, 1};
    for (qsizetype i = 0; i < std::min<qsizetype>(parts.size(), 4); ++i) {
        QStringView unit;
        const auto number = splitNumber(parts[i], unit);
        if (!number)
            return std::nullopt;
        const double whole = unit == u"%" ? 100 : i < 3 ? 255 : 1;
        channels[std::size_t(i)] = std::clamp(*number / whole, 0.0, 1.0);
    }
    return RgbaColor{channels[0], channels[1], channels[2], channels[3]};
}

} // namespace

QList<CssDeclaration> parseCssDeclarations(QStringView style)
{
    QList<CssDeclaration> declarations;
    for (const QStringView part : style.tokenize(u';')) {
        const qsizetype colon = part.indexOf(u':');
        if (colon < 0 || declarations.size() >= mostDeclarations)
            continue;
        QStringView value = part.sliced(colon + 1).trimmed();
        if (value.endsWith(u"!important"))
            value = value.chopped(10).trimmed();
        if (value.size() > longestValue)
            continue;
        declarations.append({part.first(colon).trimmed().toString().toLower(), value.toString()});
    }
    return declarations;
}

std::optional<RgbaColor> parseCssColor(QStringView value)
{
    value = value.trimmed();
    std::optional<RgbaColor> color;
    if (value.startsWith(u'#'))
        color = rgbaFromHex(value);
    else if (value.startsWith(u"rgb", Qt::CaseInsensitive))
        color = parseChannels(value);
    else if (value.size() <= 32 && value.compare(u"transparent", Qt::CaseInsensitive) != 0) {
        const QColor named(value.toString());
        if (named.isValid())
            color = RgbaColor::fromQColor(named);
    }
    return color && color->alpha > 0 ? color : std::nullopt;
}

std::optional<double> parseCssLength(QStringView value, double emPoints, double wholePoints)
{
    QStringView unit;
    const auto number = splitNumber(value.trimmed(), unit);
    if (!number)
        return std::nullopt;
    double factor = 0;
    if (unit.isEmpty())
        factor = 0.75;
    else if (unit == u"%")
        factor = wholePoints / 100;
    else if (unit.compare(u"em", Qt::CaseInsensitive) == 0 ||
             unit.compare(u"rem", Qt::CaseInsensitive) == 0)
        factor = emPoints;
    for (const Unit& known : units) {
        if (unit.compare(known.name, Qt::CaseInsensitive) == 0)
            factor = known.points;
    }
    if (factor == 0)
        return std::nullopt;
    return std::clamp(*number * factor, -longestPoints, longestPoints);
}

std::optional<double> parseCssFontSize(QStringView value, double parentPoints, double basePoints)
{
    std::optional<double> points;
    for (const SizeWord& word : sizeWords) {
        if (value.compare(word.name, Qt::CaseInsensitive) == 0)
            points = basePoints * word.factor;
    }
    if (value.compare(u"smaller", Qt::CaseInsensitive) == 0)
        points = parentPoints / 1.2;
    else if (value.compare(u"larger", Qt::CaseInsensitive) == 0)
        points = parentPoints * 1.2;
    if (!points)
        points = parseCssLength(value, parentPoints, parentPoints);
    if (!points || *points <= 0)
        return std::nullopt;
    return std::clamp(*points, 1.0, 1000.0);
}

} // namespace orvane
