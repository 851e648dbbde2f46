// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "editor/view/EditorSettings.h"

#include <optional>

class QLabel;
class QHBoxLayout;
class QToolButton;

namespace orvane {

class StripMenuButton;

/// What the strip says about saving.
struct SavingState {
    enum class Kind { None, Saved, Edited, Refused, Failing, ReadOnly, Unreadable, Trashed };
    Kind kind = Kind::None;
    /// Since when saving fails, as words; and the error behind it.
    QString since;
    QString detail;

    bool operator==(const SavingState&) const = default;
};

/// The line below the page: words and characters on the left; saving, the menu of modes and the
/// lock of the pane's width on the right.
class StatusStrip : public SurfacePanel {
    Q_OBJECT
public:
    explicit StatusStrip(Look& look, QWidget* parent = nullptr);

    /// Without counts the left side is empty.
    void setCounts(std::optional<int> words, qsizetype characters);
    void setSavingState(const SavingState& state);
    /// Without a mode there is no menu.
    void setMode(std::optional<EditorMode> mode);
    void setWidthLocked(bool locked);
    /// Puts a further choice before that of the mode, and owns it.
    void addChoice(StripMenuButton* button);

signals:
    void modeChosen(orvane::EditorMode mode);
    void widthLockChosen(bool locked);

private:
    void makeModeMenu();
    void showSavingState();
    void showLock();

    QLabel* m_words;
    QLabel* m_characters;
    QLabel* m_saving;
    StripMenuButton* m_mode;
    QHBoxLayout* m_buttons;
    QToolButton* m_lock;
    SavingState m_state;
    bool m_isLocked = false;
};

} // namespace orvane
