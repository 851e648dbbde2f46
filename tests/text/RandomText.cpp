// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/RandomText.h"

#include "text/attachments/AttachmentManager.h"
#include "text/value/OWChartBlock.h"
#include "text/value/OrvaneNoteImageAttachment.h"

namespace orvane {

using namespace Qt::StringLiterals;

RandomText::RandomText(unsigned seed, Attributes attributes)
    : m_engine(seed)
    , m_all(attributes == Attributes::all)
{}

int RandomText::upTo(int limit)
{
    return std::uniform_int_distribution<int>(0, limit)(m_engine);
}

double RandomText::length()
{
    return m_all ? upTo(40'000) / 300.0 : upTo(2'000) / 20.0;
}

RgbaColor RandomText::color()
{
    if (m_all)
        return {upTo(1000) / 1000.0, upTo(1000) / 1000.0, upTo(1000) / 1000.0, upTo(9) / 9.0};
    return RgbaColor::fromQColor(QColor(upTo(255), upTo(255), upTo(255)));
}

QUuid RandomText::id()
{
    return QUuid(quint32(m_engine()), 1, 2, 3, 4, 5, 6, 7, 8, 9, 10);
}

QString RandomText::words()
{
    static const QStringList samples{
        u"plain words"_s, u" "_s,        u"Größe, naïve"_s, u"Привет"_s,
        u"שלום עולם"_s,   u"漢字かな"_s, u"\U0001F600"_s,   u"tab\there"_s,
        u"a\u2028b"_s,    u"{\\rtf}"_s,  u"\u00A0–—…"_s,    u"page\u000Cend"_s,
        u"e\u0301"_s,
    };
    return samples[upTo(int(samples.size()) - 1)];
}

CharacterStyle RandomText::characterStyle()
{
    CharacterStyle style;
    static const QStringList families{u"Charis"_s, u"Inter"_s, u"Noto Sans Mono"_s,
                                      u"游ゴシック"_s};
    if (!m_all || !oneIn(5))
        style.font = TextFont{families[upTo(3)], 8 + upTo(60) / 2.0, 400, oneIn(4)};
    if (style.font && oneIn(3))
        style.font->weight = m_all ? 100 * (1 + upTo(8)) : 700;
    if (oneIn(4))
        style.foreground = color();
    if (oneIn(5))
        style.background = color();
    if (oneIn(5))
        style.underline = TextLine(upTo(int(TextLine::wavy)));
    if (oneIn(6))
        style.strikethrough = oneIn(2) ? TextLine::single : TextLine::doubled;
    // Without a throw of their own, so that kept seeds give the texts that they always gave.
    if (style.underline == TextLine::dotted)
        style.baselineShift = BaselineShift::superscript;
    else if (style.underline == TextLine::dashed)
        style.baselineShift = BaselineShift::subscript;
    if (m_all && style.underline == TextLine::wavy)
        style.targetName = u"place"_s;
    if (oneIn(8))
        style.link = u"https://example.org/ä?q=%1\\%2"_s.arg(upTo(9)).arg(m_all ? u"\"" : u"");
    if (m_all && oneIn(10))
        style.autoTagBaseFontSize = length();
    return style;
}

ParagraphStyle RandomText::paragraphStyle()
{
    ParagraphStyle style;
    style.alignment = TextAlignment(upTo(4));
    style.direction = WritingDirection(upTo(2));
    style.headIndent = oneIn(2) ? length() : 0;
    style.firstLineHeadIndent = oneIn(2) ? style.headIndent : length();
    style.tailIndent = oneIn(3) ? -length() : 0;
    for (int count = oneIn(3) ? upTo(4) : 0, i = 1; i <= count; ++i)
        style.tabStops.append({36.0 * i, TabAlignment(upTo(3))});
    if (oneIn(3))
        style.lineHeightMultiple = 1 + upTo(4) / 4.0;
    else if (oneIn(3))
        style.minimumLineHeight = 10 + upTo(20);
    if (style.minimumLineHeight > 0 && oneIn(2))
        style.maximumLineHeight = style.minimumLineHeight;
    style.spacingBefore = oneIn(3) ? length() : 0;
    style.spacingAfter = oneIn(3) ? length() : 0;
    style.hyphenationFactor = oneIn(4) ? 1 : 0;
    style.keepLinesTogether = oneIn(5);
    style.keepWithNext = oneIn(5);
    style.widowControl = oneIn(5);
    if (oneIn(5))
        style.background = color();
    if (m_all) {
        style.defaultTabInterval = length();
        style.lineSpacing = oneIn(3) ? length() : 0;
        style.tailIndent = oneIn(3) ? length() - 60 : style.tailIndent;
        for (int count = oneIn(3) ? 1 + upTo(2) : 0; count > 0; --count)
            style.textLists.append({ListMarker(upTo(7)), upTo(20) - 3});
    }
    return style;
}

TextAttachment RandomText::attachment()
{
    if (m_all && oneIn(2)) {
        OWChartAttachment chart;
        chart.chartBlock.id = id();
        chart.chartBlock.kind = OWChartKind(upTo(3));
        chart.chartBlock.title = words().trimmed();
        chart.chartBlock.dataPoints = {{id(), u"North"_s, length(), color()},
                                       {id(), u"South"_s, -length(), std::nullopt}};
        chart.chartBlock.createdAt = Timestamp{1'700'000'000'123};
        chart.renderedImageData = "picture";
        return chart;
    }
    QImage picture(4 + upTo(8), 3 + upTo(8), QImage::Format_RGB32);
    picture.fill(color().toQColor());
    auto image = OrvaneNoteImageAttachment::fromImageData(*AttachmentManager::pngData(picture),
                                                          std::nullopt, id());
    image.renderedSize = {1.0 + upTo(200), 1.0 + upTo(200)};
    if (m_all) {
        image.wrapMode = OrvaneNoteImageWrapMode(upTo(3));
        image.aspectRatioLocked = oneIn(2);
        image.floatingOffset = {length(), -length()};
    }
    return image;
}

void RandomText::appendParagraph(AttributedString& text, const SharedParagraphStyle& style)
{
    for (int runs = upTo(4); runs > 0; --runs) {
        CharacterStyle characters = characterStyle();
        if (oneIn(12)) {
            characters.attachment = attachment();
            if (const auto* chart = characters.chartAttachment())
                characters.chartBlockData = chart->chartBlock.toJson();
            text.append(QStringView(&objectCharacter, 1), characters, style);
        } else {
            text.append(words(), characters, style);
        }
    }
    CharacterStyle end = characterStyle();
    if (!m_all)
        end.link.clear();
    text.append(u"\n", end, style);
}

void RandomText::appendTable(AttributedString& text)
{
    TextTable table;
    table.id = id();
    table.columns = 1 + upTo(3);
    for (int row = 0; row <= upTo(3); ++row) {
        for (int column = 0; column < table.columns; ++column) {
            ParagraphStyle style = oneIn(3) ? paragraphStyle() : ParagraphStyle{};
            style.cell = TableCellBlock{};
            style.cell->table = table;
            style.cell->row = row;
            style.cell->column = column;
            CellLook look;
            look.widthPercent = 100.0 / table.columns;
            look.padding = {5, 6, 7, 8};
            look.borderWidth = {0.5, 1, 1.5, 0.5};
            look.borderColor = {color(), color(), color(), color()};
            if (oneIn(3))
                look.background = color();
            style.cell->look = look;
            appendParagraph(text, style);
        }
    }
}

AttributedString RandomText::document()
{
    AttributedString text;
    for (int blocks = upTo(8); blocks > 0; --blocks) {
        if (oneIn(5)) {
            appendTable(text);
            appendParagraph(text, paragraphStyle());
        } else {
            appendParagraph(text, paragraphStyle());
        }
    }
    if (oneIn(2))
        text.append(words(), characterStyle(), paragraphStyle());
    return text;
}

} // namespace orvane
