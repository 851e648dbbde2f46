// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/RecordFields.h"

#include <string>

namespace orvane {

// How the fields of a record stand in the columns of its table: one each, in their order, between
// the row's number and its checksum. A text that is read on demand has two: its length, and what
// lists show of it where the record has no title.

template <typename Type>
inline constexpr int columnsOfField = std::is_same_v<Type, NoteText> ? 2 : 1;

template <typename Record>
[[nodiscard]] constexpr int columnsOf()
{
    int count = 2;
    forEachField<Record>(
        [&]<typename Type>(const RecordField<Record, Type>&) { count += columnsOfField<Type>; });
    return count;
}

inline constexpr const char* firstLineColumn = "firstLine";

/// "OrvaneNote" or "OrvaneFolder".
template <typename Record>
[[nodiscard]] const char* tableOf();

/// The statement that makes the table.
template <typename Record>
[[nodiscard]] std::string createTableStatement();
/// Gives every row: its number first, its checksum last.
template <typename Record>
[[nodiscard]] std::string selectStatement();
// Both take the fields' columns, the checksum, and the row's number.
template <typename Record>
[[nodiscard]] std::string insertStatement();
template <typename Record>
[[nodiscard]] std::string updateStatement();

/// Gives the number in "OrvaneNoteBytes" and the length of every bytes that a note counts on.
[[nodiscard]] std::string expectedBytesStatement();

/// What stands in the column `firstLine`: nothing for a note that has a title.
[[nodiscard]] std::optional<QString> storedFirstLine(const NoteRecord& note);

} // namespace orvane
