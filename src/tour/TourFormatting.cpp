// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "tour/TourFormatting.h"

#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "commands/EditorFormatNotifications.h"
#include "editor/formatting/FormattingBar.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/window/MainWindow.h"
#include "text/store/TextStore.h"
#include "tour/TourHand.h"

#include <QApplication>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

QAbstractButton* control(const TourStop& stop, const QString& name)
{
    auto* bar = stop.window.findChild<FormattingBar*>();
    if (!bar || !bar->isVisible())
        return nullptr;
    for (auto* each : bar->findChildren<QAbstractButton*>()) {
        if (each->isVisible() && each->accessibleName().startsWith(name))
            return each;
    }
    return nullptr;
}

void select(const TourStop& stop, const QString& words)
{
    EditorView& view = stop.window.editorPane().textView();
    const qsizetype at = view.plainText().indexOf(words);
    stop.expect(at >= 0, u"“%1” stands in the note"_s.arg(words));
    view.setSelection({at, at + words.size()});
    TourHand::settle();
}

void press(const TourStop& stop, const QString& name)
{
    QAbstractButton* button = control(stop, name);
    stop.expect(button, u"“%1” in the formatting bar"_s.arg(name));
    if (button)
        stop.hand.click(*button);
    TourHand::settle();
}

void pictureOfPopup(const TourStop& stop, const QString& name, const QString& pictureName)
{
    press(stop, name);
    QWidget* popup = QApplication::activePopupWidget();
    stop.expect(popup, u"“%1” opens"_s.arg(name));
    if (!popup)
        return;
    TourHand::settle();
    stop.pictureOfPopup(*popup, pictureName);
    popup->close();
    TourHand::settle();
}

void formatNote(const TourStop& stop)
{
    namespace Format = EditorFormatNotifications;
    EditorView& view = stop.window.editorPane().textView();
    select(stop, u"Mara turned"_s);
    stop.hand.press(Qt::Key_B, Qt::ControlModifier);
    stop.expect(view.store().characterStyle(view.selection().range().location)->font->isBold(),
                u"Ctrl+B makes the selection bold"_s);
    select(stop, u"a single line, ruled twice"_s);
    stop.notifications.post(Format::highlightNSColor, {RgbaColor{1, 0.87, 0.2}, {}});
    select(stop, u"The posts stood dry"_s);
    stop.notifications.post(AppCommandEvents::applyHeading3, CommandTarget{});
    select(stop, u"witness"_s);
    press(stop, u"Underline"_s);
    select(stop, u"by lamp"_s);
    stop.notifications.post(Format::foregroundNSColor, {RgbaColor{0.9, 0.28, 0.3}, {}});
    press(stop, u"Italic"_s);
    select(stop, u"She copied"_s);
    press(stop, u"Bullet List"_s);
    select(stop, u"Mara"_s);
}

} // namespace

void tourFormatting(const TourStop& stop)
{
    EditorPaneView& pane = stop.window.editorPane();
    pane.session().setMode(EditorMode::richText);
    pane.focusText();
    TourHand::settle();
    stop.expect(control(stop, u"Bold"_s), u"a rich note has a formatting bar"_s);
    formatNote(stop);
    for (const auto mode : {AppearanceThemeMode::Light, AppearanceThemeMode::Dark}) {
        stop.themes.applyTheme(signatureBundle().id, mode);
        const QString look = u'-' + modeText(mode);
        stop.picture(u"formatting"_s + look);
        pictureOfPopup(stop, u"Paragraph style"_s, u"popup-roles"_s + look);
        pictureOfPopup(stop, u"Font: "_s, u"popup-fonts"_s + look);
        pictureOfPopup(stop, u"Font size"_s, u"popup-sizes"_s + look);
        pictureOfPopup(stop, u"Text Color"_s, u"popup-text-colors"_s + look);
        pictureOfPopup(stop, u"Highlight"_s, u"popup-highlights"_s + look);
        pictureOfPopup(stop, u"Alignment"_s, u"popup-alignment"_s + look);
        pictureOfPopup(stop, u"Bullet Styles"_s, u"popup-bullets"_s + look);
        pictureOfPopup(stop, u"Number Styles"_s, u"popup-numbers"_s + look);
        pictureOfPopup(stop, u"Spacing"_s, u"popup-spacing"_s + look);
        stop.window.resize(960, 600);
        stop.picture(u"formatting-narrow"_s + look);
        pictureOfPopup(stop, u"More Formatting"_s, u"popup-more-formatting"_s + look);
        stop.window.resize(1440, 900);
    }
    stop.themes.applyTheme(googleWorkspaceBundle().id, AppearanceThemeMode::Light);
    stop.picture(u"formatting-google"_s);
    stop.themes.applyTheme(signatureBundle().id, AppearanceThemeMode::Dark);
}

} // namespace orvane
