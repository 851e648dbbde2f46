// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>

#include <optional>

namespace orvane {

/// The stored form of a rich note's content: an archive of its text, wrapped in JSON.
struct RichNoteContentPayload {
    /// The one version that is written, and the only one whose archive may be used.
    static constexpr int currentVersion = 1;

    int version = currentVersion;
    QByteArray archiveData; ///< a `TextArchive`

    bool operator==(const RichNoteContentPayload&) const = default;

    /// A JSON object with `version` and, in Base64, `archiveData`.
    [[nodiscard]] QByteArray toJson() const;

    /// Nothing for what is no such object. Of any version; the caller looks at it.
    [[nodiscard]] static std::optional<RichNoteContentPayload> fromJson(const QByteArray& json);
};

} // namespace orvane
