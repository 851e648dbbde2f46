// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/TextSnapshot.h"

namespace orvane {

AttributedString TextSnapshot::toAttributedString() const
{
    AttributedString result;
    qsizetype total = 0;
    for (const auto& paragraph : m_paragraphs)
        total += paragraph.length;
    result.reserve(total);

    auto piece = m_pieces.begin();
    int used = 0;
    for (std::size_t i = 0; i < m_paragraphs.size(); ++i) {
        const SharedParagraphStyle& style = m_paragraphStyles[std::size_t(m_paragraphs[i].format)];
        const bool isLast = i + 1 == m_paragraphs.size();
        int left = m_paragraphs[i].length - 1;
        while (left > 0) {
            const int length = std::min(left, piece->length - used);
            result.append(QStringView(m_buffer).mid(piece->bufferPosition + used, length),
                          m_characterStyles[std::size_t(piece->format)], style);
            left -= length;
            used += length;
            if (used == piece->length) {
                ++piece;
                used = 0;
            }
        }
        if (isLast) {
            result.setParagraphStyle({result.length(), 0}, style);
            break;
        }
        result.append(u"\n", m_characterStyles[std::size_t(piece->format)], style);
        if (++used == piece->length) {
            ++piece;
            used = 0;
        }
    }
    return result;
}

} // namespace orvane
