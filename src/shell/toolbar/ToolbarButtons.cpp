// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/toolbar/ToolbarButtons.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"

#include <QMenu>
#include <QPainter>
#include <QStyleOptionToolButton>

namespace orvane {

namespace {

constexpr int buttonHeight = 32;
constexpr int symbolSize = 16;
constexpr int chevronSize = 12;
constexpr int margin = 10;
constexpr int widestSwitcher = 320;
constexpr int narrowestSwitcher = 88;
constexpr int finderWidth = 380;
constexpr int narrowestFinder = 150;

} // namespace

ProjectSwitcher::ProjectSwitcher(QMenu& menu, QWidget* parent)
    : QToolButton(parent)
{
    setMenu(&menu);
    setPopupMode(QToolButton::InstantPopup);
    setFocusPolicy(Qt::TabFocus);
    setFont(interfaceFont(TextStyle::BodyMedium));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ProjectSwitcher::setTitle(const QString& title)
{
    m_title = title.simplified();
    setAccessibleName(tr("Project %1").arg(m_title));
    setToolTip(m_title);
    updateGeometry();
    update();
}

QSize ProjectSwitcher::sizeHint() const
{
    const int text = fontMetrics().horizontalAdvance(m_title);
    return {std::min(text + 2 * margin + symbolSize + chevronSize + 17, widestSwitcher),
            buttonHeight};
}

QSize ProjectSwitcher::minimumSizeHint() const
{
    return {std::min(narrowestSwitcher, sizeHint().width()), buttonHeight};
}

void ProjectSwitcher::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    style()->drawPrimitive(QStyle::PE_PanelButtonTool, &option, &painter, this);
    const QColor ink = palette().color(QPalette::WindowText);
    QRect room = rect().adjusted(margin, 0, -margin, 0);
    drawSymbol(painter, {room.topLeft(), QSize(symbolSize, height())}, Symbol::Project, symbolSize,
               ink);
    const QRect chevron(room.right() + 1 - chevronSize, 0, chevronSize, height());
    drawSymbol(painter, chevron, Symbol::ChevronDown, chevronSize, ink);
    room.adjust(symbolSize + 8, 0, -chevronSize - 8, 0);
    drawTextLine(painter, room, font(), ink, m_title);
}

FinderButton::FinderButton(Look& look, QWidget* parent)
    : QAbstractButton(parent)
    , m_look(look)
{
    setText(tr("Find a note or command"));
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void FinderButton::setKeyText(const QString& key)
{
    m_key = key;
    update();
}

QSize FinderButton::sizeHint() const
{
    return {finderWidth, buttonHeight};
}

QSize FinderButton::minimumSizeHint() const
{
    return {narrowestFinder, buttonHeight};
}

void FinderButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor ink = palette().color(QPalette::PlaceholderText);
    const QColor line = m_look.tokens().on(Surface::Toolbar).border;
    QColor face = palette().color(QPalette::AlternateBase);
    if (underMouse() && isEnabled())
        face = blended(palette().color(QPalette::WindowText), isDown() ? 0.1 : 0.05, face);
    drawPanel(painter, rect(), 6, face, line);
    QRect room = rect().adjusted(margin, 0, -margin, 0);
    drawSymbol(painter, {room.topLeft(), QSize(symbolSize, height())}, Symbol::Search, symbolSize,
               ink);
    room.setLeft(room.left() + symbolSize + 8);
    const int textWidth = fontMetrics().horizontalAdvance(text());
    if (!m_key.isEmpty() && room.width() >= textWidth + keyChipWidth(m_key) + margin)
        room.setRight(drawKeyChip(painter, room, m_key, ink, line) - margin);
    drawTextLine(painter, room, font(), ink, text());
    if (showsKeyboardFocus(*this))
        drawFocusRing(painter, rect(), 6, palette().color(QPalette::LinkVisited));
}

} // namespace orvane
