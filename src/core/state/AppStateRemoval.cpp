// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that duplicates, throws away, restores and erases.
#include "core/notebook/NotebookEdits.h"
#include "core/state/AppState.h"
#include "core/versions/VersionErasure.h"
#include "text/attachments/AttachmentManager.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace orvane {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(AppState)
};

// The note as a word processor reads it.
// What is stored as RTF has no images.
std::optional<QByteArray> illustratedRtf(const NoteRecord& note)
{
    if (!note.images || !note.richContentPayload)
        return std::nullopt;
    const auto text = AttachmentManager::decodePayload(note.richContentPayload->readOrNothing());
    if (!text)
        return std::nullopt;
    const auto read = [&](const ImageFile& file) -> std::optional<QByteArray> {
        const auto image = std::ranges::find(*note.images, file.hash(), &NoteImage::hash);
        if (image == note.images->end())
            return std::nullopt;
        const auto bytes = image->bytes.readOnce();
        return bytes ? std::optional(*bytes) : std::nullopt;
    };
    return OrvaneWorkspaceRTF::data(AttachmentManager::withImageBytes(*text, read), HeadingSizes());
}

QByteArray rtfForTrash(const NoteRecord& note)
{
    if (auto rtf = illustratedRtf(note))
        return *std::move(rtf);
    if (note.bodyRTF) {
        const QByteArray rtf = note.bodyRTF->readOrNothing();
        if (OrvaneWorkspaceRTF::read(rtf))
            return rtf;
    }
    CharacterStyle style;
    style.font = TextFont{};
    style.font->size = 12;
    const QString body = note.body.isEmpty() ? QStringLiteral("\n") : note.body.readOrNothing();
    return OrvaneWorkspaceRTF::data(AttributedString(body, style), HeadingSizes())
        .value_or(note.body.utf8().readOrNothing());
}

QString fileNameForTrash(const NoteRecord& note)
{
    QString name = note.titleForList();
    name.replace(u'/', u'-');
    name.remove(QChar(u'\0'));
    name = name.left(80).trimmed(); // a file name has room for 255 bytes
    if (name.isEmpty() || name.startsWith(u'.'))
        name = Words::tr("Untitled");
    return name + u'-' + uuidText(QUuid::createUuid()).left(8) + QLatin1String(".rtf");
}

} // namespace

std::expected<QUuid, Refusal> AppState::duplicateNote(const QUuid& id)
{
    if (auto may = mayEdit(); !may)
        return std::unexpected(may.error());
    emit noteAboutToBeReplaced(id); // the copy has what is being typed
    const NoteRecord* source = note(id);
    if (!source)
        return std::unexpected(Refusal::NotThere);
    NoteRecord copy = *source;
    copy.id = QUuid::createUuid();
    copy.createdAt = m_services.clock.now();
    copy.updatedAt = copy.createdAt;
    copy.title = source->title.isEmpty() ? Words::tr("Untitled Copy")
                                         : Words::tr("%1 Copy").arg(source->title);
    copy.titleRTF.reset(); // it says the old title
    if (copy.embeddedFileAssetID && m_session.currentProject() && m_duplicateAsset) {
        const auto asset =
            m_duplicateAsset(*copy.embeddedFileAssetID, m_session.projectAccessPath(), copy.id);
        if (asset)
            copy.embeddedFileAssetID = *asset;
        else
            qWarning().noquote() << "[AppState] Failed to duplicate PDF asset; duplicate will "
                                    "reference original asset:"
                                 << asset.error();
    }
    (void)carryOut(NotebookEdits::addNote(m_notebook, root(), copy, id), Step::Kept);
    m_selection.selectNote(copy.id);
    return copy.id;
}

std::expected<QUuid, Refusal> AppState::duplicateFolder(const QUuid& id)
{
    const FolderRecord* source = folder(id);
    if (!source || source->isTrash())
        return std::unexpected(Refusal::NotThere);
    if (auto may = mayEdit(); !may)
        return std::unexpected(may.error());
    FolderRecord copy = *source;
    copy.id = QUuid::createUuid();
    copy.name = Words::tr("Copy of %1").arg(source->name);
    copy.titleRTF.reset();
    copy.createdAt = m_services.clock.now();
    (void)carryOut(NotebookEdits::addFolder(m_notebook, root(), copy, id), Step::Kept);
    m_selection.select(copy.id, std::nullopt);
    return copy.id;
}

Accepted AppState::moveNoteToTrash(const QUuid& id)
{
    if (auto may = mayEdit(); !may)
        return may;
    emit noteAboutToBeReplaced(id);
    const NoteRecord* found = note(id);
    if (!found)
        return std::unexpected(Refusal::NotThere);
    if (found->folderID == FolderRecord::trashFolderID)
        return {};
    const bool wasSelected = m_selection.selectedNoteID() == id;
    const auto next = wasSelected ? neighbourAfterRemoval(filteredNoteIDs(), {id}) : std::nullopt;
    const Accepted done = carryOut(
        NotebookEdits::trashNotes(m_notebook, root(), {id}, m_services.clock.now()), Step::Kept);
    if (wasSelected)
        m_selection.selectNote(next);
    return done;
}

Accepted AppState::moveRowsToTrash(const QList<BinderRowID>& rows)
{
    if (auto may = mayEdit(); !may)
        return may;
    const auto selected = m_selection.selectedNoteID();
    const auto edit = [&] {
        return NotebookEdits::trashRows(m_notebook, root(), rows, m_services.clock.now());
    };
    const auto touches = [](const NotebookEdit& made, const QUuid& id) {
        return std::ranges::any_of(made.notes,
                                   [&](const auto& change) { return change.id() == id; });
    };
    const auto first = edit();
    if (first.isEmpty())
        return std::unexpected(Refusal::NotThere);
    const bool selectedGoes = selected && touches(first, *selected);
    std::optional<QUuid> next;
    if (selectedGoes) {
        emit noteAboutToBeReplaced(*selected);
        QSet<QUuid> gone;
        for (const auto& change : first.notes)
            gone.insert(change.id());
        next = neighbourAfterRemoval(filteredNoteIDs(), gone);
    }
    const Accepted done = carryOut(edit(), Step::Kept);
    if (selectedGoes)
        m_selection.selectNote(next);
    else
        m_selection.selectRows({});
    return done;
}

QList<Shared<NoteRecord>> AppState::notesInTrash() const
{
    return sortedNotes(orderedNotes(FolderRecord::trashFolderID), BinderSortOrder::RecentModified);
}

std::expected<QUuid, Refusal> AppState::restoreNoteFromTrash(const QUuid& id)
{
    const Accepted done = restoreNotesFromTrash({id});
    if (!done)
        return std::unexpected(done.error());
    return note(id)->folderID;
}

Accepted AppState::restoreNotesFromTrash(const QList<QUuid>& ids)
{
    m_session.finishOpening();
    if (m_session.isReadOnly())
        return std::unexpected(Refusal::NotAllowed);
    std::optional<QUuid> top = projectRootContainerID();
    for (const Shared<FolderRecord>& each : m_notebook.folders) {
        if (!top && !each->isTrash())
            top = each->id;
    }
    const auto edit =
        top ? NotebookEdits::restoreNotes(m_notebook, *top, ids, m_services.clock.now())
            : NotebookEdit();
    if (edit.isEmpty())
        return std::unexpected(Refusal::NotThere);
    const Accepted done = carryOut(edit, Step::Kept);
    const auto selected = m_selection.selectedNoteID();
    if (selected && ids.contains(*selected) &&
        m_selection.selectedFolderID() == FolderRecord::trashFolderID) {
        const QUuid container = note(*selected)->folderID;
        m_selection.select(m_notebook.folders.contains(container) ? std::optional(container)
                                                                  : std::nullopt,
                           selected);
    }
    return done;
}

Accepted AppState::eraseNotePermanently(const QUuid& id)
{
    return eraseNotesPermanently({id});
}

Accepted AppState::eraseNotesPermanently(const QList<QUuid>& ids)
{
    if (auto may = mayEdit(); !may)
        return may;
    if (std::ranges::none_of(ids, [this](const QUuid& id) { return note(id); }))
        return std::unexpected(Refusal::NotThere);
    return eraseNotes(QSet<QUuid>(ids.cbegin(), ids.cend()));
}

Accepted AppState::eraseNotes(const QSet<QUuid>& ids)
{
    m_versionHistory.waitFor(ids); // what is written later would outlive its note
    const QSet<QUuid> withVersions = m_session.currentProject()
                                         ? VersionErasure::note(m_session.projectAccessPath(), ids)
                                         : QSet<QUuid>();
    const auto edit = NotebookEdits::eraseNotes(m_notebook, root(), ids);
    m_undo.clear(); // what is gone for good doesn't come back
    m_erasing = withVersions;
    return carryOut(edit, Step::Passing);
}

std::expected<void, EmptyTrashError> AppState::emptyTrashToMacOSUserTrash()
{
    if (auto may = mayEdit(); !may)
        return std::unexpected(EmptyTrashError{may.error(), {}});
    const auto failed = [](const FileError& error) {
        return std::unexpected(EmptyTrashError{Refusal::NotPossible, error});
    };
    const QString folder = m_services.folders.temporary;
    if (auto made = makeFolder(folder); !made)
        return failed(made.error());
    const auto handOver = [&](const NoteRecord& note) -> std::expected<QString, FileError> {
        const QString path = folder + u'/' + fileNameForTrash(note);
        if (const auto body = note.body.utf8().read(); !body)
            return std::unexpected(FileError{FileError::Code::Other, path, body.error()});
        if (auto written = writeUnsyncedFile(path, rtfForTrash(note)); !written)
            return std::unexpected(written.error());
        auto moved = m_services.trash.moveToTrash(path);
        if (!moved) {
            QFile::remove(path);
            return std::unexpected(moved.error());
        }
        return moved->value_or(path);
    };
    QSet<QUuid> handedOver;
    QString place = folder;
    std::expected<void, EmptyTrashError> result;
    for (const Shared<NoteRecord>& each : notesInTrash()) {
        const auto done = handOver(*each);
        if (!done) {
            result = failed(done.error());
            break;
        }
        handedOver.insert(each->id);
        place = QFileInfo(*done).absolutePath();
    }
    if (handedOver.isEmpty())
        return result;
    // The copies reach the disk before the notes leave it.
    if (auto synced = syncFileSystem(QFileInfo(place).isDir() ? place : folder); !synced)
        return failed(synced.error());
    if (const Accepted erased = eraseNotes(handedOver); !erased && result)
        return std::unexpected(EmptyTrashError{erased.error(), {}});
    return result;
}

Accepted AppState::deleteFolder(const QUuid& id)
{
    if (auto may = mayEdit(); !may)
        return may;
    if (id == FolderRecord::trashFolderID || !folder(id))
        return std::unexpected(Refusal::NotThere);
    const auto isMoved = [this](const NotebookEdit& edit) {
        return m_selection.selectedNoteID() &&
               std::ranges::any_of(edit.notes, [this](const auto& change) {
                   return change.id() == *m_selection.selectedNoteID();
               });
    };
    const auto edit = [&] {
        return NotebookEdits::deleteFolder(m_notebook, root(), id, m_services.clock.now());
    };
    const bool selectedNoteMoves = isMoved(edit());
    if (selectedNoteMoves)
        emit noteAboutToBeReplaced(*m_selection.selectedNoteID());
    const Accepted done = carryOut(edit(), Step::Kept);
    if (selectedNoteMoves) {
        const QList<QUuid> rest = filteredNoteIDs();
        m_selection.selectNote(rest.isEmpty() ? std::nullopt : std::optional(rest.first()));
    }
    return done;
}

} // namespace orvane
