// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/EditorParagraphStyleRole.h"

#include "editor/view/EditorSettings.h"

#include <cmath>

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

EditorParagraphStyleRole role(double size, double bodyFontSize, const UserDefaults& defaults)
{
    const auto distance = [&](EditorParagraphStyleRole role) {
        return std::abs(configuredSize(role, defaults) - size);
    };
    const auto nearer = [&](EditorParagraphStyleRole one, EditorParagraphStyleRole other) {
        return distance(one) < distance(other);
    };
    const EditorParagraphStyleRole heading =
        *std::min_element(headingCases.begin(), headingCases.end(), nearer);
    const EditorParagraphStyleRole nearest = nearer(heading, body) ? heading : body;
    if (distance(nearest) <= 1)
        return nearest;
    return size < std::max(1.3 * bodyFontSize, bodyFontSize + 4) ? body : heading;
}

} // namespace orvane
