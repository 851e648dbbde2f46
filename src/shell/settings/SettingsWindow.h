// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/studio/ThemeFilePicker.h"
#include "shell/settings/SettingsPages.h"
#include "shell/sheets/QuestionSheet.h"

#include <QWidget>

#include <array>

class QStackedLayout;

namespace orvane {

class SettingsSideList;

/// The one window of the settings: a list of pages at the left and the chosen page beside it. A
/// page is made when it is first looked at. Everything acts at once; there is nothing to confirm.
class SettingsWindow : public QWidget {
    Q_OBJECT
public:
    /// `services.questions` is not used: the window asks in itself.
    SettingsWindow(const Services& services, Look& look, ShortcutCenter& shortcuts,
                   AppearanceThemeLibrary& themes);

    /// Brings the window to the front.
    /// Over the middle of `parent` when it comes up.
    void present(const QWidget& parent);
    void showPage(SettingsPageId id);
    [[nodiscard]] SettingsPageId currentPage() const;
    /// The page, made now if it has not been looked at.
    [[nodiscard]] QWidget& page(SettingsPageId id);
    [[nodiscard]] SheetHost& sheets() { return *m_sheets; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QWidget* makeBand();
    [[nodiscard]] QWidget* makeSide();

    SheetQuestions m_questions;
    DesktopThemeFilePicker m_files;
    SettingsServices m_s;
    SettingsSideList* m_list = nullptr;
    QStackedLayout* m_stack;
    std::array<QWidget*, settingsPageCount> m_pages{};
    SheetHost* m_sheets;
};

} // namespace orvane
