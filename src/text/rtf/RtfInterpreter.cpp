// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfInterpreter.h"

#include "text/layout/LineBreaker.h"
#include "text/rtf/RtfFontName.h"
#include "text/rtf/RtfWords.h"
#include "text/value/LinkTargets.h"
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
constexpr qsizetype longestTargetName = 256;

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
    dropUnlinkedTargets(text);
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
    case RtfDestination::levelText:
        return endLevelText();
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
    case RtfDestination::targetName:
        m_targetName = std::exchange(m_collected, {}).trimmed().left(longestTargetName);
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
        if (!m_targetName.isEmpty())
            insertTarget(text);
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
    case RtfDestination::levelText:
    case RtfDestination::numberingBefore:
    case RtfDestination::numberingAfter:
    case RtfDestination::commentAuthor:
    case RtfDestination::targetName:
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

// The first letter behind a bookmark is the place; a link that leads there needs no more.
void RtfInterpreter::insertTarget(QStringView& text)
{
    if (text.isEmpty())
        return;
    // Half of a letter may come by itself, and the other half behind it.
    const bool isHigh = text[0].isHighSurrogate();
    const qsizetype length = isHigh && text.size() > 1 ? 2 : 1;
    CharacterStyle style = *currentStyle();
    style.targetName = m_targetName;
    m_builder.text(text.first(length), style);
    text = text.sliced(length);
    if (!isHigh || length == 2)
        m_targetName.clear();
}

// The first character is the number of those that follow.
void RtfInterpreter::endLevelText()
{
    const QString text = std::exchange(m_collected, {});
    if (RtfListCounter::Level* level = lists.level(); level && !text.isEmpty())
        level->text = text.sliced(1, std::min<qsizetype>(text[0].unicode(), text.size() - 1))
                          .left(longestListMarker);
}

void RtfInterpreter::endListText()
{
    m_hasListText = m_builder.isAtLineStart();
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
        return m_builder.endLineInCell(endingParagraphStyle(), currentStyle());
    }
    if (std::as_const(state().paragraph)->beginsPage)
        m_builder.pageBreakBefore(currentParagraphStyle(), currentStyle());
    ParagraphStyle style = endingParagraphStyle();
    const qsizetype placeholder = std::exchange(m_placeholderLength, 0);
    if (placeholder > 0 && m_builder.lineLength() == placeholder) {
        constexpr double room = 8; // points
        style.frame = ParagraphFrame::dashed;
        style.headIndent = style.firstLineHeadIndent = style.headIndent + room;
    }
    m_builder.endParagraph(style, currentStyle());
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

} // namespace orvane
