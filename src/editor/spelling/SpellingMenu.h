// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>
#include <QUuid>

class QMenu;

namespace orvane {

class Spelling;

/// Adds to `menu` whether spelling is checked at all, and the languages for `note`. Choosing acts
/// on `spelling`, which outlives the menu.
void fillSpellingMenu(QMenu& menu, Spelling& spelling, const QUuid& note);

/// In a word or two, in which language `note` is checked, if at all.
[[nodiscard]] QString spellingSummary(const Spelling& spelling, const QUuid& note);

} // namespace orvane
