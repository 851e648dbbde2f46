// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/StudioColors.h"

#include <QCoreApplication>

namespace orvane {

namespace {

using V = AppearanceValues;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(StudioColors)
};

template <auto Member>
AppearanceColor getColor(const V& values)
{
    return values.*Member;
}

template <auto Member>
void setColor(V& values, const AppearanceColor& color)
{
    values.*Member = color;
}

template <Surface On, QColor SurfaceTokens::*Token>
QColor surfaceColor(const Tokens& tokens)
{
    return tokens.on(On).*Token;
}

template <QColor Tokens::*Token>
QColor generalColor(const Tokens& tokens)
{
    return tokens.*Token;
}

template <auto Member>
StudioColor row(const QString& name, QColor (*shown)(const Tokens&),
                AppearanceGlass V::*glass = nullptr)
{
    return {name, &getColor<Member>, &setColor<Member>, glass, Member, shown, true};
}

template <Surface On>
constexpr auto groundOf = &surfaceColor<On, &SurfaceTokens::ground>;

StudioColor windowBackdrop()
{
    StudioColor color;
    color.name = Words::tr("Window backdrop");
    color.get = [](const V& v) {
        return AppearanceColor{true, v.windowBackdropRed, v.windowBackdropGreen,
                               v.windowBackdropBlue, 1};
    };
    color.set = [](V& v, const AppearanceColor& chosen) {
        v.windowBackdropRed = chosen.red;
        v.windowBackdropGreen = chosen.green;
        v.windowBackdropBlue = chosen.blue;
    };
    color.shown = groundOf<Surface::Window>;
    color.canBeAutomatic = false;
    return color;
}

} // namespace

const std::vector<StudioColor>& studioColors()
{
    static const std::vector<StudioColor> colors{
        row<&V::editorBackground>(Words::tr("Editor background"), groundOf<Surface::Page>),
        row<&V::editorText>(Words::tr("Editor text"), &generalColor<&Tokens::pageText>),
        row<&V::editorCursorColor>(Words::tr("Cursor and accent"), &generalColor<&Tokens::accent>),
        row<&V::pagePaperBackground>(Words::tr("Page paper"), &generalColor<&Tokens::paper>,
                                     &V::pagePaperOrvane),
        row<&V::pageBorderBackground>(Words::tr("Page border"), &generalColor<&Tokens::paperEdge>,
                                      &V::pageBorderOrvane),
        row<&V::fmtToolbarBackground>(Words::tr("Formatting bar"), groundOf<Surface::FormattingBar>,
                                      &V::fmtToolbarOrvane),
        row<&V::statusBarBackground>(Words::tr("Status strip"), groundOf<Surface::StatusStrip>,
                                     &V::statusBarOrvane),
        row<&V::editorChromeText>(
            Words::tr("Status strip text"),
            &surfaceColor<Surface::StatusStrip, &SurfaceTokens::textSecondary>),
        row<&V::brainMapBackground>(Words::tr("Brain Map background"), groundOf<Surface::BrainMap>,
                                    &V::brainMapOrvane),
        windowBackdrop(),
        row<&V::binderBackground>(Words::tr("Binder background"), groundOf<Surface::Binder>),
        row<&V::binderText>(Words::tr("Binder text"),
                            &surfaceColor<Surface::Binder, &SurfaceTokens::textSecondary>),
        row<&V::binderTopRailBackground>(Words::tr("Binder top rail"),
                                         groundOf<Surface::BinderTopRail>, &V::binderTopRailOrvane),
        row<&V::binderRailBackground>(Words::tr("Binder bottom rail"),
                                      groundOf<Surface::BinderRail>, &V::binderRailOrvane),
        row<&V::inspectorBackground>(Words::tr("Inspector background"),
                                     groundOf<Surface::Inspector>),
        row<&V::inspectorTopRailBackground>(Words::tr("Inspector top rail"),
                                            groundOf<Surface::InspectorTopRail>,
                                            &V::inspectorTopRailOrvane),
        row<&V::inspectorRailBackground>(Words::tr("Inspector bottom rail"),
                                         groundOf<Surface::InspectorRail>, &V::inspectorRailOrvane),
        row<&V::toolbarBackground>(Words::tr("Toolbar background"), groundOf<Surface::Toolbar>,
                                   &V::topToolbarBandOrvane),
        row<&V::toolbarText>(Words::tr("Toolbar text"),
                             &surfaceColor<Surface::Toolbar, &SurfaceTokens::text>),
        row<&V::chromeIconColor>(Words::tr("Icons"),
                                 &surfaceColor<Surface::Toolbar, &SurfaceTokens::icon>),
    };
    return colors;
}

} // namespace orvane
