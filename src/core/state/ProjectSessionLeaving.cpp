// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of ProjectSession that looks after what can't be saved: tries again, keeps it elsewhere,
// and is the one door for leaving.
#include "core/notebook/NotebookEdit.h"
#include "core/state/ProjectQuestions.h"
#include "core/state/ProjectSession.h"
#include "core/state/SessionKeys.h"
#include "platform/Log.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QScopedValueRollback>

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ProjectSessionLeaving)
};

// A disk that went takes the folder above with it, or shows another one in its place.
bool isDiskGone(const QString& rootPath, const FileIdentity& folder)
{
    const auto above = FileIdentity::of(QFileInfo(rootPath).absolutePath());
    return !above || above->device != folder.device;
}

} // namespace

QString ProjectSession::projectAccessPath() const
{
    if (m_folder)
        return m_folder->path();
    return m_currentProject ? m_currentProject->rootPath : QString();
}

// --- Following the folder ------------------------------------------------------------------------

void ProjectSession::checkProjectFolder()
{
    if (!m_currentProject || !m_folder || !m_controller)
        return;
    scheduleCheck();
    if (const auto place = m_folder->place()) {
        if (*place != m_currentProject->rootPath)
            projectMoved(*place);
        if (m_trouble || isReadOnly())
            return;
        if (const auto still = m_controller->confirmFiles(); !still)
            saved(still, "OrvaneWorkspace store error:", CountsAsChange::No);
        return;
    }
    if (!m_trouble)
        saved(std::unexpected(StoreError{StoreError::Code::Missing,
                                         Words::tr("The folder of the project can't be reached.")}),
              "OrvaneWorkspace folder error:", CountsAsChange::No);
}

void ProjectSession::projectMoved(const QString& to)
{
    qCInfo(projectBootstrapLog, "the open project is now at %ls", qUtf16Printable(to));
    const QString from = std::exchange(m_currentProject->rootPath, to);
    m_known.move(from, to);
    m_known.save(m_services.defaults);
    m_selection.projectMoved(from, to);
    refreshProjects();
    emit currentProjectChanged();
}

// --- What isn't saved ----------------------------------------------------------------------------

bool ProjectSession::hasUnsaved() const
{
    return m_controller && (m_controller->hasUnsaved() || !m_open.refusedContents().isEmpty());
}

QList<Shared<NoteRecord>> ProjectSession::unsavedNotes() const
{
    QList<Shared<NoteRecord>> notes = m_controller->unsavedNotes();
    for (auto refused = m_open.refusedContents().cbegin();
         refused != m_open.refusedContents().cend(); ++refused) {
        const auto* note = m_open.notebook().notes.find(refused.key());
        if (!note)
            continue;
        const auto kept = note->with([&](NoteRecord& record) { refused->applyTo(record); });
        const auto same = std::ranges::find(
            notes, refused.key(), [](const Shared<NoteRecord>& each) { return each->id; });
        if (same != notes.end())
            *same = kept;
        else
            notes.append(kept);
    }
    return notes;
}

UnsavedWork ProjectSession::unsavedWork() const
{
    UnsavedWork work;
    if (!hasUnsaved())
        return work;
    if (m_saveFailure)
        work.error = {m_saveFailure->code, m_saveFailure->error};
    else if (!m_open.refusedContents().isEmpty())
        work.error = {StoreError::Code::Refused, QString()};
    for (const Shared<NoteRecord>& note : unsavedNotes()) {
        const UnsavedSince before =
            m_unsavedSince.value(note->id, UnsavedSince{m_services.clock.now(), 0});
        const int words = wordCount(note->body.readOrNothing()) - before.storedWords;
        work.notes.append({note->id, note->titleForList(), std::max(0, words), before.since});
    }
    work.hasMore = work.notes.isEmpty();
    return work;
}

void ProjectSession::noteUnsaved()
{
    const Timestamp now = m_services.clock.now();
    QHash<QUuid, UnsavedSince> since;
    for (const Shared<NoteRecord>& note : unsavedNotes()) {
        const auto known = m_unsavedSince.constFind(note->id);
        if (known != m_unsavedSince.cend()) {
            since.insert(note->id, *known);
            continue;
        }
        const auto* stored = m_controller->storedNote(note->id);
        const auto bytes = stored ? (*stored)->body.utf8().read() : QByteArray();
        since.insert(note->id, {now, bytes ? wordCount(QString::fromUtf8(*bytes)) : 0});
    }
    m_unsavedSince = std::move(since);
}

void ProjectSession::saved(const std::expected<void, StoreError>& result, const char* failureLine,
                           CountsAsChange counts)
{
    if (!result) {
        using Code = StoreError::Code;
        qWarning().noquote() << failureLine << result.error().text();
        m_leavesUnsaved = false;
        noteUnsaved();
        const Timestamp since = m_saveFailure ? m_saveFailure->since : m_services.clock.now();
        const SaveFailure failure{since, result.error().text(), result.error().code};
        if (m_saveFailure != failure) {
            m_saveFailure = failure;
            emit saveFailureChanged();
        }
        if (result.error().code == Code::Replaced)
            setTrouble(ProjectTrouble::Kind::StoreReplaced);
        else if (result.error().code == Code::Missing)
            setTrouble(isDiskGone(m_currentProject->rootPath, m_folder->identity())
                           ? ProjectTrouble::Kind::DiskGone
                           : ProjectTrouble::Kind::FolderGone);
        if (m_trouble)
            rescueUnsaved();
        scheduleRetry();
        return;
    }
    m_nextTry.reset();
    m_unsavedSince.clear();
    if (m_saveFailure) {
        m_saveFailure.reset();
        emit saveFailureChanged();
    }
    setTrouble(std::nullopt);
    finishRescue();
    m_open.allStored(); // their removal was stored with the rest
    if (counts == CountsAsChange::Yes)
        touchCurrentProjectUpdatedAt();
}

void ProjectSession::scheduleRetry()
{
    if (!m_nextTry)
        m_nextTry = m_services.clock.after(std::chrono::seconds(retrySeconds),
                                           [this] { trySavingAgain(); });
}

void ProjectSession::trySavingAgain()
{
    m_nextTry.reset();
    if (!m_controller || !m_saveFailure)
        return;
    if (m_trouble)
        m_trouble->lastTried = m_services.clock.now();
    const bool mayLeave = m_leavesUnsaved;
    const auto place = m_folder ? m_folder->place() : QString();
    const auto result =
        place ? m_controller->saveAgain()
              : std::unexpected(StoreError{StoreError::Code::Missing, place.error().detail});
    saved(result,
          "OrvaneWorkspace persistence error:", result ? CountsAsChange::Yes : CountsAsChange::No);
    m_leavesUnsaved = mayLeave && m_saveFailure;
    if (m_trouble)
        emit projectTroubleChanged();
}

void ProjectSession::setTrouble(const std::optional<ProjectTrouble::Kind>& kind)
{
    if (!kind && !m_trouble)
        return;
    const Timestamp now = m_services.clock.now();
    if (!kind) {
        m_trouble.reset();
    } else if (!m_trouble || m_trouble->kind != *kind) {
        const QString rescueFolder = m_trouble ? m_trouble->rescueFolder : QString();
        m_trouble = ProjectTrouble{*kind, now, now, rescueFolder};
    } else {
        return;
    }
    emit projectTroubleChanged();
}

// --- Leaving -------------------------------------------------------------------------------------

bool ProjectSession::mayLeaveProject()
{
    finishOpening();
    if (!m_currentProject || !m_controller || m_isAskingToLeave)
        return !m_isAskingToLeave;
    emit projectMayBeLeft();
    if (!m_controller || m_leavesUnsaved)
        return true;
    // What was saved to a file that has lost its place since would go with this controller.
    if (const auto kept = m_controller->saveAgain(); !kept || m_saveFailure)
        saved(kept, "OrvaneWorkspace persistence error:", CountsAsChange::No);
    m_open.storeRefused();
    if (!m_saveFailure && m_open.refusedContents().isEmpty())
        return true;
    if (!m_saveFailure)
        noteUnsaved();
    if (m_trouble && m_rescue)
        return m_leavesUnsaved = true; // kept already, and offered when the project is opened
    const QScopedValueRollback asks(m_isAskingToLeave, true);
    using namespace ProjectQuestions;
    while (m_controller && (m_saveFailure || !m_open.refusedContents().isEmpty())) {
        const UnsavedWork work = unsavedWork();
        const QString title = m_currentProject->titleForDisplay();
        switch (m_services.questions.ask(leave(work, title)).button) {
        case WriteToFile:
            m_leavesUnsaved = writeUnsavedToFile();
            break;
        case LeaveWithout:
            m_leavesUnsaved = true;
            break;
        default:
            return false;
        }
        if (m_leavesUnsaved)
            return true;
    }
    return true; // it was saved while the question was open
}

bool ProjectSession::writeUnsavedToFile()
{
    const RescueOrigin origin{m_currentProject->id, m_currentProject->titleForDisplay(),
                              m_currentProject->rootPath, m_services.clock.now()};
    const QString name = ProjectLibraryController::sanitizedFolderName(
        Words::tr("%1, not saved", "name of a file").arg(origin.projectTitle));
    const QString path = m_services.questions.fileToSave(Words::tr("Write Words to a File"),
                                                         m_services.folders.home + u'/' + name);
    if (path.isEmpty())
        return false;
    auto rescue = RescueFile::create(path, origin, m_services.clock);
    const auto stored = [this](const QUuid& id) -> std::optional<Timestamp> {
        const auto* note = m_controller->storedNote(id);
        return note ? std::optional((*note)->updatedAt) : std::nullopt;
    };
    const auto kept = rescue
                          ? (*rescue)->keep(unsavedNotes(), m_controller->unsavedFolders(), stored)
                          : std::unexpected(rescue.error());
    if (kept) {
        SessionKeys::addRescueFolder(m_services.defaults, QFileInfo(path).absolutePath());
        return true;
    }
    m_services.questions.ask(
        {.title = Words::tr("The File Could Not Be Written"),
         .text = Words::tr("Nothing was written to “%1”. Choose another place.\n\n%2")
                     .arg(path, kept.error().detail),
         .buttons = {Words::tr("OK")},
         .suppression = {},
         .choices = {},
         .tone = Question::Tone::Warning});
    return false;
}

} // namespace orvane
