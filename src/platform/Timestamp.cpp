// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/Timestamp.h"

namespace orvane {

QString toIso8601(Timestamp time)
{
    return time.toUtc().toString(Qt::ISODateWithMs);
}

std::optional<Timestamp> fromIso8601(const QString& text)
{
    if (!text.contains(u'T'))
        return std::nullopt;
    QDateTime parsed = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!parsed.isValid())
        return std::nullopt;
    if (parsed.timeSpec() == Qt::LocalTime)
        parsed.setTimeSpec(Qt::UTC);
    return Timestamp{parsed.toMSecsSinceEpoch()};
}

} // namespace orvane
