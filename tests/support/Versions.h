// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"

namespace orvane {

/// The whole timeline of a note, oldest first, with what is still being written; nothing that
/// can't be read.
inline QList<NoteVersionSnapshot> versionsOf(NoteVersionHistoryStore& history, const QUuid& note,
                                             const HistoryPlace& place)
{
    QList<NoteVersionSnapshot> versions;
    const QList<NoteVersionSummary> listed = history.list(note, place).value();
    for (const NoteVersionSummary& each : listed)
        versions.append(VersionFiles::read(place.projectRootPath, each).value());
    return versions;
}

/// Of the open project.
inline QList<NoteVersionSnapshot> versionsOf(AppState& app, const QUuid& note)
{
    return versionsOf(app.versionHistory(), note, app.historyPlace());
}

} // namespace orvane
