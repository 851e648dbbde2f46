// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/lists/EditorListStyle.h"

#include <algorithm>
#include <array>

namespace orvane {

namespace {

constexpr std::array<QLatin1String, editorListStyleCount> styleNames{{
    QLatin1String("disc"),
    QLatin1String("largeBullet"),
    QLatin1String("arrow"),
    QLatin1String("dash"),
    QLatin1String("circle"),
    QLatin1String("square"),
    QLatin1String("diamond"),
    QLatin1String("star"),
    QLatin1String("checkmark"),
    QLatin1String("checkbox"),
    QLatin1String("decimal"),
    QLatin1String("upperRoman"),
    QLatin1String("upperAlpha"),
    QLatin1String("lowerAlpha"),
    QLatin1String("lowerRoman"),
}};

} // namespace

QString rawValue(EditorListStyle style)
{
    return styleNames[std::size_t(style)];
}

std::optional<EditorListStyle> editorListStyle(QStringView rawValue)
{
    const auto found = std::find(styleNames.begin(), styleNames.end(), rawValue);
    if (found == styleNames.end())
        return std::nullopt;
    return EditorListStyle(found - styleNames.begin());
}

QString rawValue(EditorListKind kind)
{
    switch (kind) {
    case EditorListKind::bullet:
        return QStringLiteral("bullet");
    case EditorListKind::numbered:
        return QStringLiteral("numbered");
    case EditorListKind::none:
        break;
    }
    return QStringLiteral("none");
}

} // namespace orvane
