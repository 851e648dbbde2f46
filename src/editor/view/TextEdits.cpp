// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/TextEdits.h"

#include "text/store/EditGateway.h"
#include "text/store/Graphemes.h"
#include "text/store/TextStore.h"

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
    head = std::min(graphemeStart(before, head), graphemeStart(after, head));
    qsizetype tail = 0;
    while (tail < shorter - head &&
           before[before.size() - 1 - tail] == after[after.size() - 1 - tail])
        ++tail;
    tail = std::min(before.size() - graphemeEnd(before, before.size() - tail),
                    after.size() - graphemeEnd(after, after.size() - tail));
    const QStringView removed = before.sliced(head, before.size() - head - tail);
    const QStringView added = after.sliced(head, after.size() - head - tail);
    if (!removed.isEmpty() || !added.isEmpty())
        replacements.append({{location + head, removed.size()}, added.toString(), styleFrom});
}

namespace {

/// The style of new text, without what belongs to one place.
SharedCharacterStyle newTextStyle(const SharedCharacterStyle& style, bool keepsLink)
{
    const bool hasLink = !keepsLink && !style->link.isEmpty();
    if (!hasLink && !style->hasAttachment() && style->chartBlockData.isEmpty())
        return style;
    CharacterStyle plain = *style;
    if (hasLink)
        plain.link.clear();
    plain.attachment = {};
    plain.chartBlockData.clear();
    return plain;
}

/// `Target` is a text with the functions of `AttributedString` that are called here.
template <typename Target, typename StyleAt>
void applyTo(Target& target, const TextEdits& edits, const SharedCharacterStyle& typingStyle,
             StyleAt&& styleAt)
{
    qsizetype shift = 0;
    for (const TextReplacement& replacement : edits.replacements) {
        const TextRange range{replacement.range.location + shift, replacement.range.length};
        SharedCharacterStyle style = newTextStyle(typingStyle, false);
        if (replacement.styleFrom) {
            const SharedCharacterStyle source = styleAt(*replacement.styleFrom + shift);
            style = newTextStyle(source,
                                 !range.isEmpty() && styleAt(range.location)->link == source->link);
        }
        target.replace(range, replacement.text, style);
        shift += replacement.text.size() - range.length;
    }
    for (const TextEdits::Restyling& restyling : edits.restylings)
        target.setParagraphStyle({restyling.position, 0}, restyling.style);
    for (const TextEdits::Recoloring& recoloring : edits.recolorings) {
        const auto color = recoloring.color ? recoloring.color : typingStyle->foreground;
        target.modifyCharacterStyles(recoloring.range,
                                     [&](CharacterStyle& style) { style.foreground = color; });
    }
}

} // namespace

void apply(const TextEdits& edits, AttributedString& text, const SharedCharacterStyle& typingStyle)
{
    applyTo(text, edits, typingStyle,
            [&](qsizetype position) { return text.characterStyle(position); });
}

bool apply(const TextEdits& edits, EditGateway& gateway)
{
    TextSelection selection = TextSelection::of(edits.selection);
    if (gateway.selection().position < gateway.selection().anchor)
        std::swap(selection.anchor, selection.position);
    if (edits.leavesTextAlone()) {
        gateway.setSelection(selection);
        return true;
    }
    const TextReplacement first = edits.replacements.isEmpty()
                                      ? TextReplacement{edits.selection, {}, {}}
                                      : edits.replacements.first();
    if (!gateway.shouldChangeText(first.range, first.text))
        return false;
    // Replacements and restylings differ from what is there; colours alone may not.
    const bool isKnown = !edits.replacements.isEmpty() || !edits.restylings.isEmpty();
    gateway.performUndoableDocumentEdit(
        edits.name,
        [&](DocumentEditor& editor) {
            applyTo(editor, edits, gateway.typingStyle(),
                    [&](qsizetype position) { return editor.store().characterStyle(position); });
            editor.setSelection(selection);
        },
        isKnown ? EditEffect::changesText : EditEffect::unknown);
    return true;
}

} // namespace orvane
