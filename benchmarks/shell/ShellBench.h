// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane::bench {

void addKeysRows();

} // namespace orvane::bench
