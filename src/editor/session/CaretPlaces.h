// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/JsonObjectReader.h"
#include "platform/UserDefaults.h"

#include <QUuid>

#include <optional>

/// Where the carets of notes stood when they were last left.
namespace orvane::CaretPlaces {

/// Texts of an identifier, a colon and a position; the note left last comes first.
inline const QString defaultsKey = QStringLiteral("session.caretPlaces.v1");
/// As many are kept.
inline constexpr qsizetype most = 200;

[[nodiscard]] inline std::optional<qsizetype> placeIn(const UserDefaults& defaults,
                                                      const QUuid& note)
{
    const QString start = uuidText(note) + u':';
    const QStringList places = defaults.get<QStringList>(defaultsKey, {});
    for (const QString& place : places) {
        if (!place.startsWith(start))
            continue;
        bool isNumber = false;
        const qsizetype position = place.sliced(start.size()).toLongLong(&isNumber);
        return isNumber && position >= 0 ? std::optional(position) : std::nullopt;
    }
    return std::nullopt;
}

inline void remember(UserDefaults& defaults, const QUuid& note, qsizetype position)
{
    const QString start = uuidText(note) + u':';
    QStringList places = defaults.get<QStringList>(defaultsKey, {});
    places.removeIf([&](const QString& place) { return place.startsWith(start); });
    if (position > 0)
        places.prepend(start + QString::number(position));
    defaults.set(defaultsKey, QStringList(places.first(std::min(places.size(), most))));
}

} // namespace orvane::CaretPlaces
