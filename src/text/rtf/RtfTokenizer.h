// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArrayView>

namespace orvane {

/// One lexical piece of Rich Text Format (RTF specification 1.9.1, "RTF syntax").
struct RtfToken {
    enum class Kind {
        groupStart,
        groupEnd,
        word,   ///< `text` is the name, `parameter` its number where there is one
        symbol, ///< `text` is the one character after the backslash
        byte,   ///< `\'hh`: `parameter` is the byte
        text,   ///< bytes in the current code page, without line ends
        binary, ///< the raw bytes that `\binN` announced
        end,
    };
    Kind kind = Kind::end;
    QByteArrayView text = {};
    int parameter = 0;
    bool hasParameter = false;
};

/// Cuts RTF bytes into tokens. The views point into the bytes given, which must outlive it. No
/// input is an error: what makes no sense as RTF comes out as text or nothing, and it always ends.
class RtfTokenizer {
public:
    explicit RtfTokenizer(QByteArrayView bytes)
        : m_bytes(bytes)
    {}

    [[nodiscard]] RtfToken next();

private:
    RtfToken control();
    RtfToken word();
    RtfToken hexByte();

    QByteArrayView m_bytes;
    qsizetype m_position = 0;
    qsizetype m_pendingBinary = 0;
};

} // namespace orvane
