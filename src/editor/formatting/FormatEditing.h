// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/EditorFormatNotifications.h"
#include "editor/formatting/EditorParagraphStyleRole.h"
#include "editor/formatting/LetterCase.h"
#include "text/value/AttributedString.h"

namespace orvane {

class EditorView;

enum class FontTrait { bold, italic };

/// Changes the looks of the selected text of a view, or at a caret of what is typed next. Each call
/// is one step to undo, and does nothing where nothing would differ. Main thread.
class FormatEditing {
public:
    /// Both outlive it. The settings say how large headings and how strong highlights are.
    FormatEditing(EditorView& view, const UserDefaults& defaults);

    // Characters. A toggle takes away what all of the selection has; else it gives it to all.

    void toggleFontTrait(FontTrait trait);
    void toggleUnderline();
    void toggleStrikethrough();
    /// Raised or lowered and smaller; not `none`.
    void toggleBaselineShift(BaselineShift shift);
    /// Each run keeps its weight and slant. A family that this machine can't show changes no font.
    void applyRequestedFont(const std::optional<QString>& family,
                            const std::optional<double>& size);
    /// No colour for that of the page.
    void applyForeground(const std::optional<RgbaColor>& color);
    /// The colour is made fit to stand behind text first; none takes the highlight away.
    void applyHighlight(const std::optional<RgbaColor>& color);
    /// At a caret, the word there.
    void applyCase(LetterCase letterCase, const QLocale& language);

    // Paragraphs: all that the selection touches.

    void setAlignment(TextAlignment alignment);
    /// Gives the text the size of the role, bold for headings; family and slant stay.
    void applyParagraphRole(EditorParagraphStyleRole role);
    /// Return at the end of a heading: the paragraph that it begins is body text. False, and
    /// nothing done, anywhere else.
    bool beginBodyAfterHeading();
    void applyParagraphMetrics(const ParagraphMetrics& metrics);
    void applyParagraphBackground(const std::optional<RgbaColor>& color);

private:
    using CharacterChange = std::function<void(CharacterStyle&)>;

    void changeCharacters(const QString& name, TextRange range, const CharacterChange& change);
    void changeParagraphs(const QString& name, const std::function<void(ParagraphStyle&)>& change);
    /// Whether all of the selection, or what is typed next, is so.
    [[nodiscard]] bool allOf(const std::function<bool(const CharacterStyle&)>& isSo) const;
    /// What makes a character one of a paragraph of `role`.
    [[nodiscard]] CharacterChange taking(EditorParagraphStyleRole role) const;
    [[nodiscard]] bool isAtEndOfHeading() const;
    [[nodiscard]] TextRange selected() const;
    [[nodiscard]] TextFont fontOf(const CharacterStyle& style) const;

    EditorView& m_view;
    const UserDefaults& m_defaults;
};

} // namespace orvane
