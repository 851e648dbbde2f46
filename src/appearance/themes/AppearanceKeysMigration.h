// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane {

class UserDefaults;

/// Puts the keys of the look that were written by other hands or earlier releases into their
/// present form: a flag written as 0 or 1, a number written as text, a channel or strength beyond
/// 0 to 1. Keys that are unset stay unset, and what can't be understood stays as it is. At the
/// start of the program, before the theme library is loaded.
void migrateAppearanceKeys(UserDefaults& defaults);

} // namespace orvane
