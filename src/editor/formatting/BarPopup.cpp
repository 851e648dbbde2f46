// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/BarPopup.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

namespace orvane {

BarPopup::BarPopup(const QString& name, Look& look, QWidget* parent)
    : QFrame(parent, Qt::Popup | Qt::FramelessWindowHint)
    , m_look(look)
    , m_column(new QVBoxLayout(this))
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(name);
    setAccessibleName(name);
    setPalette(look.palette(Surface::Card));
    connect(&look, &Look::changed, this, [this] { setPalette(m_look.palette(Surface::Card)); });
    m_column->setContentsMargins(12, 12, 12, 12);
    m_column->setSpacing(8);
}

void BarPopup::popUpBelow(QWidget& anchor)
{
    // Who came by the keyboard sees where it is.
    setAttribute(Qt::WA_KeyboardFocusChange, anchor.hasFocus());
    if (auto* button = qobject_cast<QAbstractButton*>(&anchor)) {
        button->setDown(true);
        connect(this, &QObject::destroyed, button, [button] { button->setDown(false); });
    }
    popUpAt(QRect(anchor.mapToGlobal(QPoint()), anchor.size()), anchor);
}

void BarPopup::popUpAt(const QRect& from, const QWidget& beside)
{
    ensurePolished();
    adjustSize();
    const QRect screen = beside.screen()->availableGeometry();
    QPoint at = from.bottomLeft() + QPoint(0, 6);
    if (at.y() + height() > screen.bottom())
        at.setY(from.top() - height() - 6);
    at.setX(qBound(screen.left() + 4, at.x(), qMax(screen.left() + 4, screen.right() - width())));
    at.setY(qMax(screen.top() + 4, at.y()));
    move(at);
    show();
}

void BarPopup::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
    drawPanel(painter, rect(), popupRadius, card.ground, card.border);
}

void BarPopup::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    cutCorners(*this);
}

void BarPopup::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QFrame::keyPressEvent(event);
}

} // namespace orvane
