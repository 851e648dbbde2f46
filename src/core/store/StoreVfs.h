// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane {

/// The name of the file layer by which every store is opened: SQLite's own, but for two things.
///
/// Its own follows all links in a file's name when the file is opened and keeps the result, so that
/// a write-ahead log would be made where the folder stood then. Names below a `FolderHandle` are
/// kept as they are, and store, write-ahead log and index follow the folder wherever it goes.
///
/// Its own takes bytes that the device fails to give for a damaged database (EIO is told as
/// SQLITE_CORRUPT), which would move a sound store aside because a cable was loose. Here a read
/// that fails is SQLITE_IOERR_READ.
///
/// Any thread.
[[nodiscard]] const char* storeVfs();

} // namespace orvane
