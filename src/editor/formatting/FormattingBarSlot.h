// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/AppCommandEvents.h"
#include "editor/formatting/FormattingBar.h"
#include "editor/view/EditorSettings.h"
#include "platform/Services.h"

namespace orvane {

/// The place of the formatting bar above a text, empty unless a rich note is shown that may be
/// edited and the person wants the bar. The bar is made when it is first shown.
class FormattingBarSlot : public QWidget {
    Q_OBJECT
public:
    /// All outlive it.
    FormattingBarSlot(const Services& services, const CustomBulletLibrary& bullets, Look& look,
                      QWidget* parent = nullptr);

    void showNote(const std::optional<QUuid>& note, EditorMode mode);
    void setEditable(bool editable);
    /// What Tab goes to from the bar.
    void setNextByTab(QWidget* next) { m_next = next; }
    void setKeyTexts(const KeyTextOf& keyTextOf);

signals:
    /// The keyboard is to go back to the text.
    void left();

private:
    void showOrHide();

    const Services m_services;
    const CustomBulletLibrary& m_bullets;
    Look& m_look;
    FormattingBar* m_bar = nullptr;
    QWidget* m_next = nullptr;
    KeyTextOf m_keyTextOf;
    std::optional<QUuid> m_note;
    EditorMode m_mode = EditorMode::plainText;
    bool m_isEditable = true;
    std::optional<EditorSelectionSnapshot> m_snapshot;
    NotificationCenter::Observation m_toggle;
    NotificationCenter::Observation m_selection;
};

} // namespace orvane
