// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/ShortcutBindings.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QToolButton;

namespace orvane {

class Look;

/// One action of the shortcuts page: its title, what there is to say about its key, the key as a
/// button that records another one, and a way back to the default.
class ShortcutRow : public QWidget {
    Q_OBJECT
public:
    ShortcutRow(ShortcutAction action, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] ShortcutAction action() const { return m_action; }
    /// Shows the key in force, and below the title what else it does, did, or is kept for.
    void showBinding(const ShortcutBindings& bindings);
    /// While a key is recorded: what to do, or what is held so far.
    void showRecording(const QString& held);
    /// The same after a key was recorded: what another action shares stays saved.
    void showRecorded(const ShortcutBindings& bindings);

    /// Whether the title or the key contains the words.
    [[nodiscard]] bool matches(const QString& words) const;
    [[nodiscard]] QString keyText() const;
    [[nodiscard]] QString noteText() const;
    [[nodiscard]] QPushButton& keyButton() const { return *m_key; }

signals:
    void recordingWanted();
    void defaultWanted();
    void shortcutWanted(const orvane::ShortcutData& shortcut);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    enum class ShownWhen { asItStands, justRecorded };

    void showClashes(const ShortcutBindings& bindings, ShownWhen when);

    ShortcutAction m_action;
    Look& m_look;
    QString m_title;
    QString m_keyText;
    ShortcutData m_offered;
    QLabel* m_note = nullptr;
    QPushButton* m_offer = nullptr;
    QToolButton* m_reset;
    QPushButton* m_key;
};

} // namespace orvane
