// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfPalette.h"

#include "text/rtf/RtfText.h"

namespace orvane {

int RtfPalette::font(const QString& family)
{
    const auto known = m_fontNumbers.constFind(family);
    if (known != m_fontNumbers.constEnd())
        return *known;
    m_fontNumbers.insert(family, int(m_families.size()));
    m_families.append(family);
    return int(m_families.size()) - 1;
}

int RtfPalette::color(const RgbaColor& color)
{
    const QRgb rgb = color.toQColor().rgb();
    const auto known = m_colorNumbers.constFind(rgb);
    if (known != m_colorNumbers.constEnd())
        return *known;
    m_colors.append(rgb);
    m_colorNumbers.insert(rgb, int(m_colors.size()));
    return int(m_colors.size());
}

void RtfPalette::appendTables(QByteArray& rtf) const
{
    rtf.append("{\\fonttbl");
    for (qsizetype i = 0; i < m_families.size(); ++i) {
        appendRtfWord(rtf, "{\\f", int(i));
        rtf.append("\\fnil\\fcharset0 ");
        QString family = m_families[i];
        appendRtfText(rtf, family.remove(u';'));
        rtf.append(";}");
    }
    rtf.append("}\n{\\colortbl;");
    for (const QRgb color : m_colors) {
        appendRtfWord(rtf, "\\red", qRed(color));
        appendRtfWord(rtf, "\\green", qGreen(color));
        appendRtfWord(rtf, "\\blue", qBlue(color));
        rtf.append(';');
    }
    rtf.append("}\n");
}

} // namespace orvane
