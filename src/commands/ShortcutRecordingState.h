// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/ShortcutAction.h"
#include "platform/NotificationCenter.h"

#include <mutex>
#include <optional>

namespace orvane {

/// What is held while a shortcut is recorded, in both notations.
struct ShortcutCapturePreview {
    ShortcutAction action{};
    QString display;
    QString desktopText;

    bool operator==(const ShortcutCapturePreview&) const = default;
};

/// A shortcut was recorded. `conflict` is the first other action that has the same key.
struct ShortcutCapture {
    ShortcutAction action{};
    ShortcutData shortcut;
    std::optional<ShortcutAction> conflict;

    bool operator==(const ShortcutCapture&) const = default;
};

/// Whether a shortcut is being recorded, and for which action. Written by the row of the settings
/// that records, read at each key; safe from any thread.
class ShortcutRecordingState {
public:
    static constexpr Notification<ShortcutCapturePreview> capturePreview{
        "OrvaneWorkspace.ShortcutRecording.CapturePreview"};
    static constexpr Notification<ShortcutCapture> captureCompleted{
        "OrvaneWorkspace.ShortcutRecording.CaptureCompleted"};
    static constexpr Notification<NoPayload> captureCancelled{
        "OrvaneWorkspace.ShortcutRecording.CaptureCancelled"};

    /// Every key goes to the recording until it is taken or ended.
    void begin(ShortcutAction action);
    void end();
    [[nodiscard]] bool isActive() const { return recordingAction().has_value(); }
    [[nodiscard]] std::optional<ShortcutAction> recordingAction() const;
    /// Ends the recording and gives the action that it was for.
    std::optional<ShortcutAction> take();

private:
    mutable std::mutex m_mutex; // held for single reads and writes, never across a post
    std::optional<ShortcutAction> m_recordingAction;
};

} // namespace orvane
