// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/TextEdits.h"

namespace orvane {

qsizetype positionAfter(const QList<TextReplacement>& replacements, qsizetype position,
                        InsertionSide side)
{
    qsizetype shift = 0;
    for (const TextReplacement& replacement : replacements) {
        const TextRange range = replacement.range;
        if (position < range.location)
            break;
        if (position == range.location && (side == InsertionSide::before || !range.isEmpty()))
            break;
        if (position < range.end())
            return range.location + shift + replacement.text.size();
        shift += replacement.text.size() - range.length;
    }
    return position + shift;
}

void appendDifference(QList<TextReplacement>& replacements, qsizetype location, QStringView before,
                      QStringView after, std::optional<qsizetype> styleFrom)
{
    const qsizetype shorter = std::min(before.size(), after.size());
    qsizetype head = 0;
    while (head < shorter && before[head] == after[head])
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head &&
           before[before.size() - 1 - tail] == after[after.size() - 1 - tail])
        ++tail;
    const QStringView removed = before.sliced(head, before.size() - head - tail);
    const QStringView added = after.sliced(head, after.size() - head - tail);
    if (!removed.isEmpty() || !added.isEmpty())
        replacements.append({{location + head, removed.size()}, added.toString(), styleFrom});
}

SharedCharacterStyle withoutObject(const SharedCharacterStyle& style)
{
    if (style->link.isEmpty() && !style->hasAttachment() && style->chartBlockData.isEmpty())
        return style;
    CharacterStyle plain = *style;
    plain.link.clear();
    plain.attachment = {};
    plain.chartBlockData.clear();
    return plain;
}

void apply(const TextEdits& edits, AttributedString& text, const SharedCharacterStyle& typingStyle)
{
    for (auto it = edits.replacements.crbegin(); it != edits.replacements.crend(); ++it) {
        const SharedCharacterStyle style =
            it->styleFrom ? withoutObject(text.characterStyle(*it->styleFrom)) : typingStyle;
        text.replace(it->range, it->text, style);
    }
    for (const TextEdits::Restyling& restyling : edits.restylings)
        text.setParagraphStyle({restyling.position, 0}, restyling.style);
    for (const TextEdits::Recoloring& recoloring : edits.recolorings)
        text.setAttribute(&CharacterStyle::foreground,
                          recoloring.color ? recoloring.color : typingStyle->foreground,
                          recoloring.range);
}

} // namespace orvane
