// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QDateTime>
#include <QString>

#include <compare>
#include <optional>

namespace orvane {

/// A point in time: milliseconds since 1 January 1970, 00:00 UTC. Small, trivially copied and
/// free of a time zone; a zone enters only where a person reads a date.
struct Timestamp {
    qint64 msecs = 0;

    auto operator<=>(const Timestamp&) const = default;

    /// Seconds from `earlier` to this moment, with fractions; negative when this one is earlier.
    [[nodiscard]] double secondsSince(Timestamp earlier) const
    {
        return double(msecs - earlier.msecs) / 1000.0;
    }
    [[nodiscard]] QDateTime toUtc() const { return QDateTime::fromMSecsSinceEpoch(msecs, Qt::UTC); }
    [[nodiscard]] QDateTime toLocal() const { return QDateTime::fromMSecsSinceEpoch(msecs); }
};

/// ISO 8601 in UTC with milliseconds, "2026-11-02T14:32:05.123Z".
[[nodiscard]] QString toIso8601(Timestamp time);

/// Reads ISO 8601 date and time with or without fractions and with "Z" or an offset. Text
/// without a zone counts as UTC. Anything else gives nothing.
[[nodiscard]] std::optional<Timestamp> fromIso8601(const QString& text);

inline size_t qHash(Timestamp time, size_t seed = 0)
{
    return ::qHash(time.msecs, seed);
}

} // namespace orvane
