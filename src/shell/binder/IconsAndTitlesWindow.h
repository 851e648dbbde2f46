// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "core/state/AppState.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QTimer;

namespace orvane {

class IconGridModel;

/// What the "Icons and Titles" window is about.
struct TitledItem {
    enum class Kind { Note, Folder, Project };

    Kind kind = Kind::Note;
    QUuid id;

    bool operator==(const TitledItem&) const = default;
};

/// The "Icons and Titles" window: title and picture of one note, folder or project. What is chosen
/// shows everywhere at once; there is nothing to confirm.
class IconsAndTitlesWindow : public SurfacePanel {
    Q_OBJECT
public:
    /// Shows the window for an item; the one that is open goes over to it. Does nothing for an
    /// item that doesn't exist. `parent` is the window that it stands above, which has the
    /// keyboard again when it closes. Whoever opened it by a command searches an icon; whom it is
    /// offered to, because the item is new, goes on by Return.
    enum class Begin { AtSearch, AtDone };
    static IconsAndTitlesWindow* open(const TitledItem& item, AppState& appState, Look& look,
                                      QWidget* parent, Begin begin = Begin::AtSearch);

    [[nodiscard]] const TitledItem& item() const { return m_item; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    IconsAndTitlesWindow(AppState& appState, Look& look, QWidget* parent);

    /// What the item has now; nothing when it is gone.
    struct Content {
        QString title;
        QString shownTitle;
        std::optional<QString> icon;
        QString cover = {}; ///< a project's, "#RRGGBB"
    };
    [[nodiscard]] std::optional<Content> content() const;
    [[nodiscard]] QString projectFolder() const;
    [[nodiscard]] QWidget* makeHead();
    [[nodiscard]] QWidget* makeCoverRow();
    [[nodiscard]] QLayout* makeFoot();
    void fillCovers();
    void setItem(const TitledItem& item);
    void follow();
    void showIcons();
    void showHead(const Content& content);
    void applyTitle();
    void applyIcon(const std::optional<QString>& icon);
    void chooseCurrent();

    AppState& m_appState;
    TitledItem m_item;
    QLabel* m_kind = nullptr;
    QLabel* m_shownTitle = nullptr;
    QWidget* m_picture = nullptr;
    QWidget* m_coverRow = nullptr;
    QComboBox* m_cover = nullptr;
    QLineEdit* m_title;
    QLineEdit* m_search;
    QListView* m_grid;
    IconGridModel* m_icons;
    QLabel* m_noMatch;
    QPushButton* m_remove = nullptr;
    QPushButton* m_done = nullptr;
    QTimer* m_titleDelay;
};

} // namespace orvane
