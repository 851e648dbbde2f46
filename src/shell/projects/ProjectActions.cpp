// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/projects/ProjectActions.h"

#include "commands/AppCommandEvents.h"
#include "core/records/Wording.h"
#include "core/state/SessionKeys.h"
#include "shell/binder/IconsAndTitlesWindow.h"
#include "shell/projects/WelcomeToOrvaneWorkspaceSheet.h"
#include "shell/sheets/NameSheet.h"

#include <QDesktopServices>
#include <QDir>
#include <QUrl>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

const QString starterBody =
    u"Start Here\n\nWrite or paste your first draft here.\n\nDrag PDFs into the binder when you "
    "want research beside your notes.\n\nAdd tags in the Inspector when a project starts to "
    "branch.\n\nYour projects live in ~/Documents/OrvaneWorkspace/."_s;

} // namespace

ProjectActions::ProjectActions(AppState& appState, Look& look, SheetHost& sheets, QObject* parent)
    : QObject(parent)
    , m_appState(appState)
    , m_look(look)
    , m_sheets(sheets)
{
    // Alerts run an event loop of their own, so they wait until the change that caused them is
    // through.
    connect(&appState.projectSession(), &ProjectSession::projectLoadProtectionAlertChanged, this,
            &ProjectActions::showPendingAlerts, Qt::QueuedConnection);
    connect(&appState.projectSession(), &ProjectSession::projectOpenProblemChanged, this,
            &ProjectActions::showPendingAlerts, Qt::QueuedConnection);
    QMetaObject::invokeMethod(this, &ProjectActions::showPendingAlerts, Qt::QueuedConnection);
}

void ProjectActions::tell(const QString& title, const QString& text)
{
    m_appState.services().questions.ask({.title = title,
                                         .text = text,
                                         .buttons = {tr("OK")},
                                         .suppression = {},
                                         .choices = {},
                                         .tone = Question::Tone::Warning});
}

void ProjectActions::showPendingAlerts()
{
    if (m_alertIsShown)
        return;
    m_alertIsShown = true;
    while (m_appState.projectSession().projectLoadProtectionAlert() ||
           m_appState.projectSession().projectOpenProblem()) {
        if (const auto alert = m_appState.projectSession().projectLoadProtectionAlert()) {
            tell(tr("Project Data Protected"), alert->message());
            m_appState.projectSession().clearProjectLoadProtectionAlert();
        } else if (const auto problem = m_appState.projectSession().projectOpenProblem()) {
            tell(problem->title, problem->message);
            m_appState.projectSession().clearProjectOpenProblem();
        }
    }
    m_alertIsShown = false;
}

bool ProjectActions::passesLicence()
{
    const Services& services = m_appState.services();
    if (services.licence.canCreateOrEdit())
        return true;
    services.notifications.post(AppCommandEvents::showLicenseUnlock);
    services.beeper.beep();
    return false;
}

void ProjectActions::showFolder(const QString& path)
{
    if (!QDir().mkpath(path) || !QDesktopServices::openUrl(QUrl::fromLocalFile(path)))
        tell(tr("The Folder Could Not Be Shown"),
             tr("No file manager took it. It is “%1”.").arg(QDir::toNativeSeparators(path)));
}

void ProjectActions::explainMissing(const QString& folder)
{
    const auto& missing = m_appState.projectSession().missingProjects();
    const auto project = std::ranges::find(missing, folder, &KnownProject::folder);
    if (project == missing.end())
        return;
    const Services& services = m_appState.services();
    const Answer answer = services.questions.ask(
        {.title = tr("“%1” is not there").arg(project->title),
         .text = tr("Its folder was renamed, moved or removed, or its disk is not connected. It "
                    "was last seen %1. Nothing was made in its place.")
                     .arg(momentInWords(project->lastSeen, services.clock.now())),
         .rows = {{QuestionIcon::Folder, shortPath(folder, services.folders.home), {}}},
         .explanation = tr("Taken off the list, it comes back by itself when its folder is in the "
                           "library again."),
         .buttons = {tr("Look Again"), tr("Close"), tr("Take Off the List")},
         .defaultButton = 0,
         .cancelButton = 1,
         .apartButton = 2,
         .suppression = {},
         .choices = {},
         .tone = Question::Tone::Warning});
    if (answer.button == 2)
        return m_appState.projectSession().forgetProject(folder);
    if (answer.button != 0)
        return;
    m_appState.projectSession().refreshProjects();
    if (m_appState.projectSession().projectAt(folder))
        m_appState.projectSession().openProjectAt(folder, true);
    else
        explainMissing(folder);
}

void ProjectActions::openFromTile(const QString& folder)
{
    const OrvaneProjectRecord* project = m_appState.projectSession().projectAt(folder);
    if (!project)
        return;
    const QString title = project->titleForDisplay();
    m_appState.projectSession().selectProjectTile(folder);
    const Services& services = m_appState.services();
    if (SessionKeys::confirmBeforeOpen.read(services.defaults)) {
        const Answer answer = services.questions.ask({.title = tr("Open OrvaneWorkspace project?"),
                                                      .text = title,
                                                      .buttons = {tr("Open"), tr("Cancel")},
                                                      .suppression = tr("Do not ask again"),
                                                      .choices = {}});
        if (answer.suppress)
            SessionKeys::confirmBeforeOpen.write(services.defaults, false);
        if (answer.button != 0)
            return;
    }
    m_appState.projectSession().openProjectAt(folder, true);
}

void ProjectActions::showNewProjectSheet()
{
    if (!passesLicence())
        return;
    const auto create = [this](const QString& name) -> std::optional<QString> {
        const auto created =
            m_appState.projectSession().createProject(name, u"sf:archivebox.fill"_s);
        if (created)
            offerIcon(*created);
        return created ? std::nullopt : std::optional(created.error());
    };
    const QString where = shortPath(m_appState.projectSession().library().projectsDirectoryPath(),
                                    m_appState.services().folders.home);
    m_sheets.present(new NameSheet({.title = tr("New Project"),
                                    .hint = tr("It becomes a folder in %1.").arg(where),
                                    .placeholder = tr("Untitled Project"),
                                    .acceptButton = tr("Create Project"),
                                    .initialName = {}},
                                   NameSheet::BlankName::Allowed, create, m_look));
}

void ProjectActions::offerIcon(const QUuid& project)
{
    QMetaObject::invokeMethod(
        this,
        [this, project] {
            IconsAndTitlesWindow::open({TitledItem::Kind::Project, project}, m_appState, m_look,
                                       m_sheets.window(), IconsAndTitlesWindow::Begin::AtDone);
        },
        Qt::QueuedConnection);
}

void ProjectActions::showIconAndTitle(const QString& folder)
{
    if (const OrvaneProjectRecord* project = m_appState.projectSession().projectAt(folder))
        IconsAndTitlesWindow::open({TitledItem::Kind::Project, project->id}, m_appState, m_look,
                                   m_sheets.window());
}

void ProjectActions::showRenameSheet(const QString& folder)
{
    const OrvaneProjectRecord* project = m_appState.projectSession().projectAt(folder);
    if (!project || !passesLicence())
        return;
    const auto rename = [this, folder](const QString& name) -> std::optional<QString> {
        const OrvaneProjectRecord* before = m_appState.projectSession().projectAt(folder);
        if (!before)
            return std::nullopt;
        const auto iconName = before->iconName;
        m_appState.projectSession().updateProjectMetadata(folder, name, {}, iconName);
        const OrvaneProjectRecord* after = m_appState.projectSession().projectAt(folder);
        const QString wanted = name.trimmed();
        if (after && !wanted.isEmpty() && after->name != wanted)
            return tr("The project's folder can't be written, so the name stays as it was.");
        return std::nullopt;
    };
    m_sheets.present(new NameSheet({.title = tr("Rename Project"),
                                    .hint = tr("The folder on disk keeps its name."),
                                    .placeholder = tr("Untitled Project"),
                                    .acceptButton = tr("Rename"),
                                    .initialName = project->titleForDisplay()},
                                   NameSheet::BlankName::Allowed, rename, m_look));
}

void ProjectActions::moveToTrash(const QString& folder)
{
    const auto moved = m_appState.projectSession().moveProjectToTrash(folder);
    if (!moved && !moved.error().isEmpty())
        tell(tr("Could Not Move to Trash"), moved.error());
}

void ProjectActions::showWelcomeIfNeeded()
{
    UserDefaults& defaults = m_appState.services().defaults;
    if (m_welcome || SessionKeys::welcomeDismissed.read(defaults))
        return;
    const auto visitor = m_appState.projectSession().projects().isEmpty()
                             ? WelcomeToOrvaneWorkspaceSheet::Visitor::New
                             : WelcomeToOrvaneWorkspaceSheet::Visitor::HasProjects;
    auto* welcome = new WelcomeToOrvaneWorkspaceSheet(visitor, m_look);
    m_welcome = welcome;
    const auto answered = [this, welcome, &defaults] {
        SessionKeys::welcomeDismissed.write(defaults, true);
        welcome->close();
        m_welcome.clear();
    };
    connect(welcome, &WelcomeToOrvaneWorkspaceSheet::starterChosen, this, [this, answered] {
        if (!passesLicence())
            return;
        answered();
        startWithStarterProject();
    });
    connect(welcome, &WelcomeToOrvaneWorkspaceSheet::blankChosen, this, [this, answered] {
        if (!passesLicence())
            return;
        answered();
        QMetaObject::invokeMethod(this, &ProjectActions::showNewProjectSheet, Qt::QueuedConnection);
    });
    connect(welcome, &WelcomeToOrvaneWorkspaceSheet::guideRequested, this,
            &ProjectActions::showGuide);
    m_sheets.present(welcome);
}

void ProjectActions::startWithStarterProject()
{
    const auto created =
        m_appState.projectSession().createProject(u"My OrvaneWorkspace Project"_s, u"sparkles"_s);
    if (!created) {
        if (!created.error().isEmpty())
            tell(tr("Could Not Create Starter Project"), created.error());
        return;
    }
    (void)m_appState.createNote(starterBody, {});
    offerIcon(*created);
}

void ProjectActions::showGuide()
{
    if (m_guide)
        return;
    const QString where = shortPath(m_appState.projectSession().library().projectsDirectoryPath(),
                                    m_appState.services().folders.home);
    m_guide = new GuideSheet(where, m_look);
    m_sheets.present(m_guide);
}

} // namespace orvane
