// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/sheets/SheetHost.h"

#include "appearance/Drawing.h"
#include "shell/shortcuts/KeyRouting.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>

namespace orvane {

namespace {

constexpr int topPlacement = 96;
constexpr int gapBeside = 12;

QList<QWidget*> tabStops(QWidget* sheet)
{
    QList<QWidget*> stops;
    for (QWidget* next = sheet->nextInFocusChain(); next && next != sheet;
         next = next->nextInFocusChain()) {
        if (sheet->isAncestorOf(next) && next->isVisible() && next->isEnabled() &&
            (next->focusPolicy() & Qt::TabFocus) != 0 && !next->focusProxy())
            stops.append(next);
    }
    return stops;
}

} // namespace

Sheet::Sheet(Look& look, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
{
    setPalette(look.palette(Surface::Card));
    setFocusPolicy(Qt::NoFocus);
    connect(&look, &Look::changed, this, [this] { setPalette(m_look.palette(Surface::Card)); });
}

void Sheet::close()
{
    if (m_host)
        m_host->remove(this);
    emit finished();
    deleteLater();
}

void Sheet::fitContents()
{
    if (m_host)
        m_host->layOut();
}

void Sheet::setAlarming(QWidget& label)
{
    const auto follow = [this, &label] {
        QPalette palette = m_look.palette(Surface::Card);
        palette.setColor(QPalette::WindowText, m_look.tokens().on(Surface::Card).danger);
        label.setPalette(palette);
    };
    connect(&m_look, &Look::changed, &label, follow);
    follow();
}

void Sheet::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
    drawPanel(painter, rect(), 12, card.ground, card.border);
}

void Sheet::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        return dismiss();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        auto* focused = qobject_cast<QPushButton*>(QApplication::focusWidget());
        if (focused && isAncestorOf(focused))
            return focused->click();
        for (auto* button : findChildren<QPushButton*>()) {
            if (button->isDefault() && button->isEnabled())
                return button->click();
        }
    }
    QWidget::keyPressEvent(event);
    event->accept();
}

bool Sheet::focusNextPrevChild(bool next)
{
    const QList<QWidget*> stops = tabStops(this);
    if (stops.isEmpty())
        return true;
    const qsizetype at = stops.indexOf(QApplication::focusWidget());
    const qsizetype count = stops.size();
    const qsizetype target = at < 0 ? 0 : (at + (next ? 1 : -1) + count) % count;
    stops.at(target)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

SheetHost::SheetHost(Look& look, QWidget* window)
    : QWidget(window)
    , m_look(look)
{
    window->installEventFilter(this);
    declareKeyFocus(this, KeyFocus::Closed);
    hide();
}

Sheet* SheetHost::topSheet() const
{
    return m_sheets.isEmpty() ? nullptr : m_sheets.last();
}

void SheetHost::present(Sheet* sheet)
{
    if (m_sheets.isEmpty())
        m_focusBefore = QApplication::focusWidget();
    sheet->setParent(this);
    sheet->m_host = this;
    m_sheets.append(sheet);
    show();
    raise();
    sheet->show();
    layOut();
    focusInto(sheet);
    if (m_sheets.size() == 1) {
        tellReaders();
        emit visibleChanged();
    }
    emit presented(sheet);
}

void SheetHost::focusInto(Sheet* sheet)
{
    QWidget* target = sheet->initialFocus();
    if (!target)
        target = tabStops(sheet).value(0);
    if (target)
        target->setFocus(Qt::OtherFocusReason);
}

void SheetHost::remove(Sheet* sheet)
{
    const bool wasOnTop = topSheet() == sheet;
    m_sheets.removeAll(sheet);
    sheet->hide();
    update();
    if (Sheet* top = topSheet()) {
        if (wasOnTop)
            focusInto(top);
        return;
    }
    hide();
    tellReaders();
    emit visibleChanged();
    if (m_focusBefore && m_focusBefore->isVisible())
        m_focusBefore->setFocus(Qt::OtherFocusReason);
}

// What lies behind comes and goes for whoever reads the window.
void SheetHost::tellReaders()
{
    QAccessibleEvent changed(parentWidget(), QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&changed);
}

void SheetHost::layOut()
{
    setGeometry(parentWidget()->rect());
    for (Sheet* sheet : m_sheets) {
        const QSize room = size() - QSize(48, 48);
        QSize size = sheet->sizeHint().expandedTo(sheet->minimumSizeHint());
        if (sheet->hasHeightForWidth())
            size.setHeight(sheet->heightForWidth(size.width()));
        sheet->resize(size.boundedTo(room));
        sheet->move(placeOf(*sheet));
    }
    update();
}

QPoint SheetHost::placeOf(const Sheet& sheet) const
{
    const QPoint middle((width() - sheet.width()) / 2, (height() - sheet.height()) / 2);
    switch (sheet.placement()) {
    case Sheet::Placement::Middle:
        break;
    case Sheet::Placement::Top:
        return {middle.x(), std::min(topPlacement, middle.y())};
    case Sheet::Placement::Beside: {
        const bool isRightToLeft = layoutDirection() == Qt::RightToLeft;
        const int x = isRightToLeft ? sheet.m_anchor.left() - gapBeside - sheet.width()
                                    : sheet.m_anchor.right() + gapBeside;
        const QPoint last(width() - sheet.width() - gapBeside,
                          height() - sheet.height() - gapBeside);
        return {std::max(gapBeside, std::min(x, last.x())),
                std::max(gapBeside, std::min(sheet.m_anchor.top(), last.y()))};
    }
    }
    return middle;
}

bool SheetHost::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize && isVisible())
        layOut();
    return QWidget::eventFilter(watched, event);
}

void SheetHost::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    for (const Sheet* sheet : m_sheets) {
        if (sheet->placement() != Sheet::Placement::Beside)
            painter.fillRect(rect(), m_look.tokens().backdrop);
        drawCardShadow(painter, sheet->geometry(), 12);
    }
}

void SheetHost::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (topSheet() && topSheet()->placement() != Sheet::Placement::Middle)
        topSheet()->dismiss();
}

} // namespace orvane
