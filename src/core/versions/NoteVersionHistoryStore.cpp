// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/versions/NoteVersionHistoryStore.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

std::expected<QByteArray, VersionHistoryError> bytesOf(const std::optional<Blob>& blob)
{
    if (!blob)
        return QByteArray();
    auto bytes = blob->read();
    if (!bytes)
        return std::unexpected(
            VersionHistoryError{VersionHistoryError::Code::Unreadable, bytes.error()});
    return *std::move(bytes);
}

/// A version of words that can't be read would be one of no words.
std::expected<VersionSource, VersionHistoryError>
sourceOf(const NoteRecord& note, const std::optional<QString>& label, Timestamp now)
{
    auto body = bytesOf(note.body.utf8());
    if (!body)
        return std::unexpected(body.error());
    auto rtf = bytesOf(note.bodyRTF);
    if (!rtf)
        return std::unexpected(rtf.error());
    VersionSource source{QUuid::createUuid(), note.id,         now,          note.title,
                         *std::move(body),    *std::move(rtf), std::nullopt, label};
    const bool payloadIsAboutToGo = label && label->startsWith("Before "_L1);
    // Only the payload refers to images.
    if ((payloadIsAboutToGo || note.images) && note.richContentPayload) {
        auto payload = bytesOf(note.richContentPayload);
        if (!payload)
            return std::unexpected(payload.error());
        source.richContentPayload = *std::move(payload);
    }
    return source;
}

NoteVersionHistoryStore::Outcome outcomeOf(const NoteVersionHistoryStore::Versions& result)
{
    return result ? NoteVersionHistoryStore::Outcome() : std::unexpected(result.error());
}

} // namespace

NoteVersionHistoryStore::NoteVersionHistoryStore(UserDefaults& defaults,
                                                 NotificationCenter& notifications,
                                                 VersionFiles::Write write)
    : m_defaults(defaults)
    , m_notifications(notifications)
    , m_write(std::move(write))
{}

NoteVersionHistoryStore::~NoteVersionHistoryStore() = default;

void NoteVersionHistoryStore::appendSnapshotLater(const NoteRecord& note, const HistoryPlace& place,
                                                  const std::optional<QString>& label,
                                                  Timestamp now,
                                                  std::function<void(const Outcome&)> done)
{
    auto source = sourceOf(note, label, now);
    if (!source)
        return done(std::unexpected(source.error()));
    start(note.id, place, KeepVersion{*std::move(source), maxSnapshots()},
          [done = std::move(done)](const Versions& result) { done(outcomeOf(result)); });
}

NoteVersionHistoryStore::Outcome
NoteVersionHistoryStore::appendSnapshot(const NoteRecord& note, const HistoryPlace& place,
                                        const std::optional<QString>& label, Timestamp now)
{
    std::optional<Outcome> outcome;
    appendSnapshotLater(note, place, label, now, [&](const Outcome& told) { outcome = told; });
    return finish(m_lastTicket, outcome);
}

NoteVersionHistoryStore::Outcome NoteVersionHistoryStore::deleteSnapshot(const QUuid& id,
                                                                         const QUuid& noteID,
                                                                         const HistoryPlace& place)
{
    std::optional<Outcome> outcome;
    const quint64 ticket = start(noteID, place, RemoveVersion{id},
                                 [&](const Versions& result) { outcome = outcomeOf(result); });
    return finish(ticket, outcome);
}

NoteVersionHistoryStore::Outcome
NoteVersionHistoryStore::finish(quint64 ticket, const std::optional<Outcome>& outcome)
{
    if (!outcome)
        waitFor(ticket);
    return *outcome;
}

void NoteVersionHistoryStore::listLater(const QUuid& noteID, const HistoryPlace& place,
                                        std::function<void(const Versions&)> done)
{
    start(noteID, place, ListVersions{}, std::move(done));
}

NoteVersionHistoryStore::Versions NoteVersionHistoryStore::list(const QUuid& noteID,
                                                                const HistoryPlace& place)
{
    waitFor({noteID});
    return VersionFiles::list(place.projectRootPath, noteID);
}

bool NoteVersionHistoryStore::isPending(const QUuid& noteID) const
{
    return std::ranges::any_of(m_pending,
                               [&](const Pending& each) { return each.noteID == noteID; });
}

quint64 NoteVersionHistoryStore::start(const QUuid& noteID, const HistoryPlace& place,
                                       decltype(VersionJob::work) work, Done done)
{
    if (!m_worker) {
        m_worker = std::make_unique<VersionWorker>(VersionFiles(m_write), [this] {
            QMetaObject::invokeMethod(
                &m_mainThread, [this] { tellResults(); }, Qt::QueuedConnection);
        });
    }
    const quint64 ticket = ++m_lastTicket;
    m_pending.insert(ticket, {noteID, std::move(done)});
    m_worker->add({ticket, place, noteID, std::move(work)});
    return ticket;
}

void NoteVersionHistoryStore::waitFor(const QSet<QUuid>& noteIDs)
{
    quint64 last = 0;
    for (auto each = m_pending.cbegin(); each != m_pending.cend(); ++each) {
        if (noteIDs.contains(each->noteID))
            last = std::max(last, each.key());
    }
    waitFor(last);
}

void NoteVersionHistoryStore::waitForAll()
{
    if (!m_pending.isEmpty())
        waitFor(m_lastTicket);
}

void NoteVersionHistoryStore::waitFor(quint64 ticket)
{
    if (ticket == 0)
        return;
    m_worker->waitFor(ticket);
    tellResults();
}

void NoteVersionHistoryStore::tellResults()
{
    std::ranges::move(m_worker->takeResults(), std::back_inserter(m_untold));
    // Who is told may ask for more and wait for it, which tells the rest.
    while (!m_untold.empty()) {
        const VersionJobResult result = std::move(m_untold.front());
        m_untold.pop_front();
        const Pending pending = m_pending.take(result.ticket);
        pending.done(result.outcome);
        if (result.changedTimeline)
            m_notifications.post(snapshotsDidChange, result.noteID);
    }
}

bool NoteVersionHistoryStore::isAutoSnapshotEnabled() const
{
    return autoSnapshotEnabledSetting.read(m_defaults);
}

double NoteVersionHistoryStore::autoSnapshotInterval() const
{
    const double stored = autoSnapshotIntervalSetting.read(m_defaults);
    return stored > 0 ? stored : autoSnapshotIntervalSetting.fallback;
}

qsizetype NoteVersionHistoryStore::maxSnapshots() const
{
    const qint64 stored = maxSnapshotsSetting.read(m_defaults);
    return qsizetype(stored > 0 ? stored : maxSnapshotsSetting.fallback);
}

} // namespace orvane
