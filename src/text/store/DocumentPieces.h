// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextRange.h"

#include <QTextBlock>
#include <QTextFormat>

#include <functional>
#include <memory>
#include <vector>

class QTextDocument;

namespace orvane {

/// The text of a document as the document itself keeps it: in pieces of one format each, in a
/// buffer that only grows.
///
/// This is the one place that knows the toolkit's private headers. The document's public interface
/// reads a position in several logarithmic steps, walks a paragraph from its start, and edits
/// through a cursor, which costs a multiple on a long text; with ORVANE_PRIVATE_QT off everything
/// is done through it all the same, with the same results but for a carriage return, which becomes
/// a line separator.
///
/// Positions count paragraph separators, which are `QChar::ParagraphSeparator` in what is read; the
/// one that closes the document is never part of a range.
class DocumentPieces {
public:
    explicit DocumentPieces(QTextDocument& document);
    ~DocumentPieces();
    Q_DISABLE_COPY_MOVE(DocumentPieces)

    // Reading. Costs the same in a paragraph of any length.

    [[nodiscard]] QString text(TextRange range) const;
    [[nodiscard]] QTextCharFormat formatAt(int position) const;
    /// Calls `visit` for the runs of one format in `range` in turn; however often the text was
    /// edited, neighbours in one paragraph differ.
    void forEachFormat(TextRange range,
                       const std::function<void(TextRange, const QTextCharFormat&)>& visit) const;

    /// All of it, sharing the document's own buffer.
    struct Contents {
        struct Piece {
            int bufferPosition;
            int length;
            int format; ///< an index into `formats`
        };
        struct Paragraph {
            int length; ///< with its separator
            int format;
        };
        QString buffer;
        std::vector<Piece> pieces;
        std::vector<Paragraph> paragraphs;
        std::vector<QTextFormat> formats;
    };
    [[nodiscard]] Contents contents() const;

    // Changing. What happens between `beginEdit` and `endEdit`, which may be nested, is one step of
    // the document's undo stack and one change to those who follow it.

    void beginEdit();
    void endEdit();
    /// A number for a format, with which it is inserted at less cost; for good.
    [[nodiscard]] int numberOf(const QTextFormat& format);
    /// `text` has no paragraph separators.
    void insert(int position, const QString& text, int charFormat);
    void insertSeparator(int position, int blockFormat, int charFormat);
    void remove(TextRange range);
    void setBlockFormat(const QTextBlock& block, const QTextBlockFormat& format);
    void setCharFormat(TextRange range, const QTextCharFormat& format);

private:
    struct Access;
    QTextDocument& m_document;
    std::unique_ptr<Access> m_access;
};

} // namespace orvane
