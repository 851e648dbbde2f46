// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/library/ProjectWorkspaceState.h"

#include "core/library/ProjectLibraryController.h"
#include "core/records/RecordJson.h"

#include <QCoreApplication>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array paneNames{QLatin1String("binder"), QLatin1String("editor"),
                               QLatin1String("inspector")};

/// Calls `visit(key, field)` for every field, in the order of the record. The one list from which
/// writing and reading follow.
template <typename State, typename Visitor>
void forEachField(State& state, Visitor&& visit)
{
    visit("selectedFolderID"_L1, state.selectedFolderID);
    visit("selectedNoteID"_L1, state.selectedNoteID);
    visit("binderPaneNoteID"_L1, state.binderPaneNoteID);
    visit("inspectorPaneNoteID"_L1, state.inspectorPaneNoteID);
    visit("selectedProjectRoot"_L1, state.selectedProjectRoot);
    visit("binderVisible"_L1, state.binderVisible);
    visit("inspectorVisible"_L1, state.inspectorVisible);
    visit("binderLocked"_L1, state.binderLocked);
    visit("editorLocked"_L1, state.editorLocked);
    visit("inspectorLocked"_L1, state.inspectorLocked);
    visit("orvaneGlassEnabled"_L1, state.orvaneGlassEnabled);
    visit("orvaneGlassBinder"_L1, state.orvaneGlassBinder);
    visit("orvaneGlassEditor"_L1, state.orvaneGlassEditor);
    visit("orvaneGlassInspector"_L1, state.orvaneGlassInspector);
    visit("orvaneGlassOpacityBinder"_L1, state.orvaneGlassOpacityBinder);
    visit("orvaneGlassOpacityEditor"_L1, state.orvaneGlassOpacityEditor);
    visit("orvaneGlassOpacityInspector"_L1, state.orvaneGlassOpacityInspector);
    visit("binderBackgroundEnabled"_L1, state.binderBackgroundEnabled);
    visit("binderBackgroundColor"_L1, state.binderBackgroundColor);
    visit("editorBackgroundEnabled"_L1, state.editorBackgroundEnabled);
    visit("editorBackgroundColor"_L1, state.editorBackgroundColor);
    visit("inspectorBackgroundEnabled"_L1, state.inspectorBackgroundEnabled);
    visit("inspectorBackgroundColor"_L1, state.inspectorBackgroundColor);
    visit("openQuickSettingsPane"_L1, state.openQuickSettingsPane);
    visit("binderWidth"_L1, state.binderWidth);
    visit("editorWidth"_L1, state.editorWidth);
    visit("inspectorWidth"_L1, state.inspectorWidth);
    visit("binderPresets"_L1, state.binderPresets);
    visit("editorPresets"_L1, state.editorPresets);
    visit("inspectorPresets"_L1, state.inspectorPresets);
}

template <typename Preset, typename Visitor>
void forEachPresetField(Preset& preset, Visitor&& visit)
{
    visit("id"_L1, preset.id);
    visit("name"_L1, preset.name);
    visit("bubbleTint"_L1, preset.bubbleTint);
    visit("orvaneGlassEnabled"_L1, preset.orvaneGlassEnabled);
    visit("orvaneStrength"_L1, preset.orvaneStrength);
    visit("backgroundEnabled"_L1, preset.backgroundEnabled);
    visit("backgroundColor"_L1, preset.backgroundColor);
}

struct Writer {
    QJsonObject object;

    static QJsonValue json(bool value) { return value; }
    static QJsonValue json(double value) { return value; }
    static QJsonValue json(int value) { return value; }
    static QJsonValue json(const QString& value) { return value; }
    static QJsonValue json(const QUuid& value) { return uuidText(value); }
    static QJsonValue json(QuickSettingsPane pane) { return QString(paneNames.at(size_t(pane))); }
    static QJsonValue json(const RgbaColor& color)
    {
        return QJsonObject{{"red"_L1, color.red},
                           {"green"_L1, color.green},
                           {"blue"_L1, color.blue},
                           {"alpha"_L1, color.alpha}};
    }
    static QJsonValue json(const PanePresetCollection& collection)
    {
        QJsonArray presets;
        for (const PaneAppearancePreset& preset : collection.presets) {
            Writer writer;
            forEachPresetField(preset, writer);
            presets.append(writer.object);
        }
        QJsonObject object{{"presets"_L1, presets}};
        if (collection.activeIndex)
            object.insert("activeIndex"_L1, *collection.activeIndex);
        return object;
    }

    template <typename T>
    void operator()(QLatin1String key, const T& value)
    {
        object.insert(key, json(value));
    }
    template <typename T>
    void operator()(QLatin1String key, const std::optional<T>& value)
    {
        if (value)
            object.insert(key, json(*value));
    }
};

struct Reader {
    JsonObjectReader& reader;

    void operator()(QLatin1String key, bool& value) { value = reader.boolean(key); }
    void operator()(QLatin1String key, double& value) { value = reader.number(key); }
    void operator()(QLatin1String key, QString& value) { value = reader.string(key); }
    void operator()(QLatin1String key, QUuid& value) { value = reader.uuid(key); }
    void operator()(QLatin1String key, std::optional<QUuid>& value)
    {
        value = reader.optionalUuid(key);
    }
    void operator()(QLatin1String key, std::optional<double>& value)
    {
        value = reader.optionalNumber(key);
    }
    void operator()(QLatin1String key, std::optional<QuickSettingsPane>& value)
    {
        value.reset();
        const auto text = reader.optionalString(key);
        if (!text)
            return;
        for (size_t i = 0; i < paneNames.size(); ++i) {
            if (*text == paneNames.at(i))
                value = QuickSettingsPane(i);
        }
        if (!value)
            reader.fail(reader.pathOf(key), u"the name of a pane is expected"_s);
    }
    void operator()(QLatin1String key, RgbaColor& value)
    {
        JsonObjectReader part(reader.object(key), reader.pathOf(key));
        value = {part.number("red"_L1), part.number("green"_L1), part.number("blue"_L1),
                 part.number("alpha"_L1)};
        adopt(part);
    }
    void operator()(QLatin1String key, PanePresetCollection& value)
    {
        JsonObjectReader part(reader.object(key), reader.pathOf(key));
        if (const auto index = part.optionalNumber("activeIndex"_L1))
            value.activeIndex = int(*index);
        else
            value.activeIndex.reset();
        value.presets.clear();
        for (const QJsonValue item : part.array("presets"_L1)) {
            JsonObjectReader presetReader(item, part.pathOf("presets"_L1));
            PaneAppearancePreset preset;
            forEachPresetField(preset, Reader{presetReader});
            adopt(presetReader);
            value.presets.append(preset);
        }
        adopt(part);
    }

    void adopt(const JsonObjectReader& part)
    {
        if (part.error())
            reader.adopt(*part.error());
    }
};

} // namespace

QByteArray ProjectWorkspaceState::encoded() const
{
    Writer writer;
    forEachField(*this, writer);
    return encodeJson(writer.object);
}

std::expected<ProjectWorkspaceState, JsonError>
ProjectWorkspaceState::decoded(const QByteArray& bytes)
{
    const auto json = parseJson(bytes);
    if (!json)
        return std::unexpected(json.error());
    JsonObjectReader reader(*json);
    ProjectWorkspaceState state;
    forEachField(state, Reader{reader});
    return reader.finish(std::move(state));
}

namespace QuickSettingsDefaults {

PaneAppearancePreset defaultPreset(QuickSettingsPane pane, int index, const RgbaColor& neutralGray)
{
    const auto name = [](const char* text) {
        return QCoreApplication::translate("PanePreset", text);
    };
    const bool isEditor = pane == QuickSettingsPane::Editor;
    PaneAppearancePreset preset;
    preset.id = QUuid::createUuid();
    switch (index) {
    case 0:
        preset = {preset.id, name("Glass 10%"), coolBlue, true, 0.1, false, neutralGray};
        break;
    case 1:
        preset = {preset.id, name("Glass 65%"), warmTan, true, 0.65, false, neutralGray};
        break;
    case 2:
        preset = {preset.id, name("Glass 100%"), paperWhite, true, 1.0, false, neutralGray};
        break;
    case 3:
        preset = {preset.id, name("Black Tint"), pitchBlack, false, 1.0, true, {0, 0, 0, 0.4}};
        break;
    default:
        preset = {preset.id,
                  name("Classic"),
                  isEditor ? paperWhite : amber,
                  false,
                  1.0,
                  true,
                  isEditor ? paperWhite : neutralGray};
        preset.backgroundColor.alpha = 1;
        break;
    }
    return preset;
}

PanePresetCollection defaultPresetCollection(QuickSettingsPane pane, const RgbaColor& neutralGray)
{
    PanePresetCollection collection{1, {}};
    for (int i = 0; i < 5; ++i)
        collection.presets.append(defaultPreset(pane, i, neutralGray));
    return collection;
}

ProjectWorkspaceState defaultWorkspaceState(const RgbaColor& neutralGray)
{
    ProjectWorkspaceState state;
    state.binderBackgroundColor = neutralGray;
    state.editorBackgroundColor = paperWhite;
    state.inspectorBackgroundColor = neutralGray;
    state.binderPresets = defaultPresetCollection(QuickSettingsPane::Binder, neutralGray);
    state.editorPresets = defaultPresetCollection(QuickSettingsPane::Editor, neutralGray);
    state.inspectorPresets = defaultPresetCollection(QuickSettingsPane::Inspector, neutralGray);
    return state;
}

} // namespace QuickSettingsDefaults

namespace ProjectWorkspaceStateStore {

QString path(const QString& projectRootPath)
{
    return ProjectLibraryController::projectDataDirectoryPath(projectRootPath) +
           "/workspace-state.json"_L1;
}

std::expected<void, FileError> save(const ProjectWorkspaceState& state,
                                    const QString& projectRootPath)
{
    const QString folder = ProjectLibraryController::projectDataDirectoryPath(projectRootPath);
    if (auto made = makeFolder(folder); !made)
        return made;
    return writeFileAtomically(path(projectRootPath), state.encoded());
}

std::optional<ProjectWorkspaceState> load(const QString& projectRootPath)
{
    const auto bytes = readFile(path(projectRootPath), FileLimit::workspaceState);
    if (!bytes)
        return std::nullopt;
    auto state = ProjectWorkspaceState::decoded(*bytes);
    return state ? std::optional(*std::move(state)) : std::nullopt;
}

} // namespace ProjectWorkspaceStateStore

} // namespace orvane
