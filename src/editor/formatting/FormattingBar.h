// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "commands/EditorFormatNotifications.h"
#include "editor/formatting/BarControls.h"
#include "editor/formatting/ColorPopup.h"
#include "editor/formatting/EditorSelectionSnapshot.h"
#include "editor/formatting/KeyTextOf.h"

class QAction;
class QHBoxLayout;
class QMenu;

namespace orvane {

class CustomBulletLibrary;
struct Services;

/// The strip of formatting controls above the text of a rich note. It shows what is under the
/// selection and posts commands; it never touches a text. Where it is too narrow, what matters
/// least goes into a menu behind "More".
///
/// To Tab it is one control: arrow keys, Home and End go about in it, Escape goes back to the text.
class FormattingBar : public SurfacePanel {
    Q_OBJECT
public:
    /// `services` and `bullets` outlive it.
    FormattingBar(const Services& services, const CustomBulletLibrary& bullets, Look& look,
                  QWidget* parent = nullptr);

    /// The note that the commands are for.
    void setNote(const std::optional<QUuid>& note) { m_note = note; }
    void showSnapshot(const EditorSelectionSnapshot& snapshot);
    /// Asked for the keys in the tool tips, now and with each further call.
    void setKeyTexts(const KeyTextOf& keyTextOf);
    /// Tab goes from the bar to `next`, which stands in the same window.
    void putBeforeByTab(QWidget& next);
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    /// The keyboard is to go back to the text.
    void left();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Shape = BarMenuButton::Shape;

    /// A control, and how it stands in the menu of what is hidden.
    struct Item {
        QWidget* control = nullptr;
        QAction* action = nullptr;
        int rank = 0; ///< the lowest are hidden first, those of one rank together
        std::optional<Symbol> symbol{};
    };

    void addTextGroup();
    void addStyleGroup();
    void addParagraphGroup();
    void addOverflow();
    void addSeparator();
    QAction* makeAction(const QString& name, const char* notificationName = nullptr);
    QAction* addToggle(Symbol symbol, const QString& name,
                       const Notification<CommandTarget>& command, int rank);
    /// A button of `shape` that opens what `open` makes at a widget.
    BarMenuButton* addMenuButton(Shape shape, const QString& name,
                                 const std::function<void(QWidget&)>& open, int rank,
                                 std::optional<Symbol> symbol = {});
    void addListControls(Symbol symbol, const QString& name, const QString& stylesName,
                         const Notification<CommandTarget>& command, bool numbered, int rank);
    void take(QWidget* control);

    void openMenu(QWidget& anchor, const std::function<void(QMenu&)>& fill);
    void openRoles(QWidget& anchor);
    void openFonts(QWidget& anchor);
    void openSizes(QWidget& anchor);
    void openAlignments(QWidget& anchor);
    void openListStyles(QWidget& anchor, bool numbered);
    void addBulletsOfOnesOwn(QMenu& menu);
    void openSpacing(QWidget& anchor);
    void openTableSizes(QWidget& anchor);
    void openTextColors(QWidget& anchor);
    void openHighlights(QWidget& anchor);
    void openParagraphBackgrounds(QWidget& anchor);
    void openPalette(QWidget& anchor, const ColorPopup::Palette& palette,
                     const std::optional<RgbaColor>& current,
                     const Notification<ColorChoice>& command);
    void openCustomColor(QWidget& anchor, const QString& name, const QColor& start,
                         const Notification<ColorChoice>& command);
    void postColor(const Notification<ColorChoice>& command, const QColor& color);

    void fit();
    void showSeparators();
    void keepWayIn();
    void fillOverflow(QMenu& menu);
    [[nodiscard]] QList<QWidget*> shownControls() const;
    void goTo(QWidget* control);
    void showToolTips();

    const Services& m_services;
    const CustomBulletLibrary& m_bullets;
    std::optional<QUuid> m_note;
    EditorSelectionSnapshot m_snapshot;
    KeyTextOf m_keyTextOf;

    QHBoxLayout* m_row;
    QList<Item> m_items;
    /// Separators with the number of items before them.
    QList<std::pair<QWidget*, qsizetype>> m_separators;
    QList<QWidget*> m_controls; ///< from the left to the right
    BarMenuButton* m_role = nullptr;
    BarMenuButton* m_font = nullptr;
    BarMenuButton* m_size = nullptr;
    BarMenuButton* m_textColor = nullptr;
    BarMenuButton* m_highlight = nullptr;
    BarMenuButton* m_alignment = nullptr;
    BarMenuButton* m_table = nullptr; ///< lit while the caret is in one
    QAction* m_bold = nullptr;
    QAction* m_italic = nullptr;
    QAction* m_underline = nullptr;
    QAction* m_strikethrough = nullptr;
    QAction* m_image = nullptr; ///< lit while one is selected
    QAction* m_bulletList = nullptr;
    QAction* m_numberedList = nullptr;
    QToolButton* m_overflow = nullptr;
};

} // namespace orvane
