// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/lists/CustomBullet.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>

namespace orvane {

namespace {

struct ColorKey {
    QLatin1String name;
    std::optional<double> CustomBullet::*member;
};

constexpr std::array<ColorKey, 4> colorKeys{{
    {QLatin1String("colorR"), &CustomBullet::colorR},
    {QLatin1String("colorG"), &CustomBullet::colorG},
    {QLatin1String("colorB"), &CustomBullet::colorB},
    {QLatin1String("colorA"), &CustomBullet::colorA},
}};

constexpr QLatin1String idKey("id");
constexpr QLatin1String characterKey("character");
constexpr QLatin1String nameKey("name");

std::optional<CustomBullet> bulletFrom(const QJsonObject& object)
{
    CustomBullet bullet;
    bullet.id = QUuid::fromString(object[idKey].toString());
    if (bullet.id.isNull() || !object[characterKey].isString() || !object[nameKey].isString())
        return std::nullopt;
    bullet.character = object[characterKey].toString();
    bullet.name = object[nameKey].toString();
    for (const ColorKey& key : colorKeys) {
        const QJsonValue value = object[key.name];
        if (value.isDouble())
            bullet.*key.member = value.toDouble();
        else if (!value.isUndefined() && !value.isNull())
            return std::nullopt;
    }
    return bullet;
}

} // namespace

std::optional<RgbaColor> CustomBullet::color() const
{
    if (!colorR || !colorG || !colorB || !colorA)
        return std::nullopt;
    return RgbaColor{*colorR, *colorG, *colorB, *colorA};
}

void CustomBullet::setColor(const std::optional<RgbaColor>& color)
{
    colorR = color ? std::optional(color->red) : std::nullopt;
    colorG = color ? std::optional(color->green) : std::nullopt;
    colorB = color ? std::optional(color->blue) : std::nullopt;
    colorA = color ? std::optional(color->alpha) : std::nullopt;
}

const CustomBullet* matchingBullet(const QList<CustomBullet>& bullets, QStringView line)
{
    for (const CustomBullet& bullet : bullets) {
        const qsizetype length = bullet.character.size();
        if (length > 0 && line.size() > length && line[length] == u' ' &&
            line.startsWith(bullet.character))
            return &bullet;
    }
    return nullptr;
}

QByteArray customBulletsToJson(const QList<CustomBullet>& bullets)
{
    QJsonArray array;
    for (const CustomBullet& bullet : bullets) {
        QJsonObject object{{idKey, bullet.id.toString(QUuid::WithoutBraces).toUpper()},
                           {characterKey, bullet.character},
                           {nameKey, bullet.name}};
        for (const ColorKey& key : colorKeys) {
            if (bullet.*key.member)
                object.insert(key.name, *(bullet.*key.member));
        }
        array.append(object);
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<CustomBullet>> customBulletsFromJson(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isArray())
        return std::nullopt;
    QList<CustomBullet> bullets;
    const QJsonArray values = document.array();
    for (const auto& value : values) {
        std::optional<CustomBullet> bullet = bulletFrom(value.toObject());
        if (!bullet)
            return std::nullopt;
        bullets.append(std::move(*bullet));
    }
    return bullets;
}

} // namespace orvane
