// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/sheets/SearchListSheet.h"

#include "appearance/OrvaneStyle.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int cardWidth = 440;
constexpr int padding = 28;
constexpr int popoverWidth = 340;
constexpr int popoverPadding = 12;
constexpr int listHeight = 320;
constexpr int popoverListHeight = 248;

} // namespace

SearchListSheet::SearchListSheet(const Words& words, QAbstractItemModel& model, Form form,
                                 Look& look, QWidget* parent)
    : Sheet(look, parent)
    , m_form(form)
    , m_field(new QLineEdit(this))
    , m_list(new QListView(this))
    , m_buttons(new QHBoxLayout)
{
    setAccessibleName(words.title);
    auto* layout = new QVBoxLayout(this);
    const bool isSheet = form == Form::Sheet;
    if (isSheet)
        layout->setContentsMargins(padding, padding - 4, padding, padding - 4);
    else
        layout->setContentsMargins(popoverPadding, 8, popoverPadding, popoverPadding);
    layout->setSpacing(8);
    layout->addLayout(makeHead(words.title));
    m_field->setPlaceholderText(words.placeholder);
    m_field->setAccessibleName(words.placeholder);
    m_field->installEventFilter(this);
    if (!isSheet) {
        m_field->addAction(look.icon(Symbol::Search, Surface::Card, &SurfaceTokens::textSecondary),
                           QLineEdit::LeadingPosition);
        m_list->viewport()->setAutoFillBackground(false);
    }
    layout->addWidget(m_field);
    m_list->setModel(&model);
    m_list->setAccessibleName(words.title);
    m_list->setFixedHeight(isSheet ? listHeight : popoverListHeight);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setUniformItemSizes(true);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    layout->addWidget(m_list);
    layout->addSpacing(4);
    m_buttons->setSpacing(10);
    m_buttons->addStretch();
    layout->addLayout(m_buttons);
    connect(m_field, &QLineEdit::textChanged, this, &SearchListSheet::refresh);
    connect(m_list, &QListView::clicked, this, &SearchListSheet::clicked);
}

QLayout* SearchListSheet::makeHead(const QString& title)
{
    auto* head = new QHBoxLayout;
    if (m_form == Form::Sheet) {
        head->addWidget(makeLabel(title, TextStyle::WindowTitle));
        return head;
    }
    head->addWidget(makeLabel(title, TextStyle::SectionHead, LabelInk::Secondary), 1);
    auto* close = new QToolButton(this);
    close->setIcon(look().icon(Symbol::Close, Surface::Card, &SurfaceTokens::textSecondary));
    close->setIconSize({14, 14});
    close->setFixedSize(24, 24);
    close->setFocusPolicy(Qt::TabFocus);
    close->setToolTip(tr("Close"));
    close->setAccessibleName(tr("Close"));
    connect(close, &QToolButton::clicked, this, [this] { dismiss(); });
    head->addWidget(close);
    return head;
}

Sheet::Placement SearchListSheet::placement() const
{
    return m_form == Form::Sheet ? Placement::Middle : Placement::Beside;
}

QWidget* SearchListSheet::initialFocus()
{
    return m_field;
}

QSize SearchListSheet::sizeHint() const
{
    return {m_form == Form::Sheet ? cardWidth : popoverWidth, layout()->sizeHint().height()};
}

void SearchListSheet::refresh()
{
    search(m_field->text().trimmed());
    mark(best());
}

QModelIndex SearchListSheet::best() const
{
    return m_list->model()->index(0, 0);
}

QPushButton* SearchListSheet::addButton(const QString& text)
{
    auto* button = new QPushButton(text, this);
    m_buttons->addWidget(button);
    return button;
}

void SearchListSheet::mark(const QModelIndex& index)
{
    m_list->setCurrentIndex(index);
    m_list->scrollTo(index);
}

QModelIndex SearchListSheet::marked() const
{
    return m_list->currentIndex();
}

bool SearchListSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_field || event->type() != QEvent::KeyPress)
        return Sheet::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QApplication::sendEvent(m_list, event);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (marked().isValid())
            choose(marked());
        return true;
    default:
        return Sheet::eventFilter(watched, event);
    }
}

} // namespace orvane
