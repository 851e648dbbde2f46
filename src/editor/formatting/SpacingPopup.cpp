// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/SpacingPopup.h"

#include "appearance/Look.h"

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace orvane {

namespace {

constexpr double mostPoints = 200;

/// A length that shows no zeros behind the decimal point. What is typed counts when it is done.
class PointsField final : public QDoubleSpinBox {
public:
    explicit PointsField(QWidget* parent)
        : QDoubleSpinBox(parent)
    {
        setRange(0, mostPoints);
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
    auto* field = new PointsField(this);
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
