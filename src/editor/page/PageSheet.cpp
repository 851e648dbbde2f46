// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/PageSheet.h"

#include "appearance/AppearanceTokens.h"
#include "appearance/Look.h"
#include "editor/view/EditorSettings.h"

#include <QHash>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace orvane {

namespace {

constexpr qreal shadowRadius = 8;
constexpr qreal shadowOffset = 2;
constexpr qreal shadowOpacity = 0.25;
constexpr qreal cornerRadius = 3;
constexpr int reach = sheetShadowReach;

/// How much of a blurred edge has come at `distance` inside of it: the integral of the Gaussian
/// whose standard deviation is half the radius.
qreal blurredEdge(qreal distance)
{
    return 0.5 * (1 + std::erf(distance / (shadowRadius / 2 * std::sqrt(2.0))));
}

/// The shadow of a small sheet, from which that of any sheet is put together: its corners as they
/// are, its sides stretched. A blurred rectangle is the product of two blurred edges.
QPixmap makeShadow(qreal ratio)
{
    const int size = int(std::lround(4 * reach * ratio));
    const auto profile = [&](int i) {
        const qreal at = (i + 0.5) / ratio - reach; // from the sheet's edge inwards
        return blurredEdge(std::min(at, 2 * reach - at));
    };
    std::vector<qreal> shares(std::size_t(size), 0.0);
    for (int i = 0; i < size; ++i)
        shares[std::size_t(i)] = profile(i);
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size; ++x) {
            const qreal share = shares[std::size_t(x)] * shares[std::size_t(y)] * shadowOpacity;
            line[x] = qRgba(0, 0, 0, int(std::lround(share * 255)));
        }
    }
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

const QPixmap& shadowAt(qreal ratio)
{
    static QHash<int, QPixmap> shadows;
    QPixmap& shadow = shadows[int(std::lround(ratio * 100))];
    if (shadow.isNull())
        shadow = makeShadow(ratio);
    return shadow;
}

/// The nine parts of the shadow that fall into `clip`, but the middle, which the sheet covers.
void drawShadow(QPainter& painter, const QRectF& sheet, const QRectF& clip)
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QPixmap& shadow = shadowAt(ratio);
    const QRectF cast = sheet.translated(0, shadowOffset);
    // Where the parts begin and end, on the screen and in the picture; the sides come from the
    // row of pixels in its middle.
    constexpr qreal part = 2 * reach;
    const std::array xs{cast.left() - reach, cast.left() + reach, cast.right() - reach,
                        cast.right() + reach};
    const std::array ys{cast.top() - reach, cast.top() + reach, cast.bottom() - reach,
                        cast.bottom() + reach};
    const std::array<std::pair<qreal, qreal>, 3> from{
        std::pair(0.0, part), std::pair(part - 1, 1.0), std::pair(part, part)};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const QRectF target(QPointF(xs[column], ys[row]), QPointF(xs[column + 1], ys[row + 1]));
            if ((row == 1 && column == 1) || !target.intersects(clip))
                continue;
            const QRectF source(from[column].first * ratio, from[row].first * ratio,
                                from[column].second * ratio, from[row].second * ratio);
            painter.drawPixmap(target, shadow, source);
        }
    }
}

} // namespace

Tokens writingTokens(const Look& look, const UserDefaults& defaults)
{
    return pageViewEnabledSetting.read(defaults) ? tokensOnPaper(look.tokens()) : look.tokens();
}

void drawPageSheet(QPainter& painter, const QRectF& whole, const QRectF& clip,
                   const PageSheetLook& look)
{
    // A long text has a sheet that is longer than painters can reckon with.
    constexpr qreal beyond = 4 * reach;
    const QRectF sheet(QPointF(whole.left(), std::max(whole.top(), clip.top() - beyond)),
                       QPointF(whole.right(), std::min(whole.bottom(), clip.bottom() + beyond)));
    const QRectF inner = sheet.adjusted(cornerRadius, cornerRadius, -cornerRadius, -cornerRadius);
    if (inner.contains(clip)) {
        painter.fillRect(clip, look.paper);
        return;
    }
    painter.fillRect(clip, look.desk);
    if (sheet.top() >= sheet.bottom())
        return;
    painter.save();
    painter.setClipRect(clip, Qt::IntersectClip);
    drawShadow(painter, sheet, clip);
    if (clip.top() >= inner.top() && clip.bottom() <= inner.bottom()) {
        painter.fillRect(sheet, look.edge);
        painter.fillRect(sheet.adjusted(1, 0, -1, 0), look.paper);
    } else {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(look.edge, 1));
        painter.setBrush(look.paper);
        painter.drawRoundedRect(sheet.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    }
    painter.restore();
}

} // namespace orvane
