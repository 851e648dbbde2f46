// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TableBar.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "commands/EditorFormatNotifications.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionToolButton>
#include <QToolButton>

namespace orvane {

namespace {

namespace Format = EditorFormatNotifications;

// Pixels.
constexpr QMargins shadowReach(34, 24, 34, 44);
constexpr int barHeight = 40;
constexpr double corner = 10;
constexpr int buttonSize = 28;
constexpr int symbolSize = 16;
constexpr int arrowSize = 10;

Symbol symbolOf(TextAlignment alignment)
{
    switch (alignment) {
    case TextAlignment::center:
        return Symbol::AlignCenter;
    case TextAlignment::right:
        return Symbol::AlignRight;
    case TextAlignment::justified:
        return Symbol::AlignJustified;
    case TextAlignment::natural:
    case TextAlignment::left:
        break;
    }
    return Symbol::AlignLeft;
}

class Separator final : public QWidget {
public:
    Separator(const Look& look, QWidget* parent)
        : QWidget(parent)
        , m_look(look)
    {
        setFixedSize(13, 18);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
        QPainter(this).fillRect(width() / 2, 0, 1, height(), blended(card.text, 0.16, card.ground));
    }

private:
    const Look& m_look;
};

/// Lies below the bar and lets the pointer through.
class Shadow final : public QWidget {
public:
    explicit Shadow(QWidget* parent)
        : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        drawCardShadow(painter, rect().marginsRemoved(shadowReach), corner);
    }
};

} // namespace

/// A picture and a word with an arrow; the word can be left out.
class TableBar::WordButton final : public QToolButton {
public:
    WordButton(Symbol symbol, const QString& word, const Look& look, QWidget* parent)
        : QToolButton(parent)
        , m_look(look)
        , m_symbol(symbol)
        , m_word(word)
    {
        setHasWord(true);
    }

    void setHasWord(bool hasWord)
    {
        m_hasWord = hasWord;
        setFixedSize(sizeHint());
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        const int word = m_hasWord ? fontMetrics().horizontalAdvance(m_word) + gap : 0;
        return {margin + symbolSize + word + gap + arrowSize + margin, buttonSize};
    }

protected:
    void changeEvent(QEvent* event) override
    {
        QToolButton::changeEvent(event);
        if (event->type() == QEvent::FontChange)
            setFixedSize(sizeHint());
    }

    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QStyleOptionToolButton option;
        initStyleOption(&option);
        style()->drawPrimitive(QStyle::PE_PanelButtonTool, &option, &painter, this);
        const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
        const auto place = [this](int left, int width) {
            return style()->visualRect(layoutDirection(), rect(), QRect(left, 0, width, height()));
        };
        drawSymbol(painter, place(margin, symbolSize), m_symbol, symbolSize, card.icon);
        if (m_hasWord) {
            painter.setPen(card.text);
            painter.drawText(
                place(margin + symbolSize + gap, fontMetrics().horizontalAdvance(m_word)),
                Qt::AlignCenter | Qt::TextSingleLine, m_word);
        }
        drawSymbol(painter, place(width() - margin - arrowSize, arrowSize), Symbol::ChevronDown,
                   arrowSize, card.textSecondary);
    }

private:
    static constexpr int margin = 7;
    static constexpr int gap = 6;

    const Look& m_look;
    Symbol m_symbol;
    QString m_word;
    bool m_hasWord = true;
};

TableBar::TableBar(NotificationCenter& notifications, Look& look, QWidget* parent)
    : QWidget(parent)
    , m_notifications(notifications)
    , m_look(look)
    , m_shadow(new Shadow(parent))
    , m_row(new QHBoxLayout(this))
{
    setAccessibleName(tr("Table"));
    // A press on the card is no press on the text below it.
    setAttribute(Qt::WA_NoMousePropagation);
    setFixedHeight(barHeight);
    setCursor(Qt::ArrowCursor);
    m_row->setContentsMargins(6, 0, 6, 0);
    m_row->setSpacing(2);
    addCommand(Symbol::TableRowAbove, tr("Add Row Above"), TableCommands::addRowAbove);
    addCommand(Symbol::TableRowBelow, tr("Add Row Below"), TableCommands::addRowBelow);
    addCommand(Symbol::TableColumnLeft, tr("Add Column Left"), TableCommands::addColumnLeft);
    addCommand(Symbol::TableColumnRight, tr("Add Column Right"), TableCommands::addColumnRight);
    addSeparator();
    addCommand(Symbol::TableRemoveRow, tr("Remove Row"), TableCommands::removeRow);
    addCommand(Symbol::TableRemoveColumn, tr("Remove Column"), TableCommands::removeColumn);
    addSeparator();
    addFill(Symbol::Colors, tr("Cell Fill Color"), TableFill::cells);
    addFill(Symbol::HeaderFill, tr("Header Fill Color"), TableFill::header);
    addSeparator();
    m_alignment = addButton(Symbol::AlignLeft, tr("Alignment"), [this] { openAlignments(); });
    addCommand(Symbol::Trash, tr("Delete Table"), TableCommands::deleteTable);
    const auto applyLook = [this] {
        setPalette(m_look.palette(Surface::Card));
    };
    connect(&look, &Look::changed, this, applyLook);
    applyLook();
    hide();
}

QToolButton* TableBar::addButton(Symbol symbol, const QString& name, std::function<void()> act)
{
    auto* button = new QToolButton(this);
    button->setIcon(m_look.icon(symbol, Surface::Card));
    button->setIconSize({symbolSize, symbolSize});
    button->setFixedSize(buttonSize, buttonSize);
    button->setAccessibleName(name);
    button->setToolTip(name);
    connect(button, &QToolButton::clicked, this, std::move(act));
    take(button);
    return button;
}

void TableBar::addCommand(Symbol symbol, const QString& name,
                          const Notification<CommandTarget>& command)
{
    addButton(symbol, name,
              [this, command] { m_notifications.post(command, CommandTarget{m_note}); });
}

void TableBar::addFill(Symbol symbol, const QString& name, TableFill fill)
{
    auto* button = new WordButton(symbol, name, m_look, this);
    button->setAccessibleName(name);
    button->setToolTip(name);
    connect(button, &QToolButton::clicked, this, [this, button, fill] {
        const QRect anchor(button->mapToGlobal(QPoint()), button->size());
        m_notifications.post(TableCommands::chooseFill, TableFillChoice{fill, anchor, m_note});
    });
    m_words.append(button);
    take(button);
}

void TableBar::addSeparator()
{
    m_row->addWidget(new Separator(m_look, this));
}

void TableBar::take(QToolButton* button)
{
    button->setFocusPolicy(Qt::NoFocus);
    button->installEventFilter(this);
    m_row->addWidget(button);
    m_buttons.append(button);
}

void TableBar::setAlignment(TextAlignment alignment)
{
    if (std::exchange(m_shownAlignment, alignment) != alignment)
        m_alignment->setIcon(m_look.icon(symbolOf(alignment), Surface::Card));
}

void TableBar::openAlignments()
{
    struct Row {
        QString name;
        TextAlignment alignment;
        const Notification<CommandTarget>& command;
    };
    const Row rows[] = {
        {tr("Align Left"), TextAlignment::left, Format::alignLeft},
        {tr("Align Center"), TextAlignment::center, Format::alignCenter},
        {tr("Align Right"), TextAlignment::right, Format::alignRight},
        {tr("Justify"), TextAlignment::justified, Format::alignJustified},
    };
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Row& row : rows) {
        QAction* action =
            menu->addAction(m_look.icon(symbolOf(row.alignment), Surface::Card), row.name);
        connect(action, &QAction::triggered, this, [this, &command = row.command] {
            m_notifications.post(command, CommandTarget{m_note});
        });
    }
    menu->popup(m_alignment->mapToGlobal(QPoint(0, m_alignment->height() + 6)));
}

bool TableBar::fitInto(int pixels)
{
    for (const bool hasWords : {true, false}) {
        for (WordButton* button : m_words)
            button->setHasWord(hasWords);
        m_row->activate();
        if (sizeHint().width() <= pixels)
            return true;
    }
    return false;
}

void TableBar::showAt(QPoint topLeft)
{
    setGeometry(QRect(topLeft, sizeHint()));
    m_shadow->setGeometry(geometry().marginsAdded(shadowReach));
    m_shadow->raise();
    raise();
    show();
}

void TableBar::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_shadow->show();
}

void TableBar::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_shadow->hide();
}

QSize TableBar::sizeHint() const
{
    return {m_row->totalMinimumSize().width(), barHeight};
}

void TableBar::takeKeyboard()
{
    goTo(m_buttons.first());
}

void TableBar::goTo(QToolButton* button)
{
    for (QToolButton* each : m_buttons)
        each->setFocusPolicy(each == button ? Qt::TabFocus : Qt::NoFocus);
    button->setFocus(Qt::TabFocusReason);
}

bool TableBar::eventFilter(QObject* watched, QEvent* event)
{
    const qsizetype at = m_buttons.indexOf(qobject_cast<QToolButton*>(watched));
    if (at < 0 || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const bool runsLeft = layoutDirection() == Qt::RightToLeft;
    const auto step = [&](qsizetype by) {
        goTo(m_buttons.at(qBound<qsizetype>(0, at + (runsLeft ? -by : by), m_buttons.size() - 1)));
    };
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Left:
        step(-1);
        return true;
    case Qt::Key_Right:
        step(1);
        return true;
    case Qt::Key_Home:
        goTo(m_buttons.first());
        return true;
    case Qt::Key_End:
        goTo(m_buttons.last());
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_buttons.at(at)->click();
        return true;
    case Qt::Key_Up:
        return true;
    case Qt::Key_Escape:
        emit left();
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

void TableBar::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const SurfaceTokens& tokens = m_look.tokens().on(Surface::Card);
    drawPanel(painter, rect(), corner, tokens.ground, tokens.border);
}

} // namespace orvane
