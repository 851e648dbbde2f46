// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/EditorExtension.h"
#include "text/value/AttributedString.h"

namespace orvane {

class EditorView;

/// Makes text from elsewhere look as if typed here, in the style `typing`, whose font is `base`
/// where it names none: what was bold or italic stays so, while family, size and colour are those
/// of the place, and highlights go. Links, lines under and through text, attachments and paragraph
/// styles stay.
[[nodiscard]] AttributedString
cleanWebFormatting(AttributedString text, const CharacterStyle& typing, const TextFont& base);

/// Cleans what is pasted into a rich text: RTF, else HTML, else plain text. Text that was copied in
/// this program keeps its looks. Off until told otherwise.
class SmartPaste final : public EditorExtension {
public:
    /// Adds itself to `view`, which outlives it.
    explicit SmartPaste(EditorView& view);
    ~SmartPaste() override;

    void setEnabled(bool enabled) { m_isEnabled = enabled; }

    bool paste(const QMimeData& data) override;

private:
    EditorView& m_view;
    bool m_isEnabled = false;
};

} // namespace orvane
