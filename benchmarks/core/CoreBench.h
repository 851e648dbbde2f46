// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane::bench {

/// The rows "store/…".
void addStoreRows();
/// The rows "library/…", "notebook/…", "tags/…" and "history/…", and "store/create-note".
void addNotebookRows();

} // namespace orvane::bench
