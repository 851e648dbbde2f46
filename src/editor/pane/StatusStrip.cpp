// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/StatusStrip.h"

#include "editor/pane/StripMenuButton.h"

#include <QAccessible>
#include <QActionGroup>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace orvane {

StatusStrip::StatusStrip(Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::StatusStrip, parent)
    , m_words(makeLabel({}, TextStyle::Label, LabelInk::Secondary))
    , m_characters(makeLabel({}, TextStyle::Label, LabelInk::Secondary))
    , m_saving(makeLabel({}, TextStyle::Label))
    , m_mode(new StripMenuButton(this))
    , m_buttons(new QHBoxLayout)
    , m_zoom(new StripMenuButton(this))
    , m_lock(new QToolButton(this))
    , m_offer(new QWidget(this))
    , m_offerText(makeLabel({}, TextStyle::Label))
    , m_offerAction(new QPushButton(m_offer))
{
    setFixedHeight(28);
    setAccessibleName(tr("Status"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 0, 4, 0);
    layout->setSpacing(12);
    layout->addWidget(m_words);
    layout->addWidget(m_characters);
    layout->addStretch();
    layout->addWidget(m_offer);
    layout->addStretch();
    layout->addWidget(m_saving);
    m_buttons->setSpacing(4);
    m_buttons->addWidget(m_mode);
    m_buttons->addWidget(m_zoom);
    m_buttons->addWidget(m_lock);
    layout->addLayout(m_buttons);
    m_saving->setAccessibleDescription(tr("Saving"));
    makeModeMenu();
    makeOffer();
    m_zoom->setFill([this](QMenu& menu) { fillZoomMenu(menu); });
    setZoom(std::nullopt);
    m_lock->setCheckable(true);
    m_lock->setIconSize({16, 16});
    m_lock->setFixedSize(24, 24);
    m_lock->setFocusPolicy(Qt::TabFocus);
    connect(m_lock, &QToolButton::clicked, this, &StatusStrip::widthLockChosen);
    connect(&look, &Look::changed, this, [this] {
        showSavingState();
        showLock();
    });
    setMode({});
    showLock();
}

void StatusStrip::makeModeMenu()
{
    QMenu& modes = m_mode->choices();
    auto* group = new QActionGroup(&modes);
    const std::initializer_list<std::pair<EditorMode, QString>> choices = {
        {EditorMode::plainText, tr("Plain Text\nLetters and nothing else")},
        {EditorMode::richText, tr("Rich Text\nBold, headings, lists, tables, images")},
        {EditorMode::markdown, tr("Markdown\nText with its marks, # and *")},
    };
    for (const auto& [mode, text] : choices) {
        QAction* action = modes.addAction(text);
        action->setCheckable(true);
        action->setData(int(mode));
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, mode = mode] { emit modeChosen(mode); });
    }
}

void StatusStrip::makeOffer()
{
    auto* row = new QHBoxLayout(m_offer);
    row->setContentsMargins(10, 0, 2, 0);
    row->setSpacing(8);
    setTextStyle(m_offerAction, TextStyle::Label);
    m_offerAction->setDefault(true);
    m_offerAction->setFixedHeight(20);
    auto* close = new QToolButton(m_offer);
    close->setIcon(look().icon(Symbol::Close, Surface::StatusStrip, &SurfaceTokens::textSecondary));
    close->setIconSize({12, 12});
    close->setFixedSize(20, 20);
    close->setFocusPolicy(Qt::TabFocus);
    close->setToolTip(tr("Not Now"));
    close->setAccessibleName(tr("Not Now"));
    row->addWidget(m_offerText);
    row->addWidget(m_offerAction);
    row->addWidget(close);
    m_offer->hide();
    connect(close, &QToolButton::clicked, this, &StatusStrip::endOffer);
    connect(m_offerAction, &QPushButton::clicked, this, [this] {
        const std::function<void()> accept = m_acceptOffer;
        endOffer();
        if (accept)
            accept();
    });
}

void StatusStrip::offer(const QString& text, const QString& action, std::function<void()> act)
{
    m_offerText->setText(text);
    m_offerAction->setText(action);
    m_acceptOffer = std::move(act);
    m_offer->setAccessibleName(text);
    m_offer->show();
    QAccessibleEvent said(m_offer, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void StatusStrip::endOffer()
{
    m_acceptOffer = nullptr;
    const bool hadKeyboard = m_offer->isAncestorOf(QApplication::focusWidget());
    m_offer->hide();
    if (hadKeyboard)
        emit offerLeft();
}

void StatusStrip::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_offer->isVisible())
        endOffer();
    else
        SurfacePanel::keyPressEvent(event);
}

void StatusStrip::setZoom(std::optional<double> zoom)
{
    m_zoom->setVisible(zoom.has_value());
    m_shownZoom = zoom.value_or(0);
    if (zoom)
        m_zoom->setChoice(tr("Zoom"), tr("%1 %").arg(qRound(*zoom * 100)));
}

void StatusStrip::setZoomChoices(std::function<QList<double>()> choices)
{
    m_zoomChoices = std::move(choices);
}

void StatusStrip::fillZoomMenu(QMenu& menu)
{
    menu.clear();
    const QList<double> choices = m_zoomChoices ? m_zoomChoices() : QList<double>();
    for (const double zoom : choices) {
        QAction* action = menu.addAction(tr("%1 %").arg(qRound(zoom * 100)));
        action->setCheckable(true);
        action->setChecked(qRound(zoom * 100) == qRound(m_shownZoom * 100));
        connect(action, &QAction::triggered, this, [this, zoom] { emit zoomChosen(zoom); });
    }
}

void StatusStrip::addChoice(StripMenuButton* button)
{
    m_buttons->insertWidget(0, button);
    // First of the children, too, by which the keyboard goes.
    button->lower();
}

void StatusStrip::setCounts(std::optional<int> words, qsizetype characters)
{
    const QLocale english(QLocale::English);
    m_words->setText(words ? tr("%1 words").arg(english.toString(*words)) : QString());
    m_characters->setText(words ? tr("%1 characters").arg(english.toString(characters))
                                : QString());
}

void StatusStrip::setSavingState(const SavingState& state)
{
    if (m_state == state)
        return;
    m_state = state;
    showSavingState();
}

void StatusStrip::setMode(std::optional<EditorMode> mode)
{
    m_mode->setVisible(mode.has_value());
    if (!mode)
        return;
    m_mode->setChoice(tr("Mode of the note"), rawValue(*mode));
    for (QAction* action : m_mode->choices().actions())
        action->setChecked(action->data().toInt() == int(*mode));
}

void StatusStrip::setWidthLocked(bool locked)
{
    if (m_isLocked == locked)
        return;
    m_isLocked = locked;
    showLock();
}

void StatusStrip::showLock()
{
    const bool isTrashed = m_state.kind == SavingState::Kind::Trashed;
    const QString help = isTrashed    ? tr("A note in the Trash can be read but not changed.")
                         : m_isLocked ? tr("Unlock editor width")
                                      : tr("Lock editor width");
    m_lock->setEnabled(!isTrashed);
    m_lock->setChecked(m_isLocked);
    m_lock->setToolTip(help);
    m_lock->setAccessibleName(help);
    m_lock->setIcon(look().icon(m_isLocked || isTrashed ? Symbol::Locked : Symbol::Unlocked,
                                Surface::StatusStrip, &SurfaceTokens::textSecondary));
}

void StatusStrip::showSavingState()
{
    const SurfaceTokens& t = look().tokens().on(Surface::StatusStrip);
    QColor ink = t.textSecondary;
    QString text;
    switch (m_state.kind) {
    case SavingState::Kind::None:
        break;
    case SavingState::Kind::Saved:
        text = tr("Saved");
        break;
    case SavingState::Kind::Edited:
        text = tr("Edited");
        break;
    case SavingState::Kind::Refused:
        text = tr("Not saved");
        ink = t.danger;
        break;
    case SavingState::Kind::Failing:
        text = tr("Not saved since %1").arg(m_state.since);
        ink = t.danger;
        break;
    case SavingState::Kind::ReadOnly:
        text = tr("Read-only project");
        ink = t.text;
        break;
    case SavingState::Kind::Trashed:
        text = tr("Locked in the Trash");
        ink = t.text;
        break;
    case SavingState::Kind::Unreadable:
        text = tr("This note can’t be read");
        ink = t.danger;
        break;
    }
    QPalette palette = m_saving->palette();
    palette.setColor(QPalette::WindowText, ink);
    m_saving->setPalette(palette);
    m_saving->setText(text);
    m_saving->setToolTip(m_state.detail);
    showLock();
}

} // namespace orvane
