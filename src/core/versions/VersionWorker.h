// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/versions/VersionFiles.h"
#include "platform/FolderHandle.h"
#include "platform/Guarded.h"

#include <deque>
#include <functional>
#include <memory>
#include <thread>
#include <variant>
#include <vector>

namespace orvane {

/// A project's folder, as whoever reads or writes versions in it needs it.
struct HistoryPlace {
    QString projectRootPath;
    /// What keeps the path valid, where it is one of a held folder.
    std::shared_ptr<const FolderHandle> handle = nullptr;
};

struct KeepVersion {
    VersionSource version;
    qsizetype most = 0;
};
struct RemoveVersion {
    QUuid id;
};
struct ListVersions {};

/// What is to be done with a note's timeline. Values alone: nothing in it belongs to a thread.
struct VersionJob {
    /// Rises from job to job.
    quint64 ticket = 0;
    HistoryPlace place;
    QUuid noteID;
    std::variant<KeepVersion, RemoveVersion, ListVersions> work;
};

struct VersionJobResult {
    quint64 ticket = 0;
    QUuid noteID;
    /// Empty lists for what isn't `ListVersions`.
    std::expected<QList<NoteVersionSummary>, VersionHistoryError> outcome;
    bool changedTimeline = false;
};

/// Does jobs on a thread of its own, one after the other in the order in which they were added.
/// The files belong to that thread. Going, it does what is left first. Used from one thread.
class VersionWorker {
public:
    /// `resultIsThere` is called on the worker's thread, after each job.
    VersionWorker(VersionFiles files, std::function<void()> resultIsThere);
    ~VersionWorker();
    VersionWorker(const VersionWorker&) = delete;
    VersionWorker& operator=(const VersionWorker&) = delete;

    void add(VersionJob job);
    /// Waits until the job with this ticket is done, and all before it.
    void waitFor(quint64 ticket);
    /// The results that are there and were not taken yet, in order.
    [[nodiscard]] std::vector<VersionJobResult> takeResults();

private:
    struct State {
        std::deque<VersionJob> jobs;
        std::vector<VersionJobResult> results;
        quint64 lastDone = 0;
        bool ends = false;
    };

    static void run(Guarded<State>& state, VersionFiles files,
                    const std::function<void()>& resultIsThere);

    Guarded<State> m_state;
    std::thread m_thread;
};

} // namespace orvane
