// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/rtf/RtfBuilder.h"
#include "text/rtf/RtfCodePages.h"
#include "text/rtf/RtfListCounter.h"
#include "text/rtf/RtfState.h"
#include "text/rtf/RtfTokenizer.h"
#include "text/value/ImportedText.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace orvane {

/// The number after a control word, or none.
struct RtfParameter {
    int value = 0;
    bool isGiven = false;

    [[nodiscard]] int valueOr(int fallback) const { return isGiven ? value : fallback; }
    /// For words such as `\b`, which a 0 turns off.
    [[nodiscard]] bool isOn() const { return !isGiven || value != 0; }
};

/// Carries out the tokens of an RTF document: keeps the state of groups, the tables of the header,
/// and what is being collected, and hands text to a builder. The control words themselves are small
/// functions on its public members, in tables by subject (`RtfWords.h`).
class RtfInterpreter {
public:
    RtfInterpreter(QByteArrayView rtf, std::function<QUuid()> newId);

    void run();
    [[nodiscard]] AttributedString finish();

    // For the control words.

    [[nodiscard]] RtfState& state() { return m_states.back(); }
    [[nodiscard]] RtfParagraphFormat& paragraph() { return *m_states.back().paragraph; }
    /// What stands beside the text and comes in behind it.
    enum class AsideKind {
        footnote, ///< numbered, at the end of the text
        comment,  ///< behind its paragraph, as is a text box
        textBox,
    };
    /// The group that has begun is read as an aside; within another it is skipped.
    void beginAside(AsideKind kind);
    /// Words in the place of something that can't be shown.
    void insertPlaceholder(const QString& words);

    void skipGroup() { state().destination = RtfDestination::skipped; }
    /// The text of the group is collected for `destination`.
    void collect(RtfDestination destination);
    /// Font names are collected without a group of their own.
    void forgetCollected() { m_collected.clear(); }

    void insertText(QStringView text);
    /// `\uN`: the character, after which fallback characters are skipped.
    void insertUnicode(int value);
    void endParagraph();
    /// The paragraph that comes, or has begun, begins a page.
    void beginPage(bool begins);
    /// Text goes on in the next column of the page, here on the next line.
    void breakColumn();
    /// A form feed in a paragraph of its own; a cell has no pages.
    void breakPage();
    void endCell();
    void endRow();
    [[nodiscard]] QRgb color(int index) const { return colors.value(index, 0); }

    struct Font {
        QString family;
        int charset = 1;  ///< 1 for the document's own
        int codePage = 0; ///< the same, as 0
    };
    struct Picture {
        QString kind;  ///< of a picture that can't be read, for a person
        int width = 0; ///< wanted size in twips, 0 for the image's own
        int height = 0;
        int scaleX = 100;
        int scaleY = 100;
        QByteArray data;
        int halfByte = -1;
    };

    QHash<int, Font> fonts;
    int fontInTable = 0;
    int defaultFont = 0;
    int documentCodePage = 1252;
    int defaultTab = 0; ///< in twips; 0 leaves it to the layout

    QList<QRgb> colors; ///< transparent stands for "automatic"
    QRgb pendingColor = 0;

    std::shared_ptr<const RtfRowDefinition> row = std::make_shared<const RtfRowDefinition>();
    /// The row definition for changing; a copy when rows already hold the present one.
    [[nodiscard]] RtfRowDefinition& editRow();
    RtfCellDefinition nextCell;
    int borderEdge = -1; ///< the `BoxEdge` that `\brdrw` and its like speak of

    Picture picture;
    QStringList placeholders; ///< of the shape that is being read
    RtfNumbering numbering;   ///< that is being defined
    RtfListCounter lists;
    std::optional<RgbaColor> pageBackground;
    ImportAccount account;

private:
    void openGroup();
    void closeGroup();
    void endDestination(RtfDestination closed);
    void apply(const RtfToken& token);
    void applyWord(const RtfToken& token);
    void applySymbol(char symbol);
    void insertBytes(QByteArrayView bytes);
    void flushBytes();
    void insertPictureDigits(QByteArrayView digits);

    void endField();
    void endListText();
    void endLevelText();
    void insertTarget(QStringView& text);
    void endNumbering();
    void endPicture();
    void endShapeValue();
    void endFontName(QStringView text);

    [[nodiscard]] std::optional<RgbaColor> colorOf(int index) const;
    [[nodiscard]] int currentFont() const;
    [[nodiscard]] int currentCodePage() const;
    [[nodiscard]] QString decoded(QByteArrayView bytes);
    [[nodiscard]] const SharedCharacterStyle& currentStyle();
    [[nodiscard]] ParagraphStyle currentParagraphStyle() const;
    /// The style of the paragraph, or line of a cell, that ends here; a list item gets its marker.
    [[nodiscard]] ParagraphStyle endingParagraphStyle();
    /// The look of the marker before the line that ends here.
    [[nodiscard]] CharacterStyle markerStyle(const RtfCharacterFormat& format);
    /// The marker of the paragraph that ends here where its numbering is of the `\pn` kind.
    [[nodiscard]] QString numberedMarker(const RtfParagraphFormat& format);

    /// What was being read when an aside began.
    struct Aside {
        AsideKind kind;
        std::size_t depth; // of its group
        QString name;      // of a footnote
        double textSize;   // of the text round it
        RtfBuilder outer;
        QString listMarker;
        bool isPageBreak;
        bool hasPageToBegin;
    };
    void endAside();
    void addMarked(const QString& label, const AttributedString& words);
    void insertMarked();
    void appendFootnotes(AttributedString& text) const;

    RtfTokenizer m_tokenizer;
    qsizetype m_inputSize;
    std::vector<RtfState> m_states;
    std::vector<RtfDestination> m_deepDestinations; // of the groups that share the last state
    bool m_isPageBreak = false;                     // the paragraph that has begun is one
    bool m_isIgnorable = false;                     // a \* stands before the next word
    int m_skip = 0;                                 // fallback characters still to be skipped

    CodePageDecoder m_decoder;
    QByteArray m_bytes;
    QString m_collected; // font name, field instruction, list text, numbering, shape property
    QString m_shapeName;
    QStringList m_links;
    qsizetype m_placeholderLength = 0; // at the beginning of the paragraph that has begun
    QString m_listMarker;
    bool m_hasListText = false; // the document says the marker itself, which may be none
    QString m_targetName;       // of the text that comes
    RtfCharacterFormat m_markerFormat;
    bool m_hasPageToBegin = false; // since the last paragraph ended
    QList<RtfNumbering> m_numberings;
    int m_lastNumbering = -1; // of the paragraph before
    int m_lastNumber = 0;

    RtfCharacterFormat m_styledFormat;
    SharedCharacterStyle m_style;
    StyleInterner<CharacterStyle> m_characterStyles;
    std::function<QUuid()> m_newId;
    RtfBuilder m_builder;

    std::unique_ptr<Aside> m_aside;
    QList<std::pair<QString, AttributedString>> m_footnotes; // names and words
    QList<AttributedString> m_marked; // comments and boxes that wait for their paragraph's end
    QString m_commentAuthor;
};

} // namespace orvane
