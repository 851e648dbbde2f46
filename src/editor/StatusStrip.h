// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"

#include <optional>

class QLabel;

namespace orvane {

/// What the strip says about saving.
struct SavingState {
    enum class Kind { None, Saved, Edited, Failing, ReadOnly };
    Kind kind = Kind::None;
    /// Since when saving fails, as words; and the error behind it.
    QString since;
    QString detail;

    bool operator==(const SavingState&) const = default;
};

/// The line below the page: words and characters on the left, saving and mode on the right.
class StatusStrip : public SurfacePanel {
    Q_OBJECT
public:
    explicit StatusStrip(Look& look, QWidget* parent = nullptr);

    /// Without counts the left side is empty.
    void setCounts(std::optional<int> words, qsizetype characters);
    void setSavingState(const SavingState& state);
    void setModeName(const QString& name);

private:
    void showSavingState();

    QLabel* m_words;
    QLabel* m_characters;
    QLabel* m_saving;
    QLabel* m_mode;
    SavingState m_state;
};

} // namespace orvane
