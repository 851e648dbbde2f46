// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that changes single fields of records, and tags everywhere.
#include "core/notebook/NotebookEdits.h"
#include "core/records/JsonObjectReader.h"
#include "core/state/AppState.h"

namespace orvane {

Accepted AppState::editNote(const QUuid& id, const std::function<void(NoteRecord&)>& edit)
{
    if (auto may = mayEdit(); !may)
        return may;
    if (!note(id))
        return std::unexpected(Refusal::NotThere);
    return carryOut(NotebookEdits::changeNotes(m_notebook, root(), {id}, edit), Step::Kept);
}

Accepted AppState::editFolder(const QUuid& id, const std::function<void(FolderRecord&)>& edit)
{
    if (auto may = mayEdit(); !may)
        return may;
    if (!folder(id))
        return std::unexpected(Refusal::NotThere);
    return carryOut(NotebookEdits::changeFolder(m_notebook, root(), id, edit), Step::Kept);
}

Accepted AppState::setRowsPinned(const QList<BinderRowID>& rows, bool pinned)
{
    if (auto may = mayEdit(); !may)
        return may;
    return carryOut(NotebookEdits::changeRows(
                        m_notebook, root(), rows, [&](NoteRecord& note) { note.isPinned = pinned; },
                        [&](FolderRecord& folder) { folder.isPinned = pinned; }),
                    Step::Kept);
}

Accepted AppState::changeTagsOfRows(const QList<BinderRowID>& rows,
                                    const std::function<QStringList(QStringList)>& retagged)
{
    if (auto may = mayEdit(); !may)
        return may;
    const Timestamp now = m_services.clock.now();
    const auto changeNote = [&](NoteRecord& note) {
        const QStringList tags = normalizeTags(retagged(note.tags));
        if (tags != note.tags)
            note.updatedAt = now;
        note.tags = tags;
    };
    return carryOut(NotebookEdits::changeRows(m_notebook, root(), rows, changeNote,
                                              [&](FolderRecord& folder) {
                                                  folder.tags =
                                                      normalizeTags(retagged(folder.tags));
                                              }),
                    Step::Kept);
}

Accepted AppState::addTagToRows(const QList<BinderRowID>& rows, const QString& tag)
{
    return changeTagsOfRows(rows, [&](QStringList tags) {
        if (!containsTag(tags, tag.trimmed()))
            tags.append(tag);
        return tags;
    });
}

Accepted AppState::removeTagFromRows(const QList<BinderRowID>& rows, const QString& tag)
{
    return changeTagsOfRows(rows, [&](QStringList tags) {
        tags.removeIf([&](const QString& each) { return containsTag({each}, tag); });
        return tags;
    });
}

Accepted AppState::updateNoteBinderTitle(const QUuid& id, const QString& plainTitle,
                                         const std::optional<Blob>& titleRTF)
{
    if (auto may = mayEdit(); !may)
        return may;
    emit noteAboutToBeReplaced(id);
    const auto* found = m_notebook.notes.find(id);
    if (!found)
        return std::unexpected(Refusal::NotThere);
    const Shared<NoteRecord> previous = *found;
    const Accepted done = editNote(id, [&](NoteRecord& note) {
        note.title = plainTitle;
        note.titleRTF = titleRTF;
        note.updatedAt = m_services.clock.now();
    });
    captureVersionSnapshotIfNeeded(*previous, *note(id));
    return done;
}

Accepted AppState::updateFolderBinderTitle(const QUuid& id, const QString& plainName,
                                           const std::optional<Blob>& titleRTF)
{
    return editFolder(id, [&](FolderRecord& folder) {
        folder.name = plainName;
        folder.titleRTF = titleRTF;
    });
}

Accepted AppState::updateNoteIcon(const QUuid& id, const std::optional<QString>& iconName)
{
    return editNote(id, [&](NoteRecord& note) {
        note.iconName = iconName;
        note.updatedAt = m_services.clock.now();
    });
}

Accepted AppState::updateFolderIcon(const QUuid& id, const std::optional<QString>& iconName)
{
    return editFolder(id, [&](FolderRecord& folder) { folder.iconName = iconName; });
}

Accepted AppState::togglePinNote(const QUuid& id)
{
    return editNote(id, [](NoteRecord& note) { note.isPinned = !note.isPinned; });
}

Accepted AppState::togglePinFolder(const QUuid& id)
{
    return editFolder(id, [](FolderRecord& folder) { folder.isPinned = !folder.isPinned; });
}

Accepted AppState::updatePDFAttachment(const QUuid& id, const std::optional<QString>& assetID,
                                       const std::optional<Blob>& payload)
{
    return editNote(id, [&](NoteRecord& note) {
        note.embeddedFileAssetID = assetID;
        note.embeddedFilePayload = payload;
        note.updatedAt = m_services.clock.now();
    });
}

Accepted AppState::saveShapesPayload(const std::optional<Blob>& payload, const QUuid& noteID)
{
    if (!m_notebook.notes.contains(noteID)) {
        qWarning().noquote().nospace()
            << "OrvaneWorkspace shapes save error: no note found for id=" << uuidText(noteID);
        return std::unexpected(Refusal::NotThere);
    }
    return editNote(noteID, [&](NoteRecord& note) {
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

Accepted AppState::updateNoteTags(const QUuid& id, const QStringList& tags)
{
    return editNote(id, [&](NoteRecord& note) {
        note.tags = normalizeTags(tags);
        note.updatedAt = m_services.clock.now();
    });
}

Accepted AppState::updateFolderTags(const QUuid& id, const QStringList& tags)
{
    return editFolder(id, [&](FolderRecord& folder) { folder.tags = normalizeTags(tags); });
}

Accepted AppState::addTagToNote(const QUuid& noteID, const QString& tag)
{
    const NoteRecord* found = note(noteID);
    if (!found)
        return std::unexpected(Refusal::NotThere);
    if (containsTag(found->tags, tag.trimmed()))
        return {};
    return updateNoteTags(noteID, found->tags + QStringList{tag});
}

Accepted AppState::changeTagsEverywhere(
    const std::function<std::optional<QStringList>(const QStringList&)>& edit,
    const std::function<void(TagSettings&)>& settings)
{
    NotebookStep step;
    step.edit = NotebookEdits::changeTags(m_notebook, root(), edit, m_services.clock.now());
    const TagSettings before = m_tagSettings;
    changeTagSettings(settings);
    if (m_tagSettings != before)
        step.tagSettings = {before, m_tagSettings};
    const Accepted done = carryOut(step.edit, Step::Passing);
    if (!step.isEmpty())
        remember(step);
    return done;
}

void AppState::replaceInTagFilter(const QString& tag, const std::optional<QString>& by)
{
    if (!m_activeTagFilter.removeIf(
            [&](const QString& each) { return each.compare(tag, Qt::CaseInsensitive) == 0; }))
        return;
    if (by)
        m_activeTagFilter.insert(*by);
    emit activeTagFilterChanged();
}

Accepted AppState::renameTag(const QString& oldName, const QString& newName)
{
    const QString from = oldName.trimmed();
    const QString to = newName.trimmed();
    if (from.isEmpty() || to.isEmpty() || to.size() > longestTag ||
        from.compare(to, Qt::CaseInsensitive) == 0)
        return std::unexpected(Refusal::NotPossible);
    if (auto may = mayEdit(); !may)
        return may;
    const Accepted done =
        changeTagsEverywhere([&](const QStringList& tags) { return replacingTag(tags, from, to); },
                             [&](TagSettings& settings) { settings.rename(from, to); });
    replaceInTagFilter(from, to);
    return done;
}

Accepted AppState::removeTagFromLibrary(const QString& name)
{
    const QString tag = name.trimmed();
    if (tag.isEmpty())
        return std::unexpected(Refusal::NotPossible);
    if (auto may = mayEdit(); !may)
        return may;
    const Accepted done =
        changeTagsEverywhere([&](const QStringList& tags) { return removingTag(tags, tag); },
                             [&](TagSettings& settings) { settings.remove(tag); });
    replaceInTagFilter(tag, std::nullopt);
    return done;
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
