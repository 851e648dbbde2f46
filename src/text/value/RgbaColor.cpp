// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/RgbaColor.h"

#include <QRgba64>

namespace orvane {

QColor RgbaColor::toQColor() const
{
    const auto unit = [](double value) {
        return float(std::clamp(value, 0.0, 1.0));
    };
    return QColor::fromRgbF(unit(red), unit(green), unit(blue), unit(alpha));
}

RgbaColor RgbaColor::fromQColor(const QColor& color)
{
    // Not through floats: a channel of eight bits becomes n / 255 exactly.
    const QRgba64 rgb = color.rgba64();
    return {rgb.red() / 65535.0, rgb.green() / 65535.0, rgb.blue() / 65535.0,
            rgb.alpha() / 65535.0};
}

QString toHex(const RgbaColor& color)
{
    const QRgb rgba = color.toQColor().rgba();
    const auto pair = [](int value) {
        return QString::number(value, 16).rightJustified(2, u'0').toUpper();
    };
    QString text = u'#' + pair(qRed(rgba)) + pair(qGreen(rgba)) + pair(qBlue(rgba));
    if (qAlpha(rgba) != 255)
        text += pair(qAlpha(rgba));
    return text;
}

std::optional<RgbaColor> rgbaFromHex(QStringView text)
{
    if (text.startsWith(u'#'))
        text = text.mid(1);
    QString digits;
    if (text.size() == 3) {
        for (const QChar c : text)
            digits += QString(2, c);
    } else if (text.size() == 6 || text.size() == 8) {
        digits = text.toString();
    } else {
        return std::nullopt;
    }
    if (digits.size() == 6)
        digits += QStringLiteral("FF");
    double channels[4];
    for (int i = 0; i < 4; ++i) {
        bool isHex = false;
        const QStringView pair = QStringView(digits).mid(2 * i, 2);
        if (pair.startsWith(u'+') || pair.startsWith(u'-'))
            return std::nullopt;
        channels[i] = pair.toInt(&isHex, 16) / 255.0;
        if (!isHex)
            return std::nullopt;
    }
    return RgbaColor{channels[0], channels[1], channels[2], channels[3]};
}

} // namespace orvane
