// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/HtmlLists.h"

#include "text/html/CssDeclarations.h"
#include "text/rtf/ImportedList.h"
#include "text/rtf/RtfCodePages.h"

#include <QHash>

#include <algorithm>
#include <array>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype longestBullet = 8;
constexpr int deepestOfficeLevel = 9;

std::optional<ListMarker> markerOfName(const QString& name)
{
    static const QHash<QString, ListMarker> kinds{
        {u"a"_s, ListMarker::lowerAlpha},
        {u"A"_s, ListMarker::upperAlpha},
        {u"i"_s, ListMarker::lowerRoman},
        {u"I"_s, ListMarker::upperRoman},
        {u"1"_s, ListMarker::decimal},
        {u"disc"_s, ListMarker::disc},
        {u"circle"_s, ListMarker::circle},
        {u"square"_s, ListMarker::square},
        {u"decimal"_s, ListMarker::decimal},
        {u"decimal-leading-zero"_s, ListMarker::decimal},
        {u"lower-alpha"_s, ListMarker::lowerAlpha},
        {u"lower-latin"_s, ListMarker::lowerAlpha},
        {u"upper-alpha"_s, ListMarker::upperAlpha},
        {u"upper-latin"_s, ListMarker::upperAlpha},
        {u"lower-roman"_s, ListMarker::lowerRoman},
        {u"upper-roman"_s, ListMarker::upperRoman},
    };
    const auto found = kinds.constFind(name);
    return found == kinds.constEnd() ? std::nullopt : std::optional(*found);
}

// "square", "none", "'▸ '", or the shorthand with a place and a picture.
void applyListStyleValue(HtmlList& list, const QString& value)
{
    for (const QChar quote : {u'"', u'\''}) {
        const qsizetype open = value.indexOf(quote);
        const qsizetype close = value.lastIndexOf(quote);
        const QString bullet =
            open < close ? value.sliced(open + 1, close - open - 1).trimmed() : QString();
        if (!bullet.isEmpty() && bullet.size() <= longestBullet) {
            list.bullet = bullet;
            list.hasMarker = true;
            return;
        }
    }
    for (const QString& word : value.toLower().split(u' ', Qt::SkipEmptyParts)) {
        const auto kind = markerOfName(word);
        if (kind)
            list.marker = *kind;
        if (kind || word == u"none") {
            list.bullet.clear();
            list.hasMarker = kind.has_value();
        }
    }
}

} // namespace

HtmlList htmlList(HtmlTag tag, const HtmlToken& token, std::size_t depth)
{
    static constexpr std::array bullets{ListMarker::disc, ListMarker::circle, ListMarker::square};
    HtmlList list;
    list.marker =
        tag == HtmlTag::ol ? ListMarker::decimal : bullets[std::min(depth, bullets.size() - 1)];
    applyListStyle(list, token);
    bool isNumber = false;
    const int start = token.attribute(u"start").toInt(&isNumber);
    list.next = isNumber ? start : 1;
    return list;
}

void applyListStyle(HtmlList& list, const HtmlToken& token)
{
    if (const auto kind = markerOfName(token.attribute(u"type").trimmed()))
        list.marker = *kind;
    const QString style = token.attribute(u"style");
    if (!style.contains(u"list-style", Qt::CaseInsensitive))
        return;
    for (const auto& [name, value] : parseCssDeclarations(style)) {
        if (name == u"list-style-type" || name == u"list-style")
            applyListStyleValue(list, value);
    }
}

QString htmlMarker(const HtmlList& list)
{
    if (!list.hasMarker)
        return {};
    if (!list.bullet.isEmpty())
        return list.bullet;
    switch (list.marker) {
    case ListMarker::disc:
        return u"•"_s;
    case ListMarker::circle:
        return u"○"_s;
    case ListMarker::square:
        return u"■"_s;
    default:
        return ImportedList::numberMarker(list.marker, list.next);
    }
}

std::optional<OfficeListStyle> officeListStyle(const HtmlToken& token)
{
    const QString style = token.attribute(u"style");
    if (!style.contains(u"mso-list", Qt::CaseInsensitive))
        return std::nullopt;
    for (const auto& [name, value] : parseCssDeclarations(style)) {
        if (name != u"mso-list")
            continue;
        if (value.compare(u"ignore", Qt::CaseInsensitive) == 0)
            return OfficeListStyle{.isMarker = true};
        const qsizetype level = value.indexOf(u"level"_s, 0, Qt::CaseInsensitive);
        if (level < 0)
            return std::nullopt;
        const int number = value.sliced(level + 5).section(u' ', 0, 0).toInt();
        return OfficeListStyle{.level = std::clamp(number, 1, deepestOfficeLevel) - 1};
    }
    return std::nullopt;
}

QString officeMarker(QStringView text, QStringView family)
{
    QString marker = text.trimmed().toString();
    marker.remove(u'\u00A0');
    const bool isOfPictures = family.compare(u"Symbol", Qt::CaseInsensitive) == 0 ||
                              family.startsWith(u"Wingdings", Qt::CaseInsensitive);
    if (isOfPictures && marker.size() == 1 && marker[0].unicode() < 0x100)
        marker = symbolCharacter(uchar(marker[0].unicode()), family);
    return marker.size() <= longestBullet * 4 ? marker : QString();
}

} // namespace orvane
