// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/ChoicePopup.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int rowHeight = 28;
constexpr int mostRows = 12;
constexpr int fontsWidth = 260;
constexpr int numbersWidth = 104;
constexpr int namePixels = 14;

/// Whether the family shows letters for letters.
bool isReadable(const QString& family)
{
    const auto systems = QFontDatabase::writingSystems(family);
    return systems.isEmpty() ||
           (systems.contains(QFontDatabase::Latin) && !systems.contains(QFontDatabase::Symbol));
}

/// Draws rows as those of a menu; only rows that are seen open their font.
class RowDelegate final : public QStyledItemDelegate {
public:
    RowDelegate(const ChoicePopup::Choices& choices, Look& look, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_current(choices.current)
        , m_showsFaces(choices.kind == ChoicePopup::Kind::fonts)
        , m_look(look)
    {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
        const QString text = index.data().toString();
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        const bool isHovered = option.state.testFlag(QStyle::State_MouseOver);
        if (isSelected || isHovered)
            drawPanel(*painter, option.rect, 6, isSelected ? card.selectedRow : card.hoveredRow);
        const bool isCurrent = text == m_current;
        const QColor ink = isSelected ? card.textOnSelectedRow : card.text;
        const QRect room = option.rect.adjusted(10, 0, -8, 0);
        painter->setPen(isCurrent && !isSelected ? card.link : ink);
        painter->setFont(m_showsFaces && isReadable(text) ? editorFont(text, namePixels)
                                                          : option.font);
        painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          painter->fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
    }
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {40, rowHeight};
    }

private:
    QString m_current;
    bool m_showsFaces;
    Look& m_look;
};

} // namespace

ChoicePopup::ChoicePopup(const Choices& choices, Look& look, QWidget* parent)
    : BarPopup(choices.name, look, parent)
    , m_choices(choices)
    , m_field(new QLineEdit(this))
    , m_list(new QListWidget(this))
{
    const bool takesNumbers = choices.kind == Kind::numbers;
    setFixedWidth(takesNumbers ? numbersWidth : fontsWidth);
    column().setContentsMargins(8, 8, 8, 8);
    column().addWidget(m_field);
    column().addWidget(m_list);
    m_field->setFixedHeight(rowHeight);
    m_field->setAccessibleName(choices.field);
    m_field->setPlaceholderText(takesNumbers ? QString() : choices.field);
    m_list->setAccessibleName(choices.name);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->viewport()->setAutoFillBackground(false);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setUniformItemSizes(true);
    m_list->setMouseTracking(true);
    m_list->setItemDelegate(new RowDelegate(choices, look, m_list));
    m_list->addItems(choices.entries);
    m_list->setFixedHeight(rowHeight * int(std::min<qsizetype>(mostRows, choices.entries.size())));
    const qsizetype current = choices.entries.indexOf(choices.current);
    if (current >= 0)
        m_list->scrollToItem(m_list->item(int(current)), QAbstractItemView::PositionAtCenter);
    if (takesNumbers) {
        m_field->setText(choices.current);
        m_field->selectAll();
    } else {
        connect(m_field, &QLineEdit::textEdited, this, &ChoicePopup::narrow);
    }
    connect(m_field, &QLineEdit::returnPressed, this, &ChoicePopup::chooseTyped);
    connect(m_list, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem* item) { choose(item->text()); });
    m_field->installEventFilter(this);
    m_list->installEventFilter(this);
    setFocusProxy(m_field);
    m_field->setFocus(Qt::PopupFocusReason);
}

void ChoicePopup::narrow(const QString& text)
{
    m_list->clear();
    m_list->addItems(m_choices.entries.filter(text.trimmed(), Qt::CaseInsensitive));
    if (!text.isEmpty())
        m_list->setCurrentRow(0);
}

void ChoicePopup::chooseTyped()
{
    if (m_choices.kind == Kind::numbers) {
        if (!m_field->text().trimmed().isEmpty())
            choose(m_field->text().trimmed());
    } else if (const QListWidgetItem* item = m_list->currentItem()) {
        choose(item->text());
    }
}

void ChoicePopup::choose(const QString& text)
{
    emit chosen(text);
    close();
}

void ChoicePopup::enterList()
{
    if (m_list->count() == 0)
        return;
    if (m_list->currentRow() < 0) {
        const qsizetype current = m_choices.entries.indexOf(m_choices.current);
        m_list->setCurrentRow(std::clamp(int(current), 0, m_list->count() - 1));
    }
    m_list->setFocus(Qt::TabFocusReason);
}

bool ChoicePopup::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return BarPopup::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (watched == m_field && key == Qt::Key_Down) {
        enterList();
    } else if (watched == m_list && key == Qt::Key_Up && m_list->currentRow() == 0) {
        m_field->setFocus(Qt::BacktabFocusReason);
    } else if (watched == m_list && isReturn && m_list->currentItem()) {
        choose(m_list->currentItem()->text());
    } else {
        return BarPopup::eventFilter(watched, event);
    }
    return true;
}

} // namespace orvane
