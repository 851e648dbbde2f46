// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/AtomicFile.h"

#include <QSet>
#include <QString>
#include <QUuid>

#include <expected>

/// Removing the versions of notes that a person has erased. That versions have no note is no reason
/// to remove them: the store may have lost the note, or be an older one. So the ids are noted in
/// the project before the notes are removed from the store, and only versions of noted ones go,
/// once the removal is stored. A list that is left is worked off when the project opens.
namespace orvane::VersionErasure {

/// The list, beside the timelines.
[[nodiscard]] QString listPath(const QString& projectRootPath);

/// The notes whose versions are still to be removed; none when the list can't be read now.
[[nodiscard]] QSet<QUuid> noted(const QString& projectRootPath);

/// Adds those of `ids` that have versions to the list, and returns these. When the list can't be
/// written they are erased all the same if `finish` succeeds in this run.
[[nodiscard]] QSet<QUuid> note(const QString& projectRootPath, const QSet<QUuid>& ids);

/// Removes every file of these notes' timelines, set-aside and unfinished ones too, and takes the
/// notes off the list. Returns those of which a file is still there; they stay on the list.
[[nodiscard]] QSet<QUuid> finish(const QString& projectRootPath, const QSet<QUuid>& ids);

/// Takes notes off the list whose versions stay.
void forget(const QString& projectRootPath, const QSet<QUuid>& ids);

} // namespace orvane::VersionErasure
