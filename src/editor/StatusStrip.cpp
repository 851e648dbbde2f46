// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/StatusStrip.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>

namespace orvane {

StatusStrip::StatusStrip(Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::StatusStrip, parent)
    , m_words(makeLabel({}, TextStyle::Label, LabelInk::Secondary))
    , m_characters(makeLabel({}, TextStyle::Label, LabelInk::Secondary))
    , m_saving(makeLabel({}, TextStyle::Label))
    , m_mode(makeLabel({}, TextStyle::Label, LabelInk::Secondary))
{
    setFixedHeight(28);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 0, 12, 0);
    layout->setSpacing(16);
    layout->addWidget(m_words);
    layout->addWidget(m_characters);
    layout->addStretch();
    layout->addWidget(m_saving);
    layout->addWidget(m_mode);
    m_saving->setAccessibleName(tr("Saving"));
    m_mode->setAccessibleName(tr("Mode of the note"));
    connect(&look, &Look::changed, this, &StatusStrip::showSavingState);
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

void StatusStrip::setModeName(const QString& name)
{
    m_mode->setText(name);
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
    case SavingState::Kind::Failing:
        text = tr("Not saved since %1").arg(m_state.since);
        ink = t.danger;
        break;
    case SavingState::Kind::ReadOnly:
        text = tr("Read-only project");
        ink = t.text;
        break;
    }
    QPalette palette = m_saving->palette();
    palette.setColor(QPalette::WindowText, ink);
    m_saving->setPalette(palette);
    m_saving->setText(text);
    m_saving->setToolTip(m_state.detail);
}

} // namespace orvane
