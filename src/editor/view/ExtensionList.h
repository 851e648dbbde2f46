// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/EditorExtension.h"

#include <QList>

#include <algorithm>

namespace orvane {

/// The extensions of one view by their priority, and which of them has the pointer or a drag.
class ExtensionList {
public:
    /// Above those of the same priority. The extension is removed before it goes.
    void add(EditorExtension& extension, ExtensionPriority priority);
    void remove(EditorExtension& extension);

    /// By rising priority, as they are drawn.
    template <typename Visit>
    void forEachUpwards(Visit visit) const
    {
        const QList<Entry> entries = m_entries; // a visited one may go
        for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry) {
            if (isHere(*entry->extension))
                visit(*entry->extension);
        }
    }
    /// By falling priority: the first for which `asks` says yes, or null.
    template <typename Ask>
    EditorExtension* firstThat(Ask asks) const
    {
        const QList<Entry> entries = m_entries;
        for (const Entry& entry : entries) {
            if (isHere(*entry.extension) && asks(*entry.extension))
                return entry.extension;
        }
        return nullptr;
    }

    /// The one whose selection counts, or null.
    [[nodiscard]] EditorExtension* withSelection() const;

    /// Tells who is under the pointer, and whoever was there before.
    void hover(QPointF page);
    void endHover();
    /// Tells who would take a drop, and whoever would have before; how it is to be shown, or
    /// nothing where nobody would.
    std::optional<DropFeedback> drag(const EditorDrag& drag);
    void endDrag();
    /// Ends the drag; whether one of them has taken it.
    bool drop(const EditorDrag& drag);

private:
    struct Entry {
        EditorExtension* extension;
        ExtensionPriority priority;
    };

    [[nodiscard]] bool isHere(const EditorExtension& extension) const;

    QList<Entry> m_entries; // by falling priority
    EditorExtension* m_hovered = nullptr;
    EditorExtension* m_dragged = nullptr;
};

} // namespace orvane
