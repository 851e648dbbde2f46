// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/ParagraphStyle.h"

#include <QList>
#include <QRgb>
#include <QSharedData>

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
    picture,
    pageBackground,
    shapeName,
    shapeValue,
};

/// The character properties in force, by the document's own numbers.
struct RtfCharacterFormat {
    int font = -1; ///< -1 for the document's default font
    int halfPoints = 24;
    int foreground = 0; ///< colour table indices; 0 for none
    int background = 0;
    int link = -1;
    quint8 underline = 0; ///< a `TextLine`
    quint8 strikethrough = 0;
    bool bold = false;
    bool italic = false;
    bool hidden = false;

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
    int background = 0; ///< colour table index
    int listLevel = 0;
    bool inList = false;
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
