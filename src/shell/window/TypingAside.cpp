// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/window/TypingAside.h"

#include "text/store/Graphemes.h"

#include <QKeyEvent>
#include <QWidget>

namespace orvane {

TypingAside::TypingAside(QWidget& sheet)
    : QObject(&sheet)
{
    sheet.installEventFilter(this);
    for (auto* part : sheet.findChildren<QWidget*>())
        part->installEventFilter(this);
    m_sinceKey.start();
}

bool TypingAside::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !takes(*static_cast<QKeyEvent*>(event)))
        return QObject::eventFilter(watched, event);
    m_sinceKey.restart();
    return true;
}

bool TypingAside::takes(const QKeyEvent& key)
{
    const bool goesOn = m_sinceKey.elapsed() < pause;
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    const bool isPlain = modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier;
    // AltGr arrives as both together on some keyboards.
    const bool isThirdLevel =
        modifiers.testFlag(Qt::ControlModifier) && modifiers.testFlag(Qt::AltModifier);
    if (!isPlain && !isThirdLevel)
        return false;
    switch (key.key()) {
    case Qt::Key_Escape:
        return false;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (goesOn)
            m_text += u'\n';
        return goesOn;
    case Qt::Key_Backspace:
        m_text.truncate(graphemeStart(m_text, m_text.size() - 1));
        return true;
    case Qt::Key_Space:
        if (goesOn)
            m_text += u' ';
        return goesOn;
    default:
        break;
    }
    const QString typed = key.text();
    const bool bringsText =
        !typed.isEmpty() && (typed.front().isPrint() || typed.front().isSurrogate());
    if (bringsText)
        m_text += typed;
    // Tab and the arrows would move to another button in the midst of a word.
    return bringsText || goesOn;
}

} // namespace orvane
