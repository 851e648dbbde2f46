// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/session/EditorDraft.h"
#include "editor/view/EditorSettings.h"
#include "platform/Questions.h"

namespace orvane {

/// What the next edit in a mode without attributes takes from a note.
struct FormattingLoss {
    bool formatting = false;
    bool images = false; ///< charts too
    bool shapes = false;

    bool operator==(const FormattingLoss&) const = default;
    [[nodiscard]] bool any() const { return formatting || images || shapes; }
};

/// Reads the draft's stored forms. Nothing is lost of a rich note that plain text says as well.
[[nodiscard]] FormattingLoss formattingLossOf(const EditorDraft& draft);

/// Whether to go on; the first button says yes.
[[nodiscard]] Question formattingLossQuestion(const FormattingLoss& loss, EditorMode mode);
/// Asks what becomes of `words`, which were typed while the first question was open and didn't go
/// into the note.
[[nodiscard]] Question typedWordsQuestion(const QString& words);
/// Its buttons.
enum TypedWordsAnswer { writeRich, copyWords, dropWords };
/// That the note was left alone because nothing could bring back what the edit would take.
[[nodiscard]] Question versionNotKeptMessage();

} // namespace orvane
