// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/KeyTable.h"
#include "commands/ShortcutBindings.h"

#include <vector>

namespace orvane {

/// What a key already does where an action has it, or is to have it.
struct KeyClash {
    enum class Outcome {
        Shared,            ///< `other` has it too; the first action in order gets it
        Desktop,           ///< a desktop may take it, so that it never arrives
        Kept,              ///< the key goes on doing what it does, the action never gets it
        KeptOutsideOfText, ///< it does so outside of texts; in a text the action gets it
        Taken,             ///< it no longer does that
        TakenInText,
        TakenOutsideOfText,
        TakenInTable,
        TakenInBinder,
        TakenFromTyping, ///< in a text it no longer types
    };

    Outcome outcome{};
    const KeyRow* row = nullptr;           ///< what has it, except another action and typing
    std::optional<ShortcutAction> other{}; ///< for `Shared`

    bool operator==(const KeyClash&) const = default;
};

/// All that `shortcut` means beside `action`: another action first, then the desktop, then the
/// program's own keys. Empty for a key that is free.
[[nodiscard]] std::vector<KeyClash> keyClashes(ShortcutAction action, const ShortcutData& shortcut,
                                               const ShortcutBindings& bindings);

/// A clash as one sentence for a person: "In a text, Ctrl+H no longer does “Find and Replace”."
[[nodiscard]] QString sentenceFor(const KeyClash& clash, const ShortcutData& shortcut);

/// A key to offer for `action`: the same key with other modifiers that clashes with nothing.
/// Nothing when all do.
[[nodiscard]] std::optional<ShortcutData> freeShortcut(ShortcutAction action,
                                                       const ShortcutBindings& bindings);

} // namespace orvane
