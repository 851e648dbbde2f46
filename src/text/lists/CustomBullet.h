// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/RgbaColor.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

/// A bullet that a person has made.
struct CustomBullet {
    QUuid id;
    QString character; ///< the bullet's text, which may be more than one UTF-16 unit
    QString name;
    std::optional<double> colorR;
    std::optional<double> colorG;
    std::optional<double> colorB;
    std::optional<double> colorA;

    bool operator==(const CustomBullet&) const = default;

    /// The colour, if all four components are there.
    [[nodiscard]] std::optional<RgbaColor> color() const;
    void setColor(const std::optional<RgbaColor>& color);
};

/// The first bullet with which, and one space behind it, `line` begins; null if there is none.
[[nodiscard]] const CustomBullet* matchingBullet(const QList<CustomBullet>& bullets,
                                                 QStringView line);

/// A JSON array of objects whose keys are the field names; absent colour components are left out.
[[nodiscard]] QByteArray customBulletsToJson(const QList<CustomBullet>& bullets);
/// Nothing unless `json` is such an array and each object has an id, a character and a name.
[[nodiscard]] std::optional<QList<CustomBullet>> customBulletsFromJson(const QByteArray& json);

} // namespace orvane
