// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/EditHistory.h"

namespace orvane {

void HistoryEntry::addDocumentSteps(int count)
{
    if (count == 0)
        return;
    if (auto* last = steps.empty() ? nullptr : std::get_if<DocumentSteps>(&steps.back()))
        last->count += count;
    else
        steps.emplace_back(DocumentSteps{count});
}

QString EditHistory::undoName() const
{
    return canUndo() ? m_entries[m_done - 1].name : QString();
}

QString EditHistory::redoName() const
{
    return canRedo() ? m_entries[m_done].name : QString();
}

void EditHistory::push(HistoryEntry entry)
{
    forgetRedo();
    m_entries.push_back(std::move(entry));
    ++m_done;
    m_isOpen = true;
}

void EditHistory::forgetRedo()
{
    m_entries.resize(m_done);
}

HistoryEntry* EditHistory::openEntry()
{
    return m_isOpen && canUndo() && !canRedo() ? &m_entries.back() : nullptr;
}

void EditHistory::clear()
{
    m_entries.clear();
    m_done = 0;
    m_isOpen = false;
}

const HistoryEntry& EditHistory::stepBack()
{
    Q_ASSERT(canUndo());
    m_isOpen = false;
    return m_entries[--m_done];
}

const HistoryEntry& EditHistory::stepForward()
{
    Q_ASSERT(canRedo());
    m_isOpen = false;
    return m_entries[m_done++];
}

} // namespace orvane
