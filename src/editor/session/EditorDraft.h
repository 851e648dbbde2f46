// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NoteContent.h"
#include "editor/session/StoredText.h"

#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

/// The selected note while it is edited: every change lands here first, and reaches the record and
/// the disk through the session's timer and flush points.
struct EditorDraft {
    /// The note that the draft belongs to; absent in the empty draft.
    std::optional<QUuid> noteID;
    QString title;
    QString bodyPlain;
    std::optional<Blob> bodyRTF;
    std::optional<Blob> bodyRich;
    std::optional<Blob> editorTypingAttributesPayload;
    std::optional<Blob> shapesPayload;
    NoteImages images; ///< what the text shows, as it was last stored
    /// The draft holds something that the record doesn't.
    bool isDirty = false;

    bool operator==(const EditorDraft&) const = default;

    [[nodiscard]] static EditorDraft of(const NoteRecord& note);
    /// A dirty draft of the note with what was not taken into its record.
    [[nodiscard]] static EditorDraft of(const QUuid& noteID, const NoteContent& refused);
    [[nodiscard]] NoteContent content() const;
    [[nodiscard]] StoredText text() const { return {bodyPlain, bodyRTF, bodyRich}; }
};

/// The title field's text for a note: its title, or where that is blank the text of its rich title.
[[nodiscard]] QString editableTitle(const NoteRecord& note);

} // namespace orvane
