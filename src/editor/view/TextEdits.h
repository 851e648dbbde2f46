// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

#include <QList>
#include <QString>

#include <optional>

namespace orvane {

class EditGateway;

/// Text that takes the place of a range.
struct TextReplacement {
    TextRange range;
    QString text;
    /// The position, before the edit, of the character whose style the new text takes; it stands
    /// behind the replacement before and not behind the next one. A link comes along only where
    /// text of that link is replaced. Absent for the style in which one would type, without a link.
    std::optional<qsizetype> styleFrom;

    bool operator==(const TextReplacement&) const = default;
};

/// One change of a text as a person undoes it, worked out beforehand and not yet made.
struct TextEdits {
    /// A new style for the paragraph that holds `position`, a position in the text as edited.
    struct Restyling {
        qsizetype position = 0;
        SharedParagraphStyle style;

        bool operator==(const Restyling&) const = default;
    };
    /// A new text colour for `range` of the text as edited; absent for the style in which one would
    /// type.
    struct Recoloring {
        TextRange range;
        std::optional<RgbaColor> color;

        bool operator==(const Recoloring&) const = default;
    };

    QString name;                        ///< what undo calls it
    QList<TextReplacement> replacements; ///< by rising range, in the text before, none overlapping
    QList<Restyling> restylings;
    QList<Recoloring> recolorings;
    TextRange selection; ///< in the text as edited

    bool operator==(const TextEdits&) const = default;

    /// Whether the text and its attributes stay as they are; the selection may still move.
    [[nodiscard]] bool leavesTextAlone() const
    {
        return replacements.isEmpty() && restylings.isEmpty() && recolorings.isEmpty();
    }
};

/// Where a position goes that stands exactly where text is inserted.
enum class InsertionSide { before, after };

/// Where `position` of the text before stands in the text as edited. A position within a replaced
/// range goes to its end.
[[nodiscard]] qsizetype positionAfter(const QList<TextReplacement>& replacements,
                                      qsizetype position, InsertionSide side);

/// Replaces `before`, which stands at `location`, by `after`, touching only the characters that
/// differ. Nothing is added where nothing differs.
void appendDifference(QList<TextReplacement>& replacements, qsizetype location, QStringView before,
                      QStringView after, std::optional<qsizetype> styleFrom);

/// Makes the change to a value.
void apply(const TextEdits& edits, AttributedString& text, const SharedCharacterStyle& typingStyle);
/// Makes the change as one step to undo; where it leaves the text alone, only selects. False, and
/// nothing done, if the gateway refuses it.
bool apply(const TextEdits& edits, EditGateway& gateway);

} // namespace orvane
