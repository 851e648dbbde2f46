// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/TranslucentPalette.h"

#include "appearance/Contrast.h"
#include "appearance/Look.h"
#include "editor/formatting/EditorHighlightStrength.h"

#include <QCoreApplication>

namespace orvane {

RgbaColor fitBehindText(const RgbaColor& color, const UserDefaults& defaults)
{
    return normalizeHighlight(
        color, editorHighlightStrength(editorHighlightStrengthSetting.read(defaults)));
}

ColorPopup::Palette translucentPalette(const QString& name, const std::optional<RgbaColor>& current,
                                       const Look& look, const UserDefaults& defaults)
{
    ColorPopup::Palette palette{
        name, QCoreApplication::translate("TranslucentPalette", "None"), highlightPalette(), {}};
    const QColor& page = look.tokens().on(Surface::Page).ground;
    for (const WritingColor& each : palette.colors) {
        const RgbaColor fit = fitBehindText(RgbaColor::fromQColor(each.color), defaults);
        if (current && fit.toQColor().rgba() == current->toQColor().rgba())
            palette.current = int(palette.shown.size());
        palette.shown.append(blended(QColor(fit.toQColor().rgb()), fit.alpha, page));
    }
    return palette;
}

} // namespace orvane
