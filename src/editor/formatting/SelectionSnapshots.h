// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/formatting/EditorSelectionSnapshot.h"

#include <QObject>

#include <functional>

namespace orvane {

class EditorView;
class ListEditing;
class UserDefaults;

/// Publishes what is under the selection of one view, once after each change of text, selection or
/// typing style and only where it differs from what was published before. Costs the same in a note
/// of any length. Main thread.
class SelectionSnapshots : public QObject {
    Q_OBJECT
public:
    /// All outlive it.
    SelectionSnapshots(EditorView& view, const ListEditing& lists, const UserDefaults& defaults,
                       NotificationCenter& notifications);

    /// The view shows the rich text of `note`; none for a text without formatting, of which nothing
    /// is published.
    void setNote(const std::optional<QUuid>& note);
    /// Asked for the table at the caret; must be callable as long as this lives.
    void setTableSource(std::function<std::optional<EditorTableSnapshot>()> table);
    /// Asked for the image that is selected; must be callable as long as this lives.
    void setSelectedImage(std::function<std::optional<SelectedImageInfo>()> image)
    {
        m_image = std::move(image);
    }
    /// What is under the selection now.
    [[nodiscard]] EditorSelectionSnapshot snapshot() const;
    /// Publishes before the next frame, if what is under the selection is another look by then.
    void schedule();

private:
    void postEditorSelectionSnapshot();

    EditorView& m_view;
    const ListEditing& m_lists;
    const UserDefaults& m_defaults;
    NotificationCenter& m_notifications;
    std::function<std::optional<EditorTableSnapshot>()> m_table;
    std::optional<QUuid> m_note;
    QList<QMetaObject::Connection> m_connections;
    std::function<std::optional<SelectedImageInfo>()> m_image;
    bool m_isScheduled = false;
    std::optional<EditorSelectionChange> m_published;
};

} // namespace orvane
