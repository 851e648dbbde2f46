// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/ImportedList.h"

#include <array>

namespace orvane::ImportedList {
namespace {

using namespace Qt::StringLiterals;

// Points.
constexpr double indentPerLevel = 24;
constexpr double markerWidth = 18;

QString roman(int number)
{
    struct Step {
        int value;
        QStringView letters;
    };
    static constexpr std::array<Step, 13> steps{{{1000, u"m"},
                                                 {900, u"cm"},
                                                 {500, u"d"},
                                                 {400, u"cd"},
                                                 {100, u"c"},
                                                 {90, u"xc"},
                                                 {50, u"l"},
                                                 {40, u"xl"},
                                                 {10, u"x"},
                                                 {9, u"ix"},
                                                 {5, u"v"},
                                                 {4, u"iv"},
                                                 {1, u"i"}}};
    QString text;
    for (const Step& step : steps) {
        for (; number >= step.value; number -= step.value)
            text += step.letters;
    }
    return text;
}

QString letters(int number)
{
    QString text;
    for (; number > 0; number = (number - 1) / 26)
        text.prepend(QChar(char16_t(u'a' + (number - 1) % 26)));
    return text;
}

QString knownBullet(const QString& marker)
{
    if (marker.size() != 1)
        return marker;
    switch (marker[0].unicode()) {
    case u'\u00B7':
    case u'\u2219':
    case u'*':
        return u"•"_s;
    case u'o':
    case u'\u25E6':
        return u"○"_s;
    case u'\u25AA':
    case u'\u25FC':
        return u"■"_s;
    case u'\u27A2':
    case u'\u25B6':
        return u"▸"_s;
    case u'-':
    case u'\u2014':
        return u"–"_s;
    default:
        return marker;
    }
}

} // namespace

QString prefix(const QString& marker, int level)
{
    return QString(level, u'\t') + knownBullet(marker) + u' ';
}

ParagraphStyle style(ParagraphStyle style, const QString& marker, int level)
{
    const bool isNumbered = marker.size() > 1 && (marker.endsWith(u'.') || marker.endsWith(u')'));
    style.firstLineHeadIndent = indentPerLevel * level;
    style.headIndent = style.firstLineHeadIndent + markerWidth;
    style.tabStops = {TextTab{style.headIndent, TabAlignment::left}};
    style.defaultTabInterval = indentPerLevel;
    style.textLists = {TextList{isNumbered ? ListMarker::decimal : ListMarker::disc, 1}};
    return style;
}

QString numberMarker(ListMarker kind, int number)
{
    return numberText(kind, number) + u'.';
}

QString numberText(ListMarker kind, int number)
{
    constexpr int mostLetters = 3'999; // what Roman numerals reach
    const bool fits = number >= 1 && number <= mostLetters;
    QString text;
    if (fits && (kind == ListMarker::lowerRoman || kind == ListMarker::upperRoman))
        text = roman(number);
    else if (fits && (kind == ListMarker::lowerAlpha || kind == ListMarker::upperAlpha))
        text = letters(number);
    else
        text = QString::number(number);
    if (kind == ListMarker::upperRoman || kind == ListMarker::upperAlpha)
        text = text.toUpper();
    return text;
}

} // namespace orvane::ImportedList
