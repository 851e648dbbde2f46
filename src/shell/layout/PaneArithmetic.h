// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

namespace orvane {

/// Widths of the three panes, in logical pixels. Everything here is a function of numbers; what
/// moves widgets stands in ThreePaneSplitView.
namespace PaneMetrics {
inline constexpr double sideMinimum = 220; ///< narrower is never remembered nor opened
inline constexpr double sideMaximum = 320; ///< a remembered width is restored up to this
inline constexpr double sideDefault = 288; ///< where nothing usable is remembered
inline constexpr double unknownLimit = 2;  ///< at or below, a remembered width counts as none
inline constexpr double sideLegible = 120; ///< a narrower remainder is left to the editor
inline constexpr double bothSidesFloor = 2 * sideMinimum;
inline constexpr double editorMinimumLow = 480;
inline constexpr double editorMinimumHigh = 920;
inline constexpr double editorPageWidthDefault = 612;
inline constexpr double maximumThickness = 10000;
inline constexpr double dividerThickness = 1;
} // namespace PaneMetrics

enum class SidePane { Binder, Inspector };

struct SideVisibility {
    bool binder = true;
    bool inspector = true;

    bool operator==(const SideVisibility&) const = default;
};

struct SideWidths {
    double binder = 0;
    double inspector = 0;

    bool operator==(const SideWidths&) const = default;
};

struct PaneLocks {
    bool binder = false;
    bool editor = false;
    bool inspector = false;

    bool operator==(const PaneLocks&) const = default;
};

struct PaneWidths {
    double binder = 0;
    double editor = 0;
    double inspector = 0;

    bool operator==(const PaneWidths&) const = default;
};

/// The width at which a side pane opens, from its remembered width.
[[nodiscard]] double sidePaneTarget(double remembered);
[[nodiscard]] SideWidths sidePaneTargets(const SideWidths& remembered);

/// The narrowest editor for a page of this width.
[[nodiscard]] double editorMinimumThickness(double pageWidth);

/// How the side panes share `available`, what the editor leaves of the window: `targets` where they
/// fit; else both scaled, neither below its minimum; below twice the minimum the Binder gets its
/// width and the Inspector the rest.
[[nodiscard]] SideWidths balancedSideWidths(double available, const SideWidths& targets,
                                            const SideVisibility& visible);

/// What a side pane may measure.
struct SideLimits {
    double minimum = 0;
    double maximum = PaneMetrics::maximumThickness;
    bool canCollapse = true;

    bool operator==(const SideLimits&) const = default;
};

struct SidePaneState {
    bool isVisible;
    bool isLocked;
};

/// `width` is the pane's width now, `remembered` the stored one. A locked pane may measure one
/// width only.
[[nodiscard]] SideLimits sideLimits(const SidePaneState& state, double width, double remembered);

/// Everything that decides where the panes stand. The panes and the dividers of the side panes that
/// have a width always add up to `total`.
struct SplitLayout {
    double total = 0;
    double editorMinimum = PaneMetrics::editorPageWidthDefault;
    SideVisibility visible;
    PaneLocks locks;
    /// The widths that the side panes have where there is room, whether shown now or not.
    SideWidths preferred{PaneMetrics::sideDefault, PaneMetrics::sideDefault};

    [[nodiscard]] double dividers() const;
    /// What side panes may take without squeezing the editor.
    [[nodiscard]] double available() const;

    /// The widths for this window, whole pixels: the editor takes up any change first; when it has
    /// reached its minimum, what exceeds the side panes' maximum is given back, then they are
    /// balanced; a remainder too narrow to read anything in goes to the editor. A locked side pane
    /// keeps its width, if need be at the cost of the editor's minimum.
    [[nodiscard]] PaneWidths widths() const;

    /// The preferred widths after a person asks for `width` for one side pane, by its divider. The
    /// other side pane moves along when the editor is locked; a locked pane holds its divider.
    [[nodiscard]] SideWidths resized(SidePane pane, double width) const;
};

/// Whether a live width becomes the remembered one.
enum class WriteBack { Store, StoreHidden, Block };
[[nodiscard]] WriteBack widthWriteBack(double liveWidth, bool visible);
/// What the log says of it.
[[nodiscard]] QString writeBackLogLine(SidePane pane, double liveWidth, bool visible);

/// Whether the widths are those of a window that had not found its size yet.
[[nodiscard]] bool needsStartupRepair(const SideWidths& live, const SideVisibility& visible);

} // namespace orvane
