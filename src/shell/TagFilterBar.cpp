// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/TagFilterBar.h"

#include <QHBoxLayout>
#include <QToolButton>

namespace orvane {

TagFilterBar::TagFilterBar(AppState& appState, Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::Pane, parent)
    , m_appState(appState)
    , m_row(new QHBoxLayout(this))
{
    m_row->setContentsMargins(8, 8, 8, 0);
    m_row->setSpacing(4);
    connect(&appState, &AppState::activeTagFilterChanged, this, &TagFilterBar::refresh);
    connect(&appState, &AppState::notebookReset, this, &TagFilterBar::refresh);
    refresh();
}

void TagFilterBar::refresh()
{
    while (QLayoutItem* item = m_row->takeAt(0)) {
        if (item->widget())
            item->widget()->deleteLater(); // it may be the one that was clicked
        delete item;
    }
    QStringList tags = m_appState.activeTagFilter().values();
    tags.sort(Qt::CaseInsensitive);
    for (const QString& tag : std::as_const(tags)) {
        auto* chip = new QToolButton(this);
        chip->setText(tag);
        chip->setIcon(look().icon(Symbol::Clear));
        chip->setIconSize({12, 12});
        chip->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        chip->setLayoutDirection(layoutDirection() == Qt::LeftToRight ? Qt::RightToLeft
                                                                      : Qt::LeftToRight);
        chip->setMaximumWidth(140);
        chip->setFixedHeight(24);
        chip->setFocusPolicy(Qt::TabFocus);
        chip->setToolTip(tr("Stop filtering for “%1”").arg(tag));
        chip->setAccessibleName(chip->toolTip());
        connect(chip, &QToolButton::clicked, this,
                [this, tag] { m_appState.toggleTagFilter(tag); });
        m_row->addWidget(chip);
    }
    m_row->addStretch();
    setVisible(!tags.isEmpty());
}

} // namespace orvane
