// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QDoubleSpinBox>

namespace orvane {

/// How a stored number is shown and what may be entered.
struct NumberForm {
    double lowest = 0;
    double highest = 100;
    double step = 1;
    int decimals = 0;
    QString unit;        ///< behind the number, without a blank
    double scale = 1;    ///< shown = stored × scale
    bool above0 = false; ///< a stored value of 0 or less counts as not stored
};

/// A number with arrows. Shows no zeros behind the decimal point, tells `valueChanged` when an
/// entry is finished, and lets the wheel scroll the page unless it has the keyboard.
class NumberField : public QDoubleSpinBox {
    Q_OBJECT
public:
    explicit NumberField(const NumberForm& form, QWidget* parent = nullptr);

    [[nodiscard]] QString textFromValue(double value) const override;

protected:
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace orvane
