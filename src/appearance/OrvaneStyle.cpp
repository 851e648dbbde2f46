// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/OrvaneStyle.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/SurfacePalette.h"
#include "appearance/Typography.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>
#include <QStyledItemDelegate>
#include <QToolButton>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* toneProperty = "orvaneTone";
constexpr const char* ringProperty = "orvaneRingAroundFace";
/// The popup of a combo box, which is a class of the toolkit's own.
constexpr double toolTipRadius = 6;
constexpr const char* listOfComboBox = "QComboBoxPrivateContainer";
constexpr char toolTip[] = "QTipLabel";

ButtonTone toneOf(const QStyleOptionButton& option, const QWidget* widget)
{
    const QVariant told = widget ? widget->property(toneProperty) : QVariant();
    if (told.isValid())
        return ButtonTone(told.toInt());
    return option.features.testFlag(QStyleOptionButton::DefaultButton) ? ButtonTone::Accent
                                                                       : ButtonTone::Plain;
}

bool hasRingAroundFace(const QWidget* widget)
{
    return widget && widget->property(ringProperty).toBool();
}

constexpr const char* longListProperty = "orvaneLongList";
constexpr int longListRows = 14;

/// Draws the rows of a long list as those of a menu.
class LongListDelegate final : public QStyledItemDelegate {
public:
    explicit LongListDelegate(QComboBox* combo)
        : QStyledItemDelegate(combo)
        , m_combo(*combo)
    {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const QStyleOptionMenuItem item = itemOf(option, index);
        m_combo.style()->drawControl(QStyle::CE_MenuItem, &item, painter, &m_combo);
    }
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override
    {
        const QStyleOptionMenuItem item = itemOf(option, index);
        return m_combo.style()->sizeFromContents(QStyle::CT_MenuItem, &item, {}, &m_combo);
    }

private:
    [[nodiscard]] QStyleOptionMenuItem itemOf(const QStyleOptionViewItem& option,
                                              const QModelIndex& index) const
    {
        QStyleOptionMenuItem item;
        item.state = option.state & (QStyle::State_Enabled | QStyle::State_Selected);
        item.rect = option.rect;
        item.font = m_combo.font();
        item.fontMetrics = QFontMetrics(item.font);
        item.text = index.data().toString();
        item.menuHasCheckableItems = true;
        item.checked = index.row() == m_combo.currentIndex();
        return item;
    }

    const QComboBox& m_combo;
};

QColor withOpacity(QColor color, double opacity)
{
    color.setAlphaF(float(opacity));
    return color;
}

bool showsKeyboardFocus(const QStyleOption& option)
{
    return option.state.testFlag(QStyle::State_HasFocus) &&
           option.state.testFlag(QStyle::State_KeyboardFocusChange);
}

/// The ring of the focused control on the surface that it stands on.
QColor ringOf(const QStyleOption& option)
{
    return option.palette.color(QPalette::LinkVisited);
}

/// A face shifted away from the ink on it, so that the ink reads on it as before.
QColor shaded(const QColor& face, const QColor& ink, double share)
{
    return blended(relativeLuminance(ink) > relativeLuminance(face) ? Qt::black : Qt::white, share,
                   face);
}

} // namespace

void setLongList(QComboBox* combo)
{
    combo->setProperty(longListProperty, true);
    combo->setMaxVisibleItems(longListRows);
    combo->setItemDelegate(new LongListDelegate(combo));
    combo->view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void setButtonTone(QAbstractButton* button, ButtonTone tone)
{
    button->setProperty(toneProperty, int(tone));
    button->update();
}

void setRingAroundFace(QAbstractButton* button)
{
    button->setProperty(ringProperty, true);
}

OrvaneStyle::OrvaneStyle(const Tokens& tokens)
    : QProxyStyle(u"Fusion"_s)
    , m_tokens(tokens)
{}

void OrvaneStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
        qobject_cast<QScrollBar*>(widget) || qobject_cast<QAbstractSpinBox*>(widget))
        widget->setAttribute(Qt::WA_Hover);
    const bool isPopup = qobject_cast<QMenu*>(widget) || widget->inherits(listOfComboBox);
    const bool isToolTip = widget->inherits(toolTip);
    if (isPopup || isToolTip) {
        widget->setAttribute(Qt::WA_TranslucentBackground);
        widget->installEventFilter(this);
    }
    if (isPopup)
        widget->setPalette(surfacePalette(m_tokens, Surface::Card));
}

bool OrvaneStyle::eventFilter(QObject* watched, QEvent* event)
{
    if (watched->inherits(toolTip)) {
        // Under Wayland a popup stays where it was mapped: what moves is mapped anew.
        auto* tip = static_cast<QWidget*>(watched);
        if (event->type() == QEvent::Move && tip->isVisible()) {
            tip->hide();
            tip->show();
        }
    } else if (event->type() == QEvent::Show) {
        auto* popup = static_cast<QWidget*>(watched);
        popup->setPalette(surfacePalette(m_tokens, Surface::Card));
        if (auto* list = popup->findChild<QAbstractItemView*>())
            list->viewport()->setAutoFillBackground(false);
    }
    return QProxyStyle::eventFilter(watched, event);
}

void OrvaneStyle::polish(QPalette& palette)
{
    palette = standardPalette();
}

QPalette OrvaneStyle::standardPalette() const
{
    return surfacePalette(m_tokens, Surface::Window);
}

void OrvaneStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const
{
    const SurfaceTokens& card = m_tokens.on(Surface::Card);
    switch (element) {
    case PE_PanelButtonCommand:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option))
            return drawButtonFace(*button, *painter, widget);
        break;
    case PE_PanelButtonTool:
        return drawToolButtonFace(*option, *painter);
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            frame && frame->lineWidth <= 0)
            return;
        return drawFieldFrame(*option, *painter);
    case PE_FrameFocusRect:
        if (option->state.testFlag(State_KeyboardFocusChange))
            drawFocusRing(*painter, option->rect, 6, ringOf(*option));
        return;
    case PE_Frame:
        if (widget && widget->inherits(listOfComboBox))
            drawPanel(*painter, option->rect, popupRadius, card.ground, card.border);
        return;
    case PE_FrameDefaultButton:
    case PE_FrameButtonTool:
    case PE_FrameStatusBarItem:
        return;
    case PE_PanelTipLabel:
        return drawPanel(*painter, option->rect, toolTipRadius, card.ground, card.border);
    case PE_PanelMenu:
        return drawPanel(*painter, option->rect, popupRadius, card.ground, card.border);
    case PE_FrameMenu:
        return;
    case PE_IndicatorCheckBox:
        return drawCheckBoxMark(*option, *painter);
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void OrvaneStyle::drawButtonFace(const QStyleOptionButton& option, QPainter& painter,
                                 const QWidget* widget) const
{
    const Tokens& t = m_tokens;
    const ButtonTone tone = toneOf(option, widget);
    const bool plain = tone == ButtonTone::Plain || tone == ButtonTone::DangerText;
    const QColor ground = option.palette.color(QPalette::Window);
    const bool pressed = option.state.testFlag(State_Sunken);
    const bool hovered = option.state.testFlag(State_MouseOver);
    QColor face = tone == ButtonTone::Accent   ? t.accent
                  : tone == ButtonTone::Danger ? t.danger
                                               : option.palette.color(QPalette::Button);
    if (!option.state.testFlag(State_Enabled))
        face = blended(face, plain ? 0.5 : 0.3, ground);
    else if (plain && (pressed || hovered))
        face = blended(option.palette.color(QPalette::ButtonText), pressed ? 0.14 : 0.06, face);
    else if (pressed || hovered)
        face = shaded(face, tone == ButtonTone::Accent ? t.textOnAccent : t.textOnDanger,
                      pressed ? 0.18 : 0.1);
    QRectF rect = option.rect;
    if (hasRingAroundFace(widget)) {
        if (option.state.testFlag(State_HasFocus))
            drawFocusRing(painter, rect, 6 + ringRoom - 1, ringOf(option));
        rect.adjust(ringRoom, ringRoom, -ringRoom, -ringRoom);
    } else if (showsKeyboardFocus(option)) {
        drawFocusRing(painter, rect, 6,
                      plain ? ringOf(option) : option.palette.color(QPalette::WindowText));
        rect.adjust(3, 3, -3, -3);
        return drawPanel(painter, rect, 4, face);
    }
    drawPanel(painter, rect, 6, face);
}

void OrvaneStyle::drawButtonLabel(const QStyleOptionButton& option, QPainter& painter,
                                  const QWidget* widget) const
{
    const Tokens& t = m_tokens;
    const ButtonTone tone = toneOf(option, widget);
    const bool isFilled = tone == ButtonTone::Accent || tone == ButtonTone::Danger;
    QColor ink = tone == ButtonTone::Accent       ? t.textOnAccent
                 : tone == ButtonTone::Danger     ? t.textOnDanger
                 : tone == ButtonTone::DangerText ? option.palette.color(QPalette::BrightText)
                                                  : option.palette.color(QPalette::ButtonText);
    if (!option.state.testFlag(State_Enabled))
        ink = withOpacity(option.palette.color(QPalette::Active, QPalette::WindowText), 0.45);
    const int iconSize = option.icon.isNull() ? 0 : option.iconSize.width();
    const int gap = iconSize > 0 && !option.text.isEmpty() ? 8 : 0;
    const int textWidth = option.fontMetrics.horizontalAdvance(option.text);
    const int width = iconSize + gap + textWidth;
    QRect rect = option.rect;
    int x = rect.left() + qMax(0, (rect.width() - width) / 2);
    if (iconSize > 0) {
        const QPixmap pixmap = option.icon.pixmap(
            QSize(iconSize, iconSize), deviceRatio(painter),
            option.state.testFlag(State_Enabled) ? QIcon::Normal : QIcon::Disabled);
        painter.drawPixmap(QPoint(x, rect.top() + (rect.height() - iconSize) / 2), pixmap);
        x += iconSize + gap;
    }
    rect.setLeft(x);
    painter.setPen(ink);
    if (isFilled && option.state.testFlag(State_Enabled))
        painter.setFont(interfaceFont(
            TextStyle::Body, polarityOf(ink, tone == ButtonTone::Accent ? t.accent : t.danger)));
    painter.drawText(rect, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextHideMnemonic, option.text);
}

void OrvaneStyle::drawToolButtonFace(const QStyleOption& option, QPainter& painter) const
{
    const Tokens& t = m_tokens;
    const QColor ink = option.palette.color(QPalette::WindowText);
    const QColor ground = option.palette.color(QPalette::Window);
    if (option.state.testFlag(State_Enabled)) {
        if (option.state.testFlag(State_Sunken))
            drawPanel(painter, option.rect, 6, withOpacity(ink, 0.14));
        else if (option.state.testFlag(State_On))
            drawPanel(painter, option.rect, 6, blended(t.accent, 0.16, ground));
        else if (option.state.testFlag(State_MouseOver))
            drawPanel(painter, option.rect, 6, withOpacity(ink, 0.08));
    }
    if (showsKeyboardFocus(option))
        drawFocusRing(painter, option.rect, 6, ringOf(option));
}

void OrvaneStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    switch (element) {
    case CE_PushButtonBevel:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option))
            return drawButtonFace(*button, *painter, widget);
        break;
    case CE_PushButtonLabel:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option))
            return drawButtonLabel(*button, *painter, widget);
        break;
    case CE_ComboBoxLabel:
        if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
            painter->setPen(combo->palette.color(QPalette::WindowText));
            painter->drawText(combo->rect.adjusted(10, 0, -28, 0),
                              Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                              combo->currentText);
            return;
        }
        break;
    case CE_MenuItem:
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
            if (!qobject_cast<const QComboBox*>(widget))
                return drawMenuItem(*item, *painter);
            // The list of a combo box has no margins, and its rows come filled.
            painter->fillRect(item->rect, m_tokens.on(Surface::Card).ground);
            QStyleOptionMenuItem inset = *item;
            inset.rect.adjust(5, 0, -5, 0);
            return drawMenuItem(inset, *painter);
        }
        break;
    case CE_MenuEmptyArea:
        return;
    case CE_Splitter:
        painter->fillRect(option->rect, option->palette.color(QPalette::Mid));
        return;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void OrvaneStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     QPainter* painter, const QWidget* widget) const
{
    switch (control) {
    case CC_ScrollBar:
        if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option))
            return drawScrollBar(*slider, *painter, widget);
        break;
    case CC_ComboBox:
        if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option))
            return drawComboBox(*combo, *painter);
        break;
    case CC_SpinBox:
        if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option))
            return drawSpinBox(*spin, *painter, widget);
        break;
    default:
        break;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

int OrvaneStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                             const QWidget* widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return 10;
    case PM_ScrollBarSliderMin:
        return 32;
    case PM_ScrollView_ScrollBarSpacing:
    case PM_ScrollView_ScrollBarOverlap:
    case PM_FocusFrameHMargin:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    case PM_DefaultFrameWidth:
        return widget && widget->inherits("QLineEdit") ? 1 : 0;
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return 5;
    case PM_SplitterWidth:
        return 1;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
        return 16;
    case PM_CheckBoxLabelSpacing:
        return 8;
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
        return 16;
    case PM_ToolTipLabelFrameWidth:
        return 6;
    case PM_ToolBarItemSpacing:
        return 4;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int OrvaneStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* returnData) const
{
    switch (hint) {
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_UnderlineShortcut:
    case SH_Widget_Animation_Duration:
    case SH_ScrollBar_Transient:
    case SH_TitleBar_NoBorder:
        return 0;
    case SH_ComboBox_Popup:
        if (widget && widget->property(longListProperty).toBool())
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    case SH_Menu_Mask:
    case SH_ToolTip_Mask:
        // Under X11 what a popup leaves free is black where nothing composes the screen.
        if (auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(returnData);
            mask && option && QGuiApplication::platformName() == "xcb"_L1) {
            mask->region = panelRegion(option->rect.size(),
                                       hint == SH_ToolTip_Mask ? toolTipRadius : popupRadius);
            return 1;
        }
        return 0;
    case SH_ScrollBar_LeftClickAbsolutePosition:
    case SH_ItemView_ShowDecorationSelected:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QSize OrvaneStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                    const QSize& size, const QWidget* widget) const
{
    switch (type) {
    case CT_PushButton:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
            const int iconSize = button->icon.isNull() ? 0 : button->iconSize.width() + 8;
            const int text = button->fontMetrics.horizontalAdvance(button->text);
            const int ring = hasRingAroundFace(widget) ? 2 * ringRoom : 0;
            return {text + iconSize + 32 + ring, 34 + ring};
        }
        break;
    case CT_ToolButton:
        return {qMax(size.width() + 12, 28), qMax(size.height() + 12, 28)};
    case CT_LineEdit:
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            frame && frame->lineWidth > 0)
            return {size.width() + 16, 34};
        return size;
    case CT_ComboBox:
    case CT_SpinBox:
        return {size.width() + 40, 34};
    case CT_MenuItem:
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            return menuItemSize(*item);
        break;
    default:
        break;
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

} // namespace orvane
