// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/Blob.h"
#include "platform/NotificationCenter.h"
#include "platform/Timestamp.h"

#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

/// A note as it once was: title and text only.
struct NoteVersionSnapshot {
    QUuid id;
    QUuid noteID;
    Timestamp capturedAt;
    QString title;
    QString bodyPlain;
    /// The note's RTF, when it had one.
    std::optional<QString> bodyRTFBase64;
    /// "Manual Save", "Before Restore", "Before Losing Formatting", or absent for an automatic one.
    std::optional<QString> label;
    std::optional<int> wordCount;
    /// The rich payload, only where it is about to be dropped.
    std::optional<QString> richContentPayloadBase64;

    /// Nothing when absent or not Base64.
    [[nodiscard]] std::optional<Blob> bodyRTF() const;
    [[nodiscard]] std::optional<Blob> richContentPayload() const;

    bool operator==(const NoteVersionSnapshot&) const = default;
};

/// What a list shows of a version, which is known without decoding its texts.
struct NoteVersionSummary {
    QUuid id;
    QUuid noteID;
    Timestamp capturedAt;
    QString title;
    std::optional<QString> label;
    int wordCount = 0;

    /// Where its text stands in the timeline, in bytes; only a hint, as the file goes on changing.
    struct Piece {
        qsizetype at = 0;
        qsizetype size = 0;
        bool operator==(const Piece&) const = default;
    };
    Piece piece;

    bool operator==(const NoteVersionSummary&) const = default;
};

/// Why a note's versions can't be shown or changed. What it is about is left as it was.
struct VersionHistoryError {
    enum class Code {
        NotAllowed, ///< no such note, or it can't be changed; who may not has been told already
        Unreadable, ///< the disk doesn't give the timeline, or the note's own words, at the moment
        Damaged,    ///< the timeline was read whole and is none
        Missing,    ///< the timeline doesn't have that version any more
        NotWritten, ///< the timeline can't be written
    };
    Code code = Code::NotAllowed;
    /// What stands in the way, in the system's words.
    QString detail;
};

/// The label of the version that is kept before another takes the note's place.
inline constexpr QLatin1StringView beforeRestoreLabel("Before Restore");
/// The label of the version that is kept before an edit in a mode without attributes.
inline constexpr QLatin1StringView beforeFormattingLossLabel("Before Losing Formatting");

/// Posted with the note's id after its timeline changed.
inline constexpr Notification<QUuid> snapshotsDidChange{
    "OrvaneWorkspace.NoteVersionHistory.SnapshotsDidChange"};

/// How many runs of characters between white space there are.
[[nodiscard]] int wordCount(QStringView text);

} // namespace orvane
