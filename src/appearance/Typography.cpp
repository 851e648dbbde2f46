// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Typography.h"

#include <QApplication>
#include <QFontDatabase>
#include <QHash>
#include <QRawFont>
#include <QWidget>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Measure {
    int pixels;
    QFont::Weight weight;
    double tracking;
};

Measure measureOf(TextStyle style)
{
    switch (style) {
    case TextStyle::Body:
        return {13, QFont::Normal, 0};
    case TextStyle::BodyMedium:
        return {13, QFont::Medium, 0};
    case TextStyle::BodyStrong:
        return {13, QFont::DemiBold, 0};
    case TextStyle::Label:
        return {11, QFont::Normal, 0};
    case TextStyle::SectionHead:
        return {11, QFont::Medium, 0.4};
    case TextStyle::WindowTitle:
        return {15, QFont::Medium, 0};
    case TextStyle::SheetTitle:
        return {24, QFont::Bold, -0.4};
    case TextStyle::SheetText:
        return {14, QFont::Normal, 0};
    case TextStyle::ScreenTitle:
        return {28, QFont::Bold, -0.6};
    }
    return {13, QFont::Normal, 0};
}

const QString& desktopFamily()
{
    static const QString family = QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
    return family;
}

constexpr int smallestDisplaySize = 20;
constexpr const char* styleProperty = "orvaneTextStyle";
InkPolarity mainPolarity = InkPolarity::DarkOnLight;

/// The name of the cut a step below a weight; empty for one that stays.
QString lighterCut(QFont::Weight weight)
{
    switch (weight) {
    case QFont::Normal:
        return u"Light"_s;
    case QFont::Medium:
        return u"Regular"_s;
    case QFont::DemiBold:
        return u"Medium"_s;
    default:
        return {};
    }
}

QFont makeFont(TextStyle style, bool isThickened)
{
    const Measure measure = measureOf(style);
    const bool isDisplay = measure.pixels >= smallestDisplaySize;
    QFont font(
        QStringList{isDisplay ? u"Inter Display"_s : u"Inter"_s, u"Inter"_s, desktopFamily()});
    font.setPixelSize(measure.pixels);
    // The lighter cut goes by its name: a weight would govern the fonts, too, that other scripts
    // fall back to, of which a light one is often of another kind or lacks the letters.
    font.setWeight(measure.weight);
    if (isThickened)
        font.setStyleName(lighterCut(measure.weight));
    font.setHintingPreference(QFont::PreferNoHinting);
    if (measure.tracking != 0)
        font.setLetterSpacing(QFont::AbsoluteSpacing, measure.tracking);
    return font;
}

/// True for outlines in the Compact Font Format on a display of about 96 dots an inch; on finer
/// ones the thickening all but vanishes.
bool interThickensStems()
{
    // By a font that is needed anyway, since opening one takes a millisecond.
    static const bool isPostScript =
        !QRawFont::fromFont(makeFont(TextStyle::Body, false)).fontTable("CFF ").isEmpty();
    return isPostScript && qGuiApp->devicePixelRatio() < 1.5;
}

} // namespace

InkPolarity inkPolarity()
{
    return mainPolarity;
}

QFont interfaceFont(TextStyle style)
{
    return interfaceFont(style, mainPolarity);
}

QFont interfaceFont(TextStyle style, InkPolarity polarity)
{
    // Kept with what the toolkit has found out about each: rows ask for them while they are drawn.
    static QHash<std::pair<int, bool>, QFont> fonts;
    const bool isThickened = polarity == InkPolarity::LightOnDark && interThickensStems();
    const std::pair key(int(style), isThickened);
    const auto known = fonts.constFind(key);
    return known != fonts.cend() ? *known : *fonts.insert(key, makeFont(style, isThickened));
}

QString fitted(const QString& text, const QFont& font, int width)
{
    constexpr QChar ellipsis = u'\u2026';
    constexpr double mostKerning = 0.1; // by which kerning makes a text narrower
    QString line = text.simplified();
    const QRawFont glyphs = QRawFont::fromFont(font);
    const QList<quint32> indexes = glyphs.glyphIndexesForString(line + ellipsis);
    // What the font lacks comes from another one, whose glyphs are not known here.
    if (indexes.contains(0) || indexes.size() != line.size() + 1)
        return QFontMetrics(font).elidedText(line, Qt::ElideRight, width);
    const QList<QPointF> advances = glyphs.advancesForGlyphIndexes(indexes);
    const double room = width - advances.last().x();
    const double farBeyond = width * (1 + mostKerning);
    double used = 0;
    qsizetype kept = 0; // what fits with an ellipsis behind it
    for (qsizetype i = 0; i < line.size() && used <= farBeyond; ++i) {
        used += advances.at(i).x();
        if (used <= room)
            kept = i + 1;
    }
    if (used <= width)
        return line;
    if (used <= farBeyond)
        return QFontMetrics(font).elidedText(line, Qt::ElideRight, width);
    while (kept > 0 && (line.at(kept).isMark() || line.at(kept - 1).isSpace()))
        --kept;
    return line.left(kept) + ellipsis;
}

void setTextStyle(QWidget* widget, TextStyle style)
{
    widget->setProperty(styleProperty, int(style));
    widget->setFont(interfaceFont(style));
}

void setInkPolarity(InkPolarity polarity)
{
    if (std::exchange(mainPolarity, polarity) == polarity)
        return;
    QApplication::setFont(interfaceFont(TextStyle::Body));
    for (QWidget* widget : QApplication::allWidgets()) {
        if (const QVariant style = widget->property(styleProperty); style.isValid())
            widget->setFont(interfaceFont(TextStyle(style.toInt())));
    }
}

QFont editorFont(const QString& family, double pixels, QFont::Weight weight)
{
    QFont font(family);
    font.setPixelSize(qMax(1, qRound(pixels)));
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

void installFontSubstitutions()
{
    struct Group {
        QStringList families;
        QStringList substitutes;
    };
    // What notes from other systems name. Substitutes of the same widths come first, then what the
    // program is installed with.
    const Group groups[] = {
        {{u"Georgia"_s, u"Palatino"_s, u"Palatino Linotype"_s, u"Book Antiqua"_s, u"Baskerville"_s,
          u"Garamond"_s, u"Hoefler Text"_s, u"Iowan Old Style"_s, u"Charter"_s, u"Constantia"_s,
          u"Didot"_s, u"New York"_s},
         {u"Charis SIL"_s}},
        {{u"Times"_s, u"Times New Roman"_s},
         {u"Liberation Serif"_s, u"Nimbus Roman"_s, u"Charis SIL"_s}},
        {{u"Cambria"_s}, {u"Caladea"_s, u"Charis SIL"_s}},
        {{u"Calibri"_s}, {u"Carlito"_s, u"Inter"_s}},
        {{u"Arial"_s, u"Helvetica"_s, u"Helvetica Neue"_s},
         {u"Liberation Sans"_s, u"Nimbus Sans"_s, u"Inter"_s}},
        {{u"Avenir"_s, u"Avenir Next"_s, u"Futura"_s, u"Gill Sans"_s, u"Lucida Grande"_s,
          u"Optima"_s, u"SF Pro"_s, u"SF Pro Text"_s, u"Segoe UI"_s, u"Tahoma"_s, u"Trebuchet MS"_s,
          u"Verdana"_s},
         {u"Inter"_s}},
        {{u"Courier"_s, u"Courier New"_s},
         {u"Liberation Mono"_s, u"Nimbus Mono PS"_s, u"JetBrains Mono"_s}},
        {{u"Menlo"_s, u"Monaco"_s, u"SF Mono"_s, u"Consolas"_s, u"Andale Mono"_s,
          u"Lucida Console"_s},
         {u"JetBrains Mono"_s}},
    };
    for (const Group& group : groups) {
        for (const QString& family : group.families)
            QFont::insertSubstitutions(family, group.substitutes);
    }
}

} // namespace orvane
