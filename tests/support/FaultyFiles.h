// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QString>

#include <cerrno>

namespace orvane {

/// A file system that fails: while this lives, the calls of this process on paths below a folder
/// (and on descriptors of files that are there) are counted, and the chosen ones fail. Opening,
/// reading, writing, syncing, truncating, renaming, linking, unlinking, making folders, locking
/// and asking for a file's state count, whoever makes them: Qt, SQLite, the standard library and
/// the program, each of which calls the functions that FaultyFiles.cpp defines in front of the C
/// library's. A test program that uses it lists that file among its sources. One at a time.
class FaultyFiles {
public:
    struct Fault {
        /// Which call fails, from 1; 0 for none, which counts alone.
        int call = 0;
        /// What it fails with. Calls that can't have EMFILE or ENOSPC fail with EIO instead.
        int error = EIO;
        /// Whether all that follow fail as well.
        bool onward = false;
    };

    FaultyFiles(const QString& folder, Fault fault);
    ~FaultyFiles();
    FaultyFiles(const FaultyFiles&) = delete;
    FaultyFiles& operator=(const FaultyFiles&) = delete;

    /// How many calls there were so far.
    [[nodiscard]] static int calls();
    /// The first call that failed, as "fdatasync /path", or nothing.
    [[nodiscard]] static QByteArray failed();
};

} // namespace orvane
