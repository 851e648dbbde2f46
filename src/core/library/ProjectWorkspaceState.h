// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/JsonObjectReader.h"
#include "platform/AtomicFile.h"
#include "text/value/RgbaColor.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <array>
#include <expected>
#include <optional>

namespace orvane {

/// The panes that have quick settings.
enum class QuickSettingsPane { Binder, Editor, Inspector };

/// One look of a pane that can be chosen again.
struct PaneAppearancePreset {
    QUuid id;
    QString name;
    RgbaColor bubbleTint;
    bool orvaneGlassEnabled = true;
    double orvaneStrength = 0.65;
    bool backgroundEnabled = false;
    RgbaColor backgroundColor;

    bool operator==(const PaneAppearancePreset&) const = default;
};

struct PanePresetCollection {
    /// Which preset is shown as active; none when absent.
    std::optional<int> activeIndex;
    QList<PaneAppearancePreset> presets;

    bool operator==(const PanePresetCollection&) const = default;
};

/// How a project's window looked when it was last used. One JSON file beside the store; reading is
/// strict, so that a file which lacks a required field gives the defaults as a whole.
struct ProjectWorkspaceState {
    std::optional<QUuid> selectedFolderID;
    std::optional<QUuid> selectedNoteID;
    std::optional<QUuid> binderPaneNoteID;
    std::optional<QUuid> inspectorPaneNoteID;
    bool selectedProjectRoot = true;
    bool binderVisible = true;
    bool inspectorVisible = true;
    bool binderLocked = false;
    bool editorLocked = false;
    bool inspectorLocked = false;
    bool orvaneGlassEnabled = true;
    bool orvaneGlassBinder = true;
    bool orvaneGlassEditor = true;
    bool orvaneGlassInspector = true;
    double orvaneGlassOpacityBinder = 0.65;
    double orvaneGlassOpacityEditor = 0.65;
    double orvaneGlassOpacityInspector = 0.65;
    bool binderBackgroundEnabled = true;
    RgbaColor binderBackgroundColor;
    bool editorBackgroundEnabled = true;
    RgbaColor editorBackgroundColor;
    bool inspectorBackgroundEnabled = true;
    RgbaColor inspectorBackgroundColor;
    std::optional<QuickSettingsPane> openQuickSettingsPane;
    /// Widths in logical pixels.
    std::optional<double> binderWidth = 288;
    std::optional<double> editorWidth = 612;
    std::optional<double> inspectorWidth = 288;
    PanePresetCollection binderPresets;
    PanePresetCollection editorPresets;
    PanePresetCollection inspectorPresets;

    bool operator==(const ProjectWorkspaceState&) const = default;

    [[nodiscard]] QByteArray encoded() const;
    [[nodiscard]] static std::expected<ProjectWorkspaceState, JsonError>
    decoded(const QByteArray& bytes);
};

namespace QuickSettingsDefaults {

inline constexpr RgbaColor warmTan{0.78, 0.69, 0.56, 1};
inline constexpr RgbaColor amber{0.74, 0.56, 0.18, 1};
inline constexpr RgbaColor coolBlue{0.34, 0.52, 0.86, 1};
inline constexpr RgbaColor pitchBlack{0, 0, 0, 1};
inline constexpr RgbaColor paperWhite{1, 1, 1, 1};

/// `neutralGray` is the window colour of the present look; ids are fresh at each call.
[[nodiscard]] PaneAppearancePreset defaultPreset(QuickSettingsPane pane, int index,
                                                 const RgbaColor& neutralGray);
/// Five presets, the second active.
[[nodiscard]] PanePresetCollection defaultPresetCollection(QuickSettingsPane pane,
                                                           const RgbaColor& neutralGray);
[[nodiscard]] ProjectWorkspaceState defaultWorkspaceState(const RgbaColor& neutralGray);

} // namespace QuickSettingsDefaults

namespace ProjectWorkspaceStateStore {

/// "workspace-state.json" in the project's data folder.
[[nodiscard]] QString path(const QString& projectRootPath);
std::expected<void, FileError> save(const ProjectWorkspaceState& state,
                                    const QString& projectRootPath);
/// Nothing when the file is missing, unreadable or incomplete.
[[nodiscard]] std::optional<ProjectWorkspaceState> load(const QString& projectRootPath);

} // namespace ProjectWorkspaceStateStore

} // namespace orvane
