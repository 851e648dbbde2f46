// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that changes single fields of records, and tags everywhere.
#include "core/AppState.h"
#include "core/JsonObjectReader.h"

namespace orvane {

void AppState::replaceNote(const Shared<NoteRecord>& note)
{
    const auto* found = m_notes.find(note->id);
    if (!found)
        return;
    const bool countsDiffer = (*found)->tags != note->tags || (*found)->folderID != note->folderID;
    if (countsDiffer) {
        m_tags.remove(**found);
        m_tags.add(*note);
    }
    m_notes.replace(found, note);
    emit noteChanged(note->id);
}

void AppState::replaceFolder(const Shared<FolderRecord>& folder)
{
    const auto* found = m_folders.find(folder->id);
    if (!found)
        return;
    if ((*found)->tags != folder->tags) {
        m_tags.remove(**found);
        m_tags.add(*folder);
    }
    m_folders.replace(folder);
    emit folderChanged(folder->id);
}

template <typename Edit>
void AppState::editNote(const QUuid& id, Edit&& edit)
{
    if (!passesEditGuard())
        return;
    if (const auto* found = m_notes.find(id)) {
        replaceNote(found->with(std::forward<Edit>(edit)));
        persistNote(id);
    }
}

template <typename Edit>
void AppState::editFolder(const QUuid& id, Edit&& edit)
{
    if (!passesEditGuard())
        return;
    if (const auto* found = m_folders.find(id)) {
        replaceFolder(found->with(std::forward<Edit>(edit)));
        persistFolder(id);
    }
}

void AppState::updateNoteBinderTitle(const QUuid& id, const QString& plainTitle,
                                     const std::optional<Blob>& titleRTF)
{
    if (!passesEditGuard())
        return;
    emit noteAboutToBeReplaced(id);
    const auto* found = m_notes.find(id);
    if (!found)
        return;
    const Shared<NoteRecord> previous = *found;
    const Shared<NoteRecord> current = previous.with([&](NoteRecord& note) {
        note.title = plainTitle;
        note.titleRTF = titleRTF;
        note.updatedAt = m_services.clock.now();
    });
    m_storedTitles.remove(id);
    replaceNote(current);
    captureVersionSnapshotIfNeeded(*previous, *current);
    persistNote(id);
}

void AppState::updateFolderBinderTitle(const QUuid& id, const QString& plainName,
                                       const std::optional<Blob>& titleRTF)
{
    editFolder(id, [&](FolderRecord& folder) {
        folder.name = plainName;
        folder.titleRTF = titleRTF;
    });
}

void AppState::updateNoteIcon(const QUuid& id, const std::optional<QString>& iconName)
{
    editNote(id, [&](NoteRecord& note) {
        note.iconName = iconName;
        note.updatedAt = m_services.clock.now();
    });
}

void AppState::updateFolderIcon(const QUuid& id, const std::optional<QString>& iconName)
{
    editFolder(id, [&](FolderRecord& folder) { folder.iconName = iconName; });
}

void AppState::togglePinNote(const QUuid& id)
{
    editNote(id, [](NoteRecord& note) { note.isPinned = !note.isPinned; });
}

void AppState::togglePinFolder(const QUuid& id)
{
    editFolder(id, [](FolderRecord& folder) { folder.isPinned = !folder.isPinned; });
}

void AppState::updatePDFAttachment(const QUuid& id, const std::optional<QString>& assetID,
                                   const std::optional<Blob>& payload)
{
    editNote(id, [&](NoteRecord& note) {
        note.embeddedFileAssetID = assetID;
        note.embeddedFilePayload = payload;
        note.updatedAt = m_services.clock.now();
    });
}

void AppState::saveShapesPayload(const std::optional<Blob>& payload, const QUuid& noteID)
{
    if (!m_notes.contains(noteID)) {
        qWarning().noquote().nospace()
            << "OrvaneWorkspace shapes save error: no note found for id=" << uuidText(noteID);
        return;
    }
    editNote(noteID, [&](NoteRecord& note) {
        note.shapesPayload = payload;
        note.updatedAt = m_services.clock.now();
    });
}

// --- Tags ----------------------------------------------------------------------------------------

QStringList AppState::tagsForNote(const QUuid& id) const
{
    const NoteRecord* found = note(id);
    return found ? found->tags : QStringList();
}

void AppState::updateNoteTags(const QUuid& id, const QStringList& tags)
{
    editNote(id, [&](NoteRecord& note) {
        note.tags = normalizeTags(tags);
        note.updatedAt = m_services.clock.now();
    });
    emit tagsChanged();
}

void AppState::updateFolderTags(const QUuid& id, const QStringList& tags)
{
    editFolder(id, [&](FolderRecord& folder) { folder.tags = normalizeTags(tags); });
    emit tagsChanged();
}

void AppState::addTagToNote(const QUuid& noteID, const QString& tag)
{
    const NoteRecord* found = note(noteID);
    if (found && !containsTag(found->tags, tag.trimmed()))
        updateNoteTags(noteID, found->tags + QStringList{tag});
}

void AppState::editTagsEverywhere(
    const std::function<std::optional<QStringList>(const QStringList&)>& edit)
{
    const Timestamp now = m_services.clock.now();
    const QList<Shared<NoteRecord>> notes = m_notes.records();
    for (const Shared<NoteRecord>& each : notes) {
        if (const auto tags = edit(each->tags)) {
            replaceNote(each.with([&](NoteRecord& note) {
                note.tags = *tags;
                note.updatedAt = now;
            }));
        }
    }
    const QList<Shared<FolderRecord>> folders = m_folders.records();
    for (const Shared<FolderRecord>& each : folders) {
        if (const auto tags = edit(each->tags))
            replaceFolder(each.with([&](FolderRecord& folder) { folder.tags = *tags; }));
    }
}

void AppState::renameTag(const QString& oldName, const QString& newName)
{
    const QString from = oldName.trimmed();
    const QString to = newName.trimmed();
    if (from.isEmpty() || to.isEmpty() || to.size() > longestTag ||
        from.compare(to, Qt::CaseInsensitive) == 0 || !passesEditGuard())
        return;
    editTagsEverywhere([&](const QStringList& tags) { return replacingTag(tags, from, to); });
    if (m_activeTagFilter.removeIf(
            [&](const QString& tag) { return tag.compare(from, Qt::CaseInsensitive) == 0; })) {
        m_activeTagFilter.insert(to);
        emit activeTagFilterChanged();
    }
    changeTagSettings([&](TagSettings& settings) { settings.rename(from, to); });
    emit tagsChanged();
    persist();
}

void AppState::removeTagFromLibrary(const QString& name)
{
    const QString tag = name.trimmed();
    if (tag.isEmpty() || !passesEditGuard())
        return;
    editTagsEverywhere([&](const QStringList& tags) { return removingTag(tags, tag); });
    if (m_activeTagFilter.removeIf(
            [&](const QString& each) { return each.compare(tag, Qt::CaseInsensitive) == 0; }))
        emit activeTagFilterChanged();
    changeTagSettings([&](TagSettings& settings) { settings.remove(tag); });
    emit tagsChanged();
    persist();
}

void AppState::toggleTagFilter(const QString& tag)
{
    const auto removed = m_activeTagFilter.removeIf(
        [&](const QString& each) { return each.compare(tag, Qt::CaseInsensitive) == 0; });
    if (removed == 0)
        m_activeTagFilter.insert(tag);
    emit activeTagFilterChanged();
}

void AppState::changeTagSettings(const std::function<void(TagSettings&)>& edit)
{
    m_tagSettings = editTagSettings(m_services.defaults, edit);
    emit tagSettingsChanged();
}

void AppState::setTagColor(const QString& tag, const std::optional<QString>& hex)
{
    changeTagSettings([&](TagSettings& settings) {
        if (hex)
            settings.colorHexes.insert(tag.toLower(), *hex);
        else
            settings.colorHexes.remove(tag.toLower());
    });
}

void AppState::addAlias(const QString& alias, const QString& tag)
{
    changeTagSettings([&](TagSettings& settings) { settings.addAlias(alias, tag); });
}

void AppState::removeAlias(const QString& alias, const QString& tag)
{
    changeTagSettings([&](TagSettings& settings) { settings.removeAlias(alias, tag); });
}

void AppState::addAutoTagException(const QString& word)
{
    if (m_tagSettings.isExcludedFromAutoColor(word))
        return;
    changeTagSettings([&](TagSettings& settings) {
        if (!settings.isExcludedFromAutoColor(word))
            settings.autoTagExceptions.append(word);
    });
}

} // namespace orvane
