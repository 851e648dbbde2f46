// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/ShortcutRow.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "commands/KeyClashes.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

namespace orvane {

namespace {

constexpr int lowest = 48;
constexpr int keyWidth = 176;
constexpr int recordingWidth = 352;

} // namespace

ShortcutRow::ShortcutRow(ShortcutAction action, Look& look, QWidget* parent)
    : QWidget(parent)
    , m_action(action)
    , m_look(look)
    , m_title(title(action))
    , m_reset(new QToolButton(this))
    , m_key(new QPushButton(this))
{
    setMinimumHeight(lowest);
    m_note = makeLabel({}, TextStyle::Label, LabelInk::Secondary, this);
    m_note->setWordWrap(true);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 6, 0, 7);
    row->setSpacing(8);
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addStretch(1);
    words->addWidget(makeLabel(m_title, TextStyle::Body));
    words->addWidget(m_note);
    words->addStretch(1);
    row->addLayout(words, 1);
    m_reset->setIcon(look.icon(Symbol::Revert, Surface::Page));
    m_reset->setFixedSize(28, 28);
    m_reset->setAccessibleName(tr("Default key for %1").arg(m_title));
    m_reset->setFocusPolicy(Qt::StrongFocus);
    QSizePolicy keepsRoom = m_reset->sizePolicy();
    keepsRoom.setRetainSizeWhenHidden(true);
    m_reset->setSizePolicy(keepsRoom);
    m_offer = new QPushButton(this);
    m_offer->setAutoDefault(false);
    connect(m_offer, &QPushButton::clicked, this, [this] { emit shortcutWanted(m_offered); });
    row->addWidget(m_offer, 0, Qt::AlignVCenter);
    row->addWidget(m_reset, 0, Qt::AlignVCenter);
    m_key->setFixedWidth(keyWidth);
    m_key->setAutoDefault(false);
    row->addWidget(m_key, 0, Qt::AlignVCenter);
    connect(m_key, &QPushButton::clicked, this, &ShortcutRow::recordingWanted);
    connect(m_reset, &QToolButton::clicked, this, &ShortcutRow::defaultWanted);
}

void ShortcutRow::showBinding(const ShortcutBindings& bindings)
{
    const ShortcutData shortcut = bindings.shortcut(m_action);
    m_keyText = shortcut.desktopText();
    m_key->setFixedWidth(keyWidth);
    m_key->setText(m_keyText);
    m_key->setAccessibleName(tr("%1, %2").arg(m_title, m_keyText));
    m_key->setToolTip(tr("Record another key"));
    m_reset->setVisible(bindings.isOverridden(m_action));
    m_reset->setToolTip(tr("Back to %1").arg(defaultShortcut(m_action).desktopText()));
    showClashes(bindings, ShownWhen::asItStands);
}

void ShortcutRow::showRecorded(const ShortcutBindings& bindings)
{
    showBinding(bindings);
    showClashes(bindings, ShownWhen::justRecorded);
}

void ShortcutRow::showRecording(const QString& held)
{
    m_key->setFixedWidth(recordingWidth);
    m_key->setText(held.isEmpty() ? tr("Hold Ctrl, Alt, Super, or Shift, then press a key")
                                  : held + QStringLiteral("+…"));
    m_key->setAccessibleName(tr("%1, %2").arg(m_title, m_key->text()));
    m_key->setToolTip(tr("Esc keeps the old one"));
}

void ShortcutRow::showClashes(const ShortcutBindings& bindings, ShownWhen when)
{
    const ShortcutData shortcut = bindings.shortcut(m_action);
    QStringList sentences;
    bool isReserved = false;
    for (const KeyClash& clash : keyClashes(m_action, shortcut, bindings)) {
        const bool isNewlyShared = clash.other && when == ShownWhen::justRecorded;
        sentences.append(isNewlyShared ? tr("Also used by %1. Your new shortcut was saved; change "
                                            "the other command if needed.")
                                             .arg(title(*clash.other))
                                       : sentenceFor(clash, shortcut));
        isReserved = isReserved || clash.outcome == KeyClash::Outcome::Desktop;
    }
    const auto offer = isReserved ? freeShortcut(m_action, bindings) : std::nullopt;
    const QString text = sentences.join(u'\n');
    m_note->setText(text);
    m_note->setVisible(!text.isEmpty());
    m_offered = offer.value_or(ShortcutData{});
    m_offer->setText(offer ? tr("Use %1").arg(offer->desktopText()) : QString());
    m_offer->setVisible(offer.has_value());
    m_key->setAccessibleDescription(text);
}

bool ShortcutRow::matches(const QString& words) const
{
    return m_title.contains(words, Qt::CaseInsensitive) ||
           m_keyText.contains(words, Qt::CaseInsensitive);
}

QString ShortcutRow::keyText() const
{
    return m_key->text();
}

QString ShortcutRow::noteText() const
{
    return m_note->isVisibleTo(this) ? m_note->text() : QString();
}

void ShortcutRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawLineAt(Qt::BottomEdge, painter, rect(), palette().color(QPalette::Mid));
}

} // namespace orvane
