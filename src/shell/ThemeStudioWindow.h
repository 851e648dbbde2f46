// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/studio/ThemeFilePicker.h"
#include "shell/QuestionSheet.h"

#include <QWidget>

namespace orvane {

class AppearanceThemeLibrary;
class SheetHost;
class ThemeStudioView;
class UserDefaults;

/// The theme studio in a window of its own, which asks its questions in itself.
class ThemeStudioWindow : public QWidget {
    Q_OBJECT
public:
    ThemeStudioWindow(UserDefaults& defaults, AppearanceThemeLibrary& library, Look& look);

    [[nodiscard]] ThemeStudioView& studio() { return *m_studio; }
    /// Brings the window to the front.
    void present();

private:
    SheetQuestions m_questions;
    DesktopThemeFilePicker m_files;
    ThemeStudioView* m_studio;
    SheetHost* m_sheets;
};

} // namespace orvane
