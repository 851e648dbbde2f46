// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/versions/NoteVersion.h"

namespace orvane {

namespace {

std::optional<Blob> decoded(const std::optional<QString>& base64)
{
    if (!base64)
        return std::nullopt;
    auto bytes =
        QByteArray::fromBase64Encoding(base64->toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return bytes ? std::optional<Blob>(std::in_place, std::move(bytes.decoded)) : std::nullopt;
}

} // namespace

int wordCount(QStringView text)
{
    int words = 0;
    bool inWord = false;
    for (const QChar c : text) {
        const bool isSpace = c.isSpace();
        words += !isSpace && !inWord;
        inWord = !isSpace;
    }
    return words;
}

std::optional<Blob> NoteVersionSnapshot::bodyRTF() const
{
    return decoded(bodyRTFBase64);
}

std::optional<Blob> NoteVersionSnapshot::richContentPayload() const
{
    return decoded(richContentPayloadBase64);
}

} // namespace orvane
