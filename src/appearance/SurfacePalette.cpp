// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/SurfacePalette.h"

#include "appearance/Contrast.h"

namespace orvane {

QPalette surfacePalette(const Tokens& tokens, Surface surface)
{
    const SurfaceTokens& s = tokens.on(surface);
    const SurfaceTokens& card = tokens.on(Surface::Card);
    QPalette palette;
    palette.setColor(QPalette::Window, s.ground);
    const bool fieldsStandOut = surface == Surface::Window || surface == Surface::Card;
    palette.setColor(QPalette::Base, fieldsStandOut ? s.field : s.ground);
    palette.setColor(QPalette::AlternateBase, s.field);
    palette.setColor(QPalette::Button, s.control);
    palette.setColor(QPalette::ToolTipBase, card.ground);
    palette.setColor(QPalette::ToolTipText, card.text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, s.text);
    palette.setColor(QPalette::BrightText, s.danger);
    palette.setColor(QPalette::PlaceholderText, s.textSecondary);
    palette.setColor(QPalette::Highlight, tokens.selection);
    palette.setColor(QPalette::HighlightedText, tokens.textOnSelection);
    palette.setColor(QPalette::Link, s.link);
    palette.setColor(QPalette::LinkVisited, s.accent);
    for (const auto role : {QPalette::Light, QPalette::Midlight, QPalette::Mid, QPalette::Dark})
        palette.setColor(role, s.border);
    palette.setColor(QPalette::Shadow, tokens.on(Surface::Window).ground);
    const QColor faded = blended(s.text, 0.45, s.ground);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faded);
    palette.setColor(QPalette::Disabled, QPalette::PlaceholderText,
                     blended(s.textSecondary, 0.6, s.ground));
    return palette;
}

} // namespace orvane
