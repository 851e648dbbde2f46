// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/TextStore.h"

#include <QAbstractTextDocumentLayout>

namespace orvane {

namespace {

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

/// A document tells of its changes only what lays it out; this passes them on.
class TextStore::Relay : public QAbstractTextDocumentLayout {
public:
    explicit Relay(TextStore& store)
        : QAbstractTextDocumentLayout(&store.m_document)
        , m_store(store)
    {}

    void draw(QPainter* /*painter*/, const PaintContext& /*context*/) override {}
    [[nodiscard]] int hitTest(const QPointF& /*point*/,
                              Qt::HitTestAccuracy /*accuracy*/) const override
    {
        return -1;
    }
    [[nodiscard]] int pageCount() const override { return 1; }
    [[nodiscard]] QSizeF documentSize() const override { return {}; }
    [[nodiscard]] QRectF frameBoundingRect(QTextFrame* /*frame*/) const override { return {}; }
    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock& /*block*/) const override
    {
        return {};
    }

protected:
    void documentChanged(int from, int removed, int added) override
    {
        for (TextObserver* observer : m_store.m_observers)
            observer->textReplaced(from, removed, added);
    }

private:
    TextStore& m_store;
};

TextStore::TextStore()
{
    m_document.setDocumentLayout(new Relay(*this));
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
    QString text = m_pieces.text(range);
    text.replace(QChar::ParagraphSeparator, u'\n');
    return text;
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
    DocumentPieces::Contents contents = m_pieces.contents();
    snapshot.m_characterStyles.resize(contents.formats.size());
    snapshot.m_paragraphStyles.resize(contents.formats.size());
    for (std::size_t i = 0; i < contents.formats.size(); ++i) {
        const QTextFormat& format = contents.formats[i];
        if (format.isCharFormat())
            snapshot.m_characterStyles[i] = m_styles.styleOf(format.toCharFormat());
        else if (format.isBlockFormat())
            snapshot.m_paragraphStyles[i] = m_styles.styleOf(format.toBlockFormat());
    }
    snapshot.m_buffer = std::move(contents.buffer);
    snapshot.m_pieces = std::move(contents.pieces);
    snapshot.m_paragraphs = std::move(contents.paragraphs);
    return snapshot;
}

const SharedCharacterStyle& TextStore::characterStyle(qsizetype position) const
{
    Q_ASSERT(position >= 0 && position < length());
    return m_styles.styleOf(m_pieces.formatAt(int(position)));
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
    m_pieces.forEachFormat(range, visit);
}

void TextStore::setContent(const AttributedString& content)
{
    m_document.clear();
    m_styles.clear();
    m_document.setUndoRedoEnabled(false);
    {
        const QTextCursor whole(&m_document);
        m_pieces.beginEdit();
        insertPieces(0, content);
        setBlockStyle(m_document.firstBlock(), content.paragraphStyle(0));
        m_pieces.endEdit();
    }
    m_document.setUndoRedoEnabled(true);
    m_document.setModified(false);
}

void TextStore::beginEdit()
{
    m_pieces.beginEdit();
}

void TextStore::endEdit()
{
    m_pieces.endEdit();
}

void TextStore::replace(TextRange range, const AttributedString& insertion)
{
    if (range.isEmpty() && insertion.isEmpty())
        return;
    const bool beginsParagraph = blockAt(range.location).position() == range.location;
    const bool reachesEnd = range.end() == length();
    const SharedParagraphStyle joined = paragraphStyle(range.location);
    const SharedParagraphStyle own = paragraphStyle(range.end());

    m_pieces.beginEdit();
    if (!range.isEmpty())
        m_pieces.remove(range);
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
    m_pieces.endEdit();
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
    m_pieces.beginEdit();
    if (!range.isEmpty())
        m_pieces.remove(range);
    if (!text.isEmpty())
        m_pieces.insert(int(range.location), storable(text),
                        m_pieces.numberOf(m_styles.formatFor(style)));
    m_pieces.endEdit();
}

void TextStore::insertPieces(qsizetype position, const AttributedString& insertion)
{
    const QString text = storable(insertion.text());
    QHash<const void*, int> characterFormats;
    const auto formatOf = [&](const SharedCharacterStyle& style) {
        const auto known = characterFormats.constFind(style.identity());
        if (known != characterFormats.constEnd())
            return *known;
        return *characterFormats.insert(style.identity(),
                                        m_pieces.numberOf(m_styles.formatFor(style)));
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
                    m_pieces.insert(int(position + from), rest.first(length).toString(), format);
                from += length;
                if (newline < 0)
                    break;
                const auto& next = insertion.paragraphStyle(from + 1);
                m_pieces.insertSeparator(int(position + from),
                                         m_pieces.numberOf(m_styles.formatFor(next)), format);
                ++from;
            }
        });
}

void TextStore::setBlockStyle(const QTextBlock& block, const SharedParagraphStyle& style)
{
    if (m_styles.styleOf(block.blockFormat()) != style)
        m_pieces.setBlockFormat(block, m_styles.formatFor(style));
}

void TextStore::setCharacterStyle(TextRange range, const SharedCharacterStyle& style)
{
    m_pieces.setCharFormat(range, m_styles.formatFor(style));
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
