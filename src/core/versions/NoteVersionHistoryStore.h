// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NoteRecord.h"
#include "core/versions/NoteVersion.h"
#include "core/versions/VersionFiles.h"
#include "core/versions/VersionWorker.h"
#include "platform/UserDefaults.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>

#include <expected>
#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// Each note's timeline of saved versions. Files are read and written by a thread of its own, in
/// the order of the calls here, so that keeping a version costs the caller no more than sharing the
/// note's bytes. What comes of it is told on the main thread: by the event loop, or earlier where
/// somebody waits. A failure never stops a save: the version isn't kept, and the next change tries
/// again. Destroying the store waits for what is under way and tells nobody. Main thread.
class NoteVersionHistoryStore {
public:
    using Outcome = std::expected<void, VersionHistoryError>;
    using Versions = std::expected<QList<NoteVersionSummary>, VersionHistoryError>;

    NoteVersionHistoryStore(UserDefaults& defaults, NotificationCenter& notifications,
                            VersionFiles::Write write = writeFileAtomically);
    ~NoteVersionHistoryStore();

    /// Adds the note as it is now, beside the caller; `done` is told what came of it. The rich
    /// payload goes in only under the labels that begin with "Before".
    void appendSnapshotLater(const NoteRecord& note, const HistoryPlace& place,
                             const std::optional<QString>& label, Timestamp now,
                             std::function<void(const Outcome&)> done);
    /// The same, and waits until it is on the disk.
    Outcome appendSnapshot(const NoteRecord& note, const HistoryPlace& place,
                           const std::optional<QString>& label, Timestamp now);
    /// Waits as well.
    Outcome deleteSnapshot(const QUuid& id, const QUuid& noteID, const HistoryPlace& place);

    /// The timeline with all that was added until now, oldest first; empty when there is none.
    void listLater(const QUuid& noteID, const HistoryPlace& place,
                   std::function<void(const Versions&)> done);
    /// The same, and waits.
    [[nodiscard]] Versions list(const QUuid& noteID, const HistoryPlace& place);
    /// Whether a file is still to be written for this note.
    [[nodiscard]] bool isPending(const QUuid& noteID) const;

    /// Waits until what was asked for these notes is done, and tells what came of it.
    void waitFor(const QSet<QUuid>& noteIDs);
    void waitForAll();

    [[nodiscard]] bool isAutoSnapshotEnabled() const;
    /// Seconds between automatic snapshots of one note; a stored value of 0 or less counts as 300.
    [[nodiscard]] double autoSnapshotInterval() const;
    /// A stored value of 0 or less counts as 120.
    [[nodiscard]] qsizetype maxSnapshots() const;

private:
    using Done = std::function<void(const Versions&)>;

    quint64 start(const QUuid& noteID, const HistoryPlace& place, decltype(VersionJob::work) work,
                  Done done);
    Outcome finish(quint64 ticket, const std::optional<Outcome>& outcome);
    void waitFor(quint64 ticket);
    void tellResults();

    struct Pending {
        QUuid noteID;
        Done done;
    };

    UserDefaults& m_defaults;
    NotificationCenter& m_notifications;
    VersionFiles::Write m_write;
    QHash<quint64, Pending> m_pending;
    std::deque<VersionJobResult> m_untold;
    quint64 m_lastTicket = 0;
    /// Takes the worker's calls to the main thread; goes after the worker.
    QObject m_mainThread;
    /// Made when there is something to do.
    std::unique_ptr<VersionWorker> m_worker;
};

inline constexpr Setting<bool> autoSnapshotEnabledSetting{
    u"settings.versionHistory.autoSnapshotEnabled", true};
inline constexpr Setting<double> autoSnapshotIntervalSetting{
    u"settings.versionHistory.autoSnapshotInterval", 300};
inline constexpr Setting<qint64> maxSnapshotsSetting{u"settings.versionHistory.maxSnapshots", 120};

} // namespace orvane
