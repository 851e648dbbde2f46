// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/JsonObjectReader.h"
#include "core/NoteRecord.h"
#include "platform/AtomicFile.h"
#include "platform/FileStamp.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QUuid>

#include <expected>
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

/// Why a note's versions can't be shown or changed. What it is about is left as it was.
struct VersionHistoryError {
    enum class Code {
        NotAllowed, ///< no such note, or it can't be changed; who may not has been told already
        Unreadable, ///< the disk doesn't give the timeline, or the note's own words, at the moment
        Damaged,    ///< the timeline was read whole and is none
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

/// Each note's timeline of saved versions: one JSON file a note under "history" in the project's
/// data folder, oldest first. A failure here never stops a save: the version isn't kept, and the
/// next change tries again. A file that was read whole and can't be decoded is set aside
/// (`setAsidePath`) and a new timeline begins; one that can't be read at the moment is left alone.
/// Main thread.
class NoteVersionHistoryStore {
public:
    NoteVersionHistoryStore(UserDefaults& defaults, NotificationCenter& notifications);

    [[nodiscard]] static QString historyDirectoryPath(const QString& projectRootPath);
    [[nodiscard]] static QString filePath(const QString& projectRootPath, const QUuid& noteID);
    /// The timeline; empty when there is none. Any thread.
    [[nodiscard]] static std::expected<QList<NoteVersionSnapshot>, VersionHistoryError>
    snapshots(const QString& projectRootPath, const QUuid& noteID);

    /// Adds the note as it is and drops the oldest beyond the maximum. The rich payload goes in
    /// only under the labels that begin with "Before".
    std::expected<void, VersionHistoryError> appendSnapshot(const NoteRecord& note,
                                                            const QString& projectRootPath,
                                                            const std::optional<QString>& label,
                                                            Timestamp now);
    std::expected<void, VersionHistoryError> deleteSnapshot(const QUuid& id, const QUuid& noteID,
                                                            const QString& projectRootPath);

    [[nodiscard]] bool isAutoSnapshotEnabled() const;
    /// Seconds between automatic snapshots of one note; a stored value of 0 or less counts as 300.
    [[nodiscard]] double autoSnapshotInterval() const;
    /// A stored value of 0 or less counts as 120.
    [[nodiscard]] qsizetype maxSnapshots() const;

private:
    /// A file that this store has written or checked whole, and that nobody changed since.
    struct KnownTimeline {
        FileStamp file;
        qsizetype count = 0;
    };

    /// A timeline's entries as text, and how many they are.
    struct Entries {
        QByteArray text;
        qsizetype count = 0;
    };

    [[nodiscard]] std::optional<KnownTimeline> knownTimeline(const QString& path) const;
    [[nodiscard]] std::expected<Entries, VersionHistoryError>
    entriesToAppendTo(const QString& path) const;

    QHash<QString, KnownTimeline> m_known;
    UserDefaults& m_defaults;
    NotificationCenter& m_notifications;
};

inline constexpr Setting<bool> autoSnapshotEnabledSetting{
    u"settings.versionHistory.autoSnapshotEnabled", true};
inline constexpr Setting<double> autoSnapshotIntervalSetting{
    u"settings.versionHistory.autoSnapshotInterval", 300};
inline constexpr Setting<qint64> maxSnapshotsSetting{u"settings.versionHistory.maxSnapshots", 120};

/// How many runs of characters between white space there are.
[[nodiscard]] int wordCount(QStringView text);

} // namespace orvane
