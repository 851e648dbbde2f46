// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of AppState that keeps and restores versions of notes.
#include "core/state/AppState.h"
#include "core/versions/VersionErasure.h"

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
    appendVersionSnapshotLater(current.id, std::nullopt, [](const auto&) {});
}

void AppState::appendVersionSnapshotLater(
    const QUuid& noteID, const std::optional<QString>& label,
    std::function<void(const std::expected<void, VersionHistoryError>&)> done)
{
    const NoteRecord* found = note(noteID);
    if (!found || !m_session.currentProject())
        return done(std::unexpected(VersionHistoryError{}));
    const Timestamp now = m_services.clock.now();
    // Counted from here on, so that no change before it is written keeps another one.
    m_lastSnapshotTimes.insert(noteID, now);
    m_versionHistory.appendSnapshotLater(
        *found, historyPlace(), label, now,
        [this, noteID, now, done = std::move(done)](const auto& kept) {
            if (!kept) {
                qWarning("A version could not be kept: %ls", qUtf16Printable(kept.error().detail));
                if (m_lastSnapshotTimes.value(noteID) == now)
                    m_lastSnapshotTimes.remove(noteID); // the next change tries again
            }
            done(kept);
        });
}

std::expected<void, VersionHistoryError>
AppState::appendVersionSnapshot(const QUuid& noteID, const std::optional<QString>& label)
{
    std::optional<std::expected<void, VersionHistoryError>> outcome;
    appendVersionSnapshotLater(noteID, label, [&](const auto& kept) { outcome = kept; });
    if (!outcome)
        m_versionHistory.waitFor({noteID});
    return *outcome;
}

std::expected<void, VersionHistoryError>
AppState::restoreVersion(const NoteVersionSnapshot& snapshot)
{
    if (!note(snapshot.noteID) || !m_session.passesEditGuard())
        return std::unexpected(VersionHistoryError{});
    emit noteAboutToBeReplaced(snapshot.noteID); // what is being typed becomes part of "before"
    if (auto kept = appendVersionSnapshot(snapshot.noteID, QString(beforeRestoreLabel)); !kept)
        return kept;
    const NoteRecord* found = note(snapshot.noteID);
    NoteContent content = NoteContent::of(*found);
    content.title = snapshot.title;
    content.body = snapshot.bodyPlain;
    content.bodyRTF = snapshot.bodyRTF();
    // The payload is what a rich note opens from; left alone it would hide what was restored.
    if (content.body != found->body || content.bodyRTF != found->bodyRTF)
        content.richContentPayload = snapshot.richContentPayload();
    (void)updateNote(snapshot.noteID, content); // what the disk doesn't take is told by the session
    return {};
}

std::expected<void, VersionHistoryError> AppState::deleteVersion(const QUuid& noteID,
                                                                 const QUuid& id)
{
    if (!m_session.currentProject())
        return std::unexpected(VersionHistoryError{});
    return m_versionHistory.deleteSnapshot(id, noteID, historyPlace());
}

void AppState::resumeErasingVersions()
{
    if (!m_session.currentProject() || m_session.isReadOnly())
        return;
    const QString project = m_session.projectAccessPath();
    QSet<QUuid> back;
    for (const QUuid& id : VersionErasure::noted(project))
        (m_notebook.notes.contains(id) ? back : m_erasedNotes).insert(id);
    // A note that is there was not erased after all, or an older store was put in place.
    if (!back.isEmpty())
        VersionErasure::forget(project, back);
    eraseVersionsOfErasedNotes();
}

void AppState::eraseVersionsOfErasedNotes()
{
    if (m_session.currentProject() && !m_erasedNotes.isEmpty())
        m_erasedNotes = VersionErasure::finish(m_session.projectAccessPath(), m_erasedNotes);
}

} // namespace orvane
