// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/rtf/RtfListTable.h"
#include "text/rtf/RtfPalette.h"
#include "text/value/AttributedString.h"
#include "text/value/HeadingSizes.h"
#include "text/value/LinkTargets.h"
#include "text/value/TableWalk.h"

#include <QByteArray>
#include <QHash>
#include <QSet>

#include <optional>

namespace orvane {

/// Writes one document as RTF.
class RtfWriter {
public:
    RtfWriter(const AttributedString& document, const HeadingSizes& headings);

    [[nodiscard]] QByteArray write(const std::optional<RgbaColor>& pageBackground);

private:
    void writeParagraph(const TextParagraph& paragraph);
    [[nodiscard]] bool breaksPageBeforeNext(TextRange paragraph) const;
    void writeMarker(const RtfListTable::Item& item);
    void writeTable(const TableRows& table);
    void writeRow(const QList<TablePlace>& row, const QList<int>& edges, bool isMirrored);
    void writeCellContents(const QList<TextParagraph>& paragraphs);
    void writeCellLines(const TextParagraph& paragraph);
    void writeText(TextRange range);
    void writeTarget(QByteArrayView word, const QString& name);
    void writeFootnote(const Footnote& note);
    void writeStyledText(QStringView text, const SharedCharacterStyle& style);
    void useStyle(const SharedCharacterStyle& style);
    void useLink(const QString& link);
    void writePicture(const CharacterStyle& style);

    /// What a paragraph is beside its style.
    struct Role {
        int heading = 0; ///< its level, 0 for none
        int list = 0;    ///< the number of its list, 0 for none
        int level = 0;
        bool beginsPage = false;

        bool operator==(const Role&) const = default;
    };
    void useParagraphStyle(const SharedParagraphStyle& style) { useParagraphStyle(style, {}); }
    void useParagraphStyle(const SharedParagraphStyle& style, const Role& role);
    void appendStyleSheet(QByteArray& rtf) const;
    [[nodiscard]] QByteArray characterWords(const CharacterStyle& style);
    [[nodiscard]] QByteArray paragraphWords(const ParagraphStyle& style);
    void appendCellDefinition(const TablePlace& place, int rightEdge);
    void appendPageBackground(QByteArray& rtf, const RgbaColor& color) const;

    const AttributedString& m_document;
    HeadingSizes m_headings;
    RtfListTable m_lists;
    QHash<qsizetype, Footnote> m_footnotes; // by the place of their references
    QSet<qsizetype> m_footnoteParagraphs;
    bool m_hasHeadings = false;
    bool m_beginsPage = false; // the paragraph that comes
    RtfPalette m_palette;
    QByteArray m_body;
    QHash<const void*, QByteArray> m_characterWords;
    QHash<const void*, QByteArray> m_paragraphWords;
    SharedCharacterStyle m_style;
    bool m_hasStyle = false;
    SharedParagraphStyle m_paragraphStyle;
    Role m_role;
    bool m_hasParagraphStyle = false;
    QString m_link;
};

} // namespace orvane
