// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/FactRows.h"

#include "appearance/Look.h"

#include <QGridLayout>
#include <QLabel>

namespace orvane {

void addFactGrid(QVBoxLayout& column, const QString& head, QGridLayout& grid)
{
    column.addWidget(makeLabel(head, TextStyle::SectionHead, LabelInk::Secondary));
    grid.setHorizontalSpacing(16);
    grid.setVerticalSpacing(6);
    grid.setColumnStretch(1, 1);
    column.addLayout(&grid);
}

QLabel* addFact(QGridLayout& grid, const QString& name)
{
    const int row = grid.rowCount();
    auto* value = makeLabel({}, TextStyle::Body);
    auto* label = makeLabel(name, TextStyle::Body, LabelInk::Secondary);
    label->setBuddy(value);
    grid.addWidget(label, row, 0);
    grid.addWidget(value, row, 1, Qt::AlignRight);
    return value;
}

} // namespace orvane
