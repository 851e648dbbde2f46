// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/FolderRecord.h"
#include "core/records/NoteRecord.h"

#include <QFlags>

namespace orvane {

// In a namespace of its own, so that the operators hide no others from the rest of the program.
namespace aspects {

/// What of a note or folder can change on its own, as those see it who show it or take it back.
enum class RecordAspect : quint32 {
    Title = 1 << 0, ///< plain and rich
    Text = 1 << 1,  ///< the body in all its forms
    Shapes = 1 << 2,
    Tags = 1 << 3,
    Icon = 1 << 4,
    Pin = 1 << 5,
    Place = 1 << 6, ///< the folder that it lies in
    File = 1 << 7,  ///< the embedded file
    Dates = 1 << 8,
    Came = 1 << 9,
    Went = 1 << 10,
};
Q_DECLARE_FLAGS(RecordAspects, RecordAspect)
Q_DECLARE_OPERATORS_FOR_FLAGS(RecordAspects)

} // namespace aspects

using aspects::RecordAspect;
using aspects::RecordAspects;

/// Calls `visit(member, aspect)` for each field of a note but its id.
template <typename Visit>
void forEachField(const NoteRecord*, Visit&& visit)
{
    using N = NoteRecord;
    using A = RecordAspect;
    visit(&N::folderID, A::Place);
    visit(&N::title, A::Title);
    visit(&N::titleRTF, A::Title);
    visit(&N::body, A::Text);
    visit(&N::bodyRTF, A::Text);
    visit(&N::richContentPayload, A::Text);
    visit(&N::editorTypingAttributesPayload, A::Text);
    visit(&N::createdAt, A::Dates);
    visit(&N::updatedAt, A::Dates);
    visit(&N::tags, A::Tags);
    visit(&N::iconName, A::Icon);
    visit(&N::embeddedFileType, A::File);
    visit(&N::embeddedFileAssetID, A::File);
    visit(&N::embeddedFilePayload, A::File);
    visit(&N::pdfSourceURLString, A::File);
    visit(&N::isPinned, A::Pin);
    visit(&N::shapesPayload, A::Shapes);
}

template <typename Visit>
void forEachField(const FolderRecord*, Visit&& visit)
{
    using F = FolderRecord;
    using A = RecordAspect;
    visit(&F::parentFolderID, A::Place);
    visit(&F::name, A::Title);
    visit(&F::titleRTF, A::Title);
    visit(&F::createdAt, A::Dates);
    visit(&F::tags, A::Tags);
    visit(&F::iconName, A::Icon);
    visit(&F::isPinned, A::Pin);
}

/// In what two records of one id differ. Fields that share their bytes are not looked into.
template <typename Record>
[[nodiscard]] RecordAspects differenceOf(const Record& a, const Record& b)
{
    RecordAspects different;
    forEachField(&a, [&](auto member, RecordAspect aspect) {
        if (!(different & aspect) && a.*member != b.*member)
            different |= aspect;
    });
    return different;
}

/// Gives `record` the aspects that `source` has.
template <typename Record>
void takeAspects(Record& record, const Record& source, RecordAspects aspects)
{
    forEachField(&record, [&](auto member, RecordAspect aspect) {
        if (aspects & aspect)
            record.*member = source.*member;
    });
}

} // namespace orvane
