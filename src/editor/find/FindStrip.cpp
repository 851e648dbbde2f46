// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/find/FindStrip.h"

#include "appearance/Drawing.h"
#include "commands/KeyTable.h"
#include "editor/find/FindSession.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolButton>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int fieldHeight = 28;
constexpr int leastFieldWidth = 120;
constexpr int mostFieldWidth = 360;
/// So that the buttons stay where they are while the count changes.
constexpr int countWidth = 96;

} // namespace

FindStrip::FindStrip(FindSession& session, Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::FormattingBar, parent)
    , m_session(session)
    , m_query(makeField(tr("Find in note")))
    , m_replacement(makeField(tr("Replace with")))
    , m_count(makeLabel({}, TextStyle::Label, LabelInk::Secondary, this))
{
    setAccessibleName(tr("Find and replace"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(12, 7, 8, 7);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(6);
    fillFindRow(*grid);
    fillReplaceRow(*grid);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(5, 1);
    // Neither the field nor the empty middle takes it all.
    m_query->setMaximumWidth(mostFieldWidth);
    m_replacement->setMaximumWidth(mostFieldWidth);
    connect(&session, &FindSession::matchesChanged, this, &FindStrip::showCount);
    showReplacement(false);
    showCount();
    hide();
}

QLineEdit* FindStrip::makeField(const QString& name)
{
    auto* field = new QLineEdit(this);
    field->setFixedHeight(fieldHeight);
    field->setMinimumWidth(leastFieldWidth);
    field->setPlaceholderText(name);
    field->setAccessibleName(name);
    field->installEventFilter(this);
    return field;
}

QToolButton* FindStrip::makeButton(Symbol symbol, const QString& name, const QString& keys)
{
    auto* button = new QToolButton(this);
    button->setIcon(look().icon(symbol, Surface::FormattingBar));
    button->setIconSize({16, 16});
    button->setFixedSize(28, 28);
    button->setToolTip(keys.isEmpty() ? name : name + u"  "_s + keys);
    button->setAccessibleName(name);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

void FindStrip::fillFindRow(QGridLayout& grid)
{
    m_count->setMinimumWidth(countWidth);
    m_count->setContentsMargins(8, 0, 8, 0);
    m_previous =
        makeButton(Symbol::ChevronUp, tr("Previous Match"), keyText(FixedKey::findPrevious));
    m_next = makeButton(Symbol::ChevronDown, tr("Next Match"), keyText(FixedKey::findNext));
    m_replaceToggle =
        makeButton(Symbol::Replace, tr("Show Replacement"), keyText(FixedKey::findAndReplace));
    m_replaceToggle->setCheckable(true);
    auto* close = makeButton(Symbol::Close, tr("Close Find"),
                             QKeySequence(Qt::Key_Escape).toString(QKeySequence::NativeText));
    grid.addWidget(m_query, 0, 0);
    grid.addWidget(m_count, 0, 1);
    grid.addWidget(m_previous, 0, 2);
    grid.addWidget(m_next, 0, 3);
    grid.addWidget(m_replaceToggle, 0, 4);
    grid.addWidget(close, 0, 6);
    connect(m_query, &QLineEdit::textChanged, this, &FindStrip::searchAsTyped);
    connect(m_previous, &QToolButton::clicked, this, [this] { find(FindDirection::backward); });
    connect(m_next, &QToolButton::clicked, this, [this] { find(FindDirection::forward); });
    connect(m_replaceToggle, &QToolButton::toggled, this, &FindStrip::showReplacement);
    connect(close, &QToolButton::clicked, this, &FindStrip::dismiss);
}

void FindStrip::fillReplaceRow(QGridLayout& grid)
{
    m_replace = new QPushButton(tr("Replace"), this);
    m_replaceAll = new QPushButton(tr("Replace All"), this);
    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(8, 0, 0, 0);
    buttons->setSpacing(8);
    for (QPushButton* button : {m_replace, m_replaceAll}) {
        button->setFixedHeight(fieldHeight);
        button->setFocusPolicy(Qt::TabFocus);
        button->setAutoDefault(false);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    grid.addWidget(m_replacement, 1, 0);
    grid.addLayout(buttons, 1, 1, 1, 6);
    connect(m_replace, &QPushButton::clicked, this, &FindStrip::replace);
    connect(m_replaceAll, &QPushButton::clicked, this, &FindStrip::replaceAll);
}

void FindStrip::open(Controls controls, const QString& suggestion)
{
    if (controls == Controls::findAndReplace && m_isEditable)
        showReplacement(true);
    show();
    if (!suggestion.isEmpty() && suggestion != m_query->text())
        m_query->setText(suggestion);
    else
        searchAsTyped();
    forgetTyping();
    m_query->setFocus(Qt::ShortcutFocusReason);
    m_query->selectAll();
}

void FindStrip::dismiss()
{
    const bool wasShown = !isHidden();
    hide();
    m_session.setQuery({});
    if (wasShown)
        emit dismissed();
}

void FindStrip::reset()
{
    const bool hadKeyboard = hasKeyboard();
    hide();
    m_session.setQuery({});
    m_query->clear();
    m_replacement->clear();
    showReplacement(false);
    if (hadKeyboard)
        emit dismissed();
}

void FindStrip::setEditable(bool editable)
{
    m_isEditable = editable;
    m_replaceToggle->setEnabled(editable);
    if (!editable)
        showReplacement(false);
}

bool FindStrip::hasKeyboard() const
{
    return isAncestorOf(QApplication::focusWidget());
}

void FindStrip::find(FindDirection direction)
{
    m_session.find(direction);
}

void FindStrip::showReplacement(bool shows)
{
    const bool losesKeyboard = !shows && m_replacement->hasFocus();
    m_showsReplacement = shows;
    for (QWidget* widget : std::initializer_list<QWidget*>{m_replacement, m_replace, m_replaceAll})
        widget->setVisible(shows);
    const QSignalBlocker quiet(m_replaceToggle);
    m_replaceToggle->setChecked(shows);
    if (losesKeyboard)
        m_query->setFocus(Qt::OtherFocusReason);
}

void FindStrip::searchAsTyped()
{
    if (isHidden())
        return;
    m_session.setQuery(m_query->text());
    m_session.showNearest();
    showCount();
}

void FindStrip::replace()
{
    m_session.replaceCurrent(m_replacement->text());
    forgetTyping();
}

void FindStrip::replaceAll()
{
    const qsizetype count = m_session.replaceAll(m_replacement->text());
    forgetTyping();
    if (count > 0)
        showInCount(count == 1 ? tr("1 replaced")
                               : tr("%1 replaced").arg(QLocale(QLocale::English).toString(count)));
}

/// What is undone next is the replacement in the text.
void FindStrip::forgetTyping()
{
    for (QLineEdit* field : {m_query, m_replacement}) {
        const QSignalBlocker quiet(field);
        const int caret = field->cursorPosition();
        field->setText(field->text());
        field->setCursorPosition(caret);
    }
}

void FindStrip::showInCount(const QString& text)
{
    m_count->setText(text);
    m_count->setAccessibleName(text);
}

void FindStrip::showCount()
{
    const QLocale locale(QLocale::English);
    const qsizetype count = m_session.matchCount();
    const qsizetype selected = m_session.selectedMatch();
    QString text;
    if (m_session.query().isEmpty())
        text = QString();
    else if (count == 0)
        text = tr("No matches");
    else if (selected > 0)
        text = tr("%1 of %2").arg(locale.toString(selected), locale.toString(count));
    else
        text = count == 1 ? tr("1 match") : tr("%1 matches").arg(locale.toString(count));
    showInCount(text);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{m_previous, m_next, m_replace, m_replaceAll})
        widget->setEnabled(count > 0);
}

bool FindStrip::eventFilter(QObject* watched, QEvent* event)
{
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (!field || event->type() != QEvent::KeyPress)
        return SurfacePanel::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (isReturn && field == m_query) {
        const bool isBackward = key->modifiers().testFlag(Qt::ShiftModifier);
        find(isBackward ? FindDirection::backward : FindDirection::forward);
    } else if (isReturn) {
        if (m_replace->isEnabled())
            replace();
    } else if (key->matches(QKeySequence::Undo) && !field->isUndoAvailable()) {
        emit undoRequested();
    } else if (key->matches(QKeySequence::Redo) && !field->isRedoAvailable()) {
        emit redoRequested();
    } else {
        return SurfacePanel::eventFilter(watched, event);
    }
    return true;
}

void FindStrip::paintEvent(QPaintEvent* event)
{
    SurfacePanel::paintEvent(event);
    QPainter painter(this);
    const QColor& line = look().tokens().on(Surface::FormattingBar).border;
    drawLineAt(Qt::TopEdge, painter, rect(), line);
    drawLineAt(Qt::BottomEdge, painter, rect(), line);
}

void FindStrip::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        dismiss();
    else
        SurfacePanel::keyPressEvent(event);
}

} // namespace orvane
