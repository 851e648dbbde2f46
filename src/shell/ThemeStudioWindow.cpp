// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/ThemeStudioWindow.h"

#include "appearance/studio/ThemeStudioView.h"
#include "shell/SheetHost.h"

#include <QVBoxLayout>

namespace orvane {

ThemeStudioWindow::ThemeStudioWindow(UserDefaults& defaults, AppearanceThemeLibrary& library,
                                     Look& look)
    : m_studio(new ThemeStudioView({defaults, library, look, m_questions, m_files}, this))
    , m_sheets(new SheetHost(look, this))
{
    setWindowTitle(tr("Theme Studio"));
    setMinimumSize(720, 480);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_studio);
    resize(900, 820);
    m_questions.setHost(m_sheets, &look);
}

void ThemeStudioWindow::present()
{
    show();
    raise();
    activateWindow();
}

} // namespace orvane
