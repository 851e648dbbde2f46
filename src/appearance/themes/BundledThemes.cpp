// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/BundledThemes.h"

#include "text/value/RgbaColor.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// Sixteen colours as "#RRGGBB" make a whole theme.
struct BundledThemePalette {
    QStringView cursor;
    QStringView editor;
    QStringView backdrop;
    QStringView binder;
    QStringView inspector;
    QStringView paper;
    QStringView toolbar;
    QStringView toolbarText;
    QStringView editorChromeText;
    QStringView binderText;
    QStringView editorText;
    QStringView binderRails;
    QStringView inspectorRails;
    QStringView pageBorder;
    QStringView formattingToolbar;
    QStringView statusBar;
};

constexpr BundledThemePalette googleLight{
    u"#1A73E8", u"#FFFFFF", u"#F8F9FA", u"#F1F3F4", u"#F1F3F4", u"#F1F3F4", u"#E8EAED", u"#202124",
    u"#202124", u"#202124", u"#202124", u"#EA4335", u"#34A853", u"#DADCE0", u"#FBBC04", u"#FBBC04"};
constexpr BundledThemePalette googleDark{
    u"#8AB4F8", u"#0F0F1A", u"#0A0A14", u"#1A1A2E", u"#141428", u"#111120", u"#1E1E34", u"#F0F0F5",
    u"#F0F0F5", u"#F0F0F5", u"#F0F0F5", u"#F28B82", u"#81C995", u"#2A2A44", u"#FDD663", u"#FDD663"};
constexpr BundledThemePalette signatureLight{
    u"#0098B8", u"#FFFFFF", u"#EAF0F4", u"#F4F8FA", u"#F4F8FA", u"#F4F8FA", u"#F4F8FA", u"#2A2A3C",
    u"#6E6E82", u"#6E6E82", u"#1A1A2E", u"#1A1A2E", u"#1A1A2E", u"#D8E0E8", u"#D8E0E8", u"#D8E0E8"};
constexpr BundledThemePalette signatureDark{
    u"#00D4FF", u"#0D1117", u"#07070C", u"#0A0E16", u"#0A0E16", u"#0A0E16", u"#0A0E16", u"#D0D0DD",
    u"#8A8A9A", u"#8A8A9A", u"#E6EDF3", u"#E6EDF3", u"#E6EDF3", u"#1E1E2E", u"#1E1E2E", u"#1E1E2E"};

AppearanceColor opaque(QStringView hex)
{
    const RgbaColor color = rgbaFromHex(hex).value();
    return {true, color.red, color.green, color.blue, 1};
}

AppearanceTheme bundledWorkspaceTheme(const QUuid& id, const QString& name, Timestamp createdAt,
                                      const BundledThemePalette& palette)
{
    constexpr AppearanceGlass solid{false, 1.0};
    const AppearanceColor backdrop = opaque(palette.backdrop);
    AppearanceTheme theme{id, name, createdAt, {}};
    AppearanceValues& v = theme.values;
    v.orvaneGlassEnabled = true;
    v.orvaneGlassBinder = v.orvaneGlassEditor = v.orvaneGlassInspector = false;
    v.orvaneGlassOpacityBinder = v.orvaneGlassOpacityEditor = v.orvaneGlassOpacityInspector = 1;
    v.shield = {false, 1.0};
    v.deskMat = {false, 0.7};
    v.windowBackdropRed = backdrop.red;
    v.windowBackdropGreen = backdrop.green;
    v.windowBackdropBlue = backdrop.blue;
    v.windowBackdropGradient = false;
    v.editorCursorColor = opaque(palette.cursor);
    v.editorBackground = opaque(palette.editor);
    v.brainMapBackground = backdrop;
    v.binderBackground = opaque(palette.binder);
    v.inspectorBackground = opaque(palette.inspector);
    v.pagePaperBackground = opaque(palette.paper);
    v.toolbarBackground = opaque(palette.toolbar);
    v.toolbarText = v.chromeIconColor = opaque(palette.toolbarText);
    v.editorChromeText = opaque(palette.editorChromeText);
    v.binderText = opaque(palette.binderText);
    v.editorText = opaque(palette.editorText);
    v.binderTopRailBackground = v.binderRailBackground = opaque(palette.binderRails);
    v.inspectorTopRailBackground = v.inspectorRailBackground = opaque(palette.inspectorRails);
    v.pageBorderBackground = opaque(palette.pageBorder);
    v.fmtToolbarBackground = opaque(palette.formattingToolbar);
    v.statusBarBackground = opaque(palette.statusBar);
    for (AppearanceGlass* glass :
         {&v.pagePaperOrvane, &v.pageBorderOrvane, &v.statusBarOrvane, &v.fmtToolbarOrvane,
          &v.binderTopRailOrvane, &v.binderRailOrvane, &v.inspectorTopRailOrvane,
          &v.inspectorRailOrvane, &v.topToolbarBandOrvane, &v.brainMapOrvane})
        *glass = solid;
    v.editorHighlightStrength = u"Standard"_s;
    v.exportPageMode = u"appPageColor"_s;
    return theme;
}

QUuid fixedId(QStringView text)
{
    return uuidFromText(text).value();
}

} // namespace

const AppearanceThemeBundle& googleWorkspaceBundle()
{
    static const AppearanceThemeBundle bundle = [] {
        const QString name = u"Google Workspace"_s;
        const Timestamp created{1'775'779'200'000};
        return AppearanceThemeBundle{
            fixedId(u"A26AC280-FA64-4C2A-97F3-DF3C70D90C4C"),
            name,
            created,
            created,
            bundledWorkspaceTheme(fixedId(u"D6E093D8-C893-4D46-8C3D-8347F6C83048"), name, created,
                                  googleLight),
            bundledWorkspaceTheme(fixedId(u"0CB0BAF2-113A-49FC-9C47-87CE07089A83"), name, created,
                                  googleDark)};
    }();
    return bundle;
}

const AppearanceThemeBundle& signatureBundle()
{
    static const AppearanceThemeBundle bundle = [] {
        const QString name = u"OrvaneWorkspace Signature"_s;
        const Timestamp created{1'777'420'800'000};
        return AppearanceThemeBundle{
            fixedId(u"C18D4B1A-3B4C-45C1-81EE-76DF05F74090"),
            name,
            created,
            created,
            bundledWorkspaceTheme(fixedId(u"AC97DB2D-8867-45F1-A24C-7224282AB883"),
                                  name + " Light"_L1, created, signatureLight),
            bundledWorkspaceTheme(fixedId(u"25C5A7DD-F020-412F-AEAE-4D3E6FDE8D4B"),
                                  name + " Dark"_L1, created, signatureDark)};
    }();
    return bundle;
}

} // namespace orvane
