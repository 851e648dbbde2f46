// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/EditorParagraphStyleRole.h"

#include "editor/view/EditorSettings.h"

namespace orvane {

using enum EditorParagraphStyleRole;

namespace {

constexpr std::array<const Setting<double>*, 7> sizeSettings{
    &editorFontSizeSetting, &headingTitleSizeSetting, &heading1SizeSetting, &heading2SizeSetting,
    &heading3SizeSetting,   &heading4SizeSetting,     &heading5SizeSetting,
};

} // namespace

const Setting<double>& sizeSetting(EditorParagraphStyleRole role)
{
    return *sizeSettings[std::size_t(role)];
}

double configuredSize(EditorParagraphStyleRole role, const UserDefaults& defaults)
{
    const Setting<double>& setting = sizeSetting(role);
    const double stored = setting.read(defaults);
    return stored > 0 ? stored : setting.fallback;
}

HeadingSizes headingSizes(const UserDefaults& defaults)
{
    HeadingSizes sizes;
    sizes.body = configuredSize(body, defaults);
    for (std::size_t i = 0; i < headingCases.size(); ++i)
        sizes.headings[i] = configuredSize(headingCases[i], defaults);
    return sizes;
}

EditorParagraphStyleRole role(double size, double bodyFontSize, const UserDefaults& defaults)
{
    return EditorParagraphStyleRole(headingLevelOfSize(size, bodyFontSize, headingSizes(defaults)));
}

} // namespace orvane
