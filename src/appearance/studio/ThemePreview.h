// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"

#include <QRectF>

class QPainter;

namespace orvane {

/// Draws the main window as `tokens` would make it look, small, without words: what a person tells
/// themes apart by.
void paintThemeSwatch(QPainter& painter, const QRectF& rect, const Tokens& tokens);

/// Draws the three panes with their rails, bars, rows and text, large enough to read.
void paintThemePreview(QPainter& painter, const QRectF& rect, const Tokens& tokens);

} // namespace orvane
