// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "editor/view/EditorSettings.h"

#include <functional>
#include <optional>

class QLabel;
class QHBoxLayout;
class QMenu;
class QPushButton;
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

/// The line below the page: words and characters on the left; in the middle an offer while there is
/// one; saving, the menus of modes and zooms and the lock of the pane's width on the right.
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
    /// Pixels for a point; nothing without a note.
    void setZoom(std::optional<double> zoom);
    /// What the menu of zooms holds, made anew whenever it opens.
    void setZoomChoices(std::function<QList<double>()> choices);
    /// Says `text` with a button `action` beside it, until that is pressed or it is closed.
    void offer(const QString& text, const QString& action, std::function<void()> act);
    void endOffer();
    /// What holds the offer; hidden while there is none.
    [[nodiscard]] QWidget& offerPart() const { return *m_offer; }
    /// Puts a further choice before that of the mode, and owns it.
    void addChoice(StripMenuButton* button);

signals:
    void modeChosen(orvane::EditorMode mode);
    void widthLockChosen(bool locked);
    void zoomChosen(double zoom);
    /// An offer that had the keyboard is gone.
    void offerLeft();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void makeModeMenu();
    void makeOffer();
    void fillZoomMenu(QMenu& menu);
    void showSavingState();
    void showLock();

    QLabel* m_words;
    QLabel* m_characters;
    QLabel* m_saving;
    StripMenuButton* m_mode;
    QHBoxLayout* m_buttons;
    StripMenuButton* m_zoom;
    QToolButton* m_lock;
    QWidget* m_offer;
    QLabel* m_offerText;
    QPushButton* m_offerAction;
    std::function<void()> m_acceptOffer;
    std::function<QList<double>()> m_zoomChoices;
    double m_shownZoom = 0;
    SavingState m_state;
    bool m_isLocked = false;
};

} // namespace orvane
