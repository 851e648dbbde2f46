// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The states in which an unsaved draft waits for the disk. docs/architecture.md draws them.
#pragma once

#include "platform/Clock.h"

#include <QFlags>

#include <memory>
#include <variant>

namespace orvane {

/// The way from the last edit to the disk: begun anew by each edit.
namespace AutosaveState {
struct Idle {};
struct Delayed {
    std::unique_ptr<Clock::Delay> write; ///< none while autosave is off
    /// Begins to make the forms of a long text in the first pause.
    std::unique_ptr<Clock::Delay> prepare;
};
/// The delay is over; the draft is written as soon as its forms are made.
struct AwaitingForms {};
} // namespace AutosaveState
using Autosave =
    std::variant<AutosaveState::Idle, AutosaveState::Delayed, AutosaveState::AwaitingForms>;

/// The way from the first edit that is not on the disk, however many follow.
namespace BoundState {
struct Off {};
struct Running {
    std::unique_ptr<Clock::Delay> over;
};
/// The forms of one generation of the text are being made, and are written whatever is typed
/// meanwhile.
struct MakingForms {
    quint64 generation = 0;
    std::unique_ptr<Clock::Delay> over; ///< the next bound, if it is running
};
} // namespace BoundState
using UnsavedBound = std::variant<BoundState::Off, BoundState::Running, BoundState::MakingForms>;

/// What of a draft the edited text has left behind.
enum class DraftPart {
    Plain = 1,     ///< the text without attributes
    RichForms = 2, ///< what is stored of a rich text
};
Q_DECLARE_FLAGS(DraftParts, DraftPart)

} // namespace orvane
