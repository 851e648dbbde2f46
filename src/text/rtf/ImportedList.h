// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/ParagraphStyle.h"

#include <QString>

/// List items of documents that have lists as objects. Here a list is literal text: each item's
/// line begins with a tab a level and its marker, and its paragraph style hangs the rest.
namespace orvane::ImportedList {

/// The line's beginning: tabs, the marker, a blank. Bullets that stand for the same as one that the
/// editor knows become that one.
[[nodiscard]] QString prefix(const QString& marker, int level);

/// `style` with the indents, the tab stop and the list label of an item at `level`, from 0.
[[nodiscard]] ParagraphStyle style(ParagraphStyle style, const QString& marker, int level);

/// The marker of the item `number`, from 1, in a numbered list: "3.", "c.", "III.", …
[[nodiscard]] QString numberMarker(ListMarker kind, int number);
/// The same without the full stop.
[[nodiscard]] QString numberText(ListMarker kind, int number);

} // namespace orvane::ImportedList
