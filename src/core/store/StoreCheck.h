// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace orvane {

/// What a full check of a store found.
struct StoreCheckResult {
    enum class Outcome {
        Sound,
        Damaged,     ///< `problem` says what is wrong
        Interrupted, ///< stopped before its end, or unable to read at all: says nothing
    };
    Outcome outcome = Outcome::Interrupted;
    QString problem;
};

/// Reads every page and every stored byte of a store on a thread and a read-only connection of its
/// own, while the store is in use. Destroying it interrupts the check and waits for the thread,
/// which takes some milliseconds.
class StoreCheck {
public:
    using Done = std::function<void(const StoreCheckResult&)>;

    /// `done` is called once on the main thread, from its event loop, unless the check is destroyed
    /// before; it may destroy the check. Make it on the main thread.
    StoreCheck(const QString& storePath, Done done);
    ~StoreCheck();
    StoreCheck(const StoreCheck&) = delete;
    StoreCheck& operator=(const StoreCheck&) = delete;

private:
    struct Private;
    std::unique_ptr<Private> m_private;
};

} // namespace orvane
