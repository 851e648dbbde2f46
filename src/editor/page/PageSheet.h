// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"
#include "editor/view/EditorLook.h"

#include <QRectF>

class QPainter;

namespace orvane {

class Look;
class UserDefaults;

/// The look as text is written in: in page view that of the paper.
[[nodiscard]] Tokens writingTokens(const Look& look, const UserDefaults& defaults);

/// How far the sheet's shadow reaches beyond it, in pixels.
inline constexpr int sheetShadowReach = 14;

/// Draws what `clip` shows of the desk with the sheet on it and its shadow, both in the painter's
/// coordinates; `sheet` stands on whole pixels. Inside the sheet it costs one filled rectangle.
void drawPageSheet(QPainter& painter, const QRectF& sheet, const QRectF& clip,
                   const PageSheetLook& look);

} // namespace orvane
