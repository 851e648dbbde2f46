// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QCheckBox>

namespace orvane {

class Look;

/// A check box drawn as a switch, for a setting that acts at once. It shows no text of its own;
/// the row that it stands in names it.
class Switch : public QCheckBox {
    Q_OBJECT
public:
    explicit Switch(const Look& look, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override;

private:
    const Look& m_look;
};

} // namespace orvane
