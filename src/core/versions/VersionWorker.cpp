// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/versions/VersionWorker.h"

#include <optional>
#include <type_traits>

namespace orvane {

namespace {

VersionJobResult done(const VersionJob& job, VersionFiles& files)
{
    const QString& project = job.place.projectRootPath;
    VersionJobResult result{job.ticket, job.noteID, {}};
    const auto adopt = [&](const std::expected<void, VersionHistoryError>& outcome) {
        result.changedTimeline = outcome.has_value();
        if (!outcome)
            result.outcome = std::unexpected(outcome.error());
    };
    if (const auto* keep = std::get_if<KeepVersion>(&job.work))
        adopt(files.append(project, keep->version, keep->most));
    else if (const auto* remove = std::get_if<RemoveVersion>(&job.work))
        adopt(files.remove(project, job.noteID, remove->id));
    else
        result.outcome = VersionFiles::list(project, job.noteID);
    return result;
}

} // namespace

VersionWorker::VersionWorker(VersionFiles files, std::function<void()> resultIsThere)
    : m_thread(
          [this, files = std::move(files), resultIsThere = std::move(resultIsThere)]() mutable {
              run(m_state, std::move(files), resultIsThere);
          })
{}

VersionWorker::~VersionWorker()
{
    m_state.with([](State& state) { state.ends = true; });
    m_thread.join();
}

void VersionWorker::add(VersionJob job)
{
    m_state.with([&](State& state) { state.jobs.push_back(std::move(job)); });
}

void VersionWorker::waitFor(quint64 ticket)
{
    m_state.when([&](const State& state) { return state.lastDone >= ticket; }, [](State&) {});
}

std::vector<VersionJobResult> VersionWorker::takeResults()
{
    return m_state.with([](State& state) { return std::exchange(state.results, {}); });
}

void VersionWorker::run(Guarded<State>& state, VersionFiles files,
                        const std::function<void()>& resultIsThere)
{
    const auto next = [&] {
        return state.when([](const State& now) { return now.ends || !now.jobs.empty(); },
                          [](State& now) -> std::optional<VersionJob> {
                              if (now.jobs.empty())
                                  return std::nullopt;
                              VersionJob job = std::move(now.jobs.front());
                              now.jobs.pop_front();
                              return job;
                          });
    };
    while (const auto job = next()) {
        VersionJobResult result = done(*job, files);
        state.with([&](State& now) {
            now.lastDone = result.ticket;
            now.results.push_back(std::move(result));
        });
        resultIsThere();
    }
}

} // namespace orvane
