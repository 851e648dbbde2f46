// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/ProjectLock.h"

#include <QString>

#include <optional>

namespace orvane {

/// Why a change did not reach the store. What is in memory is untouched.
struct StoreError {
    enum class Code {
        NoSpace,  ///< the disk or a quota is full
        ReadOnly, ///< the store was opened for reading only
        Busy,     ///< another program holds the file
        Replaced, ///< another file stands at the store's place; it is left alone
        Missing,  ///< the store's file, its folder or its disk is gone
        TooBig,   ///< one record is larger than a store can hold; everything else was saved
        Refused,  ///< nothing was tried: the licence or the project doesn't allow changes
        Unread,   ///< rich bytes could not be read from where they are; everything else was saved
        Other,
    };
    Code code = Code::Other;
    /// The words of the library underneath, for the log.
    QString detail;

    [[nodiscard]] QString text() const { return detail; }
};

/// Why a store was not opened. In all of these nothing was changed, moved or created: the files
/// are not damaged, or what can be done for them can't be done now.
struct StoreOpenError {
    enum class Code {
        NewerSchema,     ///< written by a later version of the program
        ForeignSchema,   ///< holds tables, triggers, views or indexes that `detail` names and the
                         ///< program didn't make; none of them was run
        LockedByOther,   ///< open elsewhere; `holder` says where, when it is known
        Missing,         ///< no store is there, or a link that leads to none; none was made
        NoAccess,        ///< the system doesn't let the folder or the file be used
        NoSpace,         ///< the disk is full
        Unreadable,      ///< the file is there, and the system can't read it
        MigrationFailed, ///< an older schema could not be brought to this one
        RecoveryFailed,  ///< the store is damaged, and could not be moved aside
    };
    Code code = Code::Unreadable;
    /// The store's file, or the file that stood in the way.
    QString path;
    QString detail;
    std::optional<LockHolder> holder;

    /// One line for the log.
    [[nodiscard]] QString text() const;
};

} // namespace orvane
