// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/NumberField.h"

#include <QWheelEvent>

namespace orvane {

NumberField::NumberField(const NumberForm& form, QWidget* parent)
    : QDoubleSpinBox(parent)
{
    setDecimals(form.decimals);
    setRange(form.lowest, form.highest);
    setSingleStep(form.step);
    if (!form.unit.isEmpty())
        setSuffix(u' ' + form.unit);
    setKeyboardTracking(false);
    setFocusPolicy(Qt::StrongFocus);
    setFrame(true);
}

QString NumberField::textFromValue(double value) const
{
    QLocale numbers = locale();
    numbers.setNumberOptions(QLocale::OmitGroupSeparator);
    for (int digits = 0; digits < decimals(); ++digits) {
        const QString text = numbers.toString(value, 'f', digits);
        if (numbers.toDouble(text) == value)
            return text;
    }
    return numbers.toString(value, 'f', decimals());
}

void NumberField::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QDoubleSpinBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace orvane
