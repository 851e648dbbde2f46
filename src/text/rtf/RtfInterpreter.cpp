// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfInterpreter.h"

#include "text/layout/LineBreaker.h"
#include "text/rtf/ImportedList.h"
#include "text/rtf/RtfFontName.h"
#include "text/rtf/RtfWords.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

// Groups nested deeper share one state. People's documents stay below 100.
constexpr std::size_t deepestState = 500;
constexpr qsizetype longestCollected = 65'536;
constexpr qsizetype longestListMarker = 32;

bool isPicture(const QByteArray& data)
{
    return data.startsWith("\x89PNG\r\n\x1a\n") || data.startsWith("\xff\xd8\xff");
}

// Characters of foreign text that in attributed text stand for something of its own.
bool meansSomethingElse(QChar c)
{
    return c == u'\n' || c == u'\r' || c == u'\u2029' || c == u'\0' || c == QChar(objectCharacter);
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = char(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// What stands in the place of a picture that can't be shown; sizes in twips, 0 where unknown.
QString leftOutWords(const QString& kind, int width, int height)
{
    if (width <= 0 || height <= 0)
        return QCoreApplication::translate("RtfReader", "[Picture left out: %1]").arg(kind);
    constexpr double twipsPerCentimetre = 1440 / 2.54;
    return QCoreApplication::translate("RtfReader", "[Picture left out: %1, %2 × %3 cm]")
        .arg(kind, QString::number(width / twipsPerCentimetre, 'f', 1),
             QString::number(height / twipsPerCentimetre, 'f', 1));
}

} // namespace

RtfInterpreter::RtfInterpreter(QByteArrayView rtf, std::function<QUuid()> newId)
    : m_tokenizer(rtf)
    , m_inputSize(rtf.size())
    , m_states(1)
    , m_characterStyles(4'000'000 + 48 * rtf.size())
    , m_newId(newId)
    , m_builder(rtf.size(), std::move(newId))
{}

void RtfInterpreter::run()
{
    for (;;) {
        const RtfToken token = m_tokenizer.next();
        if (token.kind == RtfToken::Kind::end)
            break;
        apply(token);
        if (token.kind == RtfToken::Kind::groupEnd && m_states.size() == 1)
            return; // what stands behind the document is none of it
    }
    while (m_states.size() > 1)
        closeGroup();
    flushBytes();
}

AttributedString RtfInterpreter::finish()
{
    const bool isBegun = m_hasPageToBegin || !m_builder.isAtParagraphStart();
    const RtfParagraphFormat& format = *std::as_const(state().paragraph);
    if (format.beginsPage && !format.inTable && isBegun)
        m_builder.pageBreakBefore(currentParagraphStyle(), currentStyle());
    if (!m_marked.isEmpty() && !m_builder.isAtParagraphStart())
        endParagraph();
    insertMarked();
    AttributedString text = m_builder.finish(endingParagraphStyle());
    appendFootnotes(text);
    return text;
}

void RtfInterpreter::beginPage(bool begins)
{
    paragraph().beginsPage = begins;
    m_hasPageToBegin = begins;
}

void RtfInterpreter::apply(const RtfToken& token)
{
    using Kind = RtfToken::Kind;
    if (token.kind != Kind::text && token.kind != Kind::byte)
        flushBytes();
    if (token.kind == Kind::groupStart)
        return openGroup();
    if (token.kind == Kind::groupEnd)
        return closeGroup();
    if (state().destination == RtfDestination::skipped)
        return;
    switch (token.kind) {
    case Kind::word:
        return applyWord(token);
    case Kind::symbol:
        return applySymbol(token.text[0]);
    case Kind::byte: {
        if (m_skip > 0)
            --m_skip;
        else
            m_bytes.append(char(token.parameter));
        return;
    }
    case Kind::text: {
        const qsizetype skipped = std::min<qsizetype>(m_skip, token.text.size());
        m_skip -= int(skipped);
        return insertBytes(token.text.sliced(skipped));
    }
    case Kind::binary:
        if (state().destination == RtfDestination::picture)
            picture.data.append(token.text);
        return;
    default:
        return;
    }
}

void RtfInterpreter::openGroup()
{
    m_isIgnorable = false;
    m_skip = 0;
    if (m_states.size() >= deepestState) {
        m_deepDestinations.push_back(state().destination);
        return;
    }
    m_states.push_back(m_states.back());
    state().isField = false;
}

void RtfInterpreter::closeGroup()
{
    m_isIgnorable = false;
    m_skip = 0;
    if (m_states.size() < 2)
        return;
    if (m_aside && m_deepDestinations.empty() && m_states.size() == m_aside->depth)
        endAside();
    const RtfDestination closed = state().destination;
    if (!m_deepDestinations.empty()) {
        state().destination = m_deepDestinations.back();
        m_deepDestinations.pop_back();
    } else {
        if (m_states.size() == 2) // the document's own group: the last paragraph may still be open
            m_states.front().paragraph = state().paragraph;
        m_states.pop_back();
    }
    if (closed != state().destination)
        endDestination(closed);
}

void RtfInterpreter::endDestination(RtfDestination closed)
{
    switch (closed) {
    case RtfDestination::fieldInstruction:
        return endField();
    case RtfDestination::listText:
        return endListText();
    case RtfDestination::numbering:
        return endNumbering();
    case RtfDestination::numberingBefore:
        numbering.before = std::exchange(m_collected, {}).trimmed();
        return;
    case RtfDestination::numberingAfter:
        numbering.after = std::exchange(m_collected, {}).trimmed();
        return;
    case RtfDestination::picture:
        return endPicture();
    case RtfDestination::shape:
        for (const QString& words : std::exchange(placeholders, {}))
            insertPlaceholder(words);
        return;
    case RtfDestination::commentAuthor:
        m_commentAuthor = std::exchange(m_collected, {}).trimmed();
        return;
    case RtfDestination::shapeName:
        m_shapeName = std::exchange(m_collected, {}).trimmed();
        return;
    case RtfDestination::shapeValue:
        return endShapeValue();
    default:
        return;
    }
}

void RtfInterpreter::collect(RtfDestination destination)
{
    state().destination = destination;
    m_collected.clear();
}

void RtfInterpreter::applyWord(const RtfToken& token)
{
    const RtfWord* word = findRtfWord(token.text);
    const bool ignorable = std::exchange(m_isIgnorable, false);
    const int skip = std::exchange(m_skip, 0);
    if (word && word->insertsCharacter && skip > 0)
        m_skip = skip - 1;
    else if (word)
        word->apply(*this, {token.parameter, token.hasParameter}, word->argument);
    else if (ignorable)
        skipGroup();
}

void RtfInterpreter::applySymbol(char symbol)
{
    if (symbol == '*') {
        m_isIgnorable = true;
        return;
    }
    if (m_skip > 0) {
        --m_skip;
        return;
    }
    switch (symbol) {
    case '\r':
    case '\n':
        return endParagraph();
    case '~':
        return insertText(u"\u00A0");
    case '-':
        return insertText(u"\u00AD");
    case '_':
        return insertText(u"\u2011");
    case '\t':
        return insertText(u"\t");
    case '\\':
    case '{':
    case '}':
        return insertBytes(QByteArrayView(&symbol, 1));
    default:
        return;
    }
}

void RtfInterpreter::insertBytes(QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return;
    if (state().destination == RtfDestination::picture)
        return insertPictureDigits(bytes);
    const bool isPlain = m_bytes.isEmpty() && currentCodePage() != symbolCodePage &&
                         std::ranges::none_of(bytes, [](char c) { return c & 0x80; });
    if (isPlain)
        insertText(QString::fromLatin1(bytes));
    else
        m_bytes.append(bytes);
}

void RtfInterpreter::flushBytes()
{
    if (m_bytes.isEmpty())
        return;
    const QByteArray bytes = std::exchange(m_bytes, {});
    if (state().destination != RtfDestination::picture)
        insertText(decoded(bytes));
}

void RtfInterpreter::insertUnicode(int value)
{
    auto unit = char16_t(value);
    if (unit >= 0xF000 && unit <= 0xF0FF)
        unit = symbolCharacter(uchar(unit & 0xFF), fonts.value(currentFont()).family).unicode();
    insertText(QStringView(&unit, 1));
    m_skip = state().unicodeSkip;
}

void RtfInterpreter::insertText(QStringView text)
{
    switch (state().destination) {
    case RtfDestination::body: {
        if (!state().characters.isShown())
            return;
        QString cleaned;
        if (std::ranges::any_of(text, meansSomethingElse)) {
            cleaned = text.toString();
            cleaned.replace(u'\n', QChar(lineSeparator)).replace(u'\u2029', QChar(lineSeparator));
            cleaned.removeIf(meansSomethingElse);
            text = cleaned;
        }
        if (m_isPageBreak && !text.isEmpty())
            endParagraph();
        m_builder.text(text, currentStyle());
        return;
    }
    case RtfDestination::fontTable:
        return endFontName(text);
    case RtfDestination::colorTable:
        for (const QChar c : text) {
            if (c == u';')
                colors.append(std::exchange(pendingColor, 0));
        }
        return;
    case RtfDestination::fieldInstruction:
    case RtfDestination::listText:
    case RtfDestination::numberingBefore:
    case RtfDestination::numberingAfter:
    case RtfDestination::commentAuthor:
    case RtfDestination::shapeName:
    case RtfDestination::shapeValue:
        if (m_collected.isEmpty())
            m_markerFormat = state().characters;
        if (m_collected.size() < longestCollected)
            m_collected += text;
        return;
    default:
        return;
    }
}

void RtfInterpreter::insertPictureDigits(QByteArrayView digits)
{
    for (const char c : digits) {
        const int digit = hexDigit(c);
        if (digit < 0)
            continue;
        if (picture.halfByte < 0) {
            picture.halfByte = digit;
        } else {
            picture.data.append(char(picture.halfByte * 16 + digit));
            picture.halfByte = -1;
        }
    }
}

void RtfInterpreter::endFontName(QStringView text)
{
    for (const QChar c : text) {
        if (c == u';')
            fonts[fontInTable].family =
                rtfFontFamily(std::exchange(m_collected, {}), fonts[fontInTable].charset);
        else if (m_collected.size() < 256)
            m_collected += c;
    }
}

void RtfInterpreter::endField()
{
    static const QRegularExpression hyperlink(
        uR"re(^\s*HYPERLINK\s+(?:\\[a-km-z]\s*)*(\\l\s*)?(?:"([^"]*)"|(\S+))(?:\s+\\l\s+"([^"]*)")?)re"_s,
        QRegularExpression::CaseInsensitiveOption);
    const QString instruction = std::exchange(m_collected, {});
    const auto match = hyperlink.match(instruction);
    if (!match.hasMatch() || !state().isField)
        return;
    QString target = match.captured(2) + match.captured(3);
    target.replace(u"\\\\"_s, u"\\"_s);
    if (match.hasCaptured(1) && !match.captured(1).isEmpty())
        target.prepend(u'#');
    else if (!match.captured(4).isEmpty())
        target += u'#' + match.captured(4);
    state().characters.link = int(m_links.size());
    m_links.append(target);
}

void RtfInterpreter::endListText()
{
    const QString marker = std::exchange(m_collected, {}).trimmed();
    if (m_builder.isAtLineStart() && marker.size() <= longestListMarker)
        m_listMarker = marker;
}

void RtfInterpreter::endNumbering()
{
    if (m_numberings.isEmpty() || m_numberings.last() != numbering)
        m_numberings.append(numbering);
    paragraph().numbering = int(m_numberings.size()) - 1;
}

void RtfInterpreter::endPicture()
{
    const Picture finished = std::exchange(picture, {});
    if (state().destination != RtfDestination::body || !state().characters.isShown())
        return;
    if (!isPicture(finished.data)) {
        if (!finished.kind.isEmpty() && !finished.data.isEmpty())
            insertPlaceholder(leftOutWords(finished.kind, finished.width, finished.height));
        return;
    }
    auto image = OrvaneNoteImageAttachment::fromImageData(finished.data, std::nullopt, m_newId());
    const double width =
        finished.width > 0 ? finished.width / twipsPerPoint : image.originalSize.width();
    const double height =
        finished.height > 0 ? finished.height / twipsPerPoint : image.originalSize.height();
    image.renderedSize = {width * std::max(1, finished.scaleX) / 100,
                          height * std::max(1, finished.scaleY) / 100};
    CharacterStyle style = *currentStyle();
    style.attachment = TextAttachment(std::move(image));
    if (m_isPageBreak)
        endParagraph();
    m_builder.text(QStringView(&objectCharacter, 1), std::move(style));
}

void RtfInterpreter::endShapeValue()
{
    const QString value = std::exchange(m_collected, {}).trimmed();
    bool isNumber = false;
    const uint color = value.toUInt(&isNumber);
    if (m_shapeName == u"fillColor" && isNumber) {
        // Shape properties write colours as blue, green, red.
        pageBackground = RgbaColor::fromQColor(
            QColor(int(color & 0xFF), int(color >> 8 & 0xFF), int(color >> 16 & 0xFF)));
    }
}

void RtfInterpreter::endParagraph()
{
    if (state().destination != RtfDestination::body)
        return;
    m_isPageBreak = false;
    m_hasPageToBegin = false;
    if (std::as_const(state().paragraph)->inTable) {
        (void)endingParagraphStyle();
        return m_builder.endLineInCell(currentStyle());
    }
    if (std::as_const(state().paragraph)->beginsPage)
        m_builder.pageBreakBefore(currentParagraphStyle(), currentStyle());
    m_builder.endParagraph(endingParagraphStyle(), currentStyle());
    insertMarked();
}

void RtfInterpreter::breakColumn()
{
    if (!m_builder.isAtLineStart())
        insertText(QStringView(&lineSeparator, 1));
}

void RtfInterpreter::breakPage()
{
    if (state().destination != RtfDestination::body || !state().characters.isShown() ||
        std::as_const(state().paragraph)->inTable)
        return;
    if (!m_builder.isAtParagraphStart())
        endParagraph();
    insertText(QStringView(&pageBreakCharacter, 1));
    m_isPageBreak = true;
}

void RtfInterpreter::endCell()
{
    if (state().destination == RtfDestination::body)
        m_builder.endCell(endingParagraphStyle(), currentStyle());
}

void RtfInterpreter::endRow()
{
    if (state().destination == RtfDestination::body)
        m_builder.endRow(row);
}

RtfRowDefinition& RtfInterpreter::editRow()
{
    auto copy = row.use_count() == 1 ? std::const_pointer_cast<RtfRowDefinition>(row)
                                     : std::make_shared<RtfRowDefinition>(*row);
    row = copy;
    return *copy;
}

int RtfInterpreter::currentFont() const
{
    const RtfState& present = m_states.back();
    if (present.destination == RtfDestination::fontTable)
        return fontInTable;
    const RtfCharacterFormat& format = present.characters;
    const int font =
        format.rightToLeft && format.rightToLeftFont >= 0 ? format.rightToLeftFont : format.font;
    return font >= 0 ? font : defaultFont;
}

int RtfInterpreter::currentCodePage() const
{
    const auto font = fonts.constFind(currentFont());
    const int codePage = font == fonts.constEnd() ? 0 : font->codePage;
    const bool isName = m_states.back().destination == RtfDestination::fontTable;
    return codePage == 0 || (isName && codePage == symbolCodePage) ? documentCodePage : codePage;
}

QString RtfInterpreter::decoded(QByteArrayView bytes)
{
    const int codePage = currentCodePage();
    if (codePage != symbolCodePage)
        return m_decoder.decode(codePage, bytes);
    const QString family = fonts.value(currentFont()).family;
    QString text;
    for (const char byte : bytes)
        text += symbolCharacter(uchar(byte), family);
    return text;
}

const SharedCharacterStyle& RtfInterpreter::currentStyle()
{
    const RtfCharacterFormat& format = state().characters;
    if (m_styledFormat == format && m_style.identity())
        return m_style;
    const bool mirrors = format.rightToLeft;
    const int halfPoints = mirrors && format.rightToLeftHalfPoints > 0
                               ? format.rightToLeftHalfPoints
                               : format.halfPoints;
    const bool isBold = mirrors ? format.rightToLeftBold.value_or(format.bold) : format.bold;
    const bool isItalic =
        mirrors ? format.rightToLeftItalic.value_or(format.italic) : format.italic;
    CharacterStyle style;
    style.font =
        TextFont{fonts.value(currentFont()).family, halfPoints / 2.0, isBold ? 700 : 400, isItalic};
    style.foreground = colorOf(format.foreground);
    style.background = colorOf(format.background);
    style.underline = TextLine(format.underline);
    style.strikethrough = TextLine(format.strikethrough);
    style.baselineShift = format.baselineShift;
    style.link = m_links.value(format.link);
    m_style = m_characterStyles.intern(style, m_style);
    m_styledFormat = format;
    return m_style;
}

// The level of a list item may stand behind its marker, so the marker waits for the end.
ParagraphStyle RtfInterpreter::endingParagraphStyle()
{
    ParagraphStyle style = currentParagraphStyle();
    const RtfParagraphFormat& format = *std::as_const(state().paragraph);
    const QString number = numberedMarker(format);
    QString marker = std::exchange(m_listMarker, {});
    const RtfCharacterFormat markerFormat = marker.isEmpty() ? state().characters : m_markerFormat;
    if (marker.isEmpty())
        marker = number;
    if (marker.isEmpty())
        return style;
    const bool isItem = (format.inList || format.numbering >= 0) && !m_builder.isBehindLine();
    const int level = format.inList           ? format.listLevel
                      : format.numbering >= 0 ? m_numberings[format.numbering].level
                                              : 0;
    m_builder.textBefore(ImportedList::prefix(marker, level), markerStyle(markerFormat));
    return isItem ? ImportedList::style(std::move(style), marker, level) : style;
}

// Its font is that of the text: markers name fonts of pictures, and often no size.
CharacterStyle RtfInterpreter::markerStyle(const RtfCharacterFormat& format)
{
    const CharacterStyle first = *m_builder.lineStyle(currentStyle());
    CharacterStyle style;
    style.font = first.font;
    if (style.font) {
        style.font->weight = format.bold ? 700 : 400;
        style.font->italic = format.italic;
    }
    style.foreground = colorOf(format.foreground);
    style.background = colorOf(format.background);
    return style;
}

std::optional<RgbaColor> RtfInterpreter::colorOf(int index) const
{
    const QRgb found = color(index);
    if (qAlpha(found) == 0)
        return std::nullopt;
    return RgbaColor::fromQColor(QColor::fromRgba(found));
}

QString RtfInterpreter::numberedMarker(const RtfParagraphFormat& format)
{
    if (format.numbering < 0) {
        m_lastNumbering = -1;
        return {};
    }
    const RtfNumbering& numbers = m_numberings[format.numbering];
    if (numbers.isUnmarked || m_builder.isAtLineStart())
        return {};
    const bool continues = std::exchange(m_lastNumbering, format.numbering) == format.numbering;
    m_lastNumber = continues ? m_lastNumber + 1 : numbers.start;
    if (numbers.isBullet)
        return numbers.before.isEmpty() ? u"•"_s : numbers.before;
    return numbers.before + ImportedList::numberText(numbers.kind, m_lastNumber) + numbers.after;
}

ParagraphStyle RtfInterpreter::currentParagraphStyle() const
{
    const RtfParagraphFormat& format = *std::as_const(m_states.back().paragraph);
    ParagraphStyle style;
    style.alignment = format.alignment;
    style.direction = format.direction;
    style.headIndent = format.leftIndent / twipsPerPoint;
    style.firstLineHeadIndent = (format.leftIndent + format.firstIndent) / twipsPerPoint;
    style.tailIndent = -format.rightIndent / twipsPerPoint + 0.0;
    style.tabStops = format.tabs;
    style.defaultTabInterval = defaultTab / twipsPerPoint;
    if (format.lineSpacing != 0 && format.lineSpacingIsMultiple)
        style.lineHeightMultiple = std::abs(format.lineSpacing) / 240.0;
    else if (format.lineSpacing != 0)
        style.minimumLineHeight = std::abs(format.lineSpacing) / twipsPerPoint;
    if (format.lineSpacing < 0 && !format.lineSpacingIsMultiple)
        style.maximumLineHeight = style.minimumLineHeight;
    style.spacingBefore = format.spaceBefore / twipsPerPoint;
    style.spacingAfter = format.spaceAfter / twipsPerPoint;
    style.hyphenationFactor = format.hyphenates ? 1 : 0;
    style.keepLinesTogether = format.keepsTogether;
    style.keepWithNext = format.keepsWithNext;
    style.widowControl = format.controlsWidows;
    style.background = colorOf(format.background);
    return style;
}

} // namespace orvane
