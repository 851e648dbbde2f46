// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/NavigationHistory.h"

namespace orvane {

void NavigationHistory::record(const QUuid& noteID)
{
    if (m_index && m_entries.at(*m_index) == noteID)
        return;
    if (m_index)
        m_entries.resize(*m_index + 1);
    m_entries.append(noteID);
    if (m_entries.size() > maximumCount)
        m_entries.remove(0, m_entries.size() - maximumCount);
    m_index = m_entries.size() - 1;
}

std::optional<QUuid> NavigationHistory::navigate(int delta,
                                                 const std::function<bool(const QUuid&)>& exists)
{
    if (!m_index)
        return std::nullopt;
    const qsizetype target = *m_index + delta;
    if (target < 0 || target >= m_entries.size())
        return std::nullopt;
    const QUuid noteID = m_entries.at(target);
    if (!exists(noteID)) {
        m_entries.removeAt(target);
        if (target < *m_index)
            --*m_index;
        if (m_entries.isEmpty())
            m_index.reset();
        else
            m_index = std::clamp<qsizetype>(*m_index, 0, m_entries.size() - 1);
        return std::nullopt;
    }
    m_index = target;
    return noteID;
}

void NavigationHistory::clear()
{
    m_entries.clear();
    m_index.reset();
}

} // namespace orvane
