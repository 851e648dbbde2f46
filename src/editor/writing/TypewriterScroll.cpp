// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/TypewriterScroll.h"

#include "editor/view/EditorSettings.h"
#include "editor/view/EditorView.h"

#include <QMouseEvent>

namespace orvane {

TypewriterScroll::TypewriterScroll(EditorView& view, QObject* parent)
    : QObject(parent)
    , m_view(view)
{
    m_view.addExtension(this, ExtensionPriority::writing);
    m_view.viewport()->installEventFilter(this);
    connect(&view, &EditorView::textChanged, this,
            &TypewriterScroll::maintainTypewriterViewportIfNeeded);
    connect(&view, &EditorView::selectionChanged, this,
            &TypewriterScroll::maintainTypewriterViewportIfNeeded);
}

TypewriterScroll::~TypewriterScroll()
{
    m_view.removeExtension(this);
}

void TypewriterScroll::setEnabled(bool enabled)
{
    if (enabled == m_isEnabled)
        return;
    m_isEnabled = enabled;
    m_view.setLeastShareBelow(enabled ? 1 - typewriterShare : 0);
    maintainTypewriterViewportIfNeeded();
}

bool TypewriterScroll::keyPressed(const QKeyEvent& /*event*/)
{
    m_buttonIsDown = false; // let go elsewhere, as after a drag out of the window
    return false;
}

bool TypewriterScroll::eventFilter(QObject* watched, QEvent* event)
{
    const bool presses = event->type() == QEvent::MouseButtonPress;
    const bool releases = event->type() == QEvent::MouseButtonRelease;
    if ((presses || releases) && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        m_buttonIsDown = presses;
        // Only after the view has dealt with it where the pointer saw it.
        if (releases)
            QMetaObject::invokeMethod(this, &TypewriterScroll::maintainTypewriterViewportIfNeeded,
                                      Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void TypewriterScroll::maintainTypewriterViewportIfNeeded()
{
    if (m_isEnabled && !m_buttonIsDown && m_view.hasFocus() && m_view.selection().isEmpty())
        m_view.scrollCaretTo(typewriterShare);
}

void toggleTypewriterMode(const Services& services)
{
    typewriterModeSetting.write(services.defaults, !typewriterModeSetting.read(services.defaults));
}

} // namespace orvane
