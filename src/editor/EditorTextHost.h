// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/RichTextViewRepresentable.h"

#include <QWidget>

namespace orvane {

class EditGateway;
class EditorView;

/// Holds the text view of a pane and gives it what it is shown with.
class EditorTextHost final : public QWidget {
    Q_OBJECT
public:
    explicit EditorTextHost(QWidget* parent = nullptr);

    [[nodiscard]] EditorView& view() const { return *m_view; }
    [[nodiscard]] const RichTextViewRepresentable& parameters() const { return m_parent; }

    /// Takes over the inputs. The text stays as it is.
    void applyParent(const RichTextViewRepresentable& parent);
    /// Shows another text, from its top where the caret is seen there; null for none. Another text
    /// of the same note keeps the caret where it is in the view.
    void showText(EditGateway* text);

    /// Where the column begins when the host is `width` wide, in its own coordinates.
    [[nodiscard]] int columnLeft(int width) const;

signals:
    /// The caret is to leave the text upwards: Up was pressed in the first line.
    void leftAtTop();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool caretIsInFirstLine() const;

    EditorView* m_view;
    RichTextViewRepresentable m_parent;
    std::optional<QUuid> m_shownNote;
};

} // namespace orvane
