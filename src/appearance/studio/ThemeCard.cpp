// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/ThemeCard.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "appearance/studio/ThemePreview.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QToolButton>

namespace orvane {

namespace {

constexpr int padding = 11;
constexpr int nameHeight = 36;
constexpr int moreSize = 28;
constexpr double radius = 10;

/// Three dots, one above the other.
class MoreButton final : public QToolButton {
public:
    MoreButton(Look& look, QWidget* parent)
        : QToolButton(parent)
        , m_look(look)
    {
        setFixedSize(moreSize, moreSize);
        setFocusPolicy(Qt::TabFocus);
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QToolButton::paintEvent(event);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_look.tokens().on(Surface::Page).icon);
        for (int i = -1; i <= 1; ++i)
            painter.drawEllipse(QPointF(width() / 2.0, height() / 2.0 + i * 5), 1.5, 1.5);
    }

private:
    Look& m_look;
};

} // namespace

ThemeCard::ThemeCard(const QUuid& id, Look& look, QWidget* parent)
    : QAbstractButton(parent)
    , m_id(id)
    , m_look(look)
    , m_more(new MoreButton(look, this))
{
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMinimumWidth(200);
    connect(m_more, &QAbstractButton::clicked, this,
            [this] { emit menuWanted(m_more->mapToGlobal(QPoint(0, m_more->height() + 2))); });
}

void ThemeCard::showTheme(const QString& name, const Tokens& light, const Tokens& dark, bool active)
{
    setText(name);
    m_light = light;
    m_dark = dark;
    m_active = active;
    setAccessibleName(active ? tr("%1, the active theme").arg(name) : name);
    m_more->setAccessibleName(tr("More for %1").arg(name));
    m_more->setToolTip(tr("Rename, duplicate, copy, export, delete"));
    update();
}

QRect ThemeCard::nameRect() const
{
    return {padding, height() - nameHeight - 2, width() - 2 * padding - moreSize, nameHeight};
}

void ThemeCard::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const SurfaceTokens& s = m_look.tokens().on(Surface::Page);
    drawPanel(painter, rect(), radius, underMouse() ? s.hoveredRow : s.ground, s.border);
    if (isChecked())
        drawFocusRing(painter, rect(), radius, s.accent);
    const double gap = 6;
    const double swatchWidth = (width() - 2 * padding - gap) / 2.0;
    const double swatchHeight = height() - padding - nameHeight - 4;
    paintThemeSwatch(painter, QRectF(padding, padding, swatchWidth, swatchHeight), m_light);
    paintThemeSwatch(
        painter, QRectF(padding + swatchWidth + gap, padding, swatchWidth, swatchHeight), m_dark);
    if (!m_nameField) {
        QRect place = nameRect();
        if (m_active) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(s.accent);
            painter.drawEllipse(QPointF(place.left() + 3, place.center().y() + 0.5), 3, 3);
            place.setLeft(place.left() + 12);
        }
        const QFont font = interfaceFont(TextStyle::BodyStrong);
        painter.setFont(font);
        painter.setPen(s.text);
        painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                         QFontMetrics(font).elidedText(text(), Qt::ElideRight, place.width()));
    }
    if (showsKeyboardFocus(*this))
        drawFocusRing(painter, QRectF(rect()).adjusted(3, 3, -3, -3), radius - 3, s.accent);
}

void ThemeCard::resizeEvent(QResizeEvent* event)
{
    QAbstractButton::resizeEvent(event);
    m_more->move(width() - moreSize - 6, nameRect().center().y() - moreSize / 2);
    if (m_nameField)
        m_nameField->setGeometry(nameRect().adjusted(-4, 3, 0, -3));
}

void ThemeCard::contextMenuEvent(QContextMenuEvent* event)
{
    setChecked(true);
    emit menuWanted(event->globalPos());
}

void ThemeCard::mouseDoubleClickEvent(QMouseEvent*)
{
    emit applyWanted();
}

void ThemeCard::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F2)
        editName();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        emit applyWanted();
    else
        QAbstractButton::keyPressEvent(event);
}

void ThemeCard::editName()
{
    if (m_nameField)
        return;
    m_nameField = new QLineEdit(text(), this);
    m_nameField->setAccessibleName(tr("Name of the theme"));
    m_nameField->setMaxLength(200);
    m_nameField->setGeometry(nameRect().adjusted(-4, 3, 0, -3));
    m_nameField->installEventFilter(this);
    m_nameField->show();
    m_nameField->selectAll();
    m_nameField->setFocus();
    connect(m_nameField, &QLineEdit::editingFinished, this, [this] { endNaming(NewName::taken); });
    update();
}

bool ThemeCard::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_nameField && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        endNaming(NewName::dropped);
        return true;
    }
    return QAbstractButton::eventFilter(watched, event);
}

void ThemeCard::endNaming(NewName newName)
{
    if (!m_nameField)
        return;
    QLineEdit* field = std::exchange(m_nameField, nullptr);
    const QString name = field->text().trimmed();
    field->removeEventFilter(this);
    field->disconnect(this);
    const bool hadFocus = field->hasFocus();
    field->hide();
    field->deleteLater();
    if (hadFocus)
        setFocus();
    update();
    if (newName == NewName::taken && !name.isEmpty() && name != text())
        emit renamed(name);
}

SaveLookCard::SaveLookCard(Look& look, QWidget* parent)
    : QAbstractButton(parent)
    , m_look(look)
{
    setText(tr("Save current look"));
    setToolTip(tr("Keep the look as it is now as a new pair of themes"));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMinimumWidth(200);
}

void SaveLookCard::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const SurfaceTokens& s = m_look.tokens().on(Surface::Page);
    if (underMouse() || isDown())
        drawPanel(painter, rect(), radius, s.hoveredRow);
    drawDashedEdge(painter, rect(), radius, s.border);
    const QFont font = interfaceFont(TextStyle::Body);
    painter.setFont(font);
    const int textWidth = QFontMetrics(font).horizontalAdvance(text());
    const int left = (width() - textWidth - 22) / 2;
    drawSymbol(painter, QRectF(left, 0, 14, height()), Symbol::Plus, 14, s.textSecondary);
    painter.setPen(s.textSecondary);
    painter.drawText(QRect(left + 22, 0, textWidth + 4, height()), Qt::AlignVCenter, text());
    if (showsKeyboardFocus(*this))
        drawFocusRing(painter, rect(), radius, s.accent);
}

} // namespace orvane
