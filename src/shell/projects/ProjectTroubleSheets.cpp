// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/projects/ProjectTroubleSheets.h"

#include "commands/AppCommandEvents.h"
#include "core/state/ProjectQuestions.h"
#include "shell/projects/BothStoresSheet.h"

namespace orvane {

using namespace std::chrono_literals;
using Kind = ProjectTrouble::Kind;
namespace Ask = ProjectQuestions;

ProjectTroubleSheets::ProjectTroubleSheets(AppState& appState, Look& look, SheetHost& sheets,
                                           QObject* parent)
    : QObject(parent)
    , m_appState(appState)
    , m_look(look)
    , m_sheets(sheets)
    // Who asks for a save wants to know why there is none.
    , m_saveWanted(appState.services().notifications.observe(
          AppCommandEvents::saveDocument, [this](const NoPayload&) { askAgain(); }))
{
    // A save may be under way that other things still have to hear of.
    connect(&appState.projectSession(), &ProjectSession::projectTroubleChanged, this,
            &ProjectTroubleSheets::showTrouble, Qt::QueuedConnection);
    connect(&appState.projectSession(), &ProjectSession::rescuesChanged, this,
            &ProjectTroubleSheets::offerRescues, Qt::QueuedConnection);
    QMetaObject::invokeMethod(this, &ProjectTroubleSheets::offerRescues, Qt::QueuedConnection);
}

ProjectTroubleSheets::~ProjectTroubleSheets() = default;

void ProjectTroubleSheets::tell(const QString& title, const QString& text)
{
    m_appState.services().questions.ask({.title = title,
                                         .text = text,
                                         .buttons = {tr("OK")},
                                         .suppression = {},
                                         .choices = {},
                                         .tone = Question::Tone::Warning});
}

void ProjectTroubleSheets::showTrouble()
{
    const auto& trouble = m_appState.projectSession().projectTrouble();
    if (!trouble) {
        m_shown.reset();
        m_shownKind.reset();
        m_nextUpdate.reset();
        if (m_both)
            m_both->dismiss();
        return;
    }
    if (m_shownKind == trouble->kind)
        return update();
    m_shownKind = trouble->kind;
    m_shown = m_appState.services().questions.show(
        question(), [this, kind = trouble->kind](const Answer& answer) { answered(kind, answer); });
    scheduleUpdate();
}

void ProjectTroubleSheets::askAgain()
{
    if (!m_appState.projectSession().projectTrouble() || m_shown || m_both)
        return;
    m_shownKind.reset();
    showTrouble();
}

Question ProjectTroubleSheets::question() const
{
    const ProjectTrouble& trouble = *m_appState.projectSession().projectTrouble();
    const Services& services = m_appState.services();
    const QString title = m_appState.projectSession().currentProject()->titleForDisplay();
    const Timestamp now = services.clock.now();
    if (trouble.kind == Kind::StoreReplaced) {
        auto sides = m_appState.projectSession().storeSides();
        return Ask::storeReplaced(trouble, sides ? std::optional(*std::move(sides)) : std::nullopt,
                                  title, now);
    }
    const int wait = ProjectSession::retrySeconds - int(now.secondsSince(trouble.lastTried));
    return Ask::folderGone(trouble, m_appState.projectSession().unsavedWork(), title,
                           services.folders.home, qBound(1, wait, ProjectSession::retrySeconds));
}

void ProjectTroubleSheets::scheduleUpdate()
{
    m_nextUpdate = m_appState.services().clock.after(1s, [this] {
        m_nextUpdate.reset();
        update();
    });
}

void ProjectTroubleSheets::update()
{
    // Both sides of a replaced store stand still.
    if (!m_shown || !m_appState.projectSession().projectTrouble() ||
        m_shownKind == Kind::StoreReplaced)
        return;
    m_shown->change(question());
    scheduleUpdate();
}

void ProjectTroubleSheets::answered(Kind kind, const Answer& answer)
{
    m_shown.reset();
    m_nextUpdate.reset();
    if (kind == Kind::StoreReplaced)
        return decide(answer.button);
    switch (answer.button) {
    case Ask::TryAgain:
        m_shownKind.reset();
        m_appState.projectSession().trySavingAgain();
        showTrouble();
        break;
    case Ask::SaveCopy:
        saveCopy();
        askAgain();
        break;
    case Ask::CloseProject:
        m_appState.projectSession().closeProject();
        break;
    default:
        break; // writing goes on, and the words go to the rescue file
    }
}

void ProjectTroubleSheets::decide(int button)
{
    std::expected<void, QString> done;
    if (button == Ask::ShowBoth)
        return showBoth();
    if (button == Ask::KeepMine)
        done = m_appState.projectSession().keepMyStore();
    else if (button == Ask::TakeTheirs)
        done = m_appState.projectSession().takeTheirStore();
    if (done)
        return;
    tell(tr("That Could Not Be Done"),
         tr("Both files are whole, and nothing was written over.\n\n%1").arg(done.error()));
    askAgain();
}

void ProjectTroubleSheets::showBoth()
{
    const auto sides = m_appState.projectSession().storeSides();
    if (!sides) {
        tell(tr("Their File Can't Be Read"),
             tr("Another program may still be writing it. Nothing was changed.\n\n%1")
                 .arg(sides.error().detail));
        return askAgain();
    }
    auto* both =
        new BothStoresSheet(*sides, m_appState.projectSession().currentProject()->titleForDisplay(),
                            m_appState.services().clock.now(), m_look);
    m_both = both;
    connect(
        both, &BothStoresSheet::decided, this,
        [this](BothStoresSheet::Decision decision) {
            decide(decision == BothStoresSheet::Decision::KeepMine ? Ask::KeepMine
                                                                   : Ask::TakeTheirs);
        },
        Qt::QueuedConnection);
    m_sheets.present(both);
}

void ProjectTroubleSheets::saveCopy()
{
    const auto& project = m_appState.projectSession().currentProject();
    if (!project)
        return;
    const Services& services = m_appState.services();
    const QString name = ProjectLibraryController::sanitizedFolderName(
        tr("%1 Copy").arg(project->titleForDisplay()));
    const QString path = services.questions.fileToSave(tr("Save a Copy of the Project"),
                                                       services.folders.home + u'/' + name);
    if (path.isEmpty())
        return;
    const auto saved = m_appState.projectSession().saveCopyOfProject(path);
    if (!saved)
        tell(tr("The Copy Could Not Be Written"), saved.error());
    else if (*saved > 0)
        tell(tr("The Copy Is Not Whole"),
             *saved == 1 ? tr("One note can't be read while its disk is gone, and is not in it.")
                         : tr("%Ln notes can't be read while their disk is gone, and are not in "
                              "it.",
                              nullptr, *saved));
}

void ProjectTroubleSheets::offerRescues()
{
    if (m_isOffering || m_appState.projectSession().projectTrouble() ||
        m_appState.projectSession().isAppTerminating())
        return;
    m_isOffering = true;
    const Services& services = m_appState.services();
    for (const FoundRescue& rescue : m_appState.projectSession().rescues()) {
        if (m_postponed.contains(rescue.folder))
            continue;
        const QUuid id = rescue.origin.projectID;
        const bool isThere = m_appState.projectSession().project(id);
        const Answer answer = services.questions.ask(
            Ask::rescued(rescue, isThere ? Ask::ItsProject::IsThere : Ask::ItsProject::IsMissing,
                         services.folders.home, services.clock.now()));
        m_postponed.insert(rescue.folder);
        if (answer.button != Ask::PutInPlace)
            continue;
        if (isThere)
            m_appState.projectSession().openProject(id, true);
        const bool isOpen = m_appState.projectSession().currentProject() &&
                            m_appState.projectSession().currentProject()->id == id;
        if (isThere && !isOpen)
            continue; // what stands in the way is told by the one who opens
        const auto placed = isThere ? m_appState.projectSession().putInPlace(rescue)
                                    : m_appState.projectSession().makeProjectOf(rescue);
        if (!placed && !placed.error().isEmpty())
            tell(tr("The Words Stay Where They Are"), placed.error());
    }
    m_isOffering = false;
}

} // namespace orvane
