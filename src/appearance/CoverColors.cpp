// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/CoverColors.h"

#include "appearance/Contrast.h"
#include "appearance/IconChoices.h"

#include <QCoreApplication>

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(CoverColors)
};

constexpr QLatin1StringView violet = "#8B5CF6"_L1;
constexpr QLatin1StringView orange = "#E8833A"_L1;
constexpr QLatin1StringView pink = "#D9489F"_L1;
constexpr QLatin1StringView green = "#10B981"_L1;
constexpr QLatin1StringView blue = "#3B82F6"_L1;

struct Group {
    QLatin1StringView color;
    QLatin1StringView icons; ///< with a blank before and behind each
};
constexpr Group groups[] = {
    {violet, " book library dictionary language bookmark quote search eye idea question help "_L1},
    {orange, " film photo image palette music microphone speaker radio chat phone chart curve pie "
             "table formula star warning alarm calendar clock stopwatch "_L1},
    {pink, " heart person people identity mail inbox game puzzle lock unlock key donate "_L1},
    {green, " compass globe place route home anchor flag root branch cloud cold certificate "_L1},
    {blue, " computer printer robot script settings gear speed package folder download "_L1},
};

/// Not valid for what goes with the accent.
QColor colorOfGroup(const QString& storedIcon)
{
    const QString name = u' ' + iconChoiceName(storedIcon) + u' ';
    const auto* found = std::ranges::find_if(
        groups, [&](const Group& each) { return name.size() > 2 && each.icons.contains(name); });
    return found == std::end(groups) ? QColor() : QColor(found->color);
}

} // namespace

const QList<CoverChoice>& coverChoices()
{
    static const QList<CoverChoice> choices{
        {violet, Words::tr("Violet")},       {blue, Words::tr("Blue")},
        {u"#0EA5B7"_s, Words::tr("Teal")},   {green, Words::tr("Green")},
        {u"#CA9A04"_s, Words::tr("Yellow")}, {orange, Words::tr("Orange")},
        {u"#E5484D"_s, Words::tr("Red")},    {pink, Words::tr("Pink")},
    };
    return choices;
}

CoverColors coverColors(const QString& storedColor, const QString& storedIcon, const Tokens& tokens,
                        CoverState state)
{
    const SurfaceTokens& card = tokens.on(Surface::Card);
    QColor color(storedColor);
    if (!color.isValid())
        color = colorOfGroup(storedIcon);
    const bool isLight = polarityOf(card.text, card.ground) == InkPolarity::DarkOnLight;
    const double strength = (isLight ? 0.28 : 0.12) * (state == CoverState::Hovered ? 1.3 : 1.0);
    const QColor& wash = color.isValid() ? color : tokens.accent;
    const CoverColors covers{blended(wash, strength, card.ground),
                             blended(wash, strength / 5, card.ground), card.accent};
    return {covers.washStart, covers.washEnd,
            readableInk(color.isValid() ? color : card.accent,
                        {covers.washStart, covers.washEnd, card.ground}, iconContrast)};
}

} // namespace orvane
