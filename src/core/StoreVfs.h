// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane {

/// The name of the file layer by which every store is opened: SQLite's own, but for one thing. Its
/// own follows all links in a file's name when the file is opened and keeps the result, so that a
/// journal would be made where the folder stood then. Names below a `FolderHandle` are kept as
/// they are, and store, journal and index follow the folder wherever it goes. Any thread.
[[nodiscard]] const char* storeVfs();

} // namespace orvane
