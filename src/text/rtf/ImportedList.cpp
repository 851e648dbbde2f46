// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/ImportedList.h"

#include "text/lists/ListMarker.h"

namespace orvane::ImportedList {
namespace {

using namespace Qt::StringLiterals;
namespace lists = ListContinuationHelper;

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
    style.firstLineHeadIndent = lists::indentPerLevel * level;
    style.headIndent = style.firstLineHeadIndent + lists::markerWidth;
    style.tabStops = {TextTab{style.headIndent, TabAlignment::left}};
    style.defaultTabInterval = lists::indentPerLevel;
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
    if (number < 1 || number > mostLetters)
        return QString::number(number);
    switch (kind) {
    case ListMarker::lowerRoman:
        return lists::markerText(EditorListStyle::lowerRoman, number);
    case ListMarker::upperRoman:
        return lists::markerText(EditorListStyle::upperRoman, number);
    case ListMarker::lowerAlpha:
        return lists::markerText(EditorListStyle::lowerAlpha, number);
    case ListMarker::upperAlpha:
        return lists::markerText(EditorListStyle::upperAlpha, number);
    default:
        return QString::number(number);
    }
}

} // namespace orvane::ImportedList
