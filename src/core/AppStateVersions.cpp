// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that keeps and restores versions of notes.
#include "core/AppState.h"

namespace orvane {

void AppState::captureVersionSnapshotIfNeeded(const NoteRecord& previous, const NoteRecord& current)
{
    if (!m_versionHistory.isAutoSnapshotEnabled())
        return;
    if (previous.title == current.title && previous.body == current.body &&
        previous.bodyRTF == current.bodyRTF)
        return;
    const auto last = m_lastSnapshotTimes.constFind(current.id);
    const Timestamp now = m_services.clock.now();
    if (last != m_lastSnapshotTimes.cend() &&
        now.secondsSince(*last) < m_versionHistory.autoSnapshotInterval())
        return;
    appendVersionSnapshot(current.id, std::nullopt);
}

bool AppState::appendVersionSnapshot(const QUuid& noteID, const std::optional<QString>& label)
{
    const NoteRecord* found = note(noteID);
    if (!found || !m_currentProject)
        return false;
    const Timestamp now = m_services.clock.now();
    if (!m_versionHistory.appendSnapshot(*found, m_currentProject->rootPath, label, now))
        return false;
    m_lastSnapshotTimes.insert(noteID, now);
    return true;
}

void AppState::restoreVersion(const NoteVersionSnapshot& snapshot)
{
    const NoteRecord* found = note(snapshot.noteID);
    if (!found || !passesEditGuard())
        return;
    emit noteAboutToBeReplaced(snapshot.noteID); // what is being typed becomes part of "before"
    found = note(snapshot.noteID);
    appendVersionSnapshot(snapshot.noteID, QStringLiteral("Before Restore"));
    NoteContent content = NoteContent::of(*found);
    content.title = snapshot.title;
    content.body = snapshot.bodyPlain;
    content.bodyRTF = snapshot.bodyRTF();
    // The payload is what a rich note opens from; left alone it would hide what was restored.
    if (content.body != found->body || content.bodyRTF != found->bodyRTF)
        content.richContentPayload = snapshot.richContentPayload();
    updateNote(snapshot.noteID, content);
}

void AppState::deleteVersion(const NoteVersionSnapshot& snapshot)
{
    if (m_currentProject)
        m_versionHistory.deleteSnapshot(snapshot.id, snapshot.noteID, m_currentProject->rootPath);
}

} // namespace orvane
