// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/FormattingBar.h"

#include "appearance/Drawing.h"
#include "editor/formatting/ListStyleNames.h"
#include "platform/Services.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
#include <QPainter>

namespace orvane {

using namespace Qt::StringLiterals;
namespace Format = EditorFormatNotifications;

namespace {

constexpr int barHeight = 40;
constexpr int narrowest = 160;
constexpr int buttonSize = 28;
constexpr int gap = 4;
constexpr int roleWidth = 92;
constexpr int fontWidth = 96;
constexpr int sizeWidth = 52;

/// The name of the notification behind an action's key.
constexpr const char* commandProperty = "orvaneCommand";

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

} // namespace

FormattingBar::FormattingBar(const Services& services, const CustomBulletLibrary& bullets,
                             Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::FormattingBar, parent)
    , m_services(services)
    , m_bullets(bullets)
    , m_row(new QHBoxLayout(this))
{
    setFixedHeight(barHeight);
    setMinimumWidth(narrowest);
    setAccessibleName(tr("Formatting"));
    m_row->setContentsMargins(12, 0, 12, 1);
    m_row->setSpacing(gap);
    m_row->setSizeConstraint(QLayout::SetNoConstraint);
    addTextGroup();
    addSeparator();
    addStyleGroup();
    addSeparator();
    addParagraphGroup();
    addSeparator();
    m_table = addMenuButton(
        Shape::symbol, tr("Insert Table"), [this](QWidget& at) { openTableSizes(at); }, 3,
        Symbol::Table);
    m_table->setCheckable(true);
    m_image = addToggle(Symbol::Image, tr("Insert Image"), AppCommandEvents::insertImage, 2);
    addOverflow();
    m_controls.first()->setFocusPolicy(Qt::TabFocus);
    showToolTips();
}

void FormattingBar::addTextGroup()
{
    m_role = addMenuButton(
        Shape::choice, tr("Paragraph Style"), [this](QWidget& at) { openRoles(at); }, 20);
    m_role->setChoiceWidth(roleWidth);
    m_font = addMenuButton(
        Shape::choice, tr("Font"), [this](QWidget& at) { openFonts(at); }, 12);
    m_font->setChoiceWidth(fontWidth);
    m_size = addMenuButton(
        Shape::choice, tr("Font Size"), [this](QWidget& at) { openSizes(at); }, 13);
    m_size->setChoiceWidth(sizeWidth);
}

void FormattingBar::addStyleGroup()
{
    m_bold = addToggle(Symbol::Bold, tr("Bold"), Format::bold, 19);
    m_italic = addToggle(Symbol::Italic, tr("Italic"), Format::italic, 18);
    m_underline = addToggle(Symbol::Underline, tr("Underline"), Format::underline, 11);
    m_strikethrough =
        addToggle(Symbol::Strikethrough, tr("Strikethrough"), Format::strikethrough, 5);
    m_textColor = addMenuButton(
        Shape::color, tr("Text Color"), [this](QWidget& at) { openTextColors(at); }, 9,
        Symbol::TextColor);
    m_highlight = addMenuButton(
        Shape::color, tr("Highlight"), [this](QWidget& at) { openHighlights(at); }, 10,
        Symbol::Highlight);
}

void FormattingBar::addParagraphGroup()
{
    m_alignment = addMenuButton(
        Shape::symbol, tr("Alignment"), [this](QWidget& at) { openAlignments(at); }, 6,
        Symbol::AlignLeft);
    addListControls(Symbol::BulletList, tr("Bullet List"), tr("Bullet Styles"), Format::bulletList,
                    false, 8);
    m_bulletList = m_items.at(m_items.size() - 2).action;
    addListControls(Symbol::NumberedList, tr("Numbered List"), tr("Number Styles"),
                    Format::numberedList, true, 7);
    m_numberedList = m_items.at(m_items.size() - 2).action;
    addMenuButton(
        Shape::symbol, tr("Spacing and Background"), [this](QWidget& at) { openSpacing(at); }, 4,
        Symbol::LineSpacing);
}

void FormattingBar::addListControls(Symbol symbol, const QString& name, const QString& stylesName,
                                    const Notification<CommandTarget>& command, bool numbered,
                                    int rank)
{
    addToggle(symbol, name, command, rank);
    m_row->addSpacing(-gap);
    BarMenuButton* styles = addMenuButton(
        Shape::arrow, stylesName, [this, numbered](QWidget& at) { openListStyles(at, numbered); },
        rank);
    styles->setObjectName(numbered ? u"numberStyles"_s : u"bulletStyles"_s);
}

void FormattingBar::addOverflow()
{
    m_row->addStretch(1);
    m_overflow = new QToolButton(this);
    auto* action = makeAction(tr("More Formatting"));
    action->setIcon(look().icon(Symbol::More, Surface::FormattingBar));
    m_overflow->setDefaultAction(action);
    m_overflow->setAccessibleName(action->text());
    m_overflow->setIconSize({16, 16});
    m_overflow->setFixedSize(buttonSize, buttonSize);
    connect(action, &QAction::triggered, this,
            [this] { openMenu(*m_overflow, [this](QMenu& menu) { fillOverflow(menu); }); });
    m_row->addWidget(m_overflow);
    take(m_overflow);
}

void FormattingBar::addSeparator()
{
    auto* separator = new BarSeparator(look(), this);
    m_row->addWidget(separator);
    m_separators.append({separator, m_items.size()});
}

QAction* FormattingBar::makeAction(const QString& name, const char* notificationName)
{
    auto* action = new QAction(name, this);
    if (notificationName)
        action->setProperty(commandProperty, QByteArray(notificationName));
    return action;
}

/// To Tab the bar is one control, and a click leaves the keyboard in the text.
void FormattingBar::take(QWidget* control)
{
    control->setFocusPolicy(Qt::NoFocus);
    control->installEventFilter(this);
    m_controls.append(control);
}

QAction* FormattingBar::addToggle(Symbol symbol, const QString& name,
                                  const Notification<CommandTarget>& command, int rank)
{
    QAction* action = makeAction(name, command.name);
    action->setCheckable(true);
    action->setIcon(look().icon(symbol, Surface::FormattingBar));
    connect(action, &QAction::triggered, this, [this, command] {
        m_services.notifications.post(command, CommandTarget{m_note});
        // What the text says counts, also where the command changed nothing.
        showSnapshot(m_snapshot);
    });
    auto* button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setAccessibleName(name);
    button->setIconSize({16, 16});
    button->setFixedSize(buttonSize, buttonSize);
    m_row->addWidget(button);
    take(button);
    m_items.append({button, action, rank, symbol});
    return action;
}

BarMenuButton* FormattingBar::addMenuButton(Shape shape, const QString& name,
                                            const std::function<void(QWidget&)>& open, int rank,
                                            std::optional<Symbol> symbol)
{
    auto* button = new BarMenuButton(shape, look(), this);
    QAction* action = makeAction(name);
    button->setAccessibleName(name);
    button->setToolTip(name);
    if (symbol)
        button->setSymbol(*symbol);
    connect(button, &QToolButton::clicked, this, [button, open] { open(*button); });
    connect(action, &QAction::triggered, this, [this, open] { open(*m_overflow); });
    m_row->addWidget(button);
    take(button);
    m_items.append({button, action, rank, symbol});
    return button;
}

void FormattingBar::showSnapshot(const EditorSelectionSnapshot& snapshot)
{
    m_snapshot = snapshot;
    const QString role = rawValue(snapshot.paragraphRole);
    const QString size = QLocale().toString(snapshot.fontSize, 'g', 4);
    m_role->setChoice(role);
    m_role->setAccessibleName(tr("Paragraph style: %1").arg(role));
    m_font->setChoice(snapshot.fontName);
    m_font->setAccessibleName(tr("Font: %1").arg(snapshot.fontName));
    m_size->setChoice(size);
    m_size->setAccessibleName(tr("Font size: %1").arg(size));
    m_bold->setChecked(snapshot.isBold);
    m_italic->setChecked(snapshot.isItalic);
    m_underline->setChecked(snapshot.isUnderlined);
    m_strikethrough->setChecked(snapshot.isStruckThrough);
    m_image->setChecked(snapshot.selectedImage.has_value());
    m_bulletList->setChecked(snapshot.listKind == rawValue(EditorListKind::bullet));
    m_numberedList->setChecked(snapshot.listKind == rawValue(EditorListKind::numbered));
    m_textColor->setColor(snapshot.foregroundColor.toQColor());
    std::optional<QColor> highlight;
    if (snapshot.highlightColor) {
        highlight = snapshot.highlightColor->toQColor();
        highlight->setAlpha(255);
    }
    m_highlight->setColor(highlight);
    m_table->setChecked(snapshot.table.has_value());
    m_alignment->setSymbol(symbolOf(snapshot.alignment));
}

void FormattingBar::setKeyTexts(const KeyTextOf& keyTextOf)
{
    m_keyTextOf = keyTextOf;
    showToolTips();
}

void FormattingBar::showToolTips()
{
    for (QAction* action : findChildren<QAction*>(Qt::FindDirectChildrenOnly)) {
        const QByteArray command = action->property(commandProperty).toByteArray();
        const QString keys =
            m_keyTextOf && !command.isEmpty() ? m_keyTextOf(command.constData()) : QString();
        action->setToolTip(keys.isEmpty() ? action->text() : action->text() + u"  "_s + keys);
    }
}

void FormattingBar::putBeforeByTab(QWidget& next)
{
    QWidget* before = next.previousInFocusChain();
    for (QWidget* control : m_controls) {
        // Only what takes the keyboard has a place in the order.
        const Qt::FocusPolicy policy = control->focusPolicy();
        control->setFocusPolicy(Qt::TabFocus);
        setTabOrder(before, control);
        control->setFocusPolicy(policy);
        before = control;
    }
}

QSize FormattingBar::minimumSizeHint() const
{
    return {narrowest, barHeight};
}

void FormattingBar::fit()
{
    for (const Item& item : m_items)
        item.control->show();
    m_overflow->hide();
    showSeparators();
    QList<int> ranks;
    for (const Item& item : m_items)
        ranks.append(item.rank);
    std::sort(ranks.begin(), ranks.end());
    for (const int rank : ranks) {
        if (m_row->totalMinimumSize().width() <= width())
            break;
        for (const Item& item : m_items) {
            if (item.rank == rank)
                item.control->hide();
        }
        m_overflow->show();
        showSeparators();
    }
    keepWayIn();
}

void FormattingBar::showSeparators()
{
    const auto isShown = [](const Item& item) {
        return !item.control->isHidden();
    };
    qsizetype from = 0;
    for (const auto& [separator, to] : m_separators) {
        const bool before = std::any_of(m_items.cbegin() + from, m_items.cbegin() + to, isShown);
        const bool after = std::any_of(m_items.cbegin() + to, m_items.cend(), isShown);
        separator->setVisible(before && after);
        from = to;
    }
    m_row->invalidate();
}

/// Tab goes to a control that is seen.
void FormattingBar::keepWayIn()
{
    const QList<QWidget*> shown = shownControls();
    const bool hasWayIn = std::any_of(shown.begin(), shown.end(), [](const QWidget* control) {
        return control->focusPolicy() == Qt::TabFocus;
    });
    if (hasWayIn)
        return;
    for (QWidget* control : m_controls)
        control->setFocusPolicy(Qt::NoFocus);
    shown.first()->setFocusPolicy(Qt::TabFocus);
}

void FormattingBar::fillOverflow(QMenu& menu)
{
    for (const Item& item : m_items) {
        if (!item.control->isHidden())
            continue;
        QAction* entry = menu.addAction(item.action->text(), item.action, &QAction::trigger);
        entry->setCheckable(item.action->isCheckable());
        entry->setChecked(item.action->isChecked());
        // In the ink of the menu, not of the bar.
        if (item.symbol)
            entry->setIcon(look().icon(*item.symbol, Surface::Card));
    }
}

QList<QWidget*> FormattingBar::shownControls() const
{
    QList<QWidget*> shown;
    std::copy_if(m_controls.begin(), m_controls.end(), std::back_inserter(shown),
                 [](const QWidget* control) { return !control->isHidden(); });
    return shown;
}

void FormattingBar::goTo(QWidget* control)
{
    for (QWidget* each : m_controls)
        each->setFocusPolicy(each == control ? Qt::TabFocus : Qt::NoFocus);
    control->setFocus(Qt::TabFocusReason);
}

bool FormattingBar::eventFilter(QObject* watched, QEvent* event)
{
    auto* control = qobject_cast<QWidget*>(watched);
    const QList<QWidget*> shown = shownControls();
    const qsizetype at = shown.indexOf(control);
    if (at < 0 || event->type() != QEvent::KeyPress)
        return SurfacePanel::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Left:
        goTo(shown.at(qMax<qsizetype>(at - 1, 0)));
        return true;
    case Qt::Key_Right:
        goTo(shown.at(qMin(at + 1, shown.size() - 1)));
        return true;
    case Qt::Key_Home:
        goTo(shown.first());
        return true;
    case Qt::Key_End:
        goTo(shown.last());
        return true;
    case Qt::Key_Down:
        if (auto* button = qobject_cast<BarMenuButton*>(control))
            button->click();
        return true;
    case Qt::Key_Up:
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        qobject_cast<QToolButton*>(control)->click();
        return true;
    case Qt::Key_Escape:
        emit left();
        return true;
    default:
        return SurfacePanel::eventFilter(watched, event);
    }
}

void FormattingBar::resizeEvent(QResizeEvent* event)
{
    SurfacePanel::resizeEvent(event);
    fit();
}

void FormattingBar::showEvent(QShowEvent* event)
{
    SurfacePanel::showEvent(event);
    fit();
}

void FormattingBar::paintEvent(QPaintEvent* event)
{
    SurfacePanel::paintEvent(event);
    QPainter painter(this);
    drawLineAt(Qt::BottomEdge, painter, rect(), look().tokens().on(Surface::FormattingBar).border);
}

} // namespace orvane
