// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/EditorLook.h"

#include "appearance/AppearanceTokens.h"
#include "appearance/Contrast.h"

#include <algorithm>

namespace orvane {

EditorLook editorLook(const Tokens& tokens, WritingGround ground, double dimmedShare)
{
    const bool isPaper = ground == WritingGround::paper;
    const Tokens t = isPaper ? tokensOnPaper(tokens) : tokens;
    const SurfaceTokens& page = t.on(Surface::Page);
    EditorLook look;
    look.text.text = t.pageText;
    look.text.link = page.link;
    look.text.selection = t.selection;
    look.text.separator = blended(page.textSecondary, 0.45, page.ground);
    look.text.label = page.textSecondary;
    look.text.page = page.ground;
    look.text.dimmed = blended(t.pageText, std::clamp(dimmedShare, 0.0, 1.0), page.ground);
    look.background = isPaper ? t.desk : page.ground;
    look.caret = t.caret;
    look.inactiveSelection = blended(t.selection, 0.6, page.ground);
    look.match = t.match;
    look.matchEdge = t.matchEdge;
    look.selectedMatch = page.accent;
    look.misspelling = page.danger;
    if (isPaper)
        look.sheet = {t.desk, page.ground, t.paperEdge};
    return look;
}

EditorLook withInkShare(EditorLook look, double share)
{
    look.text.text = readableInk(blended(look.text.text, share, look.text.page), look.text.page);
    return look;
}

} // namespace orvane
