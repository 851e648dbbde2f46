// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/images/ImageControls.h"

namespace orvane {

class EditorView;

/// The controls of the selected image on a card beside it. The keyboard stays in the text until
/// somebody goes into it; Escape ends it. Main thread.
class ImagePopover final : public QWidget {
    Q_OBJECT
public:
    /// A child of the window that `view` is in.
    ImagePopover(Look& look, NotificationCenter& notifications, EditorView& view);

    void setInfo(const SelectedImageInfo& info, const std::optional<QUuid>& note);
    void focusCaption();
    /// Beside an image that stands in the view at `image`: behind it, before it, or over it where
    /// there is room nowhere. Out of sight while the image is.
    void placeBeside(const QRect& image);

signals:
    void dismissed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    Look& m_look;
    EditorView& m_view;
    ImageControls* m_controls;
};

} // namespace orvane
