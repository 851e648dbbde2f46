// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that looks after what can't be saved: tries again, keeps it elsewhere, and
// is the one door for leaving.
#include "core/notebook/NotebookEdit.h"
#include "core/state/AppState.h"
#include "core/state/ProjectQuestions.h"
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
    Q_DECLARE_TR_FUNCTIONS(AppStateLeaving)
};

bool isAmong(const QList<Shared<FolderRecord>>& folders, const QUuid& id)
{
    return std::ranges::any_of(folders, [&](const auto& folder) { return folder->id == id; });
}

// A disk that went takes the folder above with it, or shows another one in its place.
bool isDiskGone(const QString& rootPath, const FileIdentity& folder)
{
    const auto above = FileIdentity::of(QFileInfo(rootPath).absolutePath());
    return !above || above->device != folder.device;
}

} // namespace

QString AppState::projectAccessPath() const
{
    if (m_folder)
        return m_folder->path();
    return m_currentProject ? m_currentProject->rootPath : QString();
}

// --- Following the folder ------------------------------------------------------------------------

void AppState::checkProjectFolder()
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

void AppState::projectMoved(const QString& to)
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

bool AppState::hasUnsaved() const
{
    return m_controller && (m_controller->hasUnsaved() || !m_refusedContents.isEmpty());
}

QList<Shared<NoteRecord>> AppState::unsavedNotes() const
{
    QList<Shared<NoteRecord>> notes = m_controller->unsavedNotes();
    for (auto refused = m_refusedContents.cbegin(); refused != m_refusedContents.cend();
         ++refused) {
        const auto* note = m_notebook.notes.find(refused.key());
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

void AppState::storeRefused()
{
    if (!canCreateOrEdit())
        return;
    const auto refused = m_refusedContents;
    for (auto each = refused.cbegin(); each != refused.cend(); ++each) {
        emit noteAboutToBeReplaced(each.key());
        (void)updateNote(each.key(), *each);
    }
}

UnsavedWork AppState::unsavedWork() const
{
    UnsavedWork work;
    if (!hasUnsaved())
        return work;
    if (m_saveFailure)
        work.error = {m_saveFailure->code, m_saveFailure->error};
    else if (!m_refusedContents.isEmpty())
        work.error = {StoreError::Code::Refused, QString()};
    for (const Shared<NoteRecord>& note : unsavedNotes()) {
        const UnsavedSince before =
            m_unsavedSince.value(note->id, UnsavedSince{m_services.clock.now(), 0});
        const int words = wordCount(note->body.text()) - before.storedWords;
        work.notes.append({note->id, note->titleForList(), std::max(0, words), before.since});
    }
    work.hasMore = work.notes.isEmpty();
    return work;
}

void AppState::noteUnsaved()
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
        const auto bytes = stored ? (*stored)->body.utf8().tryBytes() : QByteArray();
        since.insert(note->id, {now, bytes ? wordCount(QString::fromUtf8(*bytes)) : 0});
    }
    m_unsavedSince = std::move(since);
}

void AppState::saved(const std::expected<void, StoreError>& result, const char* failureLine,
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
    eraseVersionsOfErasedNotes(); // their removal was stored with the rest
    if (counts == CountsAsChange::Yes)
        touchCurrentProjectUpdatedAt();
}

void AppState::scheduleRetry()
{
    if (!m_nextTry)
        m_nextTry = m_services.clock.after(std::chrono::seconds(retrySeconds),
                                           [this] { trySavingAgain(); });
}

void AppState::trySavingAgain()
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

void AppState::setTrouble(const std::optional<ProjectTrouble::Kind>& kind)
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

// --- Rescue --------------------------------------------------------------------------------------

QStringList AppState::rescueFolders() const
{
    return {m_library.projectsDirectoryPath() + "/Rescued"_L1,
            m_services.folders.state + "/Rescued"_L1};
}

QList<Shared<NoteRecord>> AppState::notesToRescue()
{
    using Kind = ProjectTrouble::Kind;
    if (!m_rescue && m_trouble && m_trouble->kind == Kind::FolderGone)
        return m_notebook.notes.records(); // its files may live on in this program alone
    QList<Shared<NoteRecord>> notes = unsavedNotes();
    if (m_rescue || !m_trouble || m_trouble->kind != Kind::StoreReplaced)
        return notes;
    // What this run has saved went into the file that is not at its place any more.
    const auto sides = storeSides();
    if (!sides)
        return m_notebook.notes.records();
    notes.clear();
    for (const StoreSides::Difference& each : sides->differences()) {
        if (each.mine)
            notes.append(*each.mine);
    }
    return notes;
}

void AppState::rescueUnsaved()
{
    if (!m_controller || !m_currentProject)
        return;
    const QList<Shared<NoteRecord>> notes = notesToRescue();
    const QList<Shared<FolderRecord>> folders =
        m_rescue || !m_trouble ? m_controller->unsavedFolders() : m_notebook.folders.records();
    if (notes.isEmpty() && m_controller->unsavedFolders().isEmpty())
        return;
    const auto stored = [this](const QUuid& id) -> std::optional<Timestamp> {
        const auto* note = m_controller->storedNote(id);
        return note ? std::optional((*note)->updatedAt) : std::nullopt;
    };
    const auto keep = [&] {
        return m_rescue->keep(notes, folders, stored);
    };
    if (!m_rescue || !keep()) {
        const RescueOrigin origin{m_currentProject->id, m_currentProject->titleForDisplay(),
                                  m_currentProject->rootPath, m_services.clock.now()};
        for (const QString& parent : rescueFolders()) {
            auto made = RescueFile::createIn(parent, origin, m_services.clock);
            m_rescue = made ? *std::move(made) : nullptr;
            const auto kept = m_rescue ? keep() : std::unexpected(made.error());
            if (kept)
                break;
            qWarning().noquote() << "Words can't be kept here:" << kept.error().text();
            m_rescue.reset();
        }
    }
    const QString folder = m_rescue ? m_rescue->folder() : QString();
    if (m_trouble && m_trouble->rescueFolder != folder) {
        m_trouble->rescueFolder = folder;
        emit projectTroubleChanged();
    }
}

void AppState::rescueNow()
{
    if (!hasUnsaved() || m_leavesUnsaved ||
        (m_controller->saveAgain() && m_refusedContents.isEmpty()))
        return;
    noteUnsaved();
    rescueUnsaved();
}

void AppState::finishRescue()
{
    if (!m_rescue)
        return;
    const QString folder = m_rescue->folder();
    m_rescue.reset();
    if (const auto moved = m_services.trash.moveToTrash(folder); !moved)
        qWarning().noquote() << moved.error().text();
    emit rescuesChanged();
}

QList<FoundRescue> AppState::rescues() const
{
    QStringList parents = rescueFolders();
    parents += SessionKeys::rescueFolders(m_services.defaults);
    parents.removeDuplicates();
    QList<FoundRescue> found = RescueFile::find(parents);
    if (m_rescue)
        found.removeIf([&](const FoundRescue& each) { return each.folder == m_rescue->folder(); });
    return found;
}

std::expected<void, QString> AppState::putInPlace(const FoundRescue& rescue)
{
    if (!m_currentProject || !passesEditGuard())
        return std::unexpected(Words::tr("The project can't be changed now."));
    const auto content = RescueFile::read(rescue.folder, m_services.clock);
    if (!content)
        return std::unexpected(content.error().text());
    if (m_selection.selectedNoteID())
        emit noteAboutToBeReplaced(*m_selection.selectedNoteID());
    NotebookEditor editor(m_notebook, root());
    for (const Shared<FolderRecord>& folder : content->folders) {
        if (editor.folder(folder->id))
            continue;
        editor.put(folder);
        const auto& parent = folder->parentFolderID;
        if (!folder->isTrash())
            editor
                .changeList(OrderListID::foldersOf(
                    parent && (editor.folder(*parent) || isAmong(content->folders, *parent))
                        ? parent
                        : std::nullopt))
                .append(folder->id);
    }
    for (const Shared<NoteRecord>& note : content->notes)
        placeRescued(editor, note, rescue);
    (void)carryOut(editor.edit(), Step::Kept);
    if (m_saveFailure)
        return std::unexpected(Words::tr("The words can't be saved now. They are kept where they "
                                         "are."));
    if (const auto moved = m_services.trash.moveToTrash(rescue.folder); !moved)
        return std::unexpected(moved.error().text());
    emit rescuesChanged();
    return {};
}

std::expected<void, QString> AppState::makeProjectOf(const FoundRescue& rescue)
{
    if (!passesLicence())
        return std::unexpected(QString());
    const auto content = RescueFile::read(rescue.folder, m_services.clock);
    if (!content)
        return std::unexpected(content.error().text());
    const Timestamp now = m_services.clock.now();
    OrvaneProjectManifest manifest;
    manifest.id = QUuid::createUuid();
    manifest.name = Words::tr("%1 (rescued)", "title of a note").arg(rescue.origin.projectTitle);
    manifest.createdAt = now;
    manifest.updatedAt = now;
    Notebook notebook = notebookOf(*content, rescue.origin.projectID, now);
    giveOwnRoot(notebook, rescue.origin.projectID, manifest.id);
    const auto made = ProjectLibraryController::createProjectAt(
        m_library.uniqueProjectRootPath(manifest.name), manifest, [&](const QString& dataFolder) {
            return storeSnapshotIn(dataFolder,
                                   {notebook.folders.records(), notebook.notes.records(),
                                    BinderDisplayOrdering::layoutOf(notebook.order)},
                                   m_services.clock);
        });
    if (!made)
        return std::unexpected(made.error().text());
    if (const auto moved = m_services.trash.moveToTrash(rescue.folder); !moved)
        qWarning().noquote() << moved.error().text();
    refreshProjects();
    emit rescuesChanged();
    openProjectAt(made->rootPath, false);
    return {};
}

void AppState::placeRescued(NotebookEditor& editor, const Shared<NoteRecord>& note,
                            const FoundRescue& rescue)
{
    const auto list = [&](const Shared<NoteRecord>& each) {
        editor.put(each);
        editor.changeList(OrderListID::notesOf(editor.containerOf(*each))).append(each->id);
    };
    const auto* found = editor.note(note->id);
    if (!found)
        return list(note);
    if (**found == *note)
        return;
    const auto known = std::ranges::find(rescue.notes, note->id, &RescuedNote::id);
    const bool isUnchanged =
        known != rescue.notes.end() && known->storedUpdatedAt == (*found)->updatedAt;
    if (isUnchanged && appendVersionSnapshot(note->id, u"Before Rescue"_s)) {
        const QUuid place = (*found)->folderID; // it may have been moved since
        editor.put(note.with([&](NoteRecord& each) { each.folderID = place; }));
        return;
    }
    NoteRecord beside = *note;
    beside.id = QUuid::createUuid();
    beside.title = Words::tr("%1 (rescued)", "title of a note").arg(note->titleForList());
    beside.titleRTF.reset();
    list(beside);
}

// --- Leaving -------------------------------------------------------------------------------------

bool AppState::mayLeaveProject()
{
    if (!m_currentProject || !m_controller || m_isAskingToLeave)
        return !m_isAskingToLeave;
    emit projectMayBeLeft();
    if (!m_controller || m_leavesUnsaved)
        return true;
    // What was saved to a file that has lost its place since would go with this controller.
    if (const auto kept = m_controller->saveAgain(); !kept || m_saveFailure)
        saved(kept, "OrvaneWorkspace persistence error:", CountsAsChange::No);
    storeRefused();
    if (!m_saveFailure && m_refusedContents.isEmpty())
        return true;
    if (!m_saveFailure)
        noteUnsaved();
    if (m_trouble && m_rescue)
        return m_leavesUnsaved = true; // kept already, and offered when the project is opened
    const QScopedValueRollback asks(m_isAskingToLeave, true);
    using namespace ProjectQuestions;
    while (m_controller && (m_saveFailure || !m_refusedContents.isEmpty())) {
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

bool AppState::writeUnsavedToFile()
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
