// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/html/HtmlTable.h"
#include "text/value/AttributedString.h"
#include "text/value/StyleInterner.h"

#include <memory>
#include <optional>

namespace orvane {

/// Makes paragraphs of an HTML document's text: collapses white space, parts blocks, and puts lines
/// that stand in a table into its cells.
class HtmlParagraphs {
public:
    explicit HtmlParagraphs(qsizetype inputSize)
        : m_styles(4'000'000 + 40 * inputSize)
        , m_looks(1'000'000 + 8 * inputSize)
    {}

    [[nodiscard]] SharedParagraphStyle shared(const ParagraphStyle& style)
    {
        return m_styles.intern(style, {});
    }

    /// Text whose white space counts as one blank, and as none at the edges of a block.
    void collapsedText(QStringView text, const SharedCharacterStyle& style,
                       const SharedParagraphStyle& paragraph);
    /// Text taken as it is; a newline in it ends the paragraph.
    void preservedText(QStringView text, const SharedCharacterStyle& style,
                       const SharedParagraphStyle& paragraph);
    void object(const SharedCharacterStyle& style, const SharedParagraphStyle& paragraph);
    void lineBreak(const SharedCharacterStyle& style, const SharedParagraphStyle& paragraph);
    /// A page break, as a form feed in a paragraph of its own; ignored in tables.
    void pageBreak(const SharedCharacterStyle& style, const SharedParagraphStyle& paragraph);
    /// The block so far is a paragraph, if there is anything in it.
    void endBlock();

    /// A list item begins, whose marker is put before the next text, in `color` and else like it;
    /// an empty one shows nothing.
    void beginItem(const QString& marker, int level, const std::optional<RgbaColor>& color);
    /// Puts another marker in the place of the one of the item that has just begun; false where
    /// none has, or where it has text.
    bool replaceMarker(const QString& marker);
    void endItem() { m_itemLevel.reset(); }
    /// Text in the place of something that can't be shown, which stands apart from words beside it.
    void alternativeText(const QString& text, const SharedCharacterStyle& style,
                         const SharedParagraphStyle& paragraph);
    /// Whether nothing has come yet.
    [[nodiscard]] bool isEmpty() const { return m_text.isEmpty() && m_pending.isEmpty(); }

    void beginTable(const HtmlToken& token, const QUuid& id);
    [[nodiscard]] HtmlTable* table() { return m_table.get(); }
    void endTable();

    [[nodiscard]] AttributedString finish();

private:
    void append(QStringView text, const SharedCharacterStyle& style,
                const SharedParagraphStyle& paragraph);
    [[nodiscard]] bool isAtLineStart() const;
    void emitParagraph();

    AttributedString m_text;
    AttributedString m_pending; // the block that has begun
    SharedParagraphStyle m_pendingStyle;
    bool m_hasBlank = false; // white space that counts if text follows
    SharedCharacterStyle m_blankStyle;
    QString m_marker; // of the item that has begun
    std::optional<RgbaColor> m_markerColor;
    std::optional<int> m_itemLevel; // of an item that has no text yet
    bool m_isBehindAlternative = false;
    std::unique_ptr<HtmlTable> m_table;
    StyleInterner<ParagraphStyle> m_styles;
    StyleInterner<CellLook> m_looks;
};

} // namespace orvane
