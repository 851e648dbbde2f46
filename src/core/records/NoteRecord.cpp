// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/NoteRecord.h"

#include "text/rtf/BinderRTF.h"

#include <QCoreApplication>
#include <QHashFunctions>

namespace orvane {

namespace {

/// The first line of a text mostly ends within this many UTF-16 units.
constexpr qsizetype usualFirstLine = 400;

// The first line with text in it, trimmed.
QString firstLineOf(const QString& text)
{
    const QString trimmed = text.trimmed();
    return trimmed.left(trimmed.indexOf(u'\n')).trimmed();
}

} // namespace

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
    if (const QString beginning = body.beginning(usualFirstLine).trimmed();
        beginning.contains(u'\n'))
        return firstLineOf(beginning);
    const QString line = firstLineOf(body.text());
    return line.isEmpty() ? QCoreApplication::translate("NoteRecord", "Untitled") : line;
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
