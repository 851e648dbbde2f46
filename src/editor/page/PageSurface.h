// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/page/PageFit.h"
#include "editor/page/PageSheet.h"
#include "editor/view/EditorExtension.h"

#include <QObject>

#include <optional>

namespace orvane {

class EditorView;

/// The paper behind the text in page view. It begins above the title, reaches down to the end of
/// the text or of the view, and grows with the text. Main thread.
class PageSurface final : public QObject, public EditorExtension {
    Q_OBJECT
public:
    /// The view outlives it.
    explicit PageSurface(EditorView& view);
    ~PageSurface() override;

    /// Where the paper stands. It is seen while the view's look has one.
    void setFit(const PageFit& fit);

    void paintBehindText(QPainter& painter, const EditorPaint& paint) override;

private:
    [[nodiscard]] QRectF sheet() const;
    void followBottom();

    EditorView& m_view;
    PageFit m_fit;
    qreal m_shownBottom = 0; ///< of the sheet, in the viewport
    qreal m_shownEnd = 0;    ///< of the text, likewise
};

} // namespace orvane
