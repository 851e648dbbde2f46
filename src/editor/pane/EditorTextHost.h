// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/RichTextViewRepresentable.h"

#include <QWidget>

namespace orvane {

class EditGateway;
class EditorView;
class PageSurface;
struct PageFit;

/// The column of text across a host, in pixels from its left, and the sheet that it stands on; as
/// wide as the column, and without a margin, where there is none.
struct TextColumn {
    int left = 0;
    int width = 0;
    int sheetLeft = 0;
    int sheetWidth = 0;
    int topMargin = 0; ///< from the sheet's upper edge to the text
};

/// Holds the text view of a pane and gives it what it is shown with.
class EditorTextHost final : public QWidget {
    Q_OBJECT
public:
    explicit EditorTextHost(QWidget* parent = nullptr);
    ~EditorTextHost() override;

    [[nodiscard]] EditorView& view() const { return *m_view; }
    [[nodiscard]] const RichTextViewRepresentable& parameters() const { return m_parent; }

    /// Takes over the inputs. The text stays as it is.
    void applyParent(const RichTextViewRepresentable& parent);
    /// Shows another text, from its top where the caret is seen there; null for none. Another text
    /// of the same note keeps the caret where it is in the view.
    void showText(EditGateway* text);

    /// Where the column stands when the host is `width` wide.
    [[nodiscard]] TextColumn columnIn(int width) const;

signals:
    /// The caret is to leave the text upwards: Up was pressed in the first line.
    void leftAtTop();
    /// The column, the zoom or the colours may be others now.
    void textPlaced();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] PageFit pageFit(int width) const;
    void placeText();
    [[nodiscard]] bool caretIsInFirstLine() const;

    EditorView* m_view;
    std::unique_ptr<PageSurface> m_surface;
    RichTextViewRepresentable m_parent;
    std::optional<QUuid> m_shownNote;
};

} // namespace orvane
