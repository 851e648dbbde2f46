// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/AppearanceTokens.h"

#include "appearance/Contrast.h"
#include "appearance/SurfaceChoice.h"
#include "appearance/SystemColors.h"
#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/BundledThemes.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr double secondaryShare = 0.6;
constexpr double gradientTopShare = 0.05;
constexpr double gradientBottomShare = 0.14;
constexpr double selectionShare = 0.28;
constexpr double matchShare = 0.34;
constexpr double punctuationShare = 0.5;
constexpr double accentWashShare = 0.14;
constexpr double hoverShare = 0.1;
constexpr double deskMatShare = 0.4;
constexpr double deskShade = 0.06;

int channel(double share)
{
    return int(std::lround(std::clamp(std::isfinite(share) ? share : 0.0, 0.0, 1.0) * 255));
}

QColor opaque(const AppearanceColor& color)
{
    return QColor(channel(color.red), channel(color.green), channel(color.blue));
}

double opacityOf(const AppearanceColor& color, const AppearanceGlass& glass)
{
    const double opacity = color.alpha * (glass.enabled ? glass.strength : 1.0);
    return channel(opacity) / 255.0;
}

/// A ground with what the backdrop's gradient makes of it at the window's ends.
struct Ground {
    QColor middle;
    QColor top;
    QColor bottom;
};

Ground over(const Ground& below, const QColor& color, double opacity)
{
    return {blended(color, opacity, below.middle), blended(color, opacity, below.top),
            blended(color, opacity, below.bottom)};
}

Ground over(const Ground& below, const AppearanceColor& color, const AppearanceGlass& glass)
{
    return over(below, opaque(color), opacityOf(color, glass));
}

/// What is drawn between the letters and of Markdown, on `ground`.
void setWriting(Tokens& t, const QColor& ground)
{
    const SystemColors& system = systemColors(schemeOfGround(ground));
    t.match = blended(system.marker, matchShare, ground);
    t.matchEdge = readableInk(system.marker, ground, iconContrast);
    t.markdown.code = readableInk(system.orange, ground);
    t.markdown.link = readableInk(system.controlAccent, ground);
    t.markdown.blockquote = t.on(Surface::Page).textSecondary;
    t.markdown.listMarker = readableInk(system.purple, ground);
    t.markdown.taskCheckbox = readableInk(system.success, ground);
    t.markdown.punctuation =
        readableInk(blended(t.pageText, punctuationShare, ground), ground, iconContrast);
}

/// Builds the tokens of one look, surface by surface.
class Builder {
public:
    explicit Builder(const AppearanceValues& values)
        : v(values)
    {
        const QColor middle(channel(v.windowBackdropRed), channel(v.windowBackdropGreen),
                            channel(v.windowBackdropBlue));
        window = {middle, middle, middle};
        if (v.windowBackdropGradient) {
            window.top = blended(Qt::white, gradientTopShare, middle);
            window.bottom = blended(Qt::black, gradientBottomShare, middle);
        }
        const SystemColors& system = systemColors(schemeOfGround(middle));
        accent = v.editorCursorColor.enabled ? opaque(v.editorCursorColor) : system.controlAccent;
        binder = pane(v.binderBackground, v.orvaneGlassBinder, v.orvaneGlassOpacityBinder, middle);
        inspector = pane(v.inspectorBackground, v.orvaneGlassInspector,
                         v.orvaneGlassOpacityInspector, middle);
        page = pane(v.editorBackground, v.orvaneGlassEditor, v.orvaneGlassOpacityEditor,
                    system.textBackground);
    }

    Tokens build()
    {
        setPanes();
        setBars();
        setRails();
        setGeneral();
        return t;
    }

private:
    [[nodiscard]] Ground pane(const AppearanceColor& color, bool glass, double opacity,
                              const QColor& unnamed) const
    {
        const AppearanceGlass used{v.orvaneGlassEnabled && glass, opacity};
        return color.enabled ? over(window, color, used)
                             : over(window, unnamed, opacityOf({}, used));
    }

    /// A bar of its own colour, or one that lifts itself a little off what is below it.
    [[nodiscard]] static Ground bar(const Ground& below, const AppearanceColor& color,
                                    const AppearanceGlass& glass)
    {
        return color.enabled ? over(below, color, glass)
                             : over(below, extremeInk({below.middle}), 0.07);
    }

    /// The ink where the look names it, else `unnamed`.
    [[nodiscard]] static QColor ink(const AppearanceColor& color, const QColor& ground,
                                    const QColor& unnamed)
    {
        return color.enabled ? blended(opaque(color), opacityOf(color, {false, 1}), ground)
                             : unnamed;
    }

    struct Inks {
        const AppearanceColor& text;
        const AppearanceColor& secondary;
        const AppearanceColor& icon;
    };

    void set(Surface surface, const Ground& ground, const Inks& inks)
    {
        const SystemColors& system = systemColors(schemeOfGround(ground.middle));
        SurfaceChoice choice;
        choice.ground = ground.middle;
        choice.groundTop = ground.top;
        choice.groundBottom = ground.bottom;
        choice.text = ink(inks.text, ground.middle, system.text);
        const QColor text = readableInk(choice.text, ground.middle);
        choice.textSecondary =
            ink(inks.secondary, ground.middle, blended(text, secondaryShare, ground.middle));
        choice.icon = ink(inks.icon, ground.middle, choice.text);
        choice.accent = accent;
        choice.danger = system.danger;
        choice.warning = system.orange;
        choice.border = v.pageBorderBackground.enabled
                            ? over(ground, v.pageBorderBackground, v.pageBorderOrvane).middle
                            : ground.middle;
        t.on(surface) = surfaceTokens(choice);
    }

    void setPanes()
    {
        const Inks inks{v.editorText, v.binderText, v.chromeIconColor};
        set(Surface::Window, window, inks);
        set(Surface::Binder, binder, inks);
        set(Surface::Inspector, inspector, inks);
        set(Surface::Page, page, inks);
        set(Surface::Card, {page.middle, page.middle, page.middle}, inks);
        set(Surface::BrainMap,
            v.brainMapBackground.enabled ? over(window, v.brainMapBackground, v.brainMapOrvane)
                                         : window,
            inks);
    }

    void setBars()
    {
        const AppearanceColor& text = v.toolbarText.enabled ? v.toolbarText : v.editorText;
        const AppearanceColor& second = v.toolbarText.enabled ? unnamed : v.binderText;
        set(Surface::Toolbar,
            v.toolbarBackground.enabled ? over(window, v.toolbarBackground, v.topToolbarBandOrvane)
                                        : binder,
            {text, second, v.chromeIconColor});
        const Inks inks{v.editorText, v.editorChromeText, v.chromeIconColor};
        set(Surface::FormattingBar, bar(page, v.fmtToolbarBackground, v.fmtToolbarOrvane), inks);
        set(Surface::StatusStrip, bar(page, v.statusBarBackground, v.statusBarOrvane), inks);
    }

    /// A look names no ink for rails.
    void setRails()
    {
        const auto rail = [this](Surface surface, const Ground& below, const AppearanceColor& color,
                                 const AppearanceGlass& glass) {
            const Ground ground = bar(below, color, glass);
            const QColor best = inkFor(ground.middle);
            const AppearanceColor text{true, best.redF(), best.greenF(), best.blueF(), 1};
            set(surface, ground, {text, unnamed, text});
        };
        rail(Surface::BinderTopRail, binder, v.binderTopRailBackground, v.binderTopRailOrvane);
        rail(Surface::BinderRail, binder, v.binderRailBackground, v.binderRailOrvane);
        rail(Surface::InspectorTopRail, inspector, v.inspectorTopRailBackground,
             v.inspectorTopRailOrvane);
        rail(Surface::InspectorRail, inspector, v.inspectorRailBackground, v.inspectorRailOrvane);
    }

    void setFace(const QColor& face, QColor& shown, QColor& hovered, QColor& text) const
    {
        shown = face;
        text = inkFor(face);
        const bool lightText = relativeLuminance(text) > relativeLuminance(face);
        hovered = blended(lightText ? Qt::black : Qt::white, hoverShare, face);
    }

    void setGeneral()
    {
        const SurfaceTokens& card = t.on(Surface::Card);
        setFace(accent, t.accent, t.accentHovered, t.textOnAccent);
        setFace(systemColors(schemeOfGround(card.ground)).danger, t.danger, t.dangerHovered,
                t.textOnDanger);
        t.accentWash = blended(accent, accentWashShare, card.ground);
        t.selection = blended(accent, selectionShare, page.middle);
        t.pageText = ink(v.editorText, page.middle, t.on(Surface::Page).text);
        t.textOnSelection = readableInk(t.on(Surface::Page).text, t.selection);
        t.caret = readableInk(accent, page.middle, iconContrast);
        setWriting(t, page.middle);
        t.backdrop = QColor(0, 0, 0, schemeOfGround(window.middle) == ColorScheme::Dark ? 140 : 90);
        setPaper();
        t.paperEdge = t.on(Surface::Page).border;
        t.windowTop = t.on(Surface::Window).groundTop;
        t.windowBottom = t.on(Surface::Window).groundBottom;
    }

    void setPaper()
    {
        const double mat = deskMatShare * channel(v.deskMat.strength) / 255.0;
        t.desk = v.deskMat.enabled ? blended(Qt::black, mat, page.middle) : window.middle;
        const QColor sheet =
            v.pagePaperBackground.enabled ? opaque(v.pagePaperBackground) : page.middle;
        t.paper = blended(sheet, opacityOf(v.pagePaperBackground, v.pagePaperOrvane), t.desk);
        // Paper lies on its desk and not in a hole of it.
        if (relativeLuminance(t.desk) >= relativeLuminance(t.paper))
            t.desk = blended(Qt::black, deskShade, t.paper);
    }

    static constexpr AppearanceColor unnamed{};

    const AppearanceValues& v;
    Ground window;
    Ground binder;
    Ground inspector;
    Ground page;
    QColor accent;
    Tokens t;
};

} // namespace

Tokens tokensFor(const AppearanceValues& values)
{
    return Builder(values).build();
}

Tokens tokensOnPaper(const Tokens& tokens)
{
    Tokens t = tokens;
    const SurfaceTokens& page = tokens.on(Surface::Page);
    t.on(Surface::Page) =
        surfaceTokens({t.paper, t.paper, t.paper, page.text, page.textSecondary, page.icon,
                       page.accent, page.danger, page.warning, page.border});
    t.pageText = readableInk(tokens.pageText, t.paper);
    t.caret = readableInk(tokens.caret, t.paper, iconContrast);
    t.selection = blended(tokens.accent, selectionShare, t.paper);
    setWriting(t, t.paper);
    return t;
}

Tokens signatureDarkTokens()
{
    return tokensFor(appliedTo({}, signatureBundle().dark.values));
}

QList<InkContrast> inkContrasts(const AppearanceValues& values)
{
    using V = AppearanceValues;
    struct Row {
        AppearanceColor V::*ink;
        QList<Surface> surfaces;
        double minimum;
        bool madeReadable;
    };
    const Row rows[] = {
        {&V::editorText, {Surface::Page}, textContrast, false},
        {&V::editorCursorColor, {Surface::Page}, iconContrast, true},
        {&V::binderText, {Surface::Binder, Surface::Inspector}, textContrast, true},
        {&V::editorChromeText, {Surface::StatusStrip, Surface::FormattingBar}, textContrast, true},
        {&V::toolbarText, {Surface::Toolbar}, textContrast, true},
        {&V::chromeIconColor,
         {Surface::Toolbar, Surface::Binder, Surface::Inspector, Surface::FormattingBar,
          Surface::StatusStrip},
         iconContrast,
         true},
    };
    const Tokens tokens = tokensFor(values);
    QList<InkContrast> contrasts;
    for (const Row& row : rows) {
        const AppearanceColor& color = values.*row.ink;
        if (!color.enabled)
            continue;
        InkContrast lowest{row.ink, row.surfaces.first(), 22, row.minimum, false};
        for (const Surface surface : row.surfaces) {
            const QColor& ground = tokens.on(surface).ground;
            const double opacity = opacityOf(color, {false, 1});
            const double ratio = contrastRatio(blended(opaque(color), opacity, ground), ground);
            if (ratio < lowest.ratio) {
                lowest.surface = surface;
                lowest.ratio = ratio;
            }
        }
        lowest.madeReadable = row.madeReadable && lowest.ratio < row.minimum;
        contrasts.append(lowest);
    }
    return contrasts;
}

} // namespace orvane
