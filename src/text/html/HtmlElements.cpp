// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/HtmlElements.h"

#include "text/html/CssDeclarations.h"

#include <QHash>

#include <array>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr double quoteIndent = 24;
constexpr int boldWeight = 700;

const QHash<QString, HtmlTag>& tagNames()
{
    using enum HtmlTag;
    static const QHash<QString, HtmlTag> names{
        {u"a"_s, a},
        {u"article"_s, section},
        {u"audio"_s, unseen},
        {u"button"_s, unseen},
        {u"canvas"_s, unseen},
        {u"datalist"_s, unseen},
        {u"rp"_s, unseen},
        {u"select"_s, unseen},
        {u"svg"_s, unseen},
        {u"template"_s, unseen},
        {u"video"_s, unseen},
        {u"aside"_s, section},
        {u"b"_s, b},
        {u"big"_s, big},
        {u"blockquote"_s, blockquote},
        {u"body"_s, body},
        {u"br"_s, br},
        {u"caption"_s, caption},
        {u"center"_s, center},
        {u"cite"_s, i},
        {u"code"_s, code},
        {u"col"_s, col},
        {u"dd"_s, dd},
        {u"del"_s, del},
        {u"dfn"_s, i},
        {u"div"_s, div},
        {u"dl"_s, dl},
        {u"dt"_s, dt},
        {u"em"_s, em},
        {u"fieldset"_s, section},
        {u"figcaption"_s, section},
        {u"figure"_s, section},
        {u"font"_s, font},
        {u"footer"_s, section},
        {u"form"_s, form},
        {u"h1"_s, h1},
        {u"h2"_s, h2},
        {u"h3"_s, h3},
        {u"h4"_s, h4},
        {u"h5"_s, h5},
        {u"h6"_s, h6},
        {u"head"_s, head},
        {u"header"_s, section},
        {u"hr"_s, hr},
        {u"i"_s, i},
        {u"iframe"_s, unseen},
        {u"img"_s, img},
        {u"input"_s, input},
        {u"ins"_s, ins},
        {u"kbd"_s, kbd},
        {u"li"_s, li},
        {u"link"_s, link},
        {u"main"_s, section},
        {u"mark"_s, mark},
        {u"menu"_s, ul},
        {u"meta"_s, meta},
        {u"nav"_s, section},
        {u"ol"_s, ol},
        {u"p"_s, p},
        {u"pre"_s, pre},
        {u"s"_s, s},
        {u"samp"_s, samp},
        {u"section"_s, section},
        {u"small"_s, small},
        {u"span"_s, span},
        {u"strike"_s, strike},
        {u"strong"_s, strong},
        {u"sub"_s, sub},
        {u"sup"_s, sup},
        {u"table"_s, table},
        {u"tbody"_s, tbody},
        {u"td"_s, td},
        {u"tfoot"_s, tfoot},
        {u"th"_s, th},
        {u"thead"_s, thead},
        {u"tr"_s, tr},
        {u"tt"_s, tt},
        {u"u"_s, u},
        {u"ul"_s, ul},
        {u"var"_s, i},
        {u"wbr"_s, wbr},
    };
    return names;
}

TextFont& fontOf(HtmlLook& look, const TextFont& base)
{
    if (!look.characters.font)
        look.characters.font = base;
    return *look.characters.font;
}

void applyFontElement(HtmlLook& look, const HtmlToken& token, const TextFont& base)
{
    // The seven sizes of the element, against 3 for ordinary text.
    static constexpr std::array<double, 7> sizes{0.625, 0.8125, 1, 1.125, 1.5, 2, 3};
    TextFont& font = fontOf(look, base);
    if (const QString face = token.attribute(u"face"); !face.isEmpty())
        font.family = face.section(u',', 0, 0).trimmed();
    const QString size = token.attribute(u"size").trimmed();
    bool isNumber = false;
    int step = size.toInt(&isNumber);
    if (isNumber) {
        if (size.startsWith(u'+') || size.startsWith(u'-'))
            step = 3 + std::clamp(step, -6, 6);
        font.size = base.size * sizes[std::size_t(std::clamp(step, 1, 7) - 1)];
    }
    if (const auto color = parseCssColor(token.attribute(u"color")))
        look.characters.foreground = color;
}

void applyLink(HtmlLook& look, const HtmlToken& token)
{
    const QString target = token.attribute(u"href").trimmed();
    const bool isCode = target.startsWith(u"javascript:", Qt::CaseInsensitive) ||
                        target.startsWith(u"data:", Qt::CaseInsensitive);
    if (!target.isEmpty() && !isCode && target.size() <= 8'192)
        look.characters.link = target;
    // Of a footnote's two ends, each names itself and links to the other.
    const QString id = token.attribute(u"id");
    const QString name = id.isEmpty() ? token.attribute(u"name") : id;
    if (!look.characters.link.isEmpty() && name.size() <= 256)
        look.characters.targetName = name;
}

void applyFontTag(HtmlLook& look, HtmlTag tag, const TextFont& base)
{
    static constexpr std::array<double, 6> headings{2, 1.5, 1.17, 1, 0.83, 0.67};
    TextFont font = look.characters.font.value_or(base);
    switch (tag) {
    case HtmlTag::b:
    case HtmlTag::strong:
    case HtmlTag::th:
        font.weight = boldWeight;
        break;
    case HtmlTag::i:
    case HtmlTag::em:
        font.italic = true;
        break;
    case HtmlTag::big:
        font.size *= 1.2;
        break;
    case HtmlTag::small:
        font.size /= 1.2;
        break;
    case HtmlTag::code:
    case HtmlTag::kbd:
    case HtmlTag::samp:
    case HtmlTag::tt:
    case HtmlTag::pre:
        font.family = u"monospace"_s;
        break;
    case HtmlTag::h1:
    case HtmlTag::h2:
    case HtmlTag::h3:
    case HtmlTag::h4:
    case HtmlTag::h5:
    case HtmlTag::h6:
        font.weight = boldWeight;
        font.size = base.size * headings[std::size_t(tag) - std::size_t(HtmlTag::h1)];
        break;
    default:
        return;
    }
    look.characters.font = font;
}

void applyTag(HtmlLook& look, HtmlTag tag, const HtmlToken& token, const TextFont& base)
{
    applyFontTag(look, tag, base);
    switch (tag) {
    case HtmlTag::a:
        return applyLink(look, token);
    case HtmlTag::font:
        return applyFontElement(look, token, base);
    case HtmlTag::u:
    case HtmlTag::ins:
        look.characters.underline = TextLine::single;
        return;
    case HtmlTag::s:
    case HtmlTag::strike:
    case HtmlTag::del:
        look.characters.strikethrough = TextLine::single;
        return;
    case HtmlTag::sup:
        look.characters.baselineShift = BaselineShift::superscript;
        return;
    case HtmlTag::sub:
        look.characters.baselineShift = BaselineShift::subscript;
        return;
    case HtmlTag::mark:
        look.characters.background = RgbaColor{1, 1, 0, 1};
        return;
    case HtmlTag::pre:
        look.preservesSpace = true;
        return;
    case HtmlTag::blockquote:
    case HtmlTag::dd:
        look.paragraph.headIndent += quoteIndent;
        look.paragraph.firstLineHeadIndent += quoteIndent;
        return;
    case HtmlTag::center:
    case HtmlTag::th:
        look.paragraph.alignment = TextAlignment::center;
        return;
    case HtmlTag::head:
    case HtmlTag::unseen:
        look.isHidden = true;
        return;
    default:
        return;
    }
}

void setAlignment(ParagraphStyle& paragraph, QStringView value)
{
    if (value.compare(u"left", Qt::CaseInsensitive) == 0)
        paragraph.alignment = TextAlignment::left;
    else if (value.compare(u"right", Qt::CaseInsensitive) == 0)
        paragraph.alignment = TextAlignment::right;
    else if (value.compare(u"center", Qt::CaseInsensitive) == 0)
        paragraph.alignment = TextAlignment::center;
    else if (value.compare(u"justify", Qt::CaseInsensitive) == 0)
        paragraph.alignment = TextAlignment::justified;
}

void setDirection(ParagraphStyle& paragraph, QStringView value)
{
    if (value.compare(u"rtl", Qt::CaseInsensitive) == 0)
        paragraph.direction = WritingDirection::rightToLeft;
    else if (value.compare(u"ltr", Qt::CaseInsensitive) == 0)
        paragraph.direction = WritingDirection::leftToRight;
    else if (value.compare(u"auto", Qt::CaseInsensitive) == 0)
        paragraph.direction = WritingDirection::natural;
}

bool applyFontDeclaration(HtmlLook& look, const CssDeclaration& declaration, const TextFont& base)
{
    const QString value = declaration.value.toLower();
    TextFont font = look.characters.font.value_or(base);
    if (declaration.name == u"font-weight") {
        bool isNumber = false;
        const int weight = value.toInt(&isNumber);
        if (isNumber)
            font.weight = std::clamp(weight, 1, 1000);
        else if (value == u"normal" || value == u"lighter")
            font.weight = 400;
        else if (value == u"bold" || value == u"bolder")
            font.weight = boldWeight;
    } else if (declaration.name == u"font-style") {
        font.italic = value.startsWith(u"italic") || value.startsWith(u"oblique");
    } else if (declaration.name == u"font-size") {
        font.size = parseCssFontSize(value, font.size, base.size).value_or(font.size);
    } else if (declaration.name == u"font-family") {
        QString family = declaration.value.section(u',', 0, 0).trimmed();
        family.remove(u'"').remove(u'\'');
        if (!family.isEmpty() && family != u"inherit")
            font.family = family;
    } else {
        return false;
    }
    look.characters.font = font;
    return true;
}

bool applyCharacterDeclaration(HtmlLook& look, const CssDeclaration& declaration)
{
    const auto& [name, value] = declaration;
    if (name == u"color") {
        if (const auto color = parseCssColor(value))
            look.characters.foreground = color;
        else if (value == u"initial")
            look.characters.foreground.reset();
    } else if (name == u"text-decoration" || name == u"text-decoration-line") {
        if (value.contains(u"underline"))
            look.characters.underline = TextLine::single;
        if (value.contains(u"line-through"))
            look.characters.strikethrough = TextLine::single;
        if (value.startsWith(u"none"))
            look.characters.underline = look.characters.strikethrough = TextLine::none;
    } else if (name == u"vertical-align") {
        if (value == u"super")
            look.characters.baselineShift = BaselineShift::superscript;
        else if (value == u"sub")
            look.characters.baselineShift = BaselineShift::subscript;
        else if (value == u"baseline")
            look.characters.baselineShift = BaselineShift::none;
    } else if (name == u"white-space") {
        look.preservesSpace = value.startsWith(u"pre") && value != u"pre-line";
    } else if (name == u"display") {
        look.isHidden = look.isHidden || value == u"none";
    } else if (name == u"mso-hide") {
        look.isHidden = look.isHidden || value == u"all";
    } else {
        return false;
    }
    return true;
}

void applyMargins(ParagraphStyle& paragraph, QStringView name, const QString& value, double em)
{
    const QStringList sides = value.split(u' ', Qt::SkipEmptyParts);
    const auto set = [&](QStringView side, qsizetype index) {
        if (name != u"margin" && name != side)
            return;
        const qsizetype count = sides.size();
        const qsizetype place = name != u"margin"         ? 0
                                : index < count           ? index
                                : index == 3 && count > 1 ? 1
                                                          : 0;
        const auto points = parseCssLength(sides.value(place), em, 0);
        if (!points)
            return;
        if (side == u"margin-top") {
            paragraph.spacingBefore = std::max(0.0, *points);
        } else if (side == u"margin-bottom") {
            paragraph.spacingAfter = std::max(0.0, *points);
        } else if (side == u"margin-left") {
            paragraph.headIndent += std::max(0.0, *points);
            paragraph.firstLineHeadIndent += std::max(0.0, *points);
        } else {
            paragraph.tailIndent -= std::max(0.0, *points);
        }
    };
    set(u"margin-top", 0);
    set(u"margin-right", 1);
    set(u"margin-bottom", 2);
    set(u"margin-left", 3);
}

// "36pt center 72pt", as word processors write them.
QList<TextTab> parseTabStops(const QString& value)
{
    constexpr qsizetype mostTabs = 64;
    QList<TextTab> tabs;
    TextTab next;
    for (const QString& word : value.toLower().split(u' ', Qt::SkipEmptyParts)) {
        if (word == u"left" || word == u"list") {
            next.alignment = TabAlignment::left;
        } else if (word == u"center") {
            next.alignment = TabAlignment::center;
        } else if (word == u"right") {
            next.alignment = TabAlignment::right;
        } else if (word == u"decimal") {
            next.alignment = TabAlignment::decimal;
        } else if (const auto points = parseCssLength(word, 12, 0)) {
            next.location = *points;
            if (tabs.size() < mostTabs)
                tabs.append(next);
            next = {};
        }
    }
    return tabs;
}

void applyParagraphDeclaration(HtmlLook& look, const CssDeclaration& declaration, double em)
{
    const auto& [name, value] = declaration;
    ParagraphStyle& paragraph = look.paragraph;
    if (name == u"text-align") {
        setAlignment(paragraph, value);
    } else if (name == u"direction") {
        setDirection(paragraph, value);
    } else if (name.startsWith(u"margin")) {
        applyMargins(paragraph, name, value, em);
    } else if (name == u"text-indent") {
        const auto points = parseCssLength(value, em, 0);
        paragraph.firstLineHeadIndent = paragraph.headIndent + points.value_or(0);
    } else if (name == u"tab-stops") {
        paragraph.tabStops = parseTabStops(value);
    } else if (name == u"tab-size") {
        QStringView unit = value;
        while (!unit.isEmpty() && !unit.front().isLetter())
            unit = unit.sliced(1);
        // A bare number counts blanks.
        const auto points = unit.isEmpty() ? std::nullopt : parseCssLength(value, em, 0);
        paragraph.defaultTabInterval = std::max(0.0, points.value_or(0));
    } else if (name == u"line-height") {
        bool isNumber = false;
        const double multiple = value.toDouble(&isNumber);
        if (isNumber && multiple > 0 && multiple <= 20)
            paragraph.lineHeightMultiple = multiple;
        else if (const auto points = parseCssLength(value, em, em); points && *points > 0)
            paragraph.minimumLineHeight = *points;
    }
}

} // namespace

HtmlTag htmlTag(const QString& name)
{
    return tagNames().value(name, HtmlTag::other);
}

bool isBlock(HtmlTag tag)
{
    using enum HtmlTag;
    static constexpr std::array blocks{blockquote, body, caption, center, dd, div, dl, dt, form,
                                       h1,         h2,   h3,      h4,     h5, h6,  hr, li, ol,
                                       p,          pre,  section, table,  td, th,  tr, ul};
    return std::ranges::find(blocks, tag) != blocks.end();
}

bool isVoid(HtmlTag tag)
{
    using enum HtmlTag;
    return tag == br || tag == col || tag == hr || tag == img || tag == input || tag == link ||
           tag == meta || tag == wbr;
}

bool isDecoration(const HtmlToken& token)
{
    constexpr double letterSize = 18; // points
    const QString alternative = token.attribute(u"alt");
    const auto isWord = [](QChar c) {
        return c.isLetterOrNumber();
    };
    if ((!alternative.isNull() && std::ranges::none_of(alternative, isWord)) ||
        token.attribute(u"aria-hidden").compare(u"true", Qt::CaseInsensitive) == 0)
        return true;
    const auto isSmall = [&](QStringView name) {
        const auto points = parseCssLength(token.attribute(name), letterSize, 1'000);
        return points && *points <= letterSize;
    };
    return isSmall(u"width") || isSmall(u"height");
}

bool isLeftOutMedium(const HtmlToken& token)
{
    static constexpr std::array<QStringView, 5> media{u"audio", u"canvas", u"iframe", u"svg",
                                                      u"video"};
    return std::ranges::find(media, token.name) != media.end() && !isDecoration(token);
}

void applyHtmlElement(HtmlLook& look, HtmlTag tag, const HtmlToken& token, const TextFont& base)
{
    const bool block = isBlock(tag);
    if (block)
        look.paragraph.spacingBefore = look.paragraph.spacingAfter = 0;
    applyTag(look, tag, token, base);
    if (token.attributes.isEmpty())
        return;
    look.isHidden = look.isHidden || !token.attribute(u"hidden").isNull();
    setDirection(look.paragraph, token.attribute(u"dir"));
    if (block)
        setAlignment(look.paragraph, token.attribute(u"align"));
    const QString css = token.attribute(u"style");
    for (const CssDeclaration& declaration : parseCssDeclarations(css)) {
        const bool isBackground =
            declaration.name == u"background-color" || declaration.name == u"background";
        const double em = look.characters.font.value_or(base).size;
        if (isBackground && tag != HtmlTag::td && tag != HtmlTag::th && tag != HtmlTag::table) {
            const auto color = parseCssColor(declaration.value);
            if (block)
                look.paragraph.background = color ? color : look.paragraph.background;
            else
                look.characters.background = color ? color : look.characters.background;
        } else if (!applyFontDeclaration(look, declaration, base) &&
                   !applyCharacterDeclaration(look, declaration) && block) {
            applyParagraphDeclaration(look, declaration, em);
        }
    }
}

} // namespace orvane
