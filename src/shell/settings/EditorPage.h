// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/settings/SettingsPages.h"

namespace orvane {

/// How notes are written and shown: text, headings, page, writing, language.
[[nodiscard]] QWidget* makeEditorPage(const SettingsServices& services);

} // namespace orvane
