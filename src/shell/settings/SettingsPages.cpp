// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/SettingsPages.h"

#include "appearance/DesktopMotion.h"
#include "appearance/OrvaneStyle.h"
#include "appearance/studio/ThemeStudioView.h"
#include "core/BootstrapDecision.h"
#include "core/NoteVersionHistoryStore.h"
#include "core/ProjectLibraryController.h"
#include "core/SessionKeys.h"
#include "editor/EditorSettings.h"
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

QString tr(const char* text)
{
    return QCoreApplication::translate("SettingsPages", text);
}

QWidget* makeGeneralPage(const SettingsServices& s)
{
    auto* page =
        new SettingsPage({title(SettingsPageId::General), {}}, s.services.defaults, s.look);
    page->addHead(tr("Start"));
    QList<Choice> destinations;
    for (const auto destination :
         {OrvaneWorkspaceLaunchDestination::Projects, OrvaneWorkspaceLaunchDestination::LastProject,
          OrvaneWorkspaceLaunchDestination::LastNote})
        destinations.append({storedValue(destination), label(destination)});
    page->addChoice(SessionKeys::launchDestination,
                    {tr("When the program starts"), tr("What is on the screen first.")},
                    destinations);
    page->addHead(tr("Saving"));
    page->addSwitch(autosaveEnabledSetting,
                    {tr("Save while writing"),
                     tr("When this is off, a note is saved with Save, when another one is selected "
                        "and when the program ends.")});
    NumberForm seconds;
    seconds.lowest = 0.3;
    seconds.highest = 60;
    seconds.step = 0.5;
    seconds.decimals = 1;
    seconds.unit = tr("s");
    SettingRow* row = page->addNumber(
        autoSaveSecondsSetting,
        {tr("Pause before saving"), tr("How long after the last key a note is written.")}, seconds);
    page->enableWith(row, autosaveEnabledSetting);
    page->addHead(tr("Movement"));
    page->addChoice(motionSetting,
                    {tr("Panes that open and close"), tr("Whether they slide to their place.")},
                    {{QString(), tr("As the desktop does")},
                     {u"full"_s, tr("Slide")},
                     {u"reduced"_s, tr("Jump")}});
    return page;
}

QWidget* makeVersionHistoryPage(const SettingsServices& s)
{
    auto* page = new SettingsPage(
        {title(SettingsPageId::VersionHistory),
         tr("Versions of a note are kept beside its project. Saving by hand and restoring an older "
            "version always keep one.")},
        s.services.defaults, s.look);
    page->addSpace(12);
    page->addSwitch(autoSnapshotEnabledSetting,
                    {tr("Keep versions while writing"),
                     tr("A version of a note that has changed, at most once an interval.")});
    NumberForm minutes;
    minutes.lowest = 0.5;
    minutes.highest = 24 * 60;
    minutes.decimals = 1;
    minutes.unit = tr("min");
    minutes.scale = 1.0 / 60;
    minutes.above0 = true;
    SettingRow* row =
        page->addNumber(autoSnapshotIntervalSetting,
                        {tr("Interval"), tr("The shortest time between two of them.")}, minutes);
    page->enableWith(row, autoSnapshotEnabledSetting);
    NumberForm count;
    count.lowest = 1;
    count.highest = 10'000;
    count.step = 10;
    count.above0 = true;
    page->addNumber(
        maxSnapshotsSetting,
        {tr("Versions of each note"), tr("The oldest make room when a further one is kept.")},
        count);
    return page;
}

QWidget* makeProjectsPage(const SettingsServices& s)
{
    auto* page =
        new SettingsPage({title(SettingsPageId::Projects), {}}, s.services.defaults, s.look);
    page->addHead(tr("Opening"));
    page->addSwitch(SessionKeys::confirmBeforeOpen,
                    {tr("Ask before a project is opened"), tr("When its tile is pressed twice.")});
    page->addHead(tr("Folder"));
    const QString folder = ProjectLibraryController(s.services.folders).projectsDirectoryPath();
    auto* show = new QPushButton(tr("Show Folder"));
    SettingRow* row =
        page->addRow({tr("Projects are kept in"), QDir::toNativeSeparators(folder)}, show);
    show->setAccessibleName(tr("Show the folder of the projects"));
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
        return tr("General");
    case SettingsPageId::Editor:
        return tr("Editor");
    case SettingsPageId::Bullets:
        return tr("Bullets");
    case SettingsPageId::Appearance:
        return tr("Appearance");
    case SettingsPageId::VersionHistory:
        return tr("Version History");
    case SettingsPageId::Shortcuts:
        return tr("Shortcuts");
    case SettingsPageId::Projects:
        return tr("Projects");
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
