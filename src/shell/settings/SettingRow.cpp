// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/SettingRow.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int lowest = 52;
constexpr int gap = 24;

} // namespace

SettingRow::SettingRow(const RowText& text, QWidget* control, QWidget* parent)
    : QWidget(parent)
    , m_control(control)
{
    auto* hint = makeLabel(text.hint, TextStyle::Label, LabelInk::Secondary, this);
    setMinimumHeight(lowest);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 8, 0, 9);
    row->setSpacing(gap);
    auto* words = new QVBoxLayout;
    words->setContentsMargins({});
    words->setSpacing(2);
    words->addStretch(1);
    QLabel* title = makeLabel(text.title, TextStyle::Body);
    words->addWidget(title);
    hint->setWordWrap(true);
    hint->setVisible(!text.hint.isEmpty());
    words->addWidget(hint);
    words->addStretch(1);
    row->addLayout(words, 1);
    row->addWidget(control, 0, Qt::AlignRight | Qt::AlignVCenter);
    title->setBuddy(control);
    control->setAccessibleName(text.title);
    control->setAccessibleDescription(text.hint);
}

void SettingRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawLineAt(Qt::BottomEdge, painter, rect(), palette().color(QPalette::Mid));
}

void SettingRow::mouseReleaseEvent(QMouseEvent* event)
{
    auto* button = qobject_cast<QAbstractButton*>(m_control);
    if (button && button->isCheckable() && button->isEnabled() &&
        event->button() == Qt::LeftButton && rect().contains(event->pos()))
        button->click();
}

} // namespace orvane
