// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/TextStore.h"

#include "text/layout/ParagraphLayout.h"

#include <QTextCursor>

// The document's own pieces: its public interface reads a position in several logarithmic steps and
// inserts through a cursor, which costs a multiple on a long text.
#include <algorithm>
#include <private/qtextdocument_p.h>
#include <private/qtextformat_p.h>

namespace orvane {

namespace {

QTextDocumentPrivate& piecesOf(QTextDocument& document)
{
    return *QTextDocumentPrivate::get(&document);
}

/// What the document keeps for itself: its paragraph separator and its frame marks.
bool isReserved(QChar character)
{
    return character == QChar::ParagraphSeparator || character.unicode() == 0xfdd0 ||
           character.unicode() == 0xfdd1;
}

/// `text` with a line break for each foreign paragraph separator, and the replacement character for
/// what can't be stored.
QString storable(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isReserved(text[i])) {
            text[i] = text[i] == QChar::ParagraphSeparator ? QChar(lineSeparator)
                                                           : QChar(QChar::ReplacementCharacter);
        }
    }
    return text;
}

} // namespace

TextStore::TextStore()
    : m_layout(new ParagraphLayout(*this))
{
    m_document.setDocumentLayout(m_layout);
    m_document.setDocumentMargin(0);
}

TextStore::~TextStore() = default;

qsizetype TextStore::length() const
{
    return m_document.characterCount() - 1;
}

QString TextStore::text() const
{
    QString text = m_document.toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    return text;
}

QString TextStore::text(TextRange range) const
{
    QString result;
    result.reserve(range.length);
    const auto& pieces = piecesOf(m_document);
    const QString buffer = pieces.buffer();
    auto piece = pieces.find(int(range.location));
    while (result.size() < range.length) {
        const int from = int(range.location + result.size()) - piece.position();
        const auto length =
            std::min<qsizetype>(int(piece.size()) - from, range.length - result.size());
        result.append(QStringView(buffer).mid(piece->stringPosition + from, length));
        ++piece;
    }
    result.replace(QChar::ParagraphSeparator, u'\n');
    return result;
}

qsizetype TextStore::count(QChar character, TextRange range) const
{
    const auto& pieces = piecesOf(m_document);
    const QString buffer = pieces.buffer();
    qsizetype count = 0;
    qsizetype position = range.location;
    for (auto piece = pieces.find(int(position)); position < range.end(); ++piece) {
        const qsizetype from = position - piece.position();
        const auto length = std::min<qsizetype>(int(piece.size()) - from, range.end() - position);
        const QStringView part = QStringView(buffer).mid(piece->stringPosition + from, length);
        count += std::count(part.utf16(), part.utf16() + part.size(), character.unicode());
        position += length;
    }
    return count;
}

QChar TextStore::characterAt(qsizetype position) const
{
    if (position < 0 || position >= length())
        return {};
    const QChar character = m_document.characterAt(int(position));
    return character == QChar::ParagraphSeparator ? QChar(u'\n') : character;
}

AttributedString TextStore::attributedText(TextRange range) const
{
    AttributedString result;
    result.reserve(range.length);
    for (QTextBlock block = blockAt(range.location);; block = block.next()) {
        const SharedParagraphStyle& style = m_styles.styleOf(block.blockFormat());
        const TextRange part =
            TextRange::between(std::max<qsizetype>(block.position(), range.location),
                               std::min<qsizetype>(block.position() + block.length(), range.end()));
        const QString text = this->text(part);
        forEachCharacterRun(part, [&](TextRange run, const SharedCharacterStyle& characters) {
            result.append(QStringView(text).mid(run.location - part.location, run.length),
                          characters, style);
        });
        if (range.end() < block.position() + block.length()) {
            result.setParagraphStyle({result.length(), 0}, style);
            return result;
        }
    }
}

TextSnapshot TextStore::snapshot() const
{
    TextSnapshot snapshot;
    const auto& pieces = piecesOf(m_document);
    const auto& formats = *pieces.formatCollection();
    snapshot.m_buffer = pieces.buffer();
    snapshot.m_characterStyles.resize(std::size_t(formats.numFormats()));
    snapshot.m_paragraphStyles.resize(std::size_t(formats.numFormats()));
    for (int i = 0; i < formats.numFormats(); ++i) {
        const QTextFormat format = formats.format(i);
        if (format.isCharFormat())
            snapshot.m_characterStyles[std::size_t(i)] = m_styles.styleOf(format.toCharFormat());
        else if (format.isBlockFormat())
            snapshot.m_paragraphStyles[std::size_t(i)] = m_styles.styleOf(format.toBlockFormat());
    }
    snapshot.m_pieces.reserve(std::size_t(pieces.fragmentMap().numNodes()));
    for (auto piece = pieces.begin(); piece != pieces.end(); ++piece)
        snapshot.m_pieces.push_back({piece->stringPosition, int(piece.size()), piece->format});
    const auto& blocks = pieces.blockMap();
    snapshot.m_paragraphs.reserve(std::size_t(blocks.numNodes()));
    for (auto block = blocks.begin(); block != blocks.end(); ++block)
        snapshot.m_paragraphs.push_back({int(block.size()), block->format});
    return snapshot;
}

const SharedCharacterStyle& TextStore::characterStyle(qsizetype position) const
{
    Q_ASSERT(position >= 0 && position < length());
    const auto& pieces = piecesOf(m_document);
    const int format = pieces.find(int(position))->format;
    return m_styles.styleOf(pieces.formatCollection()->charFormat(format));
}

const SharedParagraphStyle& TextStore::paragraphStyle(qsizetype position) const
{
    return m_styles.styleOf(blockAt(position).blockFormat());
}

TextRange TextStore::paragraphRange(qsizetype position) const
{
    return paragraphsRange({position, 0});
}

TextRange TextStore::paragraphsRange(TextRange range) const
{
    const QTextBlock first = blockAt(range.location);
    const QTextBlock last = range.isEmpty() ? first : blockAt(range.end() - 1);
    return TextRange::between(first.position(),
                              std::min<qsizetype>(last.position() + last.length(), length()));
}

QTextBlock TextStore::blockAt(qsizetype position) const
{
    return m_document.findBlock(int(position));
}

void TextStore::forEachFormat(
    TextRange range, const std::function<void(TextRange, const QTextCharFormat&)>& visit) const
{
    const auto& pieces = piecesOf(m_document);
    qsizetype position = range.location;
    for (auto piece = pieces.find(int(position)); position < range.end(); ++piece) {
        const auto end = std::min<qsizetype>(piece.position() + int(piece.size()), range.end());
        visit(TextRange::between(position, end),
              pieces.formatCollection()->charFormat(piece->format));
        position = end;
    }
}

void TextStore::setContent(const AttributedString& content)
{
    m_document.clear();
    m_styles.clear();
    m_document.setUndoRedoEnabled(false);
    {
        const QTextCursor whole(&m_document);
        auto& pieces = piecesOf(m_document);
        pieces.beginEditBlock();
        insertPieces(0, content);
        setBlockStyle(m_document.firstBlock(), content.paragraphStyle(0));
        pieces.endEditBlock();
    }
    m_document.setUndoRedoEnabled(true);
    m_document.setModified(false);
}

void TextStore::beginEdit()
{
    piecesOf(m_document).beginEditBlock();
}

void TextStore::endEdit()
{
    piecesOf(m_document).endEditBlock();
}

void TextStore::replace(TextRange range, const AttributedString& insertion)
{
    if (range.isEmpty() && insertion.isEmpty())
        return;
    auto& pieces = piecesOf(m_document);
    const bool beginsParagraph = blockAt(range.location).position() == range.location;
    const bool reachesEnd = range.end() == length();
    const SharedParagraphStyle joined = paragraphStyle(range.location);
    const SharedParagraphStyle own = paragraphStyle(range.end());

    pieces.beginEditBlock();
    if (!range.isEmpty())
        pieces.remove(int(range.location), int(range.length));
    insertPieces(range.location, insertion);

    // Each paragraph takes the style of its first character. Those within the insertion have theirs
    // already; the first and the last may be shared with what was there.
    SharedParagraphStyle first = joined;
    if (beginsParagraph)
        first = insertion.isEmpty() ? own : insertion.paragraphStyle(0);
    setBlockStyle(blockAt(range.location), first);
    if (insertion.text().contains(u'\n')) {
        const bool tailLeads = insertion.text().endsWith(u'\n') && !reachesEnd;
        setBlockStyle(blockAt(range.location + insertion.length()),
                      tailLeads ? own : insertion.paragraphStyle(insertion.length()));
    }
    pieces.endEditBlock();
}

void TextStore::replace(TextRange range, const QString& text, const SharedCharacterStyle& style)
{
    const auto reachesBeyond = [&] {
        const QTextBlock block = blockAt(range.location);
        return range.end() >= block.position() + block.length();
    };
    if (text.contains(u'\n') || (!range.isEmpty() && reachesBeyond())) {
        replace(range, AttributedString(text, style, paragraphStyle(range.location)));
        return;
    }
    // Within one paragraph, whose style stays.
    auto& pieces = piecesOf(m_document);
    pieces.beginEditBlock();
    if (!range.isEmpty())
        pieces.remove(int(range.location), int(range.length));
    if (!text.isEmpty())
        pieces.insert(int(range.location), storable(text),
                      pieces.formatCollection()->indexForFormat(m_styles.formatFor(style)));
    pieces.endEditBlock();
}

void TextStore::insertPieces(qsizetype position, const AttributedString& insertion)
{
    auto& pieces = piecesOf(m_document);
    auto& formats = *pieces.formatCollection();
    const QString text = storable(insertion.text());
    QHash<const void*, int> characterFormats;
    const auto formatOf = [&](const SharedCharacterStyle& style) {
        const auto known = characterFormats.constFind(style.identity());
        if (known != characterFormats.constEnd())
            return *known;
        return *characterFormats.insert(style.identity(),
                                        formats.indexForFormat(m_styles.formatFor(style)));
    };
    insertion.forEachCharacterRun(
        insertion.fullRange(), [&](TextRange run, const SharedCharacterStyle& style) {
            const int format = formatOf(style);
            qsizetype from = run.location;
            while (from < run.end()) {
                const QStringView rest = QStringView(text).mid(from, run.end() - from);
                const qsizetype newline = rest.indexOf(u'\n');
                const qsizetype length = newline < 0 ? rest.size() : newline;
                if (length > 0)
                    pieces.insert(int(position + from), rest.first(length).toString(), format);
                from += length;
                if (newline < 0)
                    break;
                const auto& next = insertion.paragraphStyle(from + 1);
                pieces.insertBlock(int(position + from),
                                   formats.indexForFormat(m_styles.formatFor(next)), format);
                ++from;
            }
        });
}

void TextStore::setBlockStyle(const QTextBlock& block, const SharedParagraphStyle& style)
{
    if (m_styles.styleOf(block.blockFormat()) != style)
        piecesOf(m_document).setBlockFormat(block, block, m_styles.formatFor(style));
}

void TextStore::setCharacterStyle(TextRange range, const SharedCharacterStyle& style)
{
    piecesOf(m_document)
        .setCharFormat(int(range.location), int(range.length), m_styles.formatFor(style));
}

void TextStore::setParagraphStyle(TextRange range, const SharedParagraphStyle& style)
{
    const TextRange paragraphs = paragraphsRange(range);
    QTextBlock block = blockAt(paragraphs.location);
    do {
        setBlockStyle(block, style);
        block = block.next();
    } while (block.isValid() && block.position() < paragraphs.end());
}

} // namespace orvane
