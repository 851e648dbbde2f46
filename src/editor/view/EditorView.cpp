// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/EditorView.h"

#include "appearance/AppearanceTokens.h"
#include "editor/view/EditorAccessible.h"
#include "editor/view/EditorExtension.h"
#include "editor/view/InputMethodBridge.h"
#include "editor/view/MouseSelection.h"
#include "editor/view/PageScroller.h"
#include "text/store/TextStore.h"

#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleHints>

#include <cmath>

namespace orvane {

namespace {

constexpr qreal caretWidth = 1.5; // points
constexpr qreal leastZoom = 0.5;
constexpr qreal mostZoom = 3;

} // namespace

EditorView::EditorView(QWidget* parent)
    : QAbstractScrollArea(parent)
    , m_ownStore(std::make_unique<TextStore>())
    , m_ownGateway(std::make_unique<EditGateway>(*m_ownStore))
    , m_look(editorLook(signatureDarkTokens(), WritingGround::openPage, 1))
    , m_scroller(std::make_unique<PageScroller>(*this))
    , m_mouse(std::make_unique<MouseSelection>(*this))
    , m_inputMethod(std::make_unique<InputMethodBridge>(*this))
{
    editorAccessible::install();
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::WheelFocus);
    setAcceptDrops(true);
    setAttribute(Qt::WA_InputMethodEnabled);
    setAttribute(Qt::WA_KeyCompression);
    viewport()->setMouseTracking(true);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    connect(this, &EditorView::scrolled, this, [this] { m_mouse->hoverAgain(); });
    connect(&m_ownPainter.pictures(), &ImagePictures::came, viewport(),
            qOverload<>(&QWidget::update));
    setGateway(nullptr);
}

EditorView::~EditorView()
{
    for (const QMetaObject::Connection& connection : m_connections)
        disconnect(connection);
}

void EditorView::setGateway(EditGateway* gateway)
{
    if (m_layout)
        m_inputMethod->cancel();
    for (const QMetaObject::Connection& connection : m_connections)
        disconnect(connection);
    m_connections.clear();
    m_gateway = gateway ? gateway : m_ownGateway.get();
    m_layout = std::make_unique<ParagraphLayout>(store(), columnWidth(), m_baseFont, lineSettings);
    m_layout->setObjectPainter(m_objectPainter);
    m_layout->setTallestObject(m_geometry.tallestObject);
    m_ownPainter.pictures().tryAgain();
    m_layout->setDecorator(m_decorators.value(m_gateway));
    m_focusRange.reset();
    m_dropCaret.reset();
    m_caretSide = CaretSide::lowerLine;
    m_navigator.forgetGoal();
    connectGateway();
    m_shownSelection = selection();
    m_scroller->reset();
    m_scroller->settle();
    viewport()->update();
    restartCaretBlink();
    emit selectionChanged();
}

void EditorView::connectGateway()
{
    m_connections = {
        connect(&layout(), &ParagraphLayout::paragraphsChanged, this,
                &EditorView::onParagraphsChanged),
        connect(&layout(), &ParagraphLayout::everythingChanged, this,
                [this] {
                    m_scroller->settle();
                    viewport()->update();
                }),
        connect(m_gateway, &EditGateway::textChanged, this,
                [this](const TextChange& change) {
                    m_caretSide = CaretSide::lowerLine;
                    m_navigator.forgetGoal();
                    if (m_focusRange)
                        m_focusRange = followed(*m_focusRange, change);
                    m_scroller->follow(change);
                    m_scroller->settle();
                    updateCaret();
                    editorAccessible::announceChange(*this, change);
                    emit textChanged(change);
                }),
        connect(m_gateway, &EditGateway::selectionChanged, this, &EditorView::onSelectionChanged),
    };
}

const TextStore& EditorView::store() const
{
    return m_gateway->store();
}

void EditorView::setPlainText(const QString& text)
{
    m_gateway->loadPlainText(text);
    m_scroller->reset();
    m_scroller->settle();
    viewport()->update();
}

QString EditorView::plainText() const
{
    return store().text();
}

qreal EditorView::columnWidth() const
{
    const qreal page =
        m_geometry.pageWidth > 0 ? m_geometry.pageWidth : viewport()->width() / m_zoom;
    qreal column = page - m_geometry.leftMargin - m_geometry.rightMargin;
    if (m_geometry.widestColumn > 0)
        column = std::min(column, m_geometry.widestColumn);
    // Half points only, so that a zoom that doesn't divide the width evenly changes no line.
    return std::floor(std::max(column, 40.0) * 2) / 2;
}

void EditorView::updateColumn()
{
    layout().setWidth(columnWidth());
    layout().setTallestObject(m_geometry.tallestObject);
}

void EditorView::setLook(const EditorLook& look)
{
    if (look == m_look)
        return;
    m_look = look;
    viewport()->update();
}

void EditorView::setBaseFont(const TextFont& font)
{
    m_baseFont = font;
    layout().setSettings(m_baseFont, lineSettings);
}

void EditorView::setGeometry(const EditorGeometry& geometry)
{
    if (geometry == m_geometry)
        return;
    m_geometry = geometry;
    updateColumn();
    m_scroller->settle();
    viewport()->update();
}

void EditorView::setZoom(qreal zoom)
{
    zoom = std::clamp(zoom, leastZoom, mostZoom);
    if (qFuzzyCompare(zoom, m_zoom))
        return;
    const bool isAtTop = m_scroller->offset() <= 0;
    const qreal top = toPage({0, 0}).y();
    m_zoom = zoom;
    updateColumn();
    m_scroller->jumpTo(isAtTop ? -roomAbove() : top);
    viewport()->update();
}

void EditorView::setFocusRange(std::optional<TextRange> range)
{
    if (range == m_focusRange)
        return;
    const std::optional<TextRange> before = std::exchange(m_focusRange, range);
    if (before && range)
        updateSelectionBetween(before->clampedTo(store().length()), *range);
    else
        viewport()->update();
}

void EditorView::setLeastShareBelow(qreal share)
{
    m_leastShareBelow = share;
    m_scroller->settle();
    viewport()->update();
}

qreal EditorView::roomBelow() const
{
    return std::max(m_geometry.bottomPadding, m_leastShareBelow * viewport()->height() / m_zoom);
}

void EditorView::setHead(QWidget* head)
{
    m_head = head;
    if (head)
        head->setParent(viewport());
    placeHead();
}

void EditorView::setHeadHeight(int height)
{
    if (height == m_headHeight)
        return;
    const bool isAtTop = m_scroller->offset() <= 0;
    const qreal top = toPage({0, 0}).y();
    m_headHeight = height;
    m_scroller->jumpTo(isAtTop ? -roomAbove() : top);
    viewport()->update();
}

bool EditorView::showsHead() const
{
    return m_scroller->offset() < m_headHeight;
}

void EditorView::placeHead()
{
    if (!m_head)
        return;
    const int top = -int(std::lround(m_scroller->offset()));
    m_head->setGeometry(0, top, viewport()->width(), m_headHeight);
    if (std::exchange(m_showedHead, showsHead()) != m_showedHead)
        emit headShown(m_showedHead);
}

void EditorView::setObjectPainter(ObjectPainter* painter)
{
    m_objectPainter = painter ? painter : &m_ownPainter;
    layout().setObjectPainter(m_objectPainter);
}

void EditorView::setDecorator(const EditGateway& text, const ParagraphDecorator* decorator)
{
    if (decorator)
        m_decorators.insert(&text, decorator);
    else
        m_decorators.remove(&text);
    if (&text == m_gateway)
        layout().setDecorator(decorator);
}

void EditorView::setEditable(bool editable)
{
    m_isEditable = editable;
    setAttribute(Qt::WA_InputMethodEnabled, editable);
    updateCaret();
}

bool EditorView::isEditable() const
{
    return m_isEditable && m_gateway->isEditable();
}

void EditorView::addExtension(EditorExtension* extension, ExtensionPriority priority)
{
    m_extensions.add(*extension, priority);
    viewport()->update();
}

void EditorView::removeExtension(EditorExtension* extension)
{
    m_extensions.remove(*extension);
    m_mouse->forget(extension);
    viewport()->update();
}

// Page and view

qreal EditorView::columnLeft() const
{
    if (m_geometry.pageWidth > 0) {
        const qreal desk = viewport()->width() - m_geometry.pageWidth * m_zoom;
        return std::round(std::max(desk / 2, 0.0) + m_geometry.leftMargin * m_zoom);
    }
    const qreal spare = viewport()->width() - layout().width() * m_zoom;
    return std::round(std::max(spare / 2, std::min(m_geometry.leftMargin * m_zoom, spare)));
}

QPointF EditorView::textOrigin() const
{
    return {columnLeft(), roomAbove() * m_zoom - m_scroller->offset()};
}

QPointF EditorView::toPage(QPointF viewportPoint) const
{
    return (viewportPoint - textOrigin()) / m_zoom;
}

QPointF EditorView::toViewport(QPointF pagePoint) const
{
    return pagePoint * m_zoom + textOrigin();
}

QRectF EditorView::toViewport(const QRectF& pageRect) const
{
    return {toViewport(pageRect.topLeft()), pageRect.size() * m_zoom};
}

qsizetype EditorView::positionAt(QPointF viewportPoint, CaretSide* side) const
{
    return layout().positionAt(toPage(viewportPoint), side);
}

QString EditorView::linkAt(QPointF viewportPoint) const
{
    const QPointF page = toPage(viewportPoint);
    const qsizetype near = positionAt(viewportPoint);
    for (const qsizetype position : {near, near - 1}) {
        if (position < 0 || position >= store().length())
            continue;
        const QString link = store().characterStyle(position)->link;
        if (link.isEmpty())
            continue;
        for (const QRectF& rect : layout().rectsOf({position, 1})) {
            if (rect.contains(page))
                return link;
        }
    }
    return {};
}

void EditorView::updatePage(const QRectF& pageRect)
{
    viewport()->update(toViewport(pageRect).toAlignedRect().adjusted(-1, -1, 1, 1));
}

// Selection and caret

TextSelection EditorView::selection() const
{
    return m_gateway->selection();
}

QList<TextRange> EditorView::selectedRanges() const
{
    const EditorExtension* holder = m_extensions.withSelection();
    const QList<TextRange> ranges = holder ? holder->selectedRanges() : QList<TextRange>();
    return ranges.isEmpty() ? QList{selection().range()} : ranges;
}

void EditorView::setSelection(TextSelection selection, CaretSide side)
{
    m_navigator.forgetGoal();
    select(selection, side);
}

void EditorView::select(TextSelection selection, CaretSide side)
{
    const bool sideChanges = side != m_caretSide;
    m_nextCaretSide = side;
    m_gateway->setSelection(selection);
    m_nextCaretSide = CaretSide::lowerLine;
    m_caretSide = side;
    if (sideChanges)
        updateCaret();
}

void EditorView::moveCaret(CaretMove move, SelectionMode mode)
{
    const bool selects = mode == SelectionMode::extend;
    const TextSelection before = selection();
    CaretPlace place{before.position, m_caretSide};
    const bool collapses = !selects && !before.isEmpty();
    if (collapses && move == CaretMove::left)
        place = {before.range().location};
    else if (collapses && move == CaretMove::right)
        place = {before.range().end()};
    else
        place =
            m_navigator.moved(layout(), store(), place, move, viewport()->height() * 0.9 / m_zoom);
    select({selects ? before.anchor : place.position, place.position}, place.side);
    ensureCaretVisible();
    if (selects)
        publishPrimarySelection();
}

void EditorView::onSelectionChanged()
{
    const TextRange before = m_shownSelection.range();
    m_shownSelection = selection();
    m_caretSide = m_nextCaretSide;
    if (layout().hasPreedit() && layout().preeditPosition() != m_shownSelection.position)
        m_inputMethod->cancel();
    updateSelectionBetween(before.clampedTo(store().length()), m_shownSelection.range());
    restartCaretBlink();
    updateMicroFocus();
    editorAccessible::announceSelection(*this);
    emit selectionChanged();
}

void EditorView::updateSelectionBetween(TextRange before, TextRange after)
{
    if (before == after || (before.isEmpty() && after.isEmpty()))
        return;
    const auto updateLines = [this](qsizetype from, qsizetype to) {
        if (from == to)
            return;
        const qreal first = layout().placeAt(std::min(from, to)).top;
        const qreal last = layout().bottomAt(std::max(from, to));
        const QRectF area = toViewport(QRectF(QPointF(0, first), QPointF(layout().width(), last)));
        viewport()->update(QRect(0, int(std::floor(std::max(area.top(), -1e6))),
                                 viewport()->width(),
                                 int(std::ceil(std::min(area.height(), 4e6))) + 1));
    };
    if (before.isEmpty() || after.isEmpty()) {
        const TextRange only = before.isEmpty() ? after : before;
        updateLines(only.location, only.end());
        return;
    }
    updateLines(before.location, after.location);
    updateLines(before.end(), after.end());
}

QRectF EditorView::caretRect() const
{
    return toViewport(layout().caretRect(int(selection().position), m_caretSide));
}

bool EditorView::showsCaret() const
{
    return m_blinkShows && hasFocus() && isEditable() && !m_extensions.withSelection();
}

void EditorView::updateCaret()
{
    // Where it stood and where it stands.
    viewport()->update(m_shownCaret);
    const QRectF caret = caretRect();
    const qreal width = std::max(1.0, caretWidth * m_zoom);
    m_shownCaret = caret.adjusted(-width, -1, width, 1).toAlignedRect();
    viewport()->update(m_shownCaret);
}

void EditorView::restartCaretBlink()
{
    m_blinkShows = true;
    const int period = QGuiApplication::styleHints()->cursorFlashTime();
    if (hasFocus() && period >= 2)
        m_blinkTimer.start(period / 2, this);
    else
        m_blinkTimer.stop();
    updateCaret();
}

void EditorView::ensureCaretVisible()
{
    m_scroller->settle();
    const qreal height = viewport()->height();
    const qreal air = 8 * m_zoom;
    QRectF caret = caretRect();
    const bool isFar = caret.bottom() < -height || caret.top() > 2 * height;
    if (isFar) {
        // What lies between is not known well enough to scroll by; show the place itself.
        const qreal top = layout().caretRect(int(selection().position), m_caretSide).top();
        m_scroller->jumpTo(top - height / m_zoom / 2);
        caret = caretRect();
    }
    // Above the first line there is the head.
    const bool isFirstLine = toPage(caret.center()).y() < caret.height() / m_zoom;
    const bool fitsBelowHead = roomAbove() * m_zoom + caret.height() + air < height;
    if (caret.top() < air)
        m_scroller->scrollBy(isFirstLine && fitsBelowHead ? -std::ceil(m_scroller->offset())
                                                          : caret.top() - air);
    else if (caret.bottom() > height - air)
        m_scroller->scrollBy(std::min(caret.bottom() - height + air, caret.top() - air));
    updateCaret();
}

void EditorView::scrollCaretTo(qreal share)
{
    const qreal target = viewport()->height() * share;
    const qreal distance = caretRect().top() - target;
    const qreal reached =
        std::clamp(m_scroller->offset() + distance, 0.0, qreal(verticalScrollBar()->maximum()));
    if (std::abs(reached - m_scroller->offset()) <= m_zoom)
        return;
    const qreal top = layout().caretRect(int(selection().position), m_caretSide).top();
    m_scroller->jumpTo(top - target / m_zoom);
    updateCaret();
}

void EditorView::scrollToRange(TextRange range)
{
    const QRectF start = toViewport(layout().caretRect(int(range.location)));
    const qreal height = viewport()->height();
    if (start.top() >= 0 && start.bottom() <= height)
        return;
    m_scroller->jumpTo(layout().caretRect(int(range.location)).top() - height / m_zoom / 3);
    updateCaret();
}

// Painting

void EditorView::onParagraphsChanged(const QTextBlock& first, const QTextBlock& last, qreal top,
                                     qreal oldBottom)
{
    const qreal height = viewport()->height();
    const QPointF origin = textOrigin();
    const auto onView = [&](qreal pageY) {
        return origin.y() + pageY * m_zoom;
    };
    QTextBlock block = layout().rowStart(first);
    const int lastNumber = last.blockNumber();
    while (block.isValid() && block.blockNumber() <= lastNumber &&
           onView(layout().topOf(block)) < height) {
        layout().ensureLaidOut(block, toPage({0, 0}).y(), toPage({0, height}).y());
        block = layout().below(block);
    }
    const bool isKnown = !block.isValid() || block.blockNumber() > lastNumber;
    const bool staysBelow =
        isKnown && moveBelow(onView(oldBottom), onView(layout().bottomOf(last)));
    const auto [changedTop, changedBottom] =
        first == last ? layout().changedPart(first) : std::pair(top, layout().bottomOf(last));
    // Glyphs may reach out of their lines.
    const qreal overhang = 4 * m_zoom;
    const qreal from = std::max(onView(changedTop) - overhang, 0.0);
    const qreal to = staysBelow ? std::min(onView(changedBottom) + overhang, height) : height;
    if (from < to)
        viewport()->update(QRectF(0, from, viewport()->width(), to - from).toAlignedRect());
}

bool EditorView::moveBelow(qreal oldY, qreal newY)
{
    const qreal distance = newY - oldY;
    if (std::abs(distance) < 0.01)
        return true;
    const qreal ratio = devicePixelRatioF();
    const bool isWhole = std::abs(distance - std::round(distance)) < 0.01 && ratio == int(ratio);
    if (!isWhole || oldY < 0)
        return false;
    const QRect below(0, int(std::ceil(std::min(oldY, newY))), viewport()->width(),
                      viewport()->height());
    const int pixels = int(std::lround(distance));
    const QRect area = below & viewport()->rect();
    if (std::abs(pixels) >= area.height())
        return false;
    viewport()->scroll(0, pixels, area);
    if (m_shownCaret.top() >= area.top())
        m_shownCaret.translate(0, pixels);
    return true;
}

void EditorView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    const QRectF clip = event->rect();
    painter.fillRect(clip, m_look.background);

    TextPaint paint;
    paint.origin = textOrigin();
    paint.scale = m_zoom;
    paint.clip = clip;
    paint.colors = m_look.text;
    if (!hasFocus())
        paint.colors.selection = m_look.inactiveSelection;
    if (!m_extensions.withSelection())
        paint.selection = selection().range();
    paint.focus = m_focusRange;
    const EditorPaint extensionPaint{paint.origin, paint.scale, clip};
    m_extensions.forEachUpwards(
        [&](EditorExtension& extension) { extension.paintBehindText(painter, extensionPaint); });
    painter.setRenderHint(QPainter::TextAntialiasing);
    layout().paint(painter, paint);
    m_extensions.forEachUpwards(
        [&](EditorExtension& extension) { extension.paintOverText(painter, extensionPaint); });

    const auto drawCaret = [&](QRectF caret) {
        const qreal ratio = devicePixelRatioF();
        const qreal width = std::max(1.0, std::round(caretWidth * m_zoom * ratio) / ratio);
        caret.moveLeft(std::round((caret.left() - width / 2) * ratio) / ratio);
        caret.setWidth(width);
        painter.fillRect(caret, m_look.caret);
    };
    if (m_dropCaret) {
        drawCaret(toViewport(layout().caretRect(int(m_dropCaret->position), m_dropCaret->side)));
    } else if (showsCaret()) {
        drawCaret(caretRect());
    }
}

void EditorView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateColumn();
    m_scroller->settle();
    placeHead();
    viewport()->update();
}

void EditorView::scrollContentsBy(int /*dx*/, int /*dy*/)
{
    if (m_scroller->isSettling())
        return;
    m_scroller->settle();
    emit scrolled();
}

void EditorView::moveContents(int pixels)
{
    viewport()->scroll(0, pixels);
    m_shownCaret.translate(0, pixels);
}

void EditorView::setDropCaret(std::optional<CaretPlace> place)
{
    if (place == m_dropCaret)
        return;
    m_dropCaret = place;
    viewport()->update();
}

} // namespace orvane
