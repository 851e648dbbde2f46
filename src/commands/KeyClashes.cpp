// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "commands/KeyClashes.h"

#include "commands/KeyCodes.h"

#include <QCoreApplication>

#include <algorithm>

namespace orvane {

namespace {

using namespace KeyModifier;
using Outcome = KeyClash::Outcome;

/// What other programs do with these in a text; offering them would surprise.
constexpr ShortcutData neverOffered[] = {
    {9, command | shift},  // V: paste without formatting
    {12, command | shift}, // Q
};

constexpr quint32 modifiersToTry[] = {command | shift, command | option | shift, command | option,
                                      command | control};

/// Whether the key does what the action does anyway.
bool isSame(const KeyRow& row, ShortcutAction action)
{
    return action == ShortcutAction::settings && fixedKeyOf(row) == FixedKey::settings;
}

// `inText` says whether the action gets the key in a text.
std::optional<Outcome> outcomeIn(KeyPlace place, ShortcutAction action, bool inText)
{
    switch (place) {
    case KeyPlace::Always:
        return Outcome::Kept;
    case KeyPlace::Binder:
        return inText ? Outcome::KeptOutsideOfText : Outcome::Kept;
    case KeyPlace::Window:
        return inText ? Outcome::Taken : Outcome::TakenOutsideOfText;
    case KeyPlace::Text:
        return worksInText(action) ? std::optional(Outcome::TakenInText) : std::nullopt;
    case KeyPlace::Table:
        return worksInText(action) ? std::optional(Outcome::TakenInTable) : std::nullopt;
    case KeyPlace::BinderRows:
        return Outcome::TakenInBinder;
    case KeyPlace::Desktop:
        return Outcome::Desktop;
    }
    return std::nullopt;
}

#define SENTENCE(text) QT_TRANSLATE_NOOP("KeyClashes", text)

/// By outcome, with "%1" for the key and "%2" for what it does; the first with "%1" for the action.
constexpr const char* sentences[] = {
    SENTENCE("Also used by %1."),
    nullptr, // the desktop's stand in the table of keys
    SENTENCE("%1 is always “%2”, so this command never gets it."),
    SENTENCE("Outside of texts, %1 stays “%2”."),
    SENTENCE("%1 no longer does “%2”."),
    SENTENCE("In a text, %1 no longer does “%2”."),
    SENTENCE("Outside of texts, %1 no longer does “%2”."),
    SENTENCE("In a table, %1 no longer does “%2”."),
    SENTENCE("In the Binder, %1 no longer does “%2”."),
    SENTENCE("In a text, %1 no longer types."),
};
static_assert(std::size(sentences) == size_t(Outcome::TakenFromTyping) + 1);

std::vector<KeyClash> clashesWithProgram(ShortcutAction action, const ShortcutData& shortcut)
{
    std::vector<KeyClash> clashes;
    const bool inText = worksInText(action) || !isUsedByText(shortcut);
    // In the order in which they are asked for a key.
    for (const KeyPlace place : {KeyPlace::Always, KeyPlace::Binder, KeyPlace::BinderRows,
                                 KeyPlace::Window, KeyPlace::Text, KeyPlace::Table}) {
        const KeyRow* row = keyRowFor(shortcut, place);
        const auto outcome = row ? outcomeIn(place, action, inText) : std::nullopt;
        const bool isKeptBefore =
            place == KeyPlace::BinderRows && keyRowFor(shortcut, KeyPlace::Binder);
        if (!outcome || isKeptBefore)
            continue;
        if (!isSame(*row, action))
            clashes.push_back({.outcome = *outcome, .row = row});
        if (*outcome == Outcome::Kept)
            return clashes;
    }
    if (worksInText(action) && typesCharacter(shortcut))
        clashes.push_back({.outcome = Outcome::TakenFromTyping});
    return clashes;
}

} // namespace

std::vector<KeyClash> keyClashes(ShortcutAction action, const ShortcutData& shortcut,
                                 const ShortcutBindings& bindings)
{
    std::vector<KeyClash> clashes;
    if (const auto other = bindings.conflict(action, shortcut))
        clashes.push_back({.outcome = Outcome::Shared, .other = other});
    if (const KeyRow* desktop = keyRowFor(shortcut, KeyPlace::Desktop))
        clashes.push_back({.outcome = Outcome::Desktop, .row = desktop});
    for (const KeyClash& clash : clashesWithProgram(action, shortcut))
        clashes.push_back(clash);
    return clashes;
}

QString sentenceFor(const KeyClash& clash, const ShortcutData& shortcut)
{
    const QString key = shortcut.desktopText();
    if (clash.outcome == Outcome::Desktop)
        return keyTitle(*clash.row).arg(key);
    const QString sentence =
        QCoreApplication::translate("KeyClashes", sentences[size_t(clash.outcome)]);
    if (clash.outcome == Outcome::Shared)
        return sentence.arg(title(*clash.other));
    return clash.row ? sentence.arg(key, keyTitle(*clash.row)) : sentence.arg(key);
}

std::optional<ShortcutData> freeShortcut(ShortcutAction action, const ShortcutBindings& bindings)
{
    const quint16 keyCode = bindings.shortcut(action).keyCode;
    for (const quint32 modifiers : modifiersToTry) {
        const ShortcutData candidate{keyCode, modifiers};
        const bool mayOffer = std::ranges::find(neverOffered, candidate) == std::end(neverOffered);
        if (mayOffer && keyClashes(action, candidate, bindings).empty())
            return candidate;
    }
    return std::nullopt;
}

} // namespace orvane
