// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/versions/NoteVersion.h"

namespace orvane {

/// One line of a note's timeline, in words.
struct VersionRow {
    QString title;  ///< "Today, 14:02"
    QString detail; ///< "Manual Save, 1,964 words, 47 fewer"

    bool operator==(const VersionRow&) const = default;
};

/// "Today", "Yesterday", or the date in the manner of "Nov 2", in local time.
[[nodiscard]] QString versionDay(Timestamp moment, Timestamp now);
/// The day and the time of day.
[[nodiscard]] QString versionMoment(Timestamp moment, Timestamp now);
/// "47 fewer", "3 more", or nothing, from `later` words to `earlier` ones.
[[nodiscard]] QString differenceInWords(int earlier, int later);

/// The timeline of a note that has `wordsNow` now: the note itself first, then `newestFirst`, each
/// compared with the one that came after it.
[[nodiscard]] QList<VersionRow> versionRows(const QList<NoteVersionSummary>& newestFirst,
                                            int wordsNow, Timestamp now);

} // namespace orvane
