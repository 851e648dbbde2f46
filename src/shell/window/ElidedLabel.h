// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QLabel>

namespace orvane {

/// A label of one line that ends in "…" where there is no room for all of it; the whole text is
/// in its tool tip then.
class ElidedLabel : public QLabel {
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};

} // namespace orvane
