// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/AppearanceFields.h"

#include "platform/UserDefaults.h"

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

using V = AppearanceValues;

enum class Reading { Required, Optional };
enum class Applying { Applied, RecordedOnly };

template <auto... Path>
AppearanceFieldValue getAt(const V& values)
{
    return (values.*....*Path);
}

template <auto... Path>
void setAt(V& values, const AppearanceFieldValue& value)
{
    auto& member = (values.*....*Path);
    member = std::get<std::remove_reference_t<decltype(member)>>(value);
}

class Table {
public:
    Applying applying = Applying::Applied;

    template <auto... Path>
    void one(const QByteArray& name, const QByteArray& key, Reading reading = Reading::Required)
    {
        m_fields.push_back({name, appearanceKeyPrefix() + QLatin1String(key),
                            reading == Reading::Required, applying == Applying::Applied,
                            &getAt<Path...>, &setAt<Path...>});
    }

    template <auto Member>
    void color(const QByteArray& name, const QByteArray& key, Reading reading = Reading::Required)
    {
        one<Member, &AppearanceColor::enabled>(name + "Enabled", key + ".enabled", reading);
        one<Member, &AppearanceColor::red>(name + "Red", key + ".red", reading);
        one<Member, &AppearanceColor::green>(name + "Green", key + ".green", reading);
        one<Member, &AppearanceColor::blue>(name + "Blue", key + ".blue", reading);
        one<Member, &AppearanceColor::alpha>(name + "Alpha", key + ".alpha", reading);
    }
    template <auto Member>
    void background(const QByteArray& part, Reading reading = Reading::Required)
    {
        color<Member>(part + "Background", part + ".background", reading);
    }
    template <auto Member>
    void text(const QByteArray& part, Reading reading = Reading::Required)
    {
        color<Member>(part + "Text", part + ".text", reading);
    }

    template <auto Member>
    void glass(const QByteArray& name, const QByteArray& key, Reading reading = Reading::Required)
    {
        one<Member, &AppearanceGlass::enabled>(name + "Enabled", key + ".enabled", reading);
        one<Member, &AppearanceGlass::strength>(name + "Strength", key + ".strength", reading);
    }
    template <auto Member>
    void orvane(const QByteArray& part, Reading reading = Reading::Required)
    {
        glass<Member>(part + "Orvane", part + ".orvane", reading);
    }

    std::vector<AppearanceField> take() { return std::move(m_fields); }

private:
    std::vector<AppearanceField> m_fields;
};

constexpr auto optional = Reading::Optional;

void addGroundFields(Table& table)
{
    table.one<&V::orvaneGlassEnabled>("orvaneGlassEnabled", "orvane.enabled");
    table.one<&V::orvaneGlassBinder>("orvaneGlassBinder", "orvane.binder");
    table.one<&V::orvaneGlassEditor>("orvaneGlassEditor", "orvane.editor");
    table.one<&V::orvaneGlassInspector>("orvaneGlassInspector", "orvane.inspector");
    table.one<&V::orvaneGlassOpacityBinder>("orvaneGlassOpacityBinder", "orvane.opacity.binder");
    table.one<&V::orvaneGlassOpacityEditor>("orvaneGlassOpacityEditor", "orvane.opacity.editor");
    table.one<&V::orvaneGlassOpacityInspector>("orvaneGlassOpacityInspector",
                                               "orvane.opacity.inspector");
    table.one<&V::shield, &AppearanceGlass::enabled>("shieldEnabled", "shield.enabled");
    table.one<&V::shield, &AppearanceGlass::strength>("shieldStrength", "shield.strength",
                                                      optional);
    table.glass<&V::deskMat>("deskMat", "deskmat");
    table.one<&V::windowBackdropRed>("windowBackdropRed", "windowBackdrop.red");
    table.one<&V::windowBackdropGreen>("windowBackdropGreen", "windowBackdrop.green");
    table.one<&V::windowBackdropBlue>("windowBackdropBlue", "windowBackdrop.blue");
    table.one<&V::windowBackdropGradient>("windowBackdropGradient", "windowBackdrop.useGradient");
}

void addPaneFields(Table& table)
{
    table.background<&V::editorBackground>("editor");
    table.text<&V::editorText>("editor");
    table.color<&V::editorCursorColor>("editorCursorColor", "editor.cursor");
    table.one<&V::editorHighlightStrength>("editorHighlightStrength", "editor.highlightStrength",
                                           optional);
    table.background<&V::binderBackground>("binder");
    table.text<&V::binderText>("binder", optional);
    table.background<&V::inspectorBackground>("inspector");
    table.background<&V::pagePaperBackground>("pagePaper");
    table.orvane<&V::pagePaperOrvane>("pagePaper");
    table.background<&V::pageBorderBackground>("pageBorder");
    table.orvane<&V::pageBorderOrvane>("pageBorder");
}

void addBarFields(Table& table)
{
    table.background<&V::statusBarBackground>("statusBar");
    table.orvane<&V::statusBarOrvane>("statusBar");
    table.text<&V::editorChromeText>("editorChrome", optional);
    table.background<&V::fmtToolbarBackground>("fmtToolbar");
    table.orvane<&V::fmtToolbarOrvane>("fmtToolbar");
    table.background<&V::binderTopRailBackground>("binderTopRail", optional);
    table.orvane<&V::binderTopRailOrvane>("binderTopRail", optional);
    table.background<&V::binderRailBackground>("binderRail");
    table.orvane<&V::binderRailOrvane>("binderRail");
    table.background<&V::inspectorTopRailBackground>("inspectorTopRail", optional);
    table.orvane<&V::inspectorTopRailOrvane>("inspectorTopRail", optional);
    table.background<&V::inspectorRailBackground>("inspectorRail");
    table.orvane<&V::inspectorRailOrvane>("inspectorRail");
}

void addChromeFields(Table& table)
{
    table.applying = Applying::RecordedOnly;
    table.glass<&V::topToolbarBandOrvane>("topToolbarBandOrvane", "topToolbar.orvane");
    table.background<&V::toolbarBackground>("toolbar");
    table.text<&V::toolbarText>("toolbar");
    table.applying = Applying::Applied;
    table.color<&V::chromeIconColor>("chromeIconColor", "chrome.icon", optional);
    table.background<&V::brainMapBackground>("brainMap", optional);
    table.orvane<&V::brainMapOrvane>("brainMap", optional);
    table.one<&V::exportPageMode>("exportPageMode", "export.pageMode", optional);
}

void writeField(const AppearanceField& field, const AppearanceValues& values,
                UserDefaults& defaults)
{
    std::visit([&](const auto& value) { defaults.set(field.key, DefaultsValue(value)); },
               field.get(values));
}

} // namespace

const std::vector<AppearanceField>& appearanceFields()
{
    static const std::vector<AppearanceField> fields = [] {
        Table table;
        addGroundFields(table);
        addPaneFields(table);
        addBarFields(table);
        addChromeFields(table);
        return table.take();
    }();
    return fields;
}

QString appearanceKeyPrefix()
{
    return u"settings.appearance."_s;
}

AppearanceValues readAppearance(const UserDefaults& defaults)
{
    AppearanceValues values;
    for (const AppearanceField& field : appearanceFields()) {
        std::visit(
            [&](const auto& fallback) {
                using T = std::decay_t<decltype(fallback)>;
                if (const auto stored = defaults.get<T>(field.key))
                    field.set(values, *stored);
            },
            field.get(values));
    }
    return values;
}

AppearanceValues appliedTo(const AppearanceValues& current, AppearanceValues applied)
{
    for (const AppearanceField& field : appearanceFields()) {
        if (!field.applied)
            field.set(applied, field.get(current));
    }
    return applied;
}

bool sameWhenApplied(const AppearanceValues& one, const AppearanceValues& other)
{
    const auto& fields = appearanceFields();
    return std::all_of(fields.begin(), fields.end(), [&](const AppearanceField& field) {
        return !field.applied || field.get(one) == field.get(other);
    });
}

void applyAppearance(const AppearanceValues& values, UserDefaults& defaults)
{
    for (const AppearanceField& field : appearanceFields()) {
        if (field.applied)
            writeField(field, values, defaults);
    }
}

void writeAppearance(const AppearanceValues& values, UserDefaults& defaults)
{
    const AppearanceValues before = readAppearance(defaults);
    for (const AppearanceField& field : appearanceFields()) {
        if (field.get(values) != field.get(before))
            writeField(field, values, defaults);
    }
}

} // namespace orvane
