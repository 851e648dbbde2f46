// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/page/PageSheet.h"

#include <QWidget>

#include <optional>

namespace orvane {

/// What stands above the text: in page view it is the head of the sheet, which goes on below in the
/// text view.
class PageHead final : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// The sheet's left and width in pixels; nothing outside page view.
    void setSheet(const std::optional<PageSheetLook>& look, int left, int width);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<PageSheetLook> m_look;
    int m_left = 0;
    int m_width = 0;
};

} // namespace orvane
