// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/ExtensionList.h"

#include <utility>

namespace orvane {

void ExtensionList::add(EditorExtension& extension, ExtensionPriority priority)
{
    const auto below = std::find_if(m_entries.cbegin(), m_entries.cend(),
                                    [&](const Entry& entry) { return entry.priority <= priority; });
    m_entries.insert(below, {&extension, priority});
}

void ExtensionList::remove(EditorExtension& extension)
{
    m_entries.removeIf([&](const Entry& entry) { return entry.extension == &extension; });
    if (m_hovered == &extension)
        m_hovered = nullptr;
    if (m_dragged == &extension)
        m_dragged = nullptr;
}

bool ExtensionList::isHere(const EditorExtension& extension) const
{
    return std::any_of(m_entries.cbegin(), m_entries.cend(),
                       [&](const Entry& entry) { return entry.extension == &extension; });
}

EditorExtension* ExtensionList::withSelection() const
{
    return firstThat([](const EditorExtension& extension) { return extension.hasSelection(); });
}

void ExtensionList::hover(QPointF page)
{
    EditorExtension* now =
        firstThat([&](EditorExtension& extension) { return extension.hovered(page); });
    if (EditorExtension* before = std::exchange(m_hovered, now); before && before != now)
        before->hoverEnded();
}

void ExtensionList::endHover()
{
    if (EditorExtension* before = std::exchange(m_hovered, nullptr))
        before->hoverEnded();
}

std::optional<DropFeedback> ExtensionList::drag(const EditorDrag& drag)
{
    std::optional<DropFeedback> feedback;
    EditorExtension* now = firstThat([&](EditorExtension& extension) {
        feedback = extension.dragMoved(drag);
        return feedback.has_value();
    });
    if (EditorExtension* before = std::exchange(m_dragged, now); before && before != now)
        before->dragEnded();
    return feedback;
}

void ExtensionList::endDrag()
{
    if (EditorExtension* before = std::exchange(m_dragged, nullptr))
        before->dragEnded();
}

bool ExtensionList::drop(const EditorDrag& drag)
{
    (void)this->drag(drag); // nothing says that the pointer has not moved since
    EditorExtension* taker = m_dragged;
    endDrag();
    return taker && isHere(*taker) && taker->drop(drag);
}

} // namespace orvane
