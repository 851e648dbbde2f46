// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreWorker.h"

#include <QCoreApplication>

namespace orvane {

StoreWorker::StoreWorker(QString storePath)
    : m_self(std::make_shared<StoreWorker*>(this))
    , m_thread([&state = m_state, storePath = std::move(storePath),
                self = m_self](const std::stop_token& stop) {
        run(state, storePath, stop, [&self] {
            // Through the application, so that the one who is told may destroy this object.
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [self] {
                    if (*self)
                        (*self)->tellOutcomes();
                },
                Qt::QueuedConnection);
        });
    })
{}

StoreWorker::~StoreWorker()
{
    *m_self = nullptr;
    m_thread.request_stop();
    m_state.with([](State& state) {
        state.ends = true;
        state.jobs.clear();
    });
    m_thread.join(); // before what it works on goes
}

void StoreWorker::add(Job job)
{
    m_state.with([&](State& state) { state.jobs.push_back(std::move(job)); });
}

void StoreWorker::tellOutcomes()
{
    const auto outcomes =
        m_state.with([](State& state) { return std::exchange(state.outcomes, {}); });
    const auto self = m_self;
    for (const Outcome& outcome : outcomes) {
        if (!*self)
            return;
        const auto done = m_dones.extract(outcome.ticket);
        done.mapped()(outcome.value);
    }
}

void StoreWorker::run(Guarded<State>& state, const QString& storePath, const std::stop_token& stop,
                      const std::function<void()>& outcomeIsThere)
{
    std::optional<StoreReading::Result<StoreReading>> store;
    for (;;) {
        Job job = state.when([](const State& now) { return now.ends || !now.jobs.empty(); },
                             [](State& now) {
                                 if (now.ends)
                                     return Job{};
                                 Job next = std::move(now.jobs.front());
                                 now.jobs.pop_front();
                                 return next;
                             });
        if (!job.work)
            return;
        if (!store || !*store)
            store = StoreReading::open(storePath, stop);
        std::any value = job.work(*store);
        state.with([&](State& now) { now.outcomes.push_back({job.ticket, std::move(value)}); });
        outcomeIsThere();
    }
}

} // namespace orvane
