// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/versions/NoteVersion.h"

namespace orvane {

/// One line of a note's timeline, in words.
struct VersionRow {
    enum class Kind { Now, Day, Version };

    Kind kind;
    QString title;      ///< "Now", "Today", or "14:02"
    QString detail;     ///< "Manual Save, 1,964 words"; nothing for a day
    QString difference; ///< "47 fewer" than the version after it, or nothing
    int version = -1;   ///< from 0 for the newest; -1 where it is none

    bool operator==(const VersionRow&) const = default;
};

/// "Today", "Yesterday", or the date in the manner of "2 November" or "2 November 2025", in local
/// time.
[[nodiscard]] QString versionDay(Timestamp moment, Timestamp now);
/// The day and the time of day.
[[nodiscard]] QString versionMoment(Timestamp moment, Timestamp now);
/// "47 fewer", "3 more", or nothing, from `later` words to `earlier` ones.
[[nodiscard]] QString differenceInWords(int earlier, int later);

/// The timeline of a note that has `wordsNow` now: the note itself first, then `newestFirst` below
/// the days on which they were taken, each compared with the one that came after it.
[[nodiscard]] QList<VersionRow> versionRows(const QList<NoteVersionSummary>& newestFirst,
                                            int wordsNow, Timestamp now);

} // namespace orvane
