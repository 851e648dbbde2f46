// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfWriter.h"

#include "text/attachments/AttachmentManager.h"
#include "text/layout/LineBreaker.h"
#include "text/rtf/RtfState.h"
#include "text/rtf/RtfText.h"

#include <array>
#include <cmath>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using AttachmentManager::PictureFormat;

int twips(double points)
{
    return std::isfinite(points) ? int(std::lround(std::clamp(points, -1584.0, 1584.0) * 20)) : 0;
}

QByteArrayView underlineWord(TextLine line)
{
    static constexpr std::array<QByteArrayView, 7> words{"",      "\\ul",     "\\ulth",  "\\uldb",
                                                         "\\uld", "\\uldash", "\\ulwave"};
    return words[std::size_t(line)];
}

/// A thin colour as it looks on white: the format knows no other.
RgbaColor onPaper(const RgbaColor& color)
{
    const auto over = [&](double part) {
        return 1 - color.alpha * (1 - part);
    };
    return {over(color.red), over(color.green), over(color.blue), 1};
}

} // namespace

RtfWriter::RtfWriter(const AttributedString& document, const HeadingSizes& headings)
    : m_document(document)
    , m_headings(headings)
    , m_lists(document)
{
    for (const Footnote& note : footnotes(document)) {
        m_footnotes.insert(note.reference.location, note);
        m_footnoteParagraphs.insert(note.paragraph.location);
    }
}

QByteArray RtfWriter::write(const std::optional<RgbaColor>& pageBackground)
{
    m_body.reserve(m_document.length() + m_document.length() / 2);
    (void)m_palette.font(u"Serif"_s); // for text without a font
    walkParagraphsAndTables(
        m_document, [this](const TextParagraph& paragraph) { writeParagraph(paragraph); },
        [this](const TableRows& table) { writeTable(table); });

    QByteArray rtf("{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\n");
    m_palette.appendTables(rtf);
    if (m_hasHeadings)
        appendStyleSheet(rtf);
    m_lists.appendTables(rtf);
    if (pageBackground)
        appendPageBackground(rtf, *pageBackground);
    rtf.reserve(rtf.size() + m_body.size() + 2);
    rtf.append(m_body);
    rtf.append("}\n");
    return rtf;
}

void RtfWriter::writeParagraph(const TextParagraph& paragraph)
{
    if (m_footnoteParagraphs.contains(paragraph.range.location))
        return;
    if (breaksPageBeforeNext(paragraph.range)) {
        m_beginsPage = true;
        return;
    }
    TextRange contents = paragraph.range;
    Role role{.beginsPage = std::exchange(m_beginsPage, false)};
    const RtfListTable::Item* item = m_lists.itemAt(contents.location);
    if (item) {
        role.list = item->list;
        role.level = item->level;
        contents = TextRange::between(item->item.contentStart(), contents.end());
    } else {
        role.heading = headingLevel(m_document, contents, m_headings);
        m_hasHeadings = m_hasHeadings || role.heading > 0;
    }
    useParagraphStyle(paragraph.style, role);
    if (item)
        writeMarker(*item);
    writeText(contents);
    const qsizetype newline = paragraph.range.end();
    if (newline < m_document.length()) {
        useStyle(m_document.characterStyle(newline));
        m_body.append("\\par\n");
    }
}

// A page break is a property of the paragraph behind it: as a character of its own, other programs
// would make a line of it.
bool RtfWriter::breaksPageBeforeNext(TextRange paragraph) const
{
    const auto isBreakAt = [&](qsizetype position) {
        return position < m_document.length() &&
               m_document.text()[position] == QChar(pageBreakCharacter);
    };
    const qsizetype next = paragraph.end() + 1;
    return paragraph.length == 1 && isBreakAt(paragraph.location) && paragraph.location > 0 &&
           next <= m_document.length() && !isBreakAt(next) &&
           !m_document.paragraphStyle(next)->cell;
}

// Programs that know no lists show this text; others count themselves.
void RtfWriter::writeMarker(const RtfListTable::Item& item)
{
    const TextRange marker = item.item.marker;
    m_body.append("{\\listtext");
    m_body.append(characterWords(*m_document.characterStyle(marker.location)));
    appendRtfText(m_body, QStringView(m_document.text()).sliced(marker.location, marker.length));
    m_body.append("\\tab}");
}

void RtfWriter::writeText(TextRange range)
{
    m_document.forEachCharacterRun(range, [&](TextRange run, const SharedCharacterStyle& style) {
        const auto note = m_footnotes.constFind(run.location);
        if (note != m_footnotes.constEnd() && !style->targetName.isEmpty())
            return writeFootnote(*note);
        useLink(style->link);
        const QString& name = style->targetName;
        if (!name.isEmpty())
            writeTarget("{\\*\\bkmkstart ", name);
        useStyle(style);
        writeStyledText(QStringView(m_document.text()).sliced(run.location, run.length), style);
        if (!name.isEmpty())
            writeTarget("{\\*\\bkmkend ", name);
    });
    useLink({});
}

void RtfWriter::writeTarget(QByteArrayView word, const QString& name)
{
    m_body.append(word);
    appendRtfText(m_body, name);
    m_body.append('}');
}

void RtfWriter::writeFootnote(const Footnote& note)
{
    useLink({});
    CharacterStyle number = *m_document.characterStyle(note.reference.location);
    number.baselineShift = BaselineShift::superscript;
    const QByteArray words = characterWords(number) + "\\chftn";
    m_body.append('{' + words + "{\\footnote\\pard{" + words + "}\\plain  ");
    m_hasStyle = false;
    writeText(note.content);
    m_body.append("}}");
    m_hasStyle = false;
}

void RtfWriter::writeStyledText(QStringView text, const SharedCharacterStyle& style)
{
    if (!style->hasAttachment())
        return appendRtfText(m_body, text);
    for (;;) {
        const qsizetype object = text.indexOf(objectCharacter);
        appendRtfText(m_body, object < 0 ? text : text.first(object));
        if (object < 0)
            return;
        writePicture(*style);
        text = text.sliced(object + 1);
    }
}

void RtfWriter::useStyle(const SharedCharacterStyle& style)
{
    if (m_hasStyle && style.identity() == m_style.identity())
        return;
    auto words = m_characterWords.constFind(style.identity());
    if (words == m_characterWords.constEnd())
        words = m_characterWords.insert(style.identity(), characterWords(*style));
    m_body.append(*words);
    m_style = style;
    m_hasStyle = true;
}

QByteArray RtfWriter::characterWords(const CharacterStyle& style)
{
    QByteArray words("\\plain");
    const TextFont font = style.font.value_or(TextFont{u"Serif"_s});
    appendRtfWord(words, "\\f", m_palette.font(font.family));
    appendRtfWord(words, "\\fs", std::clamp(int(std::lround(font.size * 2)), 1, 3276));
    if (font.isBold())
        words.append("\\b");
    if (font.italic)
        words.append("\\i");
    words.append(underlineWord(style.underline));
    if (style.strikethrough != TextLine::none)
        words.append(style.strikethrough == TextLine::doubled ? "\\striked1" : "\\strike");
    if (style.baselineShift != BaselineShift::none)
        words.append(style.baselineShift == BaselineShift::superscript ? "\\super" : "\\sub");
    if (style.foreground)
        appendRtfWord(words, "\\cf", m_palette.color(*style.foreground));
    if (style.background && style.background->alpha > 0) {
        const int color = m_palette.color(onPaper(*style.background));
        appendRtfWord(words, "\\chshdng0\\chcbpat", color);
        appendRtfWord(words, "\\cb", color);
    }
    words.append(' ');
    return words;
}

void RtfWriter::useLink(const QString& link)
{
    if (link == m_link)
        return;
    if (!m_link.isEmpty()) {
        m_body.append("}}");
        m_hasStyle = false;
    }
    m_link = link;
    if (link.isEmpty())
        return;
    QString target = link;
    target.replace(u'"', u"%22"_s).replace(u'\\', u"\\\\"_s);
    m_body.append("{\\field{\\*\\fldinst{HYPERLINK ");
    const bool isWithin = target.size() > 1 && target.startsWith(u'#');
    m_body.append(isWithin ? "\\\\l \"" : "\"");
    appendRtfText(m_body, isWithin ? QStringView(target).sliced(1) : QStringView(target));
    m_body.append("\"}}{\\fldrslt ");
}

void RtfWriter::writePicture(const CharacterStyle& style)
{
    const auto picture = AttachmentManager::exchangedPicture(style.attachment);
    if (!picture)
        return;
    m_body.append("{\\*\\shppict{\\pict");
    m_body.append(picture->format == PictureFormat::png ? "\\pngblip" : "\\jpegblip");
    appendRtfWord(m_body, "\\picwgoal", std::max(1, twips(picture->size.width())));
    appendRtfWord(m_body, "\\pichgoal", std::max(1, twips(picture->size.height())));
    m_body.append('\n');
    m_body.append(picture->data.toHex());
    m_body.append("}}");
}

void RtfWriter::useParagraphStyle(const SharedParagraphStyle& style, const Role& role)
{
    if (m_hasParagraphStyle && style.identity() == m_paragraphStyle.identity() && role == m_role)
        return;
    auto words = m_paragraphWords.constFind(style.identity());
    if (words == m_paragraphWords.constEnd())
        words = m_paragraphWords.insert(style.identity(), paragraphWords(*style));
    m_body.append(*words);
    if (role != Role{}) {
        m_body.chop(1); // the blank that ends the words
        if (role.heading > 0) {
            appendRtfWord(m_body, "\\s", role.heading);
            appendRtfWord(m_body, "\\outlinelevel", role.heading - 1);
        }
        if (role.list > 0) {
            appendRtfWord(m_body, "\\ls", role.list);
            appendRtfWord(m_body, "\\ilvl", role.level);
        }
        if (role.beginsPage)
            m_body.append("\\pagebb");
        m_body.append(' ');
    }
    m_paragraphStyle = style;
    m_role = role;
    m_hasParagraphStyle = true;
}

void RtfWriter::appendStyleSheet(QByteArray& rtf) const
{
    rtf.append("{\\stylesheet{\\s0 Normal;}");
    for (int level = 1; level <= int(m_headings.headings.size()); ++level) {
        appendRtfWord(rtf, "{\\s", level);
        appendRtfWord(rtf, "\\sbasedon0\\snext0\\sb0\\sa0\\outlinelevel", level - 1);
        const double size = m_headings.headings[std::size_t(level) - 1];
        appendRtfWord(rtf, "\\b\\fs", std::clamp(int(std::lround(size * 2)), 1, 3276));
        appendRtfWord(rtf, " heading ", level);
        rtf.append(";}");
    }
    rtf.append("}\n");
}

QByteArray RtfWriter::paragraphWords(const ParagraphStyle& style)
{
    QByteArray words("\\pard");
    if (style.cell)
        words.append("\\intbl");
    static constexpr std::array<QByteArrayView, 5> alignments{"", "\\ql", "\\qc", "\\qr", "\\qj"};
    words.append(alignments[std::size_t(style.alignment)]);
    static constexpr std::array<QByteArrayView, 3> directions{"", "\\ltrpar", "\\rtlpar"};
    words.append(directions[std::size_t(style.direction)]);
    const auto length = [&](QByteArrayView word, int value) {
        if (value != 0)
            appendRtfWord(words, word, value);
    };
    const int left = twips(style.headIndent);
    length("\\fi", twips(style.firstLineHeadIndent) - left);
    length("\\li", left);
    length("\\ri", std::max(0, twips(-style.tailIndent)));
    length("\\sb", twips(style.spacingBefore));
    length("\\sa", twips(style.spacingAfter));
    if (style.lineHeightMultiple > 0) {
        length("\\sl", int(std::lround(std::min(style.lineHeightMultiple, 100.0) * 240)));
        words.append("\\slmult1");
    } else if (style.minimumLineHeight > 0) {
        const bool isExact = style.maximumLineHeight == style.minimumLineHeight;
        length("\\sl", (isExact ? -1 : 1) * twips(style.minimumLineHeight));
        words.append("\\slmult0");
    }
    static constexpr std::array<QByteArrayView, 4> tabs{"", "\\tqc", "\\tqr", "\\tqdec"};
    for (const TextTab& tab : style.tabStops) {
        words.append(tabs[std::size_t(tab.alignment)]);
        appendRtfWord(words, "\\tx", twips(tab.location));
    }
    if (style.hyphenationFactor > 0)
        words.append("\\hyphpar");
    if (style.keepLinesTogether)
        words.append("\\keep");
    if (style.keepWithNext)
        words.append("\\keepn");
    if (style.widowControl)
        words.append("\\widctlpar");
    if (style.frame == ParagraphFrame::bar)
        words.append("\\brdrl\\brdrs\\brdrw45\\brsp80");
    else if (style.frame == ParagraphFrame::ruleAbove)
        words.append("\\brdrt\\brdrs\\brdrw10\\brsp20");
    for (const char* side : {"\\brdrt", "\\brdrl", "\\brdrb", "\\brdrr"}) {
        if (style.frame == ParagraphFrame::dashed)
            words.append(side).append("\\brdrdash\\brdrw10\\brsp20");
    }
    if (style.background && style.background->alpha > 0)
        appendRtfWord(words, "\\cbpat", m_palette.color(onPaper(*style.background)));
    words.append(' ');
    return words;
}

void RtfWriter::appendPageBackground(QByteArray& rtf, const RgbaColor& color) const
{
    const QRgb rgb = color.toQColor().rgb();
    rtf.append("\\viewbksp1{\\*\\background{\\shp{\\*\\shpinst\\shpleft0\\shptop0\\shpright0"
               "\\shpbottom0\\shpfhdr0\\shpbxmargin\\shpbymargin\\shpwr0\\shpwrk0\\shpfblwtxt1"
               "\\shpz0\\shplid1025{\\sp{\\sn shapeType}{\\sv 1}}{\\sp{\\sn fFilled}{\\sv 1}}"
               "{\\sp{\\sn fillColor}{\\sv ");
    rtf.append(QByteArray::number(qBlue(rgb) << 16 | qGreen(rgb) << 8 | qRed(rgb)));
    rtf.append("}}{\\sp{\\sn fLine}{\\sv 0}}{\\sp{\\sn fBackground}{\\sv 1}}}}}\n");
}

} // namespace orvane
