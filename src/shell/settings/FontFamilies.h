// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/settings/ChoiceField.h"

namespace orvane {

/// The families that a note can be written in, to choose from.
[[nodiscard]] QList<Choice> fontFamilyChoices();

} // namespace orvane
