// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/rtf/RtfPalette.h"
#include "text/value/AttributedString.h"
#include "text/value/TableWalk.h"

#include <QByteArray>
#include <QHash>

#include <optional>

namespace orvane {

/// Writes one document as RTF.
class RtfWriter {
public:
    explicit RtfWriter(const AttributedString& document)
        : m_document(document)
    {}

    [[nodiscard]] QByteArray write(const std::optional<RgbaColor>& pageBackground);

private:
    void writeParagraph(const TextParagraph& paragraph);
    void writeTable(const TableRows& table);
    void writeRow(const QList<TablePlace>& row, const QList<int>& edges);
    void writeCellContents(const QList<TextParagraph>& paragraphs);
    void writeText(TextRange range);
    void writeStyledText(QStringView text, const SharedCharacterStyle& style);
    void useStyle(const SharedCharacterStyle& style);
    void useLink(const QString& link);
    void writePicture(const CharacterStyle& style);

    void useParagraphStyle(const SharedParagraphStyle& style);
    [[nodiscard]] QByteArray characterWords(const CharacterStyle& style);
    [[nodiscard]] QByteArray paragraphWords(const ParagraphStyle& style);
    void appendCellDefinition(const TablePlace& place, int rightEdge);
    void appendPageBackground(QByteArray& rtf, const RgbaColor& color) const;

    const AttributedString& m_document;
    RtfPalette m_palette;
    QByteArray m_body;
    QHash<const void*, QByteArray> m_characterWords;
    QHash<const void*, QByteArray> m_paragraphWords;
    SharedCharacterStyle m_style;
    bool m_hasStyle = false;
    SharedParagraphStyle m_paragraphStyle;
    bool m_hasParagraphStyle = false;
    QString m_link;
};

} // namespace orvane
