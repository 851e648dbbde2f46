// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/SpacingPopup.h"

#include "appearance/Look.h"
#include "editor/formatting/PointsField.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace orvane {

namespace {

constexpr double mostPoints = 200;

} // namespace

SpacingPopup::SpacingPopup(const EditorSelectionSnapshot& snapshot, Look& look, QWidget* parent)
    : BarPopup(tr("Spacing"), look, parent)
{
    column().addWidget(makeLabel(tr("Spacing"), TextStyle::SectionHead, LabelInk::Secondary, this));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(8);
    addField(*grid, tr("Between lines"), snapshot.lineSpacing, &ParagraphMetrics::lineSpacing);
    addField(*grid, tr("Before the paragraph"), snapshot.paragraphSpacingBefore,
             &ParagraphMetrics::paragraphSpacingBefore);
    addField(*grid, tr("After the paragraph"), snapshot.paragraphSpacingAfter,
             &ParagraphMetrics::paragraphSpacingAfter);
    column().addLayout(grid);
    auto* plain = new QPushButton(tr("No Extra Space"), this);
    plain->setAutoDefault(false);
    connect(plain, &QPushButton::clicked, this, [this] {
        for (QDoubleSpinBox* field : m_fields) {
            const QSignalBlocker quiet(field);
            field->setValue(0);
        }
        ParagraphMetrics none;
        none.lineSpacing = none.paragraphSpacingBefore = none.paragraphSpacingAfter = 0;
        emit changed(none);
    });
    auto* background = new QPushButton(tr("Background…"), this);
    background->setAutoDefault(false);
    connect(background, &QPushButton::clicked, this, [this] {
        close();
        emit backgroundRequested();
    });
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(plain, 1);
    buttons->addWidget(background, 1);
    column().addLayout(buttons);
    m_fields.first()->setFocus(Qt::PopupFocusReason);
    m_fields.first()->selectAll();
}

void SpacingPopup::addField(QGridLayout& grid, const QString& name, double value,
                            std::optional<double> ParagraphMetrics::*metric)
{
    auto* field = new PointsField(0, mostPoints, this);
    field->setAccessibleName(name);
    field->setSuffix(tr(" pt"));
    field->setFixedSize(104, 28);
    // What is there may be outside of what can be entered; it stays until something is.
    field->setValue(value);
    const int row = grid.rowCount();
    QLabel* label = makeLabel(name, TextStyle::Body, LabelInk::Primary, this);
    label->setBuddy(field);
    grid.addWidget(label, row, 0);
    grid.addWidget(field, row, 1);
    connect(field, &QDoubleSpinBox::valueChanged, this, [this, metric](double points) {
        ParagraphMetrics metrics;
        metrics.*metric = points;
        emit changed(metrics);
    });
    m_fields.append(field);
}

} // namespace orvane
