// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NoteRecord.h"

namespace orvane {

/// What an editor changes of a note in one go.
struct NoteContent {
    QString title;
    QString body;
    std::optional<Blob> bodyRTF;
    std::optional<Blob> richContentPayload;
    std::optional<Blob> editorTypingAttributesPayload;
    std::optional<Blob> shapesPayload;
    /// What the text shows; the note keeps those of its versions beside them.
    NoteImages images = {};

    bool operator==(const NoteContent&) const = default;

    [[nodiscard]] static NoteContent of(const NoteRecord& note)
    {
        return {note.title,
                note.body.readOrNothing(),
                note.bodyRTF,
                note.richContentPayload,
                note.editorTypingAttributesPayload,
                note.shapesPayload,
                note.images.value_or(NoteImages())};
    }
    /// A title that differs clears the rich title; the note's date stays.
    void applyTo(NoteRecord& note) const
    {
        if (note.title != title)
            note.titleRTF.reset();
        note.title = title;
        note.body = body;
        note.bodyRTF = bodyRTF;
        note.richContentPayload = richContentPayload;
        note.editorTypingAttributesPayload = editorTypingAttributesPayload;
        note.shapesPayload = shapesPayload;
        NoteImages kept = note.images.value_or(NoteImages());
        for (const NoteImage& image : images) {
            if (!kept.contains(image))
                kept.append(image);
        }
        note.images = kept.isEmpty() ? Rare<NoteImages>() : Rare<NoteImages>(std::move(kept));
    }
};

} // namespace orvane
