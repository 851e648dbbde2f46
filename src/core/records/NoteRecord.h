// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NoteImage.h"
#include "core/records/NoteText.h"
#include "core/records/Rare.h"
#include "platform/Timestamp.h"

#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace orvane {

/// One note, or an imported PDF or other file kept as a note. A value.
struct NoteRecord {
    QUuid id;
    /// The container: a folder's id, the project's id at the project root, or
    /// `FolderRecord::trashFolderID`.
    QUuid folderID;
    QString title;
    /// Plain text of the note, always kept, also for rich notes.
    NoteText body;
    Timestamp createdAt;
    /// Last change of content.
    Timestamp updatedAt;
    /// Tag names in the note's own order.
    QStringList tags;
    std::optional<Blob> bodyRTF;
    /// A `RichNoteContentPayload`, the authority for a rich note.
    std::optional<Blob> richContentPayload;
    /// What the next typed character looks like when the note is opened again.
    std::optional<Blob> editorTypingAttributesPayload;
    /// RTF form of the title in the Binder.
    std::optional<Blob> titleRTF;
    Rare<QString> iconName;
    /// Type identifier of the embedded file, "com.adobe.pdf" for a PDF.
    Rare<QString> embeddedFileType;
    /// Key of the file among the project's assets.
    Rare<QString> embeddedFileAssetID;
    /// The file's bytes, when they are held here and not among the assets.
    std::optional<Blob> embeddedFilePayload;
    bool isPinned = false;
    std::optional<Blob> shapesPayload;
    Rare<QString> pdfSourceURLString;
    /// How the note is edited, as the editor wrote it down (docs/formats.md), so that it goes along
    /// with the project to another machine.
    Rare<QString> editorProfile;
    /// Of a note in the Trash: when it was put there, and the container that it lay in.
    Rare<Timestamp> trashedAt;
    Rare<QUuid> trashedFrom;

    /// The images that the text or one of its versions shows, in the order in which they came.
    Rare<NoteImages> images;

    bool operator==(const NoteRecord&) const = default;

    /// Whether the note is shown as a PDF instead of text: an asset key without a type is enough;
    /// with the PDF type an asset key or a payload is needed; any other type is not a PDF.
    [[nodiscard]] bool isEmbeddedPDF() const;

    /// The title in lists: the rich title's text, else the trimmed title, else the first line of
    /// the body with text in it, else "Untitled".
    [[nodiscard]] QString titleForList() const;
};

/// Reads the note's images into memory, as far as they can be read: for a record that leaves its
/// store.
void holdImages(const NoteRecord& note);

size_t qHash(const NoteRecord& note, size_t seed = 0);

} // namespace orvane
