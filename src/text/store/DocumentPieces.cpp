// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The fast way, by the toolkit's private headers; docs/dependencies.md says of which versions.
#include "text/store/DocumentPieces.h"

#include <QTextDocument>

#include <algorithm>
#include <private/qtextdocument_p.h>
#include <private/qtextformat_p.h>

namespace orvane {

struct DocumentPieces::Access {
    QTextDocumentPrivate& pieces;
};

DocumentPieces::DocumentPieces(QTextDocument& document)
    : m_document(document)
    , m_access(new Access{*QTextDocumentPrivate::get(&document)})
{}

DocumentPieces::~DocumentPieces() = default;

QString DocumentPieces::text(TextRange range) const
{
    QString result;
    result.reserve(range.length);
    const auto& pieces = m_access->pieces;
    const QString buffer = pieces.buffer();
    auto piece = pieces.find(int(range.location));
    while (result.size() < range.length) {
        const int from = int(range.location + result.size()) - piece.position();
        const auto length =
            std::min<qsizetype>(int(piece.size()) - from, range.length - result.size());
        result.append(QStringView(buffer).mid(piece->stringPosition + from, length));
        ++piece;
    }
    return result;
}

QTextCharFormat DocumentPieces::formatAt(int position) const
{
    const auto& pieces = m_access->pieces;
    return pieces.formatCollection()->charFormat(pieces.find(position)->format);
}

void DocumentPieces::forEachFormat(
    TextRange range, const std::function<void(TextRange, const QTextCharFormat&)>& visit) const
{
    const auto& pieces = m_access->pieces;
    qsizetype position = range.location;
    for (auto piece = pieces.find(int(position)); position < range.end();) {
        const int format = piece->format;
        qsizetype end = position;
        for (; end < range.end() && piece->format == format; ++piece)
            end = std::min<qsizetype>(piece.position() + int(piece.size()), range.end());
        visit(TextRange::between(position, end), pieces.formatCollection()->charFormat(format));
        position = end;
    }
}

DocumentPieces::Contents DocumentPieces::contents() const
{
    Contents contents;
    const auto& pieces = m_access->pieces;
    const auto& formats = *pieces.formatCollection();
    contents.buffer = pieces.buffer();
    contents.formats.reserve(std::size_t(formats.numFormats()));
    for (int i = 0; i < formats.numFormats(); ++i)
        contents.formats.push_back(formats.format(i));
    contents.pieces.reserve(std::size_t(pieces.fragmentMap().numNodes()));
    for (auto piece = pieces.begin(); piece != pieces.end(); ++piece)
        contents.pieces.push_back({piece->stringPosition, int(piece.size()), piece->format});
    const auto& blocks = pieces.blockMap();
    contents.paragraphs.reserve(std::size_t(blocks.numNodes()));
    for (auto block = blocks.begin(); block != blocks.end(); ++block)
        contents.paragraphs.push_back({int(block.size()), block->format});
    return contents;
}

void DocumentPieces::beginEdit()
{
    m_access->pieces.beginEditBlock();
}

void DocumentPieces::endEdit()
{
    m_access->pieces.endEditBlock();
}

int DocumentPieces::numberOf(const QTextFormat& format)
{
    return m_access->pieces.formatCollection()->indexForFormat(format);
}

void DocumentPieces::insert(int position, const QString& text, int charFormat)
{
    m_access->pieces.insert(position, text, charFormat);
}

void DocumentPieces::insertSeparator(int position, int blockFormat, int charFormat)
{
    m_access->pieces.insertBlock(position, blockFormat, charFormat);
}

void DocumentPieces::remove(TextRange range)
{
    m_access->pieces.remove(int(range.location), int(range.length));
}

void DocumentPieces::setBlockFormat(const QTextBlock& block, const QTextBlockFormat& format)
{
    m_access->pieces.setBlockFormat(block, block, format);
}

void DocumentPieces::setCharFormat(TextRange range, const QTextCharFormat& format)
{
    m_access->pieces.setCharFormat(int(range.location), int(range.length), format);
}

} // namespace orvane
