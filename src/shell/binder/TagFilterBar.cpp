// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/TagFilterBar.h"

#include "core/tags/TagColorPalette.h"
#include "shell/inspector/TagChip.h"

#include <QHBoxLayout>

namespace orvane {

TagFilterBar::TagFilterBar(AppState& appState, Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::Binder, parent)
    , m_appState(appState)
    , m_row(new QHBoxLayout(this))
{
    m_row->setContentsMargins(8, 8, 8, 0);
    m_row->setSpacing(4);
    connect(&appState, &AppState::activeTagFilterChanged, this, &TagFilterBar::refresh);
    connect(&appState, &AppState::notebookReset, this, &TagFilterBar::refresh);
    connect(&appState, &AppState::notebookCompleted, this, &TagFilterBar::refresh);
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
        auto* chip =
            new TagChip(tag, tagColor(m_appState.tagSettings(), tag).toQColor(), look(), this);
        chip->setMaximumWidth(140);
        chip->setToolTip(tr("Stop filtering for “%1”").arg(tag));
        chip->setAccessibleName(chip->toolTip());
        chip->setAccessibleDescription({});
        const auto stop = [this, tag] {
            m_appState.toggleTagFilter(tag);
        };
        connect(chip, &TagChip::menuRequested, this, stop);
        connect(chip, &TagChip::removalRequested, this, stop);
        m_row->addWidget(chip);
    }
    m_row->addStretch();
    setVisible(!tags.isEmpty());
}

} // namespace orvane
