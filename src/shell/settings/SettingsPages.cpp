// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/SettingsPages.h"

#include "appearance/DesktopMotion.h"
#include "appearance/studio/ThemeStudioView.h"
#include "core/library/BootstrapDecision.h"
#include "core/library/ProjectLibraryController.h"
#include "core/state/SessionKeys.h"
#include "core/versions/NoteVersionHistoryStore.h"
#include "editor/view/EditorSettings.h"
#include "shell/settings/BulletsPage.h"
#include "shell/settings/EditorPage.h"
#include "shell/settings/SettingsPage.h"
#include "shell/settings/ShortcutsPage.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QPushButton>
#include <QUrl>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(SettingsPages)
};

QWidget* makeGeneralPage(const SettingsServices& s)
{
    auto* page =
        new SettingsPage({title(SettingsPageId::General), {}}, s.services.defaults, s.look);
    page->addHead(Words::tr("Start"));
    QList<Choice> destinations;
    for (const auto destination :
         {OrvaneWorkspaceLaunchDestination::Projects, OrvaneWorkspaceLaunchDestination::LastProject,
          OrvaneWorkspaceLaunchDestination::LastNote})
        destinations.append({rawValue(destination), label(destination)});
    page->addChoice(
        SessionKeys::launchDestination,
        {Words::tr("When the program starts"), Words::tr("What is on the screen first.")},
        destinations);
    page->addHead(Words::tr("Saving"));
    page->addSwitch(
        autosaveEnabledSetting,
        {Words::tr("Save while writing"),
         Words::tr("When this is off, a note is saved with Save, when another one is selected "
                   "and when the program ends.")});
    NumberForm seconds;
    seconds.lowest = 0.3;
    seconds.highest = 60;
    seconds.step = 0.5;
    seconds.decimals = 1;
    seconds.unit = Words::tr("s");
    SettingRow* row = page->addNumber(autoSaveSecondsSetting,
                                      {Words::tr("Pause before saving"),
                                       Words::tr("How long after the last key a note is written.")},
                                      seconds);
    page->enableWith(row, autosaveEnabledSetting);
    page->addHead(Words::tr("Movement"));
    page->addChoice(
        motionSetting,
        {Words::tr("Panes that open and close"), Words::tr("Whether they slide to their place.")},
        {{QString(), Words::tr("As the desktop does")},
         {u"full"_s, Words::tr("Slide")},
         {u"reduced"_s, Words::tr("Jump")}});
    return page;
}

QWidget* makeVersionHistoryPage(const SettingsServices& s)
{
    auto* page = new SettingsPage({title(SettingsPageId::VersionHistory),
                                   Words::tr("Versions of a note are kept beside its project. "
                                             "Saving by hand and restoring an older "
                                             "version always keep one.")},
                                  s.services.defaults, s.look);
    page->addSpace(12);
    page->addSwitch(autoSnapshotEnabledSetting,
                    {Words::tr("Keep versions while writing"),
                     Words::tr("A version of a note that has changed, at most once an interval.")});
    NumberForm minutes;
    minutes.lowest = 0.5;
    minutes.highest = 24 * 60;
    minutes.decimals = 1;
    minutes.unit = Words::tr("min");
    minutes.scale = 1.0 / 60;
    minutes.above0 = true;
    SettingRow* row = page->addNumber(
        autoSnapshotIntervalSetting,
        {Words::tr("Interval"), Words::tr("The shortest time between two of them.")}, minutes);
    page->enableWith(row, autoSnapshotEnabledSetting);
    NumberForm count;
    count.lowest = 1;
    count.highest = 10'000;
    count.step = 10;
    count.above0 = true;
    page->addNumber(maxSnapshotsSetting,
                    {Words::tr("Versions of each note"),
                     Words::tr("The oldest make room when a further one is kept.")},
                    count);
    return page;
}

QWidget* makeProjectsPage(const SettingsServices& s)
{
    auto* page =
        new SettingsPage({title(SettingsPageId::Projects), {}}, s.services.defaults, s.look);
    page->addHead(Words::tr("Opening"));
    page->addSwitch(SessionKeys::confirmBeforeOpen, {Words::tr("Ask before a project is opened"),
                                                     Words::tr("When its tile is pressed twice.")});
    page->addHead(Words::tr("Folder"));
    const QString folder = ProjectLibraryController(s.services.folders).projectsDirectoryPath();
    auto* show = new QPushButton(Words::tr("Show Folder"));
    SettingRow* row =
        page->addRow({Words::tr("Projects are kept in"), QDir::toNativeSeparators(folder)}, show);
    show->setAccessibleName(Words::tr("Show the folder of the projects"));
    QObject::connect(show, &QPushButton::clicked, row, [folder] {
        QDir().mkpath(folder);
        QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
    });
    return page;
}

} // namespace

QString title(SettingsPageId id)
{
    switch (id) {
    case SettingsPageId::General:
        return Words::tr("General");
    case SettingsPageId::Editor:
        return Words::tr("Editor");
    case SettingsPageId::Bullets:
        return Words::tr("Bullets");
    case SettingsPageId::Appearance:
        return Words::tr("Appearance");
    case SettingsPageId::VersionHistory:
        return Words::tr("Version History");
    case SettingsPageId::Shortcuts:
        return Words::tr("Shortcuts");
    case SettingsPageId::Projects:
        return Words::tr("Projects");
    }
    return {};
}

QWidget* makeSettingsPage(SettingsPageId id, const SettingsServices& s)
{
    switch (id) {
    case SettingsPageId::General:
        return makeGeneralPage(s);
    case SettingsPageId::Editor:
        return makeEditorPage(s);
    case SettingsPageId::Bullets:
        return new BulletsPage(s.services, s.look);
    case SettingsPageId::Appearance:
        return new ThemeStudioView(
            {s.services.defaults, s.themes, s.look, s.services.questions, s.files});
    case SettingsPageId::VersionHistory:
        return makeVersionHistoryPage(s);
    case SettingsPageId::Shortcuts:
        return new ShortcutsPage(s.services, s.shortcuts, s.look);
    case SettingsPageId::Projects:
        return makeProjectsPage(s);
    }
    return nullptr;
}

} // namespace orvane
