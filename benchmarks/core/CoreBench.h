// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane::bench {

/// The rows "store/…".
void addStoreRows();

} // namespace orvane::bench
