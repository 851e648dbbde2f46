// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/OWChartBlock.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

double clampedOr(double value, double low, double high, double fallback)
{
    return std::isfinite(value) ? std::clamp(value, low, high) : fallback;
}

RgbaColor normalized(const RgbaColor& color)
{
    return {clampedOr(color.red, 0, 1, 0), clampedOr(color.green, 0, 1, 0),
            clampedOr(color.blue, 0, 1, 0), clampedOr(color.alpha, 0, 1, 1)};
}

QJsonObject toJson(const RgbaColor& color)
{
    return {{u"red"_s, color.red},
            {u"green"_s, color.green},
            {u"blue"_s, color.blue},
            {u"alpha"_s, color.alpha}};
}

RgbaColor colorFrom(const QJsonValue& value, const RgbaColor& fallback)
{
    if (!value.isObject())
        return fallback;
    const QJsonObject object = value.toObject();
    return {object[u"red"].toDouble(fallback.red), object[u"green"].toDouble(fallback.green),
            object[u"blue"].toDouble(fallback.blue), object[u"alpha"].toDouble(fallback.alpha)};
}

QString uuidText(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

// What has no identity gets one that is the same whenever the same bytes are read.
QUuid idFrom(const QJsonValue& value, const QUuid& family, const QByteArray& name)
{
    const QUuid id = QUuid::fromString(value.toString());
    return id.isNull() ? QUuid::createUuidV5(family, name) : id;
}

QJsonObject toJson(const OWChartDataPoint& point)
{
    QJsonObject object{
        {u"id"_s, uuidText(point.id)}, {u"label"_s, point.label}, {u"value"_s, point.value}};
    if (point.color)
        object[u"color"] = toJson(*point.color);
    return object;
}

OWChartDataPoint pointFrom(const QJsonValue& value, const QUuid& chart, qsizetype index)
{
    const QJsonObject object = value.toObject();
    OWChartDataPoint point;
    point.id = idFrom(object[u"id"], chart, QByteArray::number(index));
    point.label = object[u"label"].toString();
    point.value = object[u"value"].toDouble();
    if (object[u"color"].isObject())
        point.color = colorFrom(object[u"color"], {});
    return point;
}

} // namespace

const QList<OWChartDataPoint>& OWChartBlock::defaultDataPoints()
{
    static const QList<OWChartDataPoint> points = [] {
        constexpr std::array values{120.0, 160.0, 90.0, 210.0};
        QList<OWChartDataPoint> quarters;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const QString label = u"Q%1"_s.arg(i + 1);
            quarters.append({QUuid::createUuidV5(QUuid(), label), label, values[i], std::nullopt});
        }
        return quarters;
    }();
    return points;
}

void OWChartBlock::normalizeForPersistence()
{
    title = title.trimmed();
    caption = caption.trimmed();
    width = clampedOr(width, 220, 760, 460);
    height = clampedOr(height, 180, 560, 300);
    backgroundColor = normalized(backgroundColor);
    chartColor = normalized(chartColor);
    if (dataPoints.isEmpty())
        dataPoints = defaultDataPoints();
    for (qsizetype i = 0; i < dataPoints.size(); ++i) {
        OWChartDataPoint& point = dataPoints[i];
        point.label = point.label.trimmed();
        if (point.label.isEmpty())
            point.label = u"Item %1"_s.arg(i + 1);
        if (!std::isfinite(point.value))
            point.value = 0;
        if (point.color)
            point.color = normalized(*point.color);
    }
}

QByteArray OWChartBlock::toJson() const
{
    QJsonArray points;
    for (const OWChartDataPoint& point : dataPoints)
        points.append(orvane::toJson(point));
    const QJsonObject object{
        {u"id"_s, uuidText(id)},
        {u"kind"_s, rawValue(kind)},
        {u"title"_s, title},
        {u"caption"_s, caption},
        {u"dataPoints"_s, points},
        {u"width"_s, width},
        {u"height"_s, height},
        {u"backgroundColor"_s, orvane::toJson(backgroundColor)},
        {u"chartColor"_s, orvane::toJson(chartColor)},
        {u"createdAt"_s, toIso8601(createdAt)},
        {u"updatedAt"_s, toIso8601(updatedAt)},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<OWChartBlock> OWChartBlock::fromJson(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    OWChartBlock block;
    if (object.contains(u"kind")) {
        const auto kind = fromRawValue<OWChartKind>(object[u"kind"].toString());
        if (!kind)
            return std::nullopt;
        block.kind = *kind;
    }
    block.id = idFrom(object[u"id"], QUuid(), json);
    block.title = object[u"title"].toString();
    block.caption = object[u"caption"].toString();
    if (object[u"dataPoints"].isArray()) {
        const QJsonArray points = object[u"dataPoints"].toArray();
        block.dataPoints.clear();
        for (qsizetype i = 0; i < std::min(points.size(), mostDataPoints); ++i)
            block.dataPoints.append(pointFrom(points[i], block.id, i));
    }
    block.width = object[u"width"].toDouble(block.width);
    block.height = object[u"height"].toDouble(block.height);
    block.backgroundColor = colorFrom(object[u"backgroundColor"], block.backgroundColor);
    block.chartColor = colorFrom(object[u"chartColor"], block.chartColor);
    block.createdAt = fromIso8601(object[u"createdAt"].toString()).value_or(Timestamp{});
    block.updatedAt = fromIso8601(object[u"updatedAt"].toString()).value_or(Timestamp{});
    block.normalizeForPersistence();
    return block;
}

} // namespace orvane
