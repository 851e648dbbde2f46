// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that duplicates, throws away, restores and erases.
#include "core/AppState.h"
#include "core/VersionErasure.h"
#include "text/OrvaneWorkspaceRTF.h"

#include <QCoreApplication>
#include <QFile>

namespace orvane {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(AppState)
};

// The note as a word processor reads it.
QByteArray rtfForTrash(const NoteRecord& note)
{
    if (note.bodyRTF) {
        const QByteArray rtf = note.bodyRTF->bytes();
        if (OrvaneWorkspaceRTF::read(rtf))
            return rtf;
    }
    CharacterStyle style;
    style.font = TextFont{};
    style.font->size = 12;
    const QString body = note.body.isEmpty() ? QStringLiteral("\n") : note.body.text();
    return OrvaneWorkspaceRTF::data(AttributedString(body, style))
        .value_or(note.body.utf8().bytes());
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

std::optional<QUuid> AppState::duplicateNote(const QUuid& id)
{
    if (!passesEditGuard())
        return std::nullopt;
    emit noteAboutToBeReplaced(id); // the copy has what is being typed
    const auto* found = m_notes.find(id);
    if (!found)
        return std::nullopt;
    const NoteRecord& source = **found;
    NoteRecord copy = source;
    copy.id = QUuid::createUuid();
    copy.createdAt = m_services.clock.now();
    copy.updatedAt = copy.createdAt;
    copy.title = source.title.isEmpty() ? Words::tr("Untitled Copy")
                                        : Words::tr("%1 Copy").arg(source.title);
    copy.titleRTF.reset(); // it says the old title
    if (copy.embeddedFileAssetID && m_currentProject && m_duplicateAsset) {
        const auto asset =
            m_duplicateAsset(*copy.embeddedFileAssetID, projectAccessPath(), copy.id);
        if (asset)
            copy.embeddedFileAssetID = *asset;
        else
            qWarning().noquote() << "[AppState] Failed to duplicate PDF asset; duplicate will "
                                    "reference original asset:"
                                 << asset.error();
    }
    const QUuid copyID = copy.id;
    BinderActions::insertAfter(m_order.noteOrderByFolder[shownContainer(source)], copyID, id);
    m_tags.add(copy);
    m_notes.append(std::move(copy));
    emit binderStructureChanged();
    emit tagsChanged();
    selectNote(copyID);
    persist();
    return copyID;
}

std::optional<QUuid> AppState::duplicateFolder(const QUuid& id)
{
    const FolderRecord* source = folder(id);
    if (!source || source->isTrash() || !passesEditGuard())
        return std::nullopt;
    FolderRecord copy = *source;
    copy.id = QUuid::createUuid();
    copy.name = Words::tr("Copy of %1").arg(source->name);
    copy.titleRTF.reset();
    copy.createdAt = m_services.clock.now();
    QList<QUuid>& siblings =
        copy.parentFolderID && m_order.childFolderOrder.contains(*copy.parentFolderID)
            ? m_order.childFolderOrder[*copy.parentFolderID]
            : m_order.rootFolderOrder;
    const QUuid copyID = copy.id;
    BinderActions::insertAfter(siblings, copyID, id);
    m_tags.add(copy);
    m_folders.append(std::move(copy));
    emit binderStructureChanged();
    setSelection(copyID, std::nullopt);
    persist();
    return copyID;
}

void AppState::placeInTrash(const QUuid& id, Timestamp now)
{
    const auto* found = m_notes.find(id);
    const Shared<NoteRecord> trashed = found->with([&](NoteRecord& each) {
        each.folderID = FolderRecord::trashFolderID;
        each.updatedAt = now;
    });
    BinderActions::moveNote(m_order, id, shownContainer(**found), FolderRecord::trashFolderID,
                            std::nullopt);
    replaceNote(trashed);
}

void AppState::moveNoteToTrash(const QUuid& id)
{
    if (!passesEditGuard())
        return;
    emit noteAboutToBeReplaced(id);
    const NoteRecord* found = note(id);
    if (!found || found->folderID == FolderRecord::trashFolderID)
        return;
    const bool wasSelected = m_selectedNoteID == id;
    const auto next = wasSelected ? neighbourAfterRemoval(filteredNoteIDs(), {id}) : std::nullopt;
    ensureTrashFolderExists();
    placeInTrash(id, m_services.clock.now());
    emit binderStructureChanged();
    emit tagsChanged();
    if (wasSelected)
        selectNote(next);
    persist();
}

QList<Shared<NoteRecord>> AppState::notesInTrash() const
{
    return sortedNotes(orderedNotes(FolderRecord::trashFolderID), BinderSortOrder::RecentModified);
}

void AppState::restoreNoteFromTrash(const QUuid& id)
{
    const auto* found = m_notes.find(id);
    if (!found || (*found)->folderID != FolderRecord::trashFolderID || isReadOnly())
        return;
    std::optional<QUuid> target = projectRootContainerID();
    for (const Shared<FolderRecord>& each : m_folders) {
        if (!target && !each->isTrash())
            target = each->id;
    }
    if (!target)
        return;
    const auto first = m_order.noteOrderByFolder.value(*target);
    BinderActions::moveNote(m_order, id, FolderRecord::trashFolderID, *target,
                            first.isEmpty() ? std::nullopt : std::optional(first.first()));
    replaceNote(found->with([&](NoteRecord& each) {
        each.folderID = *target;
        each.updatedAt = m_services.clock.now();
    }));
    if (m_selectedNoteID == id && m_selectedFolderID == FolderRecord::trashFolderID)
        setSelection(std::nullopt, id);
    emit binderStructureChanged();
    emit tagsChanged();
    persist();
}

void AppState::eraseNotePermanently(const QUuid& id)
{
    if (!passesEditGuard())
        return;
    if (m_notes.contains(id))
        eraseNotes({id});
}

void AppState::eraseNotes(const QSet<QUuid>& ids)
{
    const QSet<QUuid> withVersions =
        m_currentProject ? VersionErasure::note(projectAccessPath(), ids) : QSet<QUuid>();
    const bool wasSelected = m_selectedNoteID && ids.contains(*m_selectedNoteID);
    const auto next = wasSelected ? neighbourAfterRemoval(filteredNoteIDs(), ids) : std::nullopt;
    for (const QUuid& id : ids) {
        const NoteRecord* found = note(id);
        BinderActions::removeNote(m_order, id, shownContainer(*found));
        m_tags.remove(*found);
        m_storedTitles.remove(id);
        m_refusedContents.remove(id);
    }
    m_notes.removeAll(ids);
    emit binderStructureChanged();
    emit tagsChanged();
    if (wasSelected)
        selectNote(next);
    m_erasedNotes += withVersions; // not before: what was saved until here has the notes still
    persist();
}

std::expected<void, FileError> AppState::emptyTrashToMacOSUserTrash()
{
    if (!passesEditGuard())
        return {};
    const QString folder = m_services.folders.temporary;
    if (auto made = makeFolder(folder); !made)
        return made;
    const auto handOver = [&](const NoteRecord& note) -> std::expected<void, FileError> {
        const QString path = folder + u'/' + fileNameForTrash(note);
        if (const auto body = note.body.utf8().tryBytes(); !body)
            return std::unexpected(FileError{FileError::Code::Other, path, body.error()});
        if (auto written = writeFileAtomically(path, rtfForTrash(note)); !written)
            return written;
        if (auto moved = m_services.trash.moveToTrash(path); !moved) {
            QFile::remove(path);
            return std::unexpected(moved.error());
        }
        return {};
    };
    QSet<QUuid> handedOver;
    std::expected<void, FileError> result;
    for (const Shared<NoteRecord>& each : notesInTrash()) {
        if (result = handOver(*each); !result)
            break;
        handedOver.insert(each->id);
    }
    if (!handedOver.isEmpty())
        eraseNotes(handedOver);
    return result;
}

void AppState::deleteFolder(const QUuid& id)
{
    if (!passesEditGuard() || id == FolderRecord::trashFolderID || !m_folders.contains(id))
        return;
    const QList<QUuid> subtree = folderSubtreeIDs(id, m_order);
    ensureTrashFolderExists();
    const Timestamp now = m_services.clock.now();
    bool selectedNoteMoved = false;
    for (const QUuid& each : subtree) {
        for (const QUuid& noteID : m_order.noteOrderByFolder.value(each)) {
            if (m_selectedNoteID == noteID) {
                selectedNoteMoved = true;
                emit noteAboutToBeReplaced(noteID);
            }
            placeInTrash(noteID, now);
        }
    }
    for (const QUuid& each : subtree) {
        m_tags.remove(**m_folders.find(each));
        m_order.childFolderOrder.remove(each);
        m_order.noteOrderByFolder.remove(each);
        m_order.expandedFolderIDs.remove(each);
    }
    m_order.rootFolderOrder.removeAll(id);
    for (auto it = m_order.childFolderOrder.begin(); it != m_order.childFolderOrder.end(); ++it) {
        if (std::as_const(*it).contains(id))
            it->removeAll(id);
    }
    const QSet<QUuid> gone(subtree.begin(), subtree.end());
    m_folders.removeAll(gone);
    emit binderStructureChanged();
    emit tagsChanged();
    if (m_selectedFolderID && gone.contains(*m_selectedFolderID))
        setSelection(std::nullopt, m_selectedNoteID);
    if (selectedNoteMoved) {
        const QList<QUuid> rest = filteredNoteIDs();
        selectNote(rest.isEmpty() ? std::nullopt : std::optional(rest.first()));
    }
    persist();
}

} // namespace orvane
