// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>
#include <QWidget>

namespace orvane {

/// What a row of the settings says at its left.
struct RowText {
    QString title;
    QString hint; ///< what it means, in a second line; may be empty
};

/// A setting as a row: its title and what it means at the left, its control at the right, a line
/// below. Names the control for screen readers. A press beside a check box is a press on it.
class SettingRow : public QWidget {
    Q_OBJECT
public:
    /// The width of every control that takes a value.
    static constexpr int fieldWidth = 220;

    SettingRow(const RowText& text, QWidget* control, QWidget* parent = nullptr);

    [[nodiscard]] QWidget* control() const { return m_control; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QWidget* m_control;
};

} // namespace orvane
