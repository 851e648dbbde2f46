// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TableControls.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "editor/pane/CommandReceiver.h"
#include "editor/tables/TableBar.h"
#include "editor/tables/TableTools.h"
#include "editor/view/EditorView.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

namespace orvane {

namespace {

// Pixels.
constexpr int addSize = 20;
constexpr int gapToAdd = 9;
constexpr int gapAbove = 27; ///< from the bar to the table, with the handles between them
constexpr int gapBelow = 34; ///< with the button between them
constexpr int gapToEdge = 8;

/// Whoever goes through a table with the arrow keys doesn't see the bar come and go.
constexpr int barDelay = 150; // milliseconds

/// A round button with a plus.
class AddButton final : public QToolButton {
public:
    AddButton(const QString& name, const Look& look, QWidget* parent)
        : QToolButton(parent)
        , m_look(look)
    {
        setFixedSize(addSize, addSize);
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_Hover);
        setCursor(Qt::PointingHandCursor);
        setAccessibleName(name);
        setToolTip(name);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
        const bool isLit = underMouse() || isDown();
        drawPanel(painter, rect(), addSize / 2.0, isLit ? m_look.tokens().accent : card.ground,
                  isLit ? m_look.tokens().accent : card.border);
        drawSymbol(painter, rect(), Symbol::Plus, 12,
                   isLit ? m_look.tokens().textOnAccent : card.icon);
    }

private:
    const Look& m_look;
};

} // namespace

TableControls::TableControls(EditorView& view, TableTools& tools, const CommandReceiver& commands,
                             Look& look, const Services& services)
    : m_view(view)
    , m_tools(tools)
    , m_commands(commands)
    , m_look(look)
    , m_notifications(services.notifications)
    , m_handles(view, tools, look, [this] { schedule(); })
{
    m_barDelay.setSingleShot(true);
    m_barDelay.setInterval(barDelay);
    connect(&m_barDelay, &QTimer::timeout, this, &TableControls::showBar);
    connect(&view, &EditorView::selectionChanged, this, &TableControls::follow);
    connect(&view, &EditorView::scrolled, this, &TableControls::schedule);
    connect(qApp, &QApplication::focusChanged, this, &TableControls::schedule);
    view.viewport()->installEventFilter(this);
}

void TableControls::textTyped()
{
    if (!m_table.isNull() && m_view.hasFocus())
        m_isTyping = true;
    schedule();
}

void TableControls::tableChanged()
{
    if (!m_table.isNull())
        m_view.viewport()->update();
    follow();
}

// Handles come and go with the caret.
void TableControls::follow()
{
    const auto block = TableEngine::tableBlock(m_view.store(), m_view.selection().position);
    const QUuid table = block ? block->table.id : QUuid();
    if (std::exchange(m_table, table) != table) {
        m_isTyping = false;
        m_view.viewport()->update();
    }
    if (m_tools.selectedRectangle())
        m_isTyping = false;
    schedule();
}

// Once for all that an event brings, and after the text has been laid out.
void TableControls::schedule()
{
    if ((m_table.isNull() && !m_bar) || std::exchange(m_isScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            const auto table = this->table();
            placeButtons(table);
            if (!table || m_isTyping || !isKeyboardHere())
                hideBar();
            else if (m_bar->isVisible())
                showBar();
            else if (!m_barDelay.isActive())
                m_barDelay.start();
        },
        Qt::QueuedConnection);
}

bool TableControls::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Resize:
        schedule();
        break;
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
        if (std::exchange(m_isTyping, false))
            schedule();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

std::optional<TableOnView> TableControls::table() const
{
    if (m_table.isNull() || !m_view.isEditable() || !m_view.isVisible())
        return std::nullopt;
    return tableOnView(m_view, m_view.selection().position);
}

// Also in a popup that one of the bar's buttons has opened.
bool TableControls::isKeyboardHere() const
{
    const QWidget* focus = QApplication::focusWidget();
    if (!focus)
        return false;
    if (focus == &m_view || m_bar->isAncestorOf(focus))
        return true;
    const QWidget* window = focus->window();
    for (const QWidget* owner = window->parentWidget(); window->windowType() == Qt::Popup && owner;
         owner = owner->parentWidget()) {
        if (owner == &m_view)
            return true;
    }
    return false;
}

void TableControls::makeWidgets()
{
    QWidget* page = m_view.viewport();
    m_addRow = new AddButton(tr("Add Row at the End"), m_look, page);
    m_addColumn = new AddButton(tr("Add Column at the End"), m_look, page);
    m_bar = new TableBar(m_notifications, m_look, page);
    connect(m_addRow, &QToolButton::clicked, this, [this] { m_tools.appendRow(); });
    connect(m_addColumn, &QToolButton::clicked, this, [this] { m_tools.appendColumn(); });
    connect(m_bar, &TableBar::left, this, [this] { m_view.setFocus(Qt::OtherFocusReason); });
}

// The one beside the table stands where its lines end.
void TableControls::placeButtons(const std::optional<TableOnView>& table)
{
    if (!m_bar) {
        if (!table)
            return;
        makeWidgets();
    }
    const QRect page = m_view.viewport()->rect();
    m_addRow->setVisible(table && table->endsInSight);
    m_addColumn->setVisible(table.has_value());
    if (!table)
        return;
    const QRectF& rect = table->rect;
    m_addRow->move(int(rect.center().x()) - addSize / 2, int(rect.bottom()) + gapToAdd);
    // In the middle of what is seen of it.
    const qreal top = std::max<qreal>(rect.top(), 0);
    const qreal bottom = std::min<qreal>(rect.bottom(), page.height());
    QRect beside(int(rect.right()) + gapToAdd, int((top + bottom) / 2) - addSize / 2, addSize,
                 addSize);
    beside = QStyle::visualRect(table->direction, rect.toAlignedRect(), beside);
    beside.moveLeft(qBound(1, beside.left(), page.width() - addSize - 1));
    m_addColumn->setGeometry(beside);
}

std::optional<QPoint> TableControls::barPlace(const TableOnView& table) const
{
    const QRect page = m_view.viewport()->rect();
    const QSize size = m_bar->sizeHint();
    const int left = qBound(gapToEdge, int(table.rect.center().x()) - size.width() / 2,
                            page.width() - gapToEdge - size.width());
    // What stands above the text is no place for it.
    const qreal text =
        m_view.toViewport(QPointF()).y() - m_view.textGeometry().verticalMargin * m_view.zoom();
    const int above = int(table.rect.top()) - gapAbove - size.height();
    if (table.beginsInSight && above >= qMax(4, int(text)))
        return QPoint(left, above);
    const int below = int(table.rect.bottom()) + gapBelow;
    if (table.endsInSight && below + size.height() <= page.height() - 4)
        return QPoint(left, below);
    for (const int top : {page.height() - gapToEdge - size.height(), gapToEdge}) {
        if (!QRectF(QPointF(left, top), size).intersects(table.caretCell))
            return QPoint(left, top);
    }
    return std::nullopt;
}

void TableControls::showBar()
{
    const auto table = this->table();
    if (!table || m_isTyping || !isKeyboardHere() ||
        !m_bar->fitInto(m_view.viewport()->width() - 2 * gapToEdge))
        return hideBar();
    const auto place = barPlace(*table);
    if (!place)
        return hideBar();
    m_bar->setNote(m_commands.note());
    const auto style = m_view.store().paragraphStyle(m_view.selection().position);
    m_bar->setAlignment(style->alignment);
    m_bar->showAt(*place);
}

void TableControls::hideBar()
{
    m_barDelay.stop();
    if (!m_bar || !m_bar->isVisible())
        return;
    const QWidget* focus = QApplication::focusWidget();
    if (focus && m_bar->isAncestorOf(focus))
        m_view.setFocus(Qt::OtherFocusReason);
    m_bar->hide();
}

void TableControls::takeKeyboard()
{
    m_isTyping = false;
    placeButtons(table());
    if (!m_bar)
        return;
    showBar();
    if (m_bar->isVisible())
        m_bar->takeKeyboard();
}

} // namespace orvane
