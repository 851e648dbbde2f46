// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/RgbaColor.h"
#include "text/value/SharedValue.h"
#include "text/value/TextAttachment.h"
#include "text/value/TextFont.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace orvane {

/// The line under or through text.
enum class TextLine { none, single, thick, doubled, dotted, dashed, wavy };

/// Where text stands against its line; shifted text is smaller.
enum class BaselineShift { none, superscript, subscript };

/// The attributes of a run of characters. What is absent is left to whoever shows the text: the
/// editor's base font and text colour, no highlight, no link.
struct CharacterStyle {
    std::optional<TextFont> font;
    std::optional<RgbaColor> foreground;
    std::optional<RgbaColor> background; ///< highlight
    TextLine underline = TextLine::none;
    TextLine strikethrough = TextLine::none;
    BaselineShift baselineShift = BaselineShift::none;
    QString link; ///< the target's address; empty for none
    /// The name by which links lead to this place (`LinkTargets.h`); empty for none.
    QString targetName;
    TextAttachment attachment;
    QByteArray chartBlockData; ///< the JSON of an `OWChartBlock`, on a chart's character
    /// The size that an auto-tagged word had before it was enlarged, in points.
    std::optional<double> autoTagBaseFontSize;

    bool operator==(const CharacterStyle&) const = default;

    [[nodiscard]] const OrvaneNoteImageAttachment* imageAttachment() const
    {
        return attachment.image();
    }
    [[nodiscard]] const OWChartAttachment* chartAttachment() const { return attachment.chart(); }
    [[nodiscard]] bool hasAttachment() const { return !attachment.isNull(); }
};

/// Equal styles hash equal. An attachment counts by its identity only.
[[nodiscard]] std::size_t qHash(const CharacterStyle& style, std::size_t seed = 0) noexcept;

using SharedCharacterStyle = SharedValue<CharacterStyle>;

/// The character that an attachment stands on.
inline constexpr char16_t objectCharacter = u'\uFFFC';
/// Breaks a line within a paragraph.
inline constexpr char16_t lineSeparator = u'\u2028';

} // namespace orvane
