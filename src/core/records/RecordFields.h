// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/FolderRecord.h"
#include "core/records/NoteRecord.h"

#include <QFlags>

#include <tuple>

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
    Profile = 1 << 11, ///< how it is edited
};
Q_DECLARE_FLAGS(RecordAspects, RecordAspect)
Q_DECLARE_OPERATORS_FOR_FLAGS(RecordAspects)

} // namespace aspects

using aspects::RecordAspect;
using aspects::RecordAspects;

/// One field of a record, as everything sees it that goes through all of them: the store's columns,
/// JSON, checksums and comparisons.
template <typename Record, typename Type>
struct RecordField {
    Type Record::*member;
    const char* key; ///< in JSON, and the column's name unless that is another
    std::optional<RecordAspect> aspect = std::nullopt; ///< none for the id
    const char* column = key;
    /// Of a note's bytes that are a row of their own in the store: which of the note's rows they
    /// are. The column holds their length. A place that was taken is never given to another field.
    int place = inRecord;

    static constexpr int inRecord = -1;
};

/// So many rows of bytes can belong to one note: those of the note in row n are n * bytesPerNote
/// and following.
inline constexpr int bytesPerNote = 64;

/// The one table of a note's fields, in the order of the store's columns.
[[nodiscard]] constexpr auto recordFields(const NoteRecord*)
{
    using N = NoteRecord;
    using A = RecordAspect;
    return std::tuple{
        RecordField{&N::id, "id"},
        RecordField{&N::folderID, "folderID", A::Place},
        RecordField{&N::title, "title", A::Title},
        RecordField{&N::createdAt, "createdAt", A::Dates},
        RecordField{&N::updatedAt, "updatedAt", A::Dates},
        RecordField{&N::tags, "tags", A::Tags, "tagsJSON"},
        RecordField{&N::iconName, "iconName", A::Icon},
        RecordField{&N::embeddedFileType, "embeddedFileType", A::File},
        RecordField{&N::embeddedFileAssetID, "embeddedFileAssetID", A::File},
        RecordField{&N::isPinned, "isPinned", A::Pin},
        RecordField{&N::pdfSourceURLString, "pdfSourceURLString", A::File},
        RecordField{&N::titleRTF, "titleRTF", A::Title},
        RecordField{&N::bodyRTF, "bodyRTF", A::Text, "bodyRTF", 0},
        RecordField{&N::richContentPayload, "richContentPayload", A::Text, "richContentPayload", 1},
        RecordField{&N::editorTypingAttributesPayload, "editorTypingAttributesPayload", A::Text,
                    "editorTypingAttributesPayload", 2},
        RecordField{&N::embeddedFilePayload, "embeddedFilePayload", A::File, "embeddedFilePayload",
                    3},
        RecordField{&N::shapesPayload, "shapesPayload", A::Shapes, "shapesPayload", 4},
        RecordField{&N::body, "body", A::Text, "body", 5},
        RecordField{&N::editorProfile, "editorProfile", A::Profile},
        RecordField{&N::trashedAt, "trashedAt", A::Place},
        RecordField{&N::trashedFrom, "trashedFrom", A::Place},
        RecordField{&N::images, "images", A::Text},
    };
}

[[nodiscard]] constexpr auto recordFields(const FolderRecord*)
{
    using F = FolderRecord;
    using A = RecordAspect;
    return std::tuple{
        RecordField{&F::id, "id"},
        RecordField{&F::name, "name", A::Title},
        RecordField{&F::createdAt, "createdAt", A::Dates},
        RecordField{&F::parentFolderID, "parentFolderID", A::Place},
        RecordField{&F::iconName, "iconName", A::Icon},
        RecordField{&F::titleRTF, "titleRTF", A::Title},
        RecordField{&F::tags, "tags", A::Tags, "tagsJSON"},
        RecordField{&F::isPinned, "isPinned", A::Pin},
    };
}

/// The same as a constant, so that going through it costs nothing beside the visits.
template <typename Record>
inline constexpr auto fieldTable = recordFields(static_cast<const Record*>(nullptr));

/// Calls `visit(field)` for each field of the record's table, in its order.
template <typename Record, typename Visit>
constexpr void forEachField(Visit&& visit)
{
    std::apply([&](const auto&... field) { (visit(field), ...); }, fieldTable<Record>);
}

/// Whether a field of this type holds bytes that may be unread.
template <typename Type>
inline constexpr bool holdsBytes =
    std::is_same_v<Type, NoteText> || std::is_same_v<Type, std::optional<Blob>>;

/// The bytes of such a field, or null where it has none now.
[[nodiscard]] inline const Blob* fieldBytes(const NoteText& text)
{
    return &text.utf8();
}
[[nodiscard]] inline const Blob* fieldBytes(const std::optional<Blob>& bytes)
{
    return bytes ? &*bytes : nullptr;
}

/// The place of a note's bytes.
template <typename Type>
[[nodiscard]] constexpr int placeOf(Type NoteRecord::*member)
{
    int place = -1;
    forEachField<NoteRecord>([&]<typename Other>(const RecordField<NoteRecord, Other>& field) {
        if constexpr (std::is_same_v<Type, Other>) {
            if (field.member == member)
                place = field.place;
        }
    });
    return place;
}

/// Calls `visit(place, bytes)` for each field of a note whose bytes are a row of their own.
template <typename Visit>
void forEachBytes(const NoteRecord& note, Visit&& visit)
{
    forEachField<NoteRecord>([&]<typename Type>(const RecordField<NoteRecord, Type>& field) {
        if constexpr (holdsBytes<Type>) {
            if (field.place != field.inRecord)
                visit(field.place, fieldBytes(note.*field.member));
        }
    });
}

/// In what two records of one id differ. Fields that share their bytes are not looked into.
template <typename Record>
[[nodiscard]] RecordAspects differenceOf(const Record& a, const Record& b)
{
    RecordAspects different;
    forEachField<Record>([&](const auto& field) {
        if (field.aspect && !(different & *field.aspect) && a.*field.member != b.*field.member)
            different |= *field.aspect;
    });
    return different;
}

/// Gives `record` the aspects that `source` has.
template <typename Record>
void takeAspects(Record& record, const Record& source, RecordAspects aspects)
{
    forEachField<Record>([&](const auto& field) {
        if (field.aspect && (aspects & *field.aspect))
            record.*field.member = source.*field.member;
    });
}

} // namespace orvane
