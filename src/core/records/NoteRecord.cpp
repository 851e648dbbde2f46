// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/NoteRecord.h"

#include "text/rtf/BinderRTF.h"

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
        if (const auto rich = BinderRTF::plainString(titleRTF->readOrNothing()))
            return *rich;
    }
    if (QString trimmed = title.trimmed(); !trimmed.isEmpty())
        return trimmed;
    const QString line = body.firstLine();
    return line.isEmpty() ? QCoreApplication::translate("NoteRecord", "Untitled") : line;
}

void holdImages(const NoteRecord& note)
{
    for (const NoteImage& image : note.images.value_or(NoteImages()))
        static_cast<void>(image.bytes.read());
}

size_t qHash(const NoteRecord& note, size_t seed)
{
    return qHashMulti(seed, note.id, note.updatedAt, note.title);
}

} // namespace orvane
