// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/ShortcutRecordingState.h"
#include "platform/Services.h"
#include "shell/settings/SettingsPage.h"

class QLineEdit;

namespace orvane {

class ShortcutCenter;
class ShortcutRow;

/// Every action that can have a key of a person's choice, with a field to find one by name or key.
/// Pressing a key's button records the next key; one that another action has is taken and said.
class ShortcutsPage : public SettingsPage {
    Q_OBJECT
public:
    ShortcutsPage(const Services& services, ShortcutCenter& shortcuts, Look& look,
                  QWidget* parent = nullptr);
    ~ShortcutsPage() override;

    [[nodiscard]] ShortcutRow& row(ShortcutAction action) const;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeTitleControls();
    void makeRows();
    void observeRecording(NotificationCenter& notifications);
    void showBindings();
    void record(ShortcutAction action);
    void stopRecording();
    void filter(const QString& words);
    [[nodiscard]] bool isAnswered(ShortcutAction action) const;

    NotificationCenter& m_notifications;
    ShortcutCenter& m_shortcuts;
    QList<ShortcutRow*> m_rows;
    QLineEdit* m_filter = nullptr;
    QLabel* m_nothing = nullptr;
    std::optional<ShortcutAction> m_recorded;
    std::vector<NotificationCenter::Observation> m_observations;
};

} // namespace orvane
