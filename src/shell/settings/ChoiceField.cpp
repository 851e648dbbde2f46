// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/ChoiceField.h"

#include <QWheelEvent>

namespace orvane {

ChoiceField::ChoiceField(const QList<Choice>& choices, QWidget* parent)
    : QComboBox(parent)
{
    for (const auto& [stored, label] : choices)
        addItem(label, stored);
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
}

void ChoiceField::showStored(const QString& stored)
{
    int index = findData(stored);
    if (index < 0) {
        insertItem(0, stored, stored);
        index = 0;
    }
    setCurrentIndex(index);
}

void ChoiceField::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace orvane
