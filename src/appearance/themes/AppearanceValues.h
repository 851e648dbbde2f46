// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

namespace orvane {

/// A colour of the look in sRGB, channels from 0 to 1. Not enabled, the look takes the system's
/// colour for the part, or that of the surface the part stands on.
struct AppearanceColor {
    bool enabled = false;
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    bool operator==(const AppearanceColor&) const = default;
};

/// Whether a part is glass, and how opaque it then is, from 0 to 1.
struct AppearanceGlass {
    bool enabled = true;
    double strength = 1;

    bool operator==(const AppearanceGlass&) const = default;
};

/// Everything that makes the look, as it stands under `settings.appearance.` in the user defaults.
/// A member's initial value is the program's default, which stands while its key is unset. Which
/// key and which name in a theme each member has is told by `appearanceFields`.
struct AppearanceValues {
    bool orvaneGlassEnabled = true;
    bool orvaneGlassBinder = true;
    bool orvaneGlassEditor = true;
    bool orvaneGlassInspector = true;
    double orvaneGlassOpacityBinder = 0.92;
    double orvaneGlassOpacityEditor = 0.92;
    double orvaneGlassOpacityInspector = 0.92;
    AppearanceGlass shield{true, 1.0};
    AppearanceGlass deskMat{false, 0.7};
    double windowBackdropRed = 0.14;
    double windowBackdropGreen = 0.14;
    double windowBackdropBlue = 0.17;
    bool windowBackdropGradient = true;
    AppearanceColor editorBackground{false, 0, 0, 0, 1};
    AppearanceColor editorText{false, 1, 1, 1, 1};
    AppearanceColor editorCursorColor{false, 1, 1, 1, 1};
    QString editorHighlightStrength = QStringLiteral("Standard");
    AppearanceColor binderBackground{true, 0.22, 0.22, 0.24, 1};
    AppearanceColor binderText{false, 1, 1, 1, 1};
    AppearanceColor inspectorBackground{true, 0.22, 0.22, 0.24, 1};
    AppearanceColor pagePaperBackground{true, 1, 1, 1, 0.92};
    AppearanceGlass pagePaperOrvane{true, 0.92};
    AppearanceColor pageBorderBackground{true, 1, 1, 1, 0.18};
    AppearanceGlass pageBorderOrvane{true, 0.82};
    AppearanceColor statusBarBackground{false, 0.16, 0.16, 0.18, 0.74};
    AppearanceGlass statusBarOrvane{true, 0.8};
    AppearanceColor editorChromeText{false, 1, 1, 1, 1};
    AppearanceColor fmtToolbarBackground{false, 0.16, 0.16, 0.18, 0.74};
    AppearanceGlass fmtToolbarOrvane{true, 0.92};
    AppearanceColor binderTopRailBackground{false, 0.16, 0.16, 0.18, 0.74};
    AppearanceGlass binderTopRailOrvane{true, 0.78};
    AppearanceColor binderRailBackground{false, 0.16, 0.16, 0.18, 0.74};
    AppearanceGlass binderRailOrvane{true, 0.78};
    AppearanceColor inspectorTopRailBackground{false, 0.16, 0.16, 0.18, 0.74};
    AppearanceGlass inspectorTopRailOrvane{true, 0.78};
    AppearanceColor inspectorRailBackground{false, 0.16, 0.16, 0.18, 0.74};
    AppearanceGlass inspectorRailOrvane{true, 0.78};
    AppearanceGlass topToolbarBandOrvane{true, 0.78};
    AppearanceColor toolbarBackground{false, 0.16, 0.16, 0.18, 0.94};
    AppearanceColor toolbarText{false, 0.95, 0.95, 0.97, 1};
    AppearanceColor chromeIconColor{false, 0.95, 0.95, 0.97, 1};
    AppearanceColor brainMapBackground{false, 0, 0, 0, 0.45};
    AppearanceGlass brainMapOrvane{true, 1.0};
    QString exportPageMode = QStringLiteral("whitePage");

    bool operator==(const AppearanceValues&) const = default;
};

} // namespace orvane
