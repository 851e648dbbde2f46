// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/NoteRecord.h"

#include "text/BinderRTF.h"

#include <QCoreApplication>
#include <QHashFunctions>

namespace orvane {

bool NoteRecord::isEmbeddedPDF() const
{
    const bool hasAsset = embeddedFileAssetID && !embeddedFileAssetID->trimmed().isEmpty();
    if (!embeddedFileType)
        return hasAsset;
    const bool hasPayload = embeddedFilePayload && !embeddedFilePayload->isEmpty();
    return embeddedFileType->trimmed().toLower() == QLatin1String("com.adobe.pdf") &&
           (hasAsset || hasPayload);
}

QString NoteRecord::titleForList() const
{
    if (titleRTF) {
        if (const auto rich = BinderRTF::plainString(titleRTF->bytes()))
            return *rich;
    }
    if (QString trimmed = title.trimmed(); !trimmed.isEmpty())
        return trimmed;
    for (const QStringView line : QStringView(body).tokenize(u'\n')) {
        if (const QStringView trimmed = line.trimmed(); !trimmed.isEmpty())
            return trimmed.toString();
    }
    return QCoreApplication::translate("NoteRecord", "Untitled");
}

size_t qHash(const NoteRecord& note, size_t seed)
{
    const auto optional = [](const auto& value) {
        return value ? qHash(*value) : 0;
    };
    return qHashMulti(
        seed, note.id, note.folderID, note.title, note.body, note.createdAt, note.updatedAt,
        note.tags, optional(note.bodyRTF), optional(note.richContentPayload),
        optional(note.editorTypingAttributesPayload), optional(note.titleRTF),
        optional(note.iconName), optional(note.embeddedFileType),
        optional(note.embeddedFileAssetID), optional(note.embeddedFilePayload), note.isPinned,
        optional(note.shapesPayload), optional(note.pdfSourceURLString));
}

} // namespace orvane
