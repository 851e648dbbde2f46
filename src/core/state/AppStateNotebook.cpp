// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that changes notes and folders and saves them: the one door, and what makes
// and rewrites single notes and folders.
#include "core/notebook/NotebookEdits.h"
#include "core/state/AppState.h"

#include <utility>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestDerivedTitle = 40;

QString titleFromBody(const QString& body)
{
    QString line = body.section(u'\n', 0, 0).left(longestDerivedTitle);
    if (!line.isEmpty() && line.back().isHighSurrogate())
        line.chop(1);
    return line;
}

} // namespace

const NoteRecord* AppState::note(const QUuid& id) const
{
    const auto* found = m_notebook.notes.find(id);
    return found ? &**found : nullptr;
}

const FolderRecord* AppState::folder(const QUuid& id) const
{
    const auto* found = m_notebook.folders.find(id);
    return found ? &**found : nullptr;
}

std::optional<QUuid> AppState::projectRootContainerID() const
{
    return m_session.currentProject() ? std::optional(m_session.currentProject()->id)
                                      : std::nullopt;
}

QList<Shared<NoteRecord>> AppState::orderedNotes(const QUuid& container) const
{
    return BinderDisplayOrdering::orderedNotes(m_notebook.order, m_notebook.notes, container);
}

std::optional<QUuid> AppState::containerForNewNote() const
{
    if (m_selection.selectedFolderID() &&
        *m_selection.selectedFolderID() != FolderRecord::trashFolderID &&
        m_notebook.folders.contains(*m_selection.selectedFolderID()))
        return m_selection.selectedFolderID();
    if (const auto root = projectRootContainerID())
        return root;
    for (const Shared<FolderRecord>& each : m_notebook.folders) {
        if (!each->isTrash())
            return each->id;
    }
    return std::nullopt;
}

QUuid AppState::root() const
{
    return projectRootContainerID().value_or(QUuid());
}

// --- The one door --------------------------------------------------------------------------------

Accepted AppState::mayEdit()
{
    if (m_session.passesEditGuard())
        return {};
    return std::unexpected(Refusal::NotAllowed);
}

Accepted AppState::apply(const NotebookEdit& edit)
{
    const bool isOfSome = m_session.isOpening();
    if (auto may = mayEdit(); !may)
        return may;
    if (isOfSome)
        return std::unexpected(Refusal::NotThere); // it was made from a part of the notebook
    return carryOut(edit, Step::Kept);
}

Accepted AppState::carryOut(const NotebookEdit& edit, Step step, Saving saving)
{
    if (edit.isEmpty())
        return {};
    const auto kept = step == Step::Kept ? std::optional(NotebookStep{edit, {}, {}}) : std::nullopt;
    const bool selectedGoes =
        m_selection.selectedNoteID() && std::ranges::any_of(edit.notes, [this](const auto& change) {
            return !change.after && change.id() == *m_selection.selectedNoteID();
        });
    std::optional<QUuid> next;
    if (selectedGoes) {
        QSet<QUuid> gone;
        for (const auto& change : edit.notes) {
            if (!change.after)
                gone.insert(change.id());
        }
        next = neighbourAfterRemoval(filteredNoteIDs(), gone);
    }
    show(edit, saving);
    const Accepted stored = saving == Saving::Now ? store(edit) : Accepted();
    if (kept)
        remember(*kept);
    if (selectedGoes)
        m_selection.selectNote(next);
    return stored;
}

void AppState::show(const NotebookEdit& edit, Saving saving)
{
    // A note that loses its title is listed, and sorted, by its first line, which no list reads.
    for (const auto& change : edit.notes) {
        const NoteRecord* note = change.after ? &**change.after : nullptr;
        if (note && QStringView(note->title).trimmed().isEmpty() &&
            note->body.firstLine().isEmpty())
            static_cast<void>(note->body.utf8().read());
    }
    const NotebookChange change = applyEdit(m_notebook, edit);
    for (auto note = change.notes.cbegin(); note != change.notes.cend(); ++note) {
        if (saving == Saving::Now)
            m_storedTitles.remove(note.key());
        if (*note & RecordAspect::Went)
            m_refusedContents.remove(note.key());
    }
    emit notebookChanged(change);
    if (!m_selection.rows().isEmpty())
        m_selection.dropMissingRows();
    if (m_selection.selectedFolderID() &&
        !m_notebook.folders.contains(*m_selection.selectedFolderID()))
        m_selection.select(std::nullopt, m_selection.selectedNoteID());
}

Accepted AppState::store(const NotebookEdit& edit)
{
    const bool isOrder =
        !edit.order.isEmpty() || !edit.expanded.isEmpty() || !edit.collapsed.isEmpty();
    const auto isOne = [](const auto& changes) {
        return changes.size() == 1 && changes.first().before && changes.first().after;
    };
    m_erasedNotes += std::exchange(m_erasing, {}); // what was saved until here had the notes still
    if (edit.notes.isEmpty() && edit.folders.isEmpty())
        persistLayout();
    else if (!isOrder && edit.folders.isEmpty() && isOne(edit.notes))
        persistNote(edit.notes.first().id());
    else if (!isOrder && edit.notes.isEmpty() && isOne(edit.folders))
        persistFolder(edit.folders.first().id());
    else
        persist();
    if (m_session.saveFailure())
        return std::unexpected(Refusal::NotStored);
    return {};
}

void AppState::remember(NotebookStep step)
{
    m_undo.push(std::move(step));
    m_hasWordsSinceStep = false;
}

// --- Taking back ---------------------------------------------------------------------------------

Accepted AppState::carryOut(NotebookStep step)
{
    if (step.tagSettings) {
        m_tagSettings = editTagSettings(m_services.defaults, [&](TagSettings& settings) {
            // What was decided otherwise since then stays.
            if (settings == step.tagSettings->first)
                settings = step.tagSettings->second;
        });
        emit tagSettingsChanged();
    }
    if (step.sortOrder && binderSortOrder() == step.sortOrder->first) {
        m_services.defaults.set(binderSortOrderKey, rawValue(step.sortOrder->second));
        emit binderSortOrderChanged();
    }
    return carryOut(step.edit, Step::Passing);
}

std::expected<NotebookStep, Refusal> AppState::takeBack(const NotebookStep& step)
{
    if (m_selection.selectedNoteID())
        emit noteAboutToBeReplaced(*m_selection.selectedNoteID()); // what is being typed stays
    NotebookStep back{inverseOf(step.edit, m_notebook, root()), {}, {}};
    if (step.sortOrder)
        back.sortOrder = {step.sortOrder->second, step.sortOrder->first};
    if (step.tagSettings)
        back.tagSettings = {step.tagSettings->second, step.tagSettings->first};
    if (const Accepted done = carryOut(back); !done && done.error() != Refusal::NotStored)
        return std::unexpected(done.error());
    // A note that came back to its place is what a person looks for.
    if (back.edit.notes.size() == 1 && !back.edit.order.isEmpty() && back.edit.notes.first().after)
        openNote(back.edit.notes.first().id());
    return back;
}

Accepted AppState::undoNotebookStep()
{
    if (!m_undo.canUndo())
        return std::unexpected(Refusal::NotThere);
    if (auto may = mayEdit(); !may)
        return may;
    auto back = takeBack(m_undo.takeForUndo());
    if (!back)
        return std::unexpected(back.error());
    m_undo.undone(*std::move(back));
    m_hasWordsSinceStep = false;
    return {};
}

Accepted AppState::redoNotebookStep()
{
    if (!m_undo.canRedo())
        return std::unexpected(Refusal::NotThere);
    if (auto may = mayEdit(); !may)
        return may;
    auto back = takeBack(m_undo.takeForRedo());
    if (!back)
        return std::unexpected(back.error());
    m_undo.redone(*std::move(back));
    m_hasWordsSinceStep = false;
    return {};
}

// --- Single notes and folders --------------------------------------------------------------------

std::expected<QUuid, Refusal> AppState::createNote()
{
    return insertNewNote({});
}

std::expected<QUuid, Refusal> AppState::createNote(const QString& body,
                                                   const std::optional<Blob>& bodyRTF)
{
    NoteRecord note;
    note.title = titleFromBody(body);
    note.body = body;
    note.bodyRTF = bodyRTF;
    return insertNewNote(std::move(note));
}

std::expected<QUuid, Refusal> AppState::createNoteWithTitle(const QString& title, NoteText body)
{
    NoteRecord note;
    note.title = title;
    note.body = std::move(body);
    return insertNewNote(std::move(note));
}

std::expected<QUuid, Refusal> AppState::insertNewNote(NoteRecord note)
{
    if (auto may = mayEdit(); !may)
        return std::unexpected(may.error());
    const auto container = containerForNewNote();
    if (!container)
        return std::unexpected(Refusal::NotThere);
    note.id = QUuid::createUuid();
    note.folderID = *container;
    note.createdAt = m_services.clock.now();
    note.updatedAt = note.createdAt;
    (void)carryOut(NotebookEdits::addNote(m_notebook, root(), note), Step::Kept);
    m_selection.selectNote(note.id); // laid out after it was stored
    return note.id;
}

std::expected<QUuid, Refusal> AppState::createFolder(const QString& name)
{
    if (auto may = mayEdit(); !may)
        return std::unexpected(may.error());
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty() || !m_session.currentProject())
        return std::unexpected(Refusal::NotPossible);
    FolderRecord folder;
    folder.id = QUuid::createUuid();
    folder.name = trimmed;
    folder.createdAt = m_services.clock.now();
    // The Trash holds notes only.
    if (m_selection.selectedFolderID() &&
        *m_selection.selectedFolderID() != FolderRecord::trashFolderID)
        folder.parentFolderID = m_selection.selectedFolderID();
    (void)carryOut(NotebookEdits::addFolder(m_notebook, root(), folder), Step::Kept);
    m_selection.select(folder.id, std::nullopt);
    m_selection.selectProjectFolder(m_session.currentProject()->rootPath);
    return folder.id;
}

Accepted AppState::updateNote(const QUuid& id, const NoteContent& content)
{
    const auto* found = m_notebook.notes.find(id);
    if (!found)
        return std::unexpected(Refusal::NotThere);
    if (auto may = mayEdit(); !may) {
        m_refusedContents.insert(id, content);
        return may;
    }
    found = m_notebook.notes.find(id);
    m_refusedContents.remove(id);
    // Before the title was typed, where it was; a record is shared rather than copied.
    Shared<NoteRecord> previous = *found;
    if (m_storedTitles.contains(id))
        previous = previous.with([&](NoteRecord& note) { note.title = m_storedTitles.take(id); });
    const auto edit = NotebookEdits::changeNotes(m_notebook, root(), {id}, [&](NoteRecord& note) {
        content.applyTo(note);
        note.updatedAt = m_services.clock.now();
    });
    show(edit, Saving::Now);
    m_hasWordsSinceStep = true;
    captureVersionSnapshotIfNeeded(*previous, *note(id));
    persistNote(id);
    if (!m_session.persistenceController() || m_session.saveFailure())
        return std::unexpected(Refusal::NotStored);
    return {};
}

void AppState::keepEditorProfile(const QUuid& id, const QString& profile)
{
    const NoteRecord* found = note(id);
    if (!found || found->editorProfile.value_or(QString()) == profile || !canCreateOrEdit() ||
        m_session.isOpening())
        return;
    (void)carryOut(
        NotebookEdits::changeNotes(m_notebook, root(), {id},
                                   [&](NoteRecord& note) { note.editorProfile = profile; }),
        Step::Passing);
}

void AppState::applyLiveTitle(const QUuid& id, const QString& title)
{
    m_session.finishOpening();
    const auto* found = m_notebook.notes.find(id);
    if (!found || (*found)->title == title)
        return;
    if (!m_storedTitles.contains(id))
        m_storedTitles.insert(id, (*found)->title);
    show(NotebookEdits::changeNotes(m_notebook, root(), {id},
                                    [&](NoteRecord& note) {
                                        note.title = title;
                                        note.titleRTF.reset(); // it no longer says the same
                                    }),
         Saving::Later);
}

void AppState::learnBeginnings(const QList<QUuid>& ids, qsizetype units, std::function<void()> done)
{
    PersistenceController* store = m_session.persistenceController();
    if (!store)
        return;
    QList<Shared<NoteRecord>> found;
    for (const QUuid& id : ids) {
        if (const auto* note = m_notebook.notes.find(id))
            found.append(*note);
    }
    store->learnBeginnings(found, units, std::move(done));
}

void AppState::readImage(const QByteArray& hash,
                         std::function<void(const std::optional<QByteArray>&)> done)
{
    PersistenceController* store = m_session.persistenceController();
    StoreWorker* worker = store ? store->worker() : nullptr;
    if (!worker)
        return done(imageBytes(hash));
    worker->read(
        [](StoreReading& reading, const QByteArray& wanted) { return reading.image(wanted); },
        [done = std::move(done)](const StoreReading::Result<QByteArray>& read) {
            done(read ? std::optional(*read) : std::nullopt);
        },
        hash);
}

std::optional<QByteArray> AppState::imageBytes(const QByteArray& hash) const
{
    for (const Shared<NoteRecord>& note : m_notebook.notes.records()) {
        for (const NoteImage& image : note->images.value_or(NoteImages())) {
            if (image.hash != hash)
                continue;
            if (auto bytes = image.bytes.readOnce())
                return *std::move(bytes);
        }
    }
    return std::nullopt;
}

void AppState::toggleExpanded(const QUuid& folderID)
{
    m_session.finishOpening();
    const bool expand = !m_notebook.order.expandedFolderIDs.contains(folderID);
    (void)carryOut(NotebookEdits::expandFolders(m_notebook, root(), {folderID}, expand),
                   Step::Passing);
}

// --- Saving --------------------------------------------------------------------------------------

void AppState::persist()
{
    m_session.save(snapshotOf(m_notebook));
}

void AppState::persistNote(const QUuid& id)
{
    if (const auto* found = m_notebook.notes.find(id))
        m_session.saveNote(*found);
}

void AppState::persistFolder(const QUuid& id)
{
    if (const auto* found = m_notebook.folders.find(id))
        m_session.saveFolder(*found);
}

void AppState::persistLayout()
{
    m_session.saveLayout(BinderDisplayOrdering::layoutOf(m_notebook.order));
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

} // namespace orvane
