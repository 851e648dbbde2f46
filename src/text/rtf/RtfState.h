// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/CharacterStyle.h"
#include "text/value/ParagraphStyle.h"

#include <QList>
#include <QRgb>
#include <QSharedData>

#include <optional>

namespace orvane {

/// Lengths of RTF are twips: twenty to a point.
inline constexpr double twipsPerPoint = 20;

/// Where the text of a group goes.
enum class RtfDestination : quint8 {
    body,
    skipped,
    replaced, ///< text for readers that know less
    fontTable,
    colorTable,
    fieldInstruction,
    listText,
    listTable,
    listOverrideTable,
    levelText,       ///< of a level of a list that is being defined
    numbering,       ///< `\pn`, numbering of the days before list tables
    numberingBefore, ///< what stands before and behind its numbers
    numberingAfter,
    picture,
    commentAuthor,
    targetName, ///< of the place that follows
    shape,      ///< a drawing's description; text stands in groups of their own within it
    pageBackground,
    shapeName,
    shapeValue,
};

/// Stands for no colour. Entry 0 of a colour table is "automatic", or what a writer puts there.
inline constexpr int noColorIndex = -1;

/// The character properties in force, by the document's own numbers.
struct RtfCharacterFormat {
    int font = -1; ///< -1 for the document's default font
    int halfPoints = 24;
    int foreground = noColorIndex; ///< colour table indices
    int background = noColorIndex;
    int link = -1;
    quint8 underline = 0; ///< a `TextLine`
    quint8 strikethrough = 0;
    BaselineShift baselineShift = BaselineShift::none;
    bool bold = false;
    bool italic = false;
    bool hidden = false;
    bool deleted = false;
    bool rightToLeft = false; ///< the run's own, as `\rtlch` says

    /// What right-to-left runs have in the place of font, size, bold and italic, where it is given.
    int rightToLeftFont = -1;
    int rightToLeftHalfPoints = 0;
    std::optional<bool> rightToLeftBold;
    std::optional<bool> rightToLeftItalic;
    bool associatesOtherScripts = false; ///< the `\af` that follow speak of East Asian text

    [[nodiscard]] bool isShown() const { return !hidden && !deleted; }

    bool operator==(const RtfCharacterFormat&) const = default;
};

/// The paragraph properties in force, in twips.
struct RtfParagraphFormat : QSharedData {
    TextAlignment alignment = TextAlignment::natural;
    WritingDirection direction = WritingDirection::natural;
    int firstIndent = 0; ///< of the first line, added to the left indent
    int leftIndent = 0;
    int rightIndent = 0;
    int spaceBefore = 0;
    int spaceAfter = 0;
    int lineSpacing = 0;
    bool lineSpacingIsMultiple = false;
    bool hyphenates = false;
    bool keepsTogether = false;
    bool keepsWithNext = false;
    bool beginsPage = false;
    bool controlsWidows = false;
    bool inTable = false;
    int background = noColorIndex;
    int borders = 0;    ///< 1 left, 2 top, 4 right, 8 bottom
    int numbering = -1; ///< of the `\pn` kind
    int listLevel = 0;
    int list = 0; ///< by the override that it names; 0 for none
    TabAlignment nextTab = TabAlignment::left;
    QList<TextTab> tabs;
};

/// What `{` saves and `}` brings back.
struct RtfState {
    RtfDestination destination = RtfDestination::body;
    RtfCharacterFormat characters;
    QSharedDataPointer<RtfParagraphFormat> paragraph{new RtfParagraphFormat};
    int unicodeSkip = 1; ///< how many fallback characters follow each \u
    bool isField = false;
};

/// Numbers or bullets that a paragraph says it has itself, without a list table.
struct RtfNumbering {
    bool isBullet = false;
    bool isUnmarked = false; ///< goes on with the item before
    ListMarker kind = ListMarker::decimal;
    int start = 1;
    int level = 0;
    QString before;
    QString after;

    bool operator==(const RtfNumbering&) const = default;
};

/// A cell of a row definition. Its left edge is the right edge of the one before.
struct RtfCellDefinition {
    int right = 0;
    bool mergesLeft = false;
    bool mergesUp = false;
    QRgb background = 0; ///< transparent for none
    PerEdge<quint16> borderWidth{};
    PerEdge<QRgb> borderColor{};
    PerEdge<qint16> padding{-1, -1, -1, -1}; ///< -1 takes the row's
};

/// What `\trowd` begins: the shape of the table row whose cells follow or went before.
struct RtfRowDefinition {
    int left = 0;
    PerEdge<qint16> padding{};
    QList<RtfCellDefinition> cells;
};

} // namespace orvane
