// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/NoteRecord.h"

namespace orvane {

/// What an editor changes of a note in one go.
struct NoteContent {
    QString title;
    QString body;
    std::optional<Blob> bodyRTF;
    std::optional<Blob> richContentPayload;
    std::optional<Blob> editorTypingAttributesPayload;
    std::optional<Blob> shapesPayload;

    bool operator==(const NoteContent&) const = default;

    [[nodiscard]] static NoteContent of(const NoteRecord& note)
    {
        return {note.title,
                note.body,
                note.bodyRTF,
                note.richContentPayload,
                note.editorTypingAttributesPayload,
                note.shapesPayload};
    }
};

} // namespace orvane
