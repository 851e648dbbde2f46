// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/EditorSettings.h"
#include "platform/NotificationCenter.h"

#include <QUuid>

#include <functional>
#include <optional>
#include <vector>

namespace orvane {

class EditorView;

/// The notes in which a command acts.
enum class CommandScope { richNotes, allNotes };

/// Brings the commands that menus, toolbars and keys post to one text view. A command that names a
/// note is for the view that shows it, one that names none for the view that is seen. Those that
/// change a text are lost where it may not be edited. Main thread.
class CommandReceiver {
public:
    /// Both outlive it.
    CommandReceiver(const EditorView& view, NotificationCenter& notifications)
        : m_view(view)
        , m_notifications(notifications)
    {}
    Q_DISABLE_COPY_MOVE(CommandReceiver)

    /// What the view shows.
    void setNote(const std::optional<QUuid>& note, EditorMode mode);
    [[nodiscard]] const std::optional<QUuid>& note() const { return m_note; }
    [[nodiscard]] EditorMode mode() const { return m_mode; }

    /// A command that only a rich note could carry out.
    struct Refused {
        const char* name;          ///< of the notification
        std::function<void()> act; ///< what it would have done, once the note is rich
    };
    /// Told of commands that are meant for the view and come to a note that is not rich.
    void setRefused(std::function<void(const Refused&)> refused) { m_refused = std::move(refused); }

    /// Calls `act(const Payload&)` for each command that is meant for the view, as long as this
    /// lives. The payload's `noteID` is the note that a command names.
    template <typename Payload, typename Action>
    void observe(const Notification<Payload>& command, CommandScope scope, Action act)
    {
        m_observations.push_back(m_notifications.observe(
            command, [this, name = command.name, scope, act](const Payload& payload) {
                if (!isMeant(payload.noteID))
                    return;
                if (scope == CommandScope::allNotes || m_mode == EditorMode::richText)
                    act(payload);
                else if (m_refused)
                    m_refused({name, [act, payload] {
                                   act(payload);
                               }});
            }));
    }

private:
    [[nodiscard]] bool isMeant(const std::optional<QUuid>& note) const;

    const EditorView& m_view;
    NotificationCenter& m_notifications;
    std::optional<QUuid> m_note;
    EditorMode m_mode = EditorMode::plainText;
    std::function<void(const Refused&)> m_refused;
    std::vector<NotificationCenter::Observation> m_observations;
};

} // namespace orvane
