// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/BinderRTF.h"

#include "text/rtf/RtfReader.h"

namespace orvane::BinderRTF {

std::optional<QString> plainString(const QByteArray& rtf)
{
    const auto content = readRtf(rtf);
    if (!content)
        return std::nullopt;
    const QString text = content->text.text().trimmed();
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

} // namespace orvane::BinderRTF
