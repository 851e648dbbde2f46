// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/StoreReading.h"
#include "platform/Guarded.h"

#include <any>
#include <deque>
#include <map>
#include <thread>
#include <vector>

namespace orvane {

/// A thread that reads an open store, one job after the other, beside the thread that owns it. A
/// job is a function without captures: what it works on is handed to it as values that may go to
/// another thread, and what it gives is one, so that a data race doesn't compile. Used from one
/// thread, which has an event loop.
class StoreWorker {
public:
    explicit StoreWorker(QString storePath);
    /// Ends the job at hand early. Nobody is told of what is not done by then.
    ~StoreWorker();
    StoreWorker(const StoreWorker&) = delete;
    StoreWorker& operator=(const StoreWorker&) = delete;

    /// Calls `function(StoreReading&, values…)` on the worker's thread, which gives an
    /// `std::expected` with a StoreError, and `done` with what it gave on this one.
    template <typename Function, typename Done, typename... Values>
    void read(Function, Done done, Values... values)
    {
        using Outcome = std::invoke_result_t<Function, StoreReading&, const Values&...>;
        static_assert(std::is_empty_v<Function>, "what a job works on is handed to it as values");
        static_assert((isSendable<Values> && ...), "a value that only its own thread may use");
        static_assert(isSendable<Outcome>, "what a job gives must be usable on this thread");
        const quint64 ticket = ++m_lastTicket;
        m_dones.emplace(ticket, [done = std::move(done)](const std::any& outcome) {
            done(*std::any_cast<std::shared_ptr<const Outcome>>(outcome));
        });
        add({ticket, [... values = std::move(values)](StoreReading::Result<StoreReading>& store) {
                 auto outcome = store ? Function{}(*store, values...)
                                      : Outcome(std::unexpected(store.error()));
                 return std::any(std::make_shared<const Outcome>(std::move(outcome)));
             }});
    }

private:
    using Work = std::function<std::any(StoreReading::Result<StoreReading>&)>;
    struct Job {
        quint64 ticket = 0;
        Work work;
    };
    struct Outcome {
        quint64 ticket = 0;
        std::any value;
    };
    struct State {
        std::deque<Job> jobs;
        std::vector<Outcome> outcomes;
        bool ends = false;
    };

    void add(Job job);
    void tellOutcomes();
    static void run(Guarded<State>& state, const QString& storePath, const std::stop_token& stop,
                    const std::function<void()>& outcomeIsThere);

    /// What is told to whom, which the worker's thread never sees.
    std::map<quint64, std::function<void(const std::any&)>> m_dones;
    quint64 m_lastTicket = 0;
    /// Cleared on the thread that wants the outcomes, which alone looks at it.
    std::shared_ptr<StoreWorker*> m_self;
    Guarded<State> m_state;
    std::jthread m_thread;
};

} // namespace orvane
