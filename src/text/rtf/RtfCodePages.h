// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QStringDecoder>

#include <memory>

namespace orvane {

/// The code page of the Symbol and Wingdings families, whose bytes are pictures.
inline constexpr int symbolCodePage = 42;

/// The code page that a font table's `\fcharsetN` stands for; 0 for the document's own.
[[nodiscard]] int codePageOfCharset(int charset);

/// The character that stands for a byte of the symbol font `family`, or for U+F000 plus that byte:
/// all of "Symbol"; of others the usual list bullets, boxes, ticks and arrows, and what is left in
/// the private use area.
[[nodiscard]] QChar symbolCharacter(uchar byte, QStringView family);

/// Turns bytes of the code pages that RTF documents name into text.
class CodePageDecoder {
public:
    /// An unknown code page is read as Western (1252), and so is that of symbol fonts, whose bytes
    /// `symbolCharacter` knows. Bytes that mean nothing become U+FFFD.
    [[nodiscard]] QString decode(int codePage, QByteArrayView bytes);

private:
    QHash<int, std::shared_ptr<QStringDecoder>> m_decoders;
};

} // namespace orvane
