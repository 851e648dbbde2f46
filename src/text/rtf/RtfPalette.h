// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/RgbaColor.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>

namespace orvane {

/// The font table and the colour table of an RTF document that is being written. A font or colour
/// gets its number when it is first asked for.
class RtfPalette {
public:
    [[nodiscard]] int font(const QString& family);
    /// From 1; number 0 is "automatic".
    [[nodiscard]] int color(const RgbaColor& color);

    void appendTables(QByteArray& rtf) const;

private:
    QStringList m_families;
    QHash<QString, int> m_fontNumbers;
    QList<QRgb> m_colors;
    QHash<QRgb, int> m_colorNumbers;
};

} // namespace orvane
