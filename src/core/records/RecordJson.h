// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/JsonObjectReader.h"
#include "core/records/NotebookSnapshot.h"

#include <QJsonObject>

#include <expected>

namespace orvane {

// The JSON form of the records. Keys are the field names. Required keys, `tags` and `isPinned`
// are always written, every other optional value only when present. Blobs are Base64, ids are
// upper case, dates ISO 8601. Reading fails as a whole on a required key that is missing and on
// any known key of the wrong type; unknown keys are passed over.

[[nodiscard]] QJsonObject toJson(const NoteRecord& note);
[[nodiscard]] QJsonObject toJson(const FolderRecord& folder);
[[nodiscard]] QJsonObject toJson(const BinderFolderOrderEntry& entry);
[[nodiscard]] QJsonObject toJson(const BinderNoteOrderEntry& entry);
[[nodiscard]] QJsonObject toJson(const BinderLayoutSnapshot& layout);
[[nodiscard]] QJsonObject toJson(const NotebookSnapshot& snapshot);

/// `path` names the value's place in the enclosing document, for the error.
template <typename Record>
[[nodiscard]] std::expected<Record, JsonError> fromJson(const QJsonValue& value,
                                                        const QString& path = {});

template <>
std::expected<NoteRecord, JsonError> fromJson(const QJsonValue& value, const QString& path);
template <>
std::expected<FolderRecord, JsonError> fromJson(const QJsonValue& value, const QString& path);
template <>
std::expected<BinderFolderOrderEntry, JsonError> fromJson(const QJsonValue& value,
                                                          const QString& path);
template <>
std::expected<BinderNoteOrderEntry, JsonError> fromJson(const QJsonValue& value,
                                                        const QString& path);
template <>
std::expected<BinderLayoutSnapshot, JsonError> fromJson(const QJsonValue& value,
                                                        const QString& path);
template <>
std::expected<NotebookSnapshot, JsonError> fromJson(const QJsonValue& value, const QString& path);

/// The shared encoder of project files: pretty-printed, keys sorted.
[[nodiscard]] QByteArray encodeJson(const QJsonObject& object);

} // namespace orvane
