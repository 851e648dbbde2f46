// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/session/EditorDraft.h"

#include "text/rtf/BinderRTF.h"

namespace orvane {

EditorDraft EditorDraft::of(const NoteRecord& note)
{
    return {note.id,
            editableTitle(note),
            note.body.readOrNothing(),
            note.bodyRTF,
            note.richContentPayload,
            note.editorTypingAttributesPayload,
            note.shapesPayload,
            note.images.value_or(NoteImages()),
            false};
}

EditorDraft EditorDraft::of(const QUuid& noteID, const NoteContent& refused)
{
    return {noteID,
            refused.title,
            refused.body,
            refused.bodyRTF,
            refused.richContentPayload,
            refused.editorTypingAttributesPayload,
            refused.shapesPayload,
            refused.images,
            true};
}

NoteContent EditorDraft::content() const
{
    return {title,         bodyPlain, bodyRTF, bodyRich, editorTypingAttributesPayload,
            shapesPayload, images};
}

QString editableTitle(const NoteRecord& note)
{
    if (!note.title.trimmed().isEmpty() || !note.titleRTF)
        return note.title;
    return BinderRTF::plainString(note.titleRTF->readOrNothing()).value_or(QString());
}

} // namespace orvane
