// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/PageRuler.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "editor/page/PageSheet.h"
#include "editor/page/RulerMarker.h"
#include "editor/pane/EditorTextHost.h"
#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int rulerHeight = 28;
constexpr int scaleTop = 6;
constexpr int scaleHeight = 16;
constexpr int numberSize = 10;
/// How far below the ruler a tab stop is drawn to be taken away.
constexpr int offDistance = 24;

bool isRightToLeftAt(const TextStore& store, qsizetype position)
{
    const WritingDirection direction = store.paragraphStyle(position)->direction;
    if (direction == WritingDirection::natural)
        return store.blockAt(position).text().isRightToLeft();
    return direction == WritingDirection::rightToLeft;
}

} // namespace

PageRuler::PageRuler(EditorTextHost& host, Look& look, const UserDefaults& defaults, QWidget& next,
                     QWidget* parent)
    : QWidget(parent)
    , m_host(host)
    , m_look(look)
    , m_defaults(defaults)
    , m_next(next)
    , m_unit(lengthUnit())
{
    setFixedHeight(rulerHeight);
    setAccessibleName(tr("Ruler"));
    EditorView& view = host.view();
    view.addExtension(this, ExtensionPriority::guides);
    connect(&view, &EditorView::selectionChanged, this, &PageRuler::refresh);
    connect(&view, &EditorView::textChanged, this, &PageRuler::refresh);
    connect(&host, &EditorTextHost::textPlaced, this, [this] {
        applyLook();
        refresh();
    });
    connect(&look, &Look::changed, this, &PageRuler::applyLook);
    hide();
}

PageRuler::~PageRuler()
{
    m_host.view().removeExtension(this);
}

void PageRuler::applyLook()
{
    m_tokens = writingTokens(m_look, m_defaults);
    update();
}

PageRuler::Paragraph PageRuler::paragraph() const
{
    const EditorView& view = m_host.view();
    const qsizetype caret = view.selection().position;
    const QRectF line = view.layout().lineAt(int(caret)).rect;
    return {line.left(), line.width(), isRightToLeftAt(view.store(), caret),
            view.store().paragraphStyle(caret)};
}

void PageRuler::refresh()
{
    if (!isVisible() || m_drag)
        return;
    const Paragraph shown = paragraph();
    const EditorView& view = m_host.view();
    const Placement placement{origin(), view.zoom(), view.isEditable()};
    if (!m_markers.empty() && shown == m_paragraph && placement == m_placement)
        return keepTabOrder();
    m_paragraph = shown;
    m_placement = placement;
    const QList<RulerMark> marks = rulerMarks(*m_paragraph.style, m_paragraph.width);
    while (m_markers.size() > std::size_t(marks.size())) {
        RulerMarker* gone = m_markers.back();
        m_markers.pop_back();
        if (gone->hasFocus())
            m_markers.front()->setFocus();
        gone->hide();
        gone->deleteLater(); // it may be the one whose key this follows from
    }
    for (qsizetype i = 0; i < marks.size(); ++i) {
        if (std::size_t(i) < m_markers.size())
            m_markers[std::size_t(i)]->setMark(marks[i]);
        else
            m_markers.push_back(new RulerMarker(*this, marks[i]));
    }
    place();
}

/// The bar above comes later than the ruler, and puts itself before the same widget.
void PageRuler::keepTabOrder()
{
    QWidget* before = m_next.previousInFocusChain();
    if (m_markers.empty() || before == m_markers.back())
        return;
    while (isAncestorOf(before))
        before = before->previousInFocusChain();
    for (RulerMarker* marker : m_markers) {
        // Only what takes the keyboard has a place in the order.
        const Qt::FocusPolicy policy = before->focusPolicy();
        before->setFocusPolicy(Qt::TabFocus);
        setTabOrder(before, marker);
        before->setFocusPolicy(policy);
        before = marker;
    }
}

double PageRuler::origin() const
{
    const EditorView& view = m_host.view();
    const QPoint inView = view.viewport()->mapTo(parentWidget(), QPoint());
    return inView.x() - x() + view.textOrigin().x();
}

double PageRuler::toRuler(double position) const
{
    const double onPage = m_paragraph.isRightToLeft
                              ? m_paragraph.left + m_paragraph.width - position
                              : m_paragraph.left + position;
    return origin() + onPage * m_host.view().zoom();
}

double PageRuler::fromRuler(double x) const
{
    const double onPage = (x - origin()) / m_host.view().zoom() - m_paragraph.left;
    return m_paragraph.isRightToLeft ? m_paragraph.width - onPage : onPage;
}

void PageRuler::place()
{
    for (RulerMarker* marker : m_markers) {
        const int middle = int(std::lround(toRuler(marker->mark().position)));
        const bool isAbove = marker->mark().kind == RulerMarkKind::firstLine;
        const int width = RulerMarker::markerWidth;
        marker->setGeometry(middle - width / 2, isAbove ? 0 : rulerHeight / 2, width,
                            rulerHeight / 2);
        marker->setEnabled(m_placement.isEditable);
        marker->show();
    }
    keepTabOrder();
    update();
}

// What a person does

void PageRuler::change(const RulerChange& change)
{
    EditorView& view = m_host.view();
    const RulerMark& mark = change.to ? *change.to : *change.from;
    const QString name = mark.kind == RulerMarkKind::tab ? tr("Tab Stop") : tr("Indent");
    const bool hadFocus = std::ranges::any_of(m_markers, &QWidget::hasFocus);
    const double width = m_paragraph.width;
    view.gateway().performUndoableDocumentEdit(name, [&](DocumentEditor& editor) {
        editor.modifyParagraphStyles(editor.selection().range(),
                                     [&](ParagraphStyle& style) { apply(change, width, style); });
    });
    refresh();
    if (!hadFocus || !change.to)
        return;
    // A tab stop may have passed another.
    for (RulerMarker* marker : m_markers) {
        if (marker->mark() == *change.to)
            return marker->setFocus(Qt::OtherFocusReason);
    }
}

void PageRuler::moveMark(const RulerMark& mark, double position)
{
    RulerMark moved = mark;
    moved.position = heldPosition(mark, position, *m_paragraph.style, m_paragraph.width);
    if (moved != mark)
        change({mark, moved});
}

void PageRuler::addTab()
{
    const auto& tabs = m_paragraph.style->tabStops;
    const double last = tabs.isEmpty() ? 0 : tabs.last().location;
    const double unit = pointsIn(m_unit);
    const double next = (std::floor(last / unit + 0.01) + 1) * unit;
    if (next > m_paragraph.width || !m_host.view().isEditable())
        return;
    const RulerMark mark{RulerMarkKind::tab, next};
    change({std::nullopt, mark});
    for (RulerMarker* marker : m_markers) {
        if (marker->mark() == mark)
            marker->setFocus(Qt::OtherFocusReason);
    }
}

void PageRuler::removeTab(const RulerMark& mark)
{
    change({mark, std::nullopt});
}

void PageRuler::turnTab(const RulerMark& mark)
{
    RulerMark turned = mark;
    turned.alignment = TabAlignment((int(mark.alignment) + 1) % 4);
    change({mark, turned});
}

void PageRuler::leave()
{
    m_host.view().setFocus(Qt::OtherFocusReason);
}

// Dragging

void PageRuler::beginDrag(RulerMarker& marker)
{
    m_drag = Drag{&marker, marker.mark(), false};
    marker.raise();
    updateGuide();
}

void PageRuler::drag(double x, double y, bool isFine)
{
    if (!m_drag)
        return;
    RulerMarker& marker = *m_drag->marker;
    RulerMark mark = marker.mark();
    const double wanted = isFine ? std::round(fromRuler(x)) : onRulerStep(fromRuler(x), m_unit);
    m_drag->isOff =
        mark.kind == RulerMarkKind::tab && (y > rulerHeight + offDistance || y < -offDistance);
    updateGuide();
    mark.position = heldPosition(mark, wanted, *m_paragraph.style, m_paragraph.width);
    marker.setMark(mark);
    marker.setFading(m_drag->isOff);
    place();
    updateGuide();
    const QPoint below(marker.geometry().center().x(), rulerHeight);
    QToolTip::showText(mapToGlobal(below), m_drag->isOff ? QString() : marker.value(), this);
}

void PageRuler::endDrag()
{
    if (!m_drag)
        return;
    updateGuide();
    const Drag done = *m_drag;
    const RulerMark to = done.marker->mark();
    cancelDrag();
    if (done.isOff && done.from)
        change({done.from, std::nullopt});
    else if (!done.isOff && done.from != to)
        change({done.from, to});
}

void PageRuler::cancelDrag()
{
    if (!m_drag)
        return;
    updateGuide();
    const Drag dropped = *m_drag;
    m_drag.reset();
    QToolTip::hideText();
    dropped.marker->setFading(false);
    if (dropped.from) {
        dropped.marker->setMark(*dropped.from);
    } else {
        std::erase(m_markers, dropped.marker);
        dropped.marker->deleteLater();
        dropped.marker->hide();
    }
    place();
}

/// A line down the text shows where a drawn mark stands.
void PageRuler::updateGuide()
{
    if (!m_drag)
        return;
    QWidget& viewport = *m_host.view().viewport();
    const double x =
        toRuler(m_drag->marker->mark().position) - origin() + m_host.view().textOrigin().x();
    viewport.update(int(x) - 2, 0, 4, viewport.height());
}

void PageRuler::paintOverText(QPainter& painter, const EditorPaint& paint)
{
    if (!m_drag || m_drag->isOff)
        return;
    const double x = toRuler(m_drag->marker->mark().position) - origin() + paint.origin.x();
    painter.save();
    QPen pen(m_tokens.on(Surface::Page).accent, 1);
    pen.setDashPattern({3, 3});
    painter.setPen(pen);
    const double middle = std::round(x) + 0.5;
    painter.drawLine(QPointF(middle, paint.clip.top()), QPointF(middle, paint.clip.bottom()));
    painter.restore();
}

bool PageRuler::keyPressed(const QKeyEvent& event)
{
    if (!m_drag || event.key() != Qt::Key_Escape)
        return false;
    cancelDrag();
    return true;
}

void PageRuler::mousePressEvent(QMouseEvent* event)
{
    const double position = fromRuler(event->position().x());
    if (event->button() != Qt::LeftButton || !m_host.view().isEditable() || m_drag ||
        position <= 0 || position >= m_paragraph.width)
        return;
    const RulerMark mark{RulerMarkKind::tab, position};
    m_markers.push_back(new RulerMarker(*this, mark));
    m_drag = Drag{m_markers.back(), std::nullopt, false};
    drag(event->position().x(), event->position().y(), event->modifiers() & Qt::AltModifier);
}

void PageRuler::mouseMoveEvent(QMouseEvent* event)
{
    drag(event->position().x(), event->position().y(), event->modifiers() & Qt::AltModifier);
}

void PageRuler::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        endDrag();
}

void PageRuler::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Add Tab Stop"), this, &PageRuler::addTab);
    for (const RulerMarker* marker : m_markers) {
        if (marker->mark().kind != RulerMarkKind::tab)
            continue;
        const RulerMark mark = marker->mark();
        menu->addAction(tr("Remove the Tab Stop at %1").arg(marker->value()), this,
                        [this, mark] { removeTab(mark); });
    }
    menu->setEnabled(m_host.view().isEditable());
    menu->popup(event->globalPos());
}

// Drawing

void PageRuler::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    refresh();
}

void PageRuler::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    applyLook();
    refresh();
}

void PageRuler::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const SurfaceTokens& page = m_tokens.on(Surface::Page);
    const bool isPaper = m_host.parameters().pageViewEnabled;
    painter.fillRect(rect(), isPaper ? m_tokens.desk : page.ground);
    drawLineAt(Qt::BottomEdge, painter, rect(), page.border);
    const TextColumn column = m_host.columnIn(m_host.width());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto band = [&](double left, double right, const QColor& color, double radius) {
        painter.setBrush(color);
        painter.drawRoundedRect(
            QRectF(QPointF(left, scaleTop), QPointF(right, scaleTop + scaleHeight)), radius,
            radius);
    };
    const QColor margin = blended(page.text, 0.04, isPaper ? m_tokens.desk : page.ground);
    if (isPaper)
        band(column.sheetLeft, column.sheetLeft + column.sheetWidth, margin, 4);
    const double one = toRuler(0);
    const double other = toRuler(m_paragraph.width);
    band(std::min(one, other), std::max(one, other), blended(page.text, 0.1, page.ground), 4);
    paintScale(painter);
}

void PageRuler::paintScale(QPainter& painter) const
{
    const SurfaceTokens& page = m_tokens.on(Surface::Page);
    const TextColumn column = m_host.columnIn(m_host.width());
    const bool isPaper = m_host.parameters().pageViewEnabled;
    const double from =
        isPaper ? column.sheetLeft : std::min(toRuler(0), toRuler(m_paragraph.width));
    const double to = isPaper ? column.sheetLeft + column.sheetWidth
                              : std::max(toRuler(0), toRuler(m_paragraph.width));
    QFont font = interfaceFont(TextStyle::Label);
    font.setPixelSize(numberSize);
    painter.setFont(font);
    const double step = rulerStep(m_unit);
    const int parts = int(std::lround(pointsIn(m_unit) / step));
    const double first = std::min(fromRuler(from), fromRuler(to));
    const double last = std::max(fromRuler(from), fromRuler(to));
    const double middle = scaleTop + scaleHeight / 2.0;
    for (int i = int(std::ceil(first / step)); i * step <= last; ++i) {
        const double x = std::round(toRuler(i * step));
        const bool isNumber = i % parts == 0;
        const double air = isNumber ? 12 : 4;
        if (i == 0 || x < from + air || x > to - air)
            continue;
        if (isNumber) {
            painter.setPen(page.textSecondary);
            painter.drawText(QRectF(x - 20, scaleTop, 40, scaleHeight), Qt::AlignCenter,
                             QLocale().toString(std::abs(i / parts)));
            continue;
        }
        const bool isHalf = i * 2 % parts == 0;
        const double half = isHalf ? 3 : 1.5;
        painter.fillRect(QRectF(x, middle - half, 1, 2 * half),
                         blended(page.textSecondary, 0.6, page.ground));
    }
}

} // namespace orvane
