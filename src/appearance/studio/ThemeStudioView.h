// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "appearance/studio/GlassRows.h"
#include "appearance/themes/AppearanceTheme.h"

#include <optional>

class QAbstractButton;
class QCheckBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QScrollArea;

namespace orvane {

class AppearanceThemeLibrary;
class ColorRow;
class ThemeCard;
class ThemeFilePicker;
class UserDefaults;
class VariantPreview;
class Questions;

/// What the studio works with; all of it outlives the view.
struct ThemeStudioServices {
    UserDefaults& defaults;
    AppearanceThemeLibrary& library;
    Look& look;
    Questions& questions;
    ThemeFilePicker& files;
};

/// The theme studio: the saved pairs of themes, the chosen pair's Light and Dark variant side by
/// side, and every colour of the look as it is now. Colours are edited in the look, which every
/// window follows at once; a saved theme changes only by Update, Copy and Rename.
class ThemeStudioView : public SurfacePanel {
    Q_OBJECT
public:
    explicit ThemeStudioView(const ThemeStudioServices& services, QWidget* parent = nullptr);

    /// The pair and the variant that Apply, Update and Copy act on.
    [[nodiscard]] const QUuid& selectedTheme() const { return m_selected; }
    [[nodiscard]] AppearanceThemeMode selectedMode() const { return m_mode; }
    void select(const QUuid& id);
    void select(AppearanceThemeMode mode);

    void applySelected();
    void updateSelected();
    void copySelected(AppearanceThemeMode from);
    void duplicateSelected();
    void saveCurrentLook();
    void renameSelected();
    void deleteSelected();
    void importTheme();
    void importTheme(const QString& path);
    void exportSelected();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QWidget* makeHead();
    QWidget* makeVariants();
    QWidget* makeActions();
    QWidget* makeColors();
    void showLibrary();
    void makeCards();
    void placeCards();
    void placeColors();
    void showLook();
    void showPreviews();
    void editColor(ColorRow& row);
    void change(const GlassRows::Change& change);
    void bringBack();
    void openMenu(const QPoint& position);
    void tell(const QString& title, const QString& text);
    [[nodiscard]] ThemeCard* card(const QUuid& id) const;

    ThemeStudioServices m_s;
    QUuid m_selected;
    AppearanceThemeMode m_mode;
    /// The edited look that applying a theme replaced.
    std::optional<AppearanceValues> m_replaced;

    bool m_isWide = false;
    QScrollArea* m_scroll;
    QGridLayout* m_cardGrid;
    QGridLayout* m_colorGrid = nullptr;
    QList<ThemeCard*> m_cards;
    QAbstractButton* m_saveCard;
    VariantPreview* m_previews[2] = {};
    QPushButton* m_apply = nullptr;
    QPushButton* m_update = nullptr;
    QPushButton* m_copy = nullptr;
    QPushButton* m_bringBack = nullptr;
    QCheckBox* m_follow = nullptr;
    QLabel* m_state = nullptr;
    QList<ColorRow*> m_rows;
    GlassRows* m_glass = nullptr;
};

} // namespace orvane
