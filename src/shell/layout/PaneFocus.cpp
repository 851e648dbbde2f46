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

/// The innermost pane that holds `widget`, or none.
const QWidget* paneOf(const QWidget* widget, const QList<KeyboardPane>& panes)
{
    const QWidget* innermost = nullptr;
    for (const KeyboardPane& each : panes) {
        if (each.pane->isAncestorOf(widget) && (!innermost || innermost->isAncestorOf(each.pane)))
            innermost = each.pane;
    }
    return innermost;
}

QWidget* entranceOf(const KeyboardPane& of, const QList<KeyboardPane>& panes)
{
    const auto leadsIn = [&](QWidget* widget) {
        return widget && takesFocus(*widget, *of.pane) && paneOf(widget, panes) == of.pane;
    };
    for (QWidget* wanted : {of.pane->focusWidget(), of.entrance}) {
        if (leadsIn(wanted))
            return wanted;
    }
    for (QWidget* next = of.pane->nextInFocusChain(); next != of.pane;
         next = next->nextInFocusChain()) {
        if (leadsIn(next))
            return next;
    }
    return nullptr;
}

} // namespace

void focusPane(const QList<KeyboardPane>& panes, int by)
{
    const QWidget* from = paneOf(QApplication::focusWidget(), panes);
    const qsizetype count = panes.size();
    qsizetype at = by > 0 ? -1 : count;
    for (qsizetype i = 0; i < count; ++i) {
        if (panes[i].pane == from)
            at = i;
    }
    for (qsizetype tried = 0; tried < count; ++tried) {
        at = (at + by + count) % count;
        QWidget* entrance = panes[at].pane->isVisible() ? entranceOf(panes[at], panes) : nullptr;
        if (!entrance)
            continue;
        entrance->setFocus(by > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return;
    }
}

} // namespace orvane
