// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The slower way, by public calls alone.
#include "text/store/DocumentPieces.h"

#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace orvane {

struct DocumentPieces::Access {
    QTextCursor edits; ///< opens and closes edit blocks
    int depth = 0;
    std::vector<QTextFormat> formats;

    [[nodiscard]] static QTextCursor cursor(QTextDocument& document, TextRange range)
    {
        QTextCursor cursor(&document);
        cursor.setPosition(int(range.location));
        cursor.setPosition(int(range.end()), QTextCursor::KeepAnchor);
        return cursor;
    }
};

DocumentPieces::DocumentPieces(QTextDocument& document)
    : m_document(document)
    , m_access(new Access{QTextCursor(&document), 0, {}})
{}

DocumentPieces::~DocumentPieces() = default;

QString DocumentPieces::text(TextRange range) const
{
    return Access::cursor(m_document, range).selectedText();
}

QTextCharFormat DocumentPieces::formatAt(int position) const
{
    QTextCharFormat found;
    forEachFormat({position, 1},
                  [&](TextRange /*run*/, const QTextCharFormat& format) { found = format; });
    return found;
}

void DocumentPieces::forEachFormat(
    TextRange range, const std::function<void(TextRange, const QTextCharFormat&)>& visit) const
{
    const auto visitPart = [&](TextRange part, const QTextCharFormat& format) {
        const qsizetype first = std::max(part.location, range.location);
        const qsizetype last = std::min(part.end(), range.end());
        if (first < last)
            visit(TextRange::between(first, last), format);
    };
    for (QTextBlock block = m_document.findBlock(int(range.location));
         block.isValid() && block.position() < range.end(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            visitPart({fragment.position(), fragment.length()}, fragment.charFormat());
        }
        // A separator's format is that of the paragraph that it opens.
        if (const QTextBlock next = block.next(); next.isValid())
            visitPart({next.position() - 1, 1}, next.charFormat());
    }
}

DocumentPieces::Contents DocumentPieces::contents() const
{
    Contents contents;
    contents.buffer = m_document.toRawText();
    const auto numberOf = [&](const QTextFormat& format) {
        auto& formats = contents.formats;
        // Neighbours are often alike.
        const auto known = std::find(formats.rbegin(), formats.rend(), format);
        if (known != formats.rend())
            return int(formats.rend() - known) - 1;
        formats.push_back(format);
        return int(formats.size()) - 1;
    };
    const TextRange all{0, m_document.characterCount() - 1};
    forEachFormat(all, [&](TextRange run, const QTextCharFormat& format) {
        contents.pieces.push_back({int(run.location), int(run.length), numberOf(format)});
    });
    for (QTextBlock block = m_document.firstBlock(); block.isValid(); block = block.next())
        contents.paragraphs.push_back({block.length(), numberOf(block.blockFormat())});
    return contents;
}

void DocumentPieces::beginEdit()
{
    if (m_access->depth++ == 0)
        m_access->edits = QTextCursor(&m_document);
    m_access->edits.beginEditBlock();
}

void DocumentPieces::endEdit()
{
    --m_access->depth;
    m_access->edits.endEditBlock();
}

int DocumentPieces::numberOf(const QTextFormat& format)
{
    auto& formats = m_access->formats;
    const auto known = std::find(formats.begin(), formats.end(), format);
    if (known != formats.end())
        return int(known - formats.begin());
    formats.push_back(format);
    return int(formats.size()) - 1;
}

void DocumentPieces::insert(int position, const QString& text, int charFormat)
{
    QString insertion = text;
    insertion.replace(u'\r', QChar(QChar::LineSeparator)); // a cursor would begin a paragraph
    Access::cursor(m_document, {position, 0})
        .insertText(insertion, m_access->formats[std::size_t(charFormat)].toCharFormat());
}

void DocumentPieces::insertSeparator(int position, int blockFormat, int charFormat)
{
    Access::cursor(m_document, {position, 0})
        .insertBlock(m_access->formats[std::size_t(blockFormat)].toBlockFormat(),
                     m_access->formats[std::size_t(charFormat)].toCharFormat());
}

void DocumentPieces::remove(TextRange range)
{
    Access::cursor(m_document, range).removeSelectedText();
}

void DocumentPieces::setBlockFormat(const QTextBlock& block, const QTextBlockFormat& format)
{
    QTextCursor(block).setBlockFormat(format);
}

void DocumentPieces::setCharFormat(TextRange range, const QTextCharFormat& format)
{
    Access::cursor(m_document, range).setCharFormat(format);
}

} // namespace orvane
