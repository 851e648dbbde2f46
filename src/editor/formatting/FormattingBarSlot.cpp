// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/FormattingBarSlot.h"

#include <QVBoxLayout>

namespace orvane {

FormattingBarSlot::FormattingBarSlot(const Services& services, const CustomBulletLibrary& bullets,
                                     Look& look, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_bullets(bullets)
    , m_look(look)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    hide();
    m_toggle = services.notifications.observe(
        AppCommandEvents::toggleFormattingBar, [this](const NoPayload&) {
            UserDefaults& defaults = m_services.defaults;
            showFormattingToolbarSetting.write(defaults,
                                               !showFormattingToolbarSetting.read(defaults));
        });
    m_selection = services.notifications.observe(editorSelectionSnapshotDidChange,
                                                 [this](const EditorSelectionChange& change) {
                                                     if (change.targetNoteID != m_note)
                                                         return;
                                                     m_snapshot = change.snapshot;
                                                     if (m_bar && !isHidden())
                                                         m_bar->showSnapshot(change.snapshot);
                                                 });
    connect(&services.defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key == showFormattingToolbarSetting.keyText())
            showOrHide();
    });
}

void FormattingBarSlot::showNote(const std::optional<QUuid>& note, EditorMode mode)
{
    m_note = note;
    m_mode = mode;
    showOrHide();
}

void FormattingBarSlot::setEditable(bool editable)
{
    if (std::exchange(m_isEditable, editable) != editable)
        showOrHide();
}

void FormattingBarSlot::setKeyTexts(const KeyTextOf& keyTextOf)
{
    m_keyTextOf = keyTextOf;
    if (m_bar)
        m_bar->setKeyTexts(keyTextOf);
}

void FormattingBarSlot::showOrHide()
{
    const bool shows = m_note && m_mode == EditorMode::richText && m_isEditable &&
                       showFormattingToolbarSetting.read(m_services.defaults);
    if (shows && !m_bar) {
        m_bar = new FormattingBar(m_services, m_bullets, m_look, this);
        connect(m_bar, &FormattingBar::left, this, &FormattingBarSlot::left);
        m_bar->setKeyTexts(m_keyTextOf);
        layout()->addWidget(m_bar);
        if (m_next)
            m_bar->putBeforeByTab(*m_next);
    }
    if (shows) {
        m_bar->setNote(m_note);
        if (m_snapshot)
            m_bar->showSnapshot(*m_snapshot);
    } else if (isAncestorOf(window()->focusWidget())) {
        emit left();
    }
    setVisible(shows);
}

} // namespace orvane
