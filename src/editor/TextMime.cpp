// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/TextMime.h"

namespace orvane::textMime {

namespace {

QString asPlainText(const AttributedString& text)
{
    QString plain = text.text();
    plain.replace(QChar(lineSeparator), u'\n');
    plain.remove(QChar(objectCharacter));
    return plain;
}

} // namespace

std::unique_ptr<QMimeData> encode(const AttributedString& text, TextFormatting formatting)
{
    Q_UNUSED(formatting);
    auto data = std::make_unique<QMimeData>();
    data->setText(asPlainText(text));
    return data;
}

bool canDecode(const QMimeData& data, TextFormatting formatting)
{
    Q_UNUSED(formatting);
    return data.hasText();
}

std::optional<AttributedString> decode(const QMimeData& data, TextFormatting formatting,
                                       const SharedCharacterStyle& style)
{
    Q_UNUSED(formatting);
    if (!data.hasText())
        return std::nullopt;
    QString text = data.text();
    text.replace(QLatin1StringView("\r\n"), QLatin1StringView("\n"));
    text.replace(u'\r', u'\n');
    return AttributedString(text, style);
}

} // namespace orvane::textMime
