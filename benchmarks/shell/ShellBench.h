// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane::bench {

void addBinderRows();
void addEditRows();
void addKeysRows();
void addLayoutRows();
void addStartRows();

} // namespace orvane::bench
