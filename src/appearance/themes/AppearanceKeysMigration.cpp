// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/AppearanceKeysMigration.h"

#include "appearance/themes/AppearanceFields.h"
#include "platform/UserDefaults.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

std::optional<double> numberIn(const DefaultsValue& stored)
{
    if (const auto* number = std::get_if<double>(&stored))
        return *number;
    if (const auto* whole = std::get_if<qint64>(&stored))
        return double(*whole);
    if (const auto* text = std::get_if<QString>(&stored)) {
        bool isNumber = false;
        const double number = text->trimmed().toDouble(&isNumber);
        if (isNumber)
            return number;
    }
    return std::nullopt;
}

} // namespace

void migrateAppearanceKeys(UserDefaults& defaults)
{
    for (const AppearanceField& field : appearanceFields()) {
        const auto stored = defaults.value(field.key);
        const auto number = stored ? numberIn(*stored) : std::nullopt;
        if (!number || !std::isfinite(*number))
            continue;
        const AppearanceFieldValue type = field.get({});
        if (std::holds_alternative<bool>(type) && (*number == 0 || *number == 1))
            defaults.set(field.key, *number == 1);
        else if (std::holds_alternative<double>(type))
            defaults.set(field.key, std::clamp(*number, 0.0, 1.0));
    }
}

} // namespace orvane
