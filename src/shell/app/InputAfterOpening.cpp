// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/app/InputAfterOpening.h"

#include "core/state/ProjectSession.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

namespace orvane {

namespace {

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::NativeGesture:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace

InputAfterOpening::InputAfterOpening(ProjectSession& session, QObject* parent)
    : QObject(parent)
    , m_session(session)
{
    if (session.isOpening())
        QCoreApplication::instance()->installEventFilter(this);
}

bool InputAfterOpening::eventFilter(QObject* watched, QEvent* event)
{
    if (m_session.isOpening() && !isInput(event->type()))
        return false;
    const QPointer receiver(watched);
    QCoreApplication::instance()->removeEventFilter(this);
    m_session.finishOpening();
    return receiver.isNull();
}

} // namespace orvane
