// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/CommandReceiver.h"

#include "editor/view/EditorView.h"

namespace orvane {

void CommandReceiver::setNote(const std::optional<QUuid>& note, EditorMode mode)
{
    m_note = note;
    m_mode = mode;
}

bool CommandReceiver::isMeant(const std::optional<QUuid>& note) const
{
    if (!m_note || !m_view.isEditable())
        return false;
    return note ? note == m_note : m_view.isVisible();
}

} // namespace orvane
