// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/layout/PaneFocus.h"

#include <QApplication>
#include <QWidget>

namespace orvane {

namespace {

bool takesFocus(const QWidget& widget, const QWidget& pane)
{
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() &&
           widget.isVisibleTo(&pane) && !widget.focusProxy();
}

QWidget* entranceOf(QWidget& pane)
{
    QWidget* last = pane.focusWidget();
    if (last && takesFocus(*last, pane))
        return last;
    for (QWidget* next = pane.nextInFocusChain(); next != &pane; next = next->nextInFocusChain()) {
        if (pane.isAncestorOf(next) && takesFocus(*next, pane))
            return next;
    }
    return nullptr;
}

} // namespace

void focusPane(const QList<QWidget*>& panes, int by)
{
    const QWidget* focus = QApplication::focusWidget();
    const qsizetype count = panes.size();
    qsizetype at = by > 0 ? -1 : count;
    for (qsizetype i = 0; i < count; ++i) {
        if (panes[i]->isAncestorOf(focus))
            at = i;
    }
    for (qsizetype tried = 0; tried < count; ++tried) {
        at = (at + by + count) % count;
        QWidget* entrance = panes[at]->isVisible() ? entranceOf(*panes[at]) : nullptr;
        if (!entrance)
            continue;
        entrance->setFocus(by > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return;
    }
}

} // namespace orvane
