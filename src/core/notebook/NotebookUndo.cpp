// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/notebook/NotebookUndo.h"

namespace orvane {

void NotebookUndo::push(NotebookStep step)
{
    m_undone.clear();
    m_done.append(std::move(step));
    if (m_done.size() > maximumSteps)
        m_done.removeFirst();
}

void NotebookUndo::clear()
{
    m_done.clear();
    m_undone.clear();
}

} // namespace orvane
