// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/RulerMarker.h"

#include "appearance/Drawing.h"
#include "editor/page/PageRuler.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace orvane {

namespace {

/// The value is in the person's unit, as it is read out.
class AccessibleMarker final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleMarker(RulerMarker& marker)
        : QAccessibleWidget(&marker, QAccessible::Slider)
        , m_marker(marker)
    {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name)
            return m_marker.name();
        return kind == QAccessible::Value ? m_marker.value() : QAccessibleWidget::text(kind);
    }
    QVariant currentValue() const override { return inUnit(m_marker.mark().position); }
    void setCurrentValue(const QVariant& value) override
    {
        m_marker.ruler().moveMark(m_marker.mark(), value.toDouble() * points());
    }
    QVariant maximumValue() const override { return inUnit(m_marker.ruler().columnWidth()); }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return inUnit(1); }

private:
    [[nodiscard]] double points() const { return pointsIn(m_marker.ruler().unit()); }
    [[nodiscard]] double inUnit(double position) const
    {
        return std::round(position / points() * 100) / 100;
    }

    RulerMarker& m_marker;
};

QAccessibleInterface* makeAccessible(const QString& /*className*/, QObject* object)
{
    auto* marker = qobject_cast<RulerMarker*>(object);
    return marker ? new AccessibleMarker(*marker) : nullptr;
}

/// A small house whose tip points at the line: up for the lower marks, down for the upper one.
QPainterPath pointer(const QRectF& box, bool pointsDown)
{
    const double roof = box.height() / 2;
    QPainterPath path;
    if (pointsDown) {
        path.moveTo(box.topLeft());
        path.lineTo(box.topRight());
        path.lineTo(box.right(), box.bottom() - roof);
        path.lineTo(box.center().x(), box.bottom());
        path.lineTo(box.left(), box.bottom() - roof);
    } else {
        path.moveTo(box.bottomLeft());
        path.lineTo(box.bottomRight());
        path.lineTo(box.right(), box.top() + roof);
        path.lineTo(box.center().x(), box.top());
        path.lineTo(box.left(), box.top() + roof);
    }
    path.closeSubpath();
    return path;
}

/// A stop as a corner: text goes on from it, ends in it, or stands on both sides.
void drawTab(QPainter& painter, const QRectF& box, TabAlignment alignment)
{
    const double x = std::floor(box.center().x());
    painter.fillRect(QRectF(x, box.top(), 2, box.height()), painter.pen().color());
    const double foot = box.bottom() - 2;
    const bool toRight = alignment != TabAlignment::right;
    const bool toLeft = alignment != TabAlignment::left;
    if (toRight)
        painter.fillRect(QRectF(x, foot, 6, 2), painter.pen().color());
    if (toLeft)
        painter.fillRect(QRectF(x - 4, foot, 6, 2), painter.pen().color());
    if (alignment == TabAlignment::decimal)
        painter.fillRect(QRectF(x + 4, box.top() + 2, 2, 2), painter.pen().color());
}

} // namespace

RulerMarker::RulerMarker(PageRuler& ruler, const RulerMark& mark)
    : QWidget(&ruler)
    , m_ruler(ruler)
{
    static const bool once = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(once);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::SizeHorCursor);
    setMark(mark);
}

void RulerMarker::setMark(const RulerMark& mark)
{
    m_mark = mark;
    setToolTip(tr("%1, %2").arg(name(), value()));
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, value());
        QAccessible::updateAccessibility(&event);
    }
    update();
}

void RulerMarker::setFading(bool fading)
{
    m_isFading = fading;
    update();
}

QString RulerMarker::name() const
{
    switch (m_mark.kind) {
    case RulerMarkKind::firstLine:
        return tr("Indent of the first line");
    case RulerMarkKind::head:
        return tr("Indent of the other lines");
    case RulerMarkKind::tail:
        return tr("End of the lines");
    case RulerMarkKind::tab:
        break;
    }
    switch (m_mark.alignment) {
    case TabAlignment::center:
        return tr("Centered tab stop");
    case TabAlignment::right:
        return tr("Right tab stop");
    case TabAlignment::decimal:
        return tr("Decimal tab stop");
    case TabAlignment::left:
        break;
    }
    return tr("Tab stop");
}

QString RulerMarker::value() const
{
    return lengthText(m_mark.position, m_ruler.unit());
}

void RulerMarker::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const SurfaceTokens& page = m_ruler.tokens().on(Surface::Page);
    // Within the ring a mark is smaller, in an ink that parts it from the ring.
    const bool isRinged = hasFocus();
    const QColor ink = isRinged                      ? page.text
                       : isEnabled() && underMouse() ? page.accent
                                                     : page.textSecondary;
    painter.setOpacity(m_isFading ? 0.3 : 1);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isAbove = m_mark.kind == RulerMarkKind::firstLine;
    const QRectF box = isRinged ? QRectF(width() / 2.0 - 3.5, 4, 7, height() - 8)
                                : QRectF(width() / 2.0 - 4.5, isAbove ? 2 : 4, 9, height() - 6);
    painter.setPen(ink);
    if (m_mark.kind == RulerMarkKind::tab) {
        drawTab(painter, box.adjusted(0, 1, 0, 0), m_mark.alignment);
    } else {
        painter.setBrush(ink);
        painter.setPen(isRinged ? QPen(Qt::NoPen) : QPen(page.ground, 1));
        painter.drawPath(pointer(box, isAbove));
    }
    if (isRinged)
        drawFocusRing(painter, QRectF(rect()), 4, page.accent);
}

void RulerMarker::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_ruler.beginDrag(*this);
}

void RulerMarker::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF inRuler = mapToParent(event->position());
    m_ruler.drag(inRuler.x(), inRuler.y(), event->modifiers() & Qt::AltModifier);
}

void RulerMarker::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_ruler.endDrag();
}

void RulerMarker::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_mark.kind == RulerMarkKind::tab)
        m_ruler.turnTab(m_mark);
}

void RulerMarker::keyPressEvent(QKeyEvent* event)
{
    const bool isTab = m_mark.kind == RulerMarkKind::tab;
    const Qt::KeyboardModifiers held = event->modifiers();
    const double step = held & Qt::ControlModifier ? 1
                        : held & Qt::ShiftModifier ? pointsIn(m_ruler.unit())
                                                   : rulerStep(m_ruler.unit());
    const double right = m_ruler.isRightToLeft() ? -step : step;
    switch (event->key()) {
    case Qt::Key_Left:
        return m_ruler.moveMark(m_mark, m_mark.position - right);
    case Qt::Key_Right:
        return m_ruler.moveMark(m_mark, m_mark.position + right);
    case Qt::Key_Home:
        return m_ruler.moveMark(m_mark, 0);
    case Qt::Key_End:
        return m_ruler.moveMark(m_mark, m_ruler.columnWidth());
    case Qt::Key_Insert:
        return m_ruler.addTab();
    case Qt::Key_Escape:
        if (m_ruler.isDragging())
            return m_ruler.cancelDrag();
        return m_ruler.leave();
    case Qt::Key_Space:
        if (isTab)
            return m_ruler.turnTab(m_mark);
        break;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        if (isTab)
            return m_ruler.removeTab(m_mark);
        break;
    default:
        break;
    }
    QWidget::keyPressEvent(event);
}

void RulerMarker::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    raise(); // of marks in one place the one with the keyboard is on top
}

void RulerMarker::enterEvent(QEnterEvent* event)
{
    QWidget::enterEvent(event);
    update();
}

void RulerMarker::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    update();
}

} // namespace orvane
