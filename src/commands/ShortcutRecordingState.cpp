// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/ShortcutRecordingState.h"

#include <utility>

namespace orvane {

void ShortcutRecordingState::begin(ShortcutAction action)
{
    const std::scoped_lock lock(m_mutex);
    m_recordingAction = action;
}

void ShortcutRecordingState::end()
{
    take();
}

std::optional<ShortcutAction> ShortcutRecordingState::recordingAction() const
{
    const std::scoped_lock lock(m_mutex);
    return m_recordingAction;
}

std::optional<ShortcutAction> ShortcutRecordingState::take()
{
    const std::scoped_lock lock(m_mutex);
    return std::exchange(m_recordingAction, std::nullopt);
}

} // namespace orvane
