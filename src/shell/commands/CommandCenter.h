// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/commands/Command.h"
#include "shell/shortcuts/ShortcutCenter.h"

#include <array>
#include <functional>
#include <optional>

namespace orvane {

/// Runs commands and knows which would act now: a command that is posted acts where something
/// observes it and what it needs is there; a direct one where its owner says so. Main thread.
class CommandCenter {
public:
    using ContextSource = std::function<CommandContext()>;

    /// All outlive the center.
    CommandCenter(const Services& services, ShortcutCenter& shortcuts, ContextSource context);

    /// Says how a direct command acts, and when it would; always unless told. Undo, redo and the
    /// commands of the clipboard act on their own.
    void setDirect(DirectCommand command, std::function<void()> act,
                   std::function<bool()> wouldAct = nullptr);

    /// Whether this program has the command at all: nobody observes what isn't built in.
    [[nodiscard]] bool isPresent(const Command& command) const;
    [[nodiscard]] bool wouldAct(const Command& command) const;
    /// Whether it is on; nothing for a command that isn't on or off.
    [[nodiscard]] std::optional<bool> isOn(const Command& command) const;
    /// Does nothing unless it would act.
    void run(const Command& command);

    /// Its key as this desktop writes it; empty where it has none.
    [[nodiscard]] QString keyText(const Command& command) const;
    [[nodiscard]] ShortcutCenter& shortcuts() const { return m_shortcuts; }

private:
    struct DirectHandler {
        std::function<void()> act;
        std::function<bool()> wouldAct;
    };

    void setClipboardCommand(DirectCommand command, const char* method);
    [[nodiscard]] const DirectHandler& handler(const Command& command) const
    {
        return m_direct[size_t(command.direct)];
    }

    Services m_services;
    ShortcutCenter& m_shortcuts;
    ContextSource m_context;
    std::array<DirectHandler, directCommandCount> m_direct;
};

} // namespace orvane
