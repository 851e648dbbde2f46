// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/lists/ListContinuationHelper.h"
#include "editor/view/EditorExtension.h"

namespace orvane {

class CustomBulletLibrary;
class EditGateway;
class EditorView;

/// Lists in a text view: Return, Tab, Back-tab, Backspace and Delete on items, a click on a box,
/// and what toolbars and menus ask for. Everything is one step to undo.
class ListEditing final : public EditorExtension {
public:
    /// Adds itself to `view`; both arguments outlive it.
    ListEditing(EditorView& view, const CustomBulletLibrary& library);
    ~ListEditing() override;
    Q_DISABLE_COPY_MOVE(ListEditing)

    /// Rich at first. Texts without styles take the plain form.
    void setForm(ListForm form) { m_form = form; }

    void toggleList(EditorListStyle style);
    void toggleCustomBullet(const QString& character, const std::optional<RgbaColor>& color);
    void removeAnyCustomBullet();

    /// The item in the line that holds `position`, or nothing. Reads only its paragraph, unless it
    /// takes the items above to tell what it is.
    [[nodiscard]] std::optional<ListContinuationHelper::Context>
    listContext(qsizetype position) const;

    bool command(EditAction command) override;
    bool mousePressed(const EditorMouse& mouse) override;
    std::optional<Qt::CursorShape> cursorAt(QPointF page) override;

private:
    [[nodiscard]] ListText wholeText() const;
    [[nodiscard]] ListText textOf(TextRange range) const;
    [[nodiscard]] ListText paragraphAt(qsizetype position, qsizetype& start) const;
    [[nodiscard]] TextRange runAbove(TextRange paragraph) const;
    bool deleteBackward(qsizetype caret);
    bool deleteForward(qsizetype caret);
    bool joinLines(TextRange gap, const SharedParagraphStyle& style);
    [[nodiscard]] std::optional<qsizetype> boxAt(QPointF page) const;
    bool apply(const std::optional<TextEdits>& edits);

    EditorView& m_view;
    const CustomBulletLibrary& m_library;
    ListForm m_form = ListForm::rich;
};

} // namespace orvane
