// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Timestamp.h"
#include "text/value/OWChartKind.h"
#include "text/value/RgbaColor.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

using OWChartRGBAColor = RgbaColor;

/// One labelled value of a chart.
struct OWChartDataPoint {
    QUuid id;
    QString label;
    double value = 0;
    std::optional<OWChartRGBAColor> color;

    bool operator==(const OWChartDataPoint&) const = default;
};

/// A chart of a rich note as data. Sizes are in points.
struct OWChartBlock {
    /// A stored chart with more points is cut to this many; no page shows so many.
    static constexpr qsizetype mostDataPoints = 2'000;

    QUuid id;
    OWChartKind kind = OWChartKind::bar;
    QString title;
    QString caption;
    QList<OWChartDataPoint> dataPoints = defaultDataPoints();
    double width = 460;
    double height = 300;
    OWChartRGBAColor backgroundColor{0.11, 0.12, 0.14, 1};
    OWChartRGBAColor chartColor{0.36, 0.63, 0.98, 1};
    Timestamp createdAt;
    Timestamp updatedAt;

    bool operator==(const OWChartBlock&) const = default;

    /// "Q1" to "Q4" with the values 120, 160, 90 and 210; their identities are always the same.
    [[nodiscard]] static const QList<OWChartDataPoint>& defaultDataPoints();

    /// Trims title, caption and labels, names empty labels "Item 1" and so on, holds width within
    /// 220 to 760, height within 180 to 560 and colours within 0 to 1, and gives a chart without
    /// points the default points.
    void normalizeForPersistence();

    /// The JSON object whose keys are the names of the fields.
    [[nodiscard]] QByteArray toJson() const;

    /// Reads `toJson`'s form. Every key may be missing; the result is normalised. Nothing for what
    /// is no JSON object, and for a kind that is not known.
    [[nodiscard]] static std::optional<OWChartBlock> fromJson(const QByteArray& json);
};

/// A chart in the text, on one object character (U+FFFC): its data, and the picture of it that
/// other readers of the text see.
struct OWChartAttachment {
    OWChartBlock chartBlock;
    QByteArray renderedImageData; ///< PNG

    bool operator==(const OWChartAttachment&) const = default;
};

} // namespace orvane
