// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QDoubleSpinBox>

namespace orvane {

/// A length in points that shows no zeros behind the decimal point. What is typed counts when it is
/// done.
class PointsField final : public QDoubleSpinBox {
public:
    PointsField(double least, double most, QWidget* parent)
        : QDoubleSpinBox(parent)
    {
        setRange(least, most);
        setDecimals(1);
        setKeyboardTracking(false);
    }
    [[nodiscard]] QString textFromValue(double value) const override
    {
        QString text = QDoubleSpinBox::textFromValue(value);
        if (text.endsWith(locale().decimalPoint() + u'0'))
            text.chop(2);
        return text;
    }
};

} // namespace orvane
