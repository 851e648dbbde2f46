// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/OrvaneWorkspaceRTF.h"

#include "text/rtf/RtfReader.h"
#include "text/rtf/RtfWriter.h"

namespace orvane::OrvaneWorkspaceRTF {

std::optional<QByteArray> data(const AttributedString& document,
                               const std::optional<RgbaColor>& documentBackgroundColor,
                               const HeadingSizes& headings)
{
    if (document.isEmpty())
        return std::nullopt;
    return RtfWriter(document, headings).write(documentBackgroundColor);
}

std::optional<AttributedString> read(const QByteArray& rtf)
{
    auto content = readRtf(rtf);
    if (!content)
        return std::nullopt;
    return std::move(content->text);
}

} // namespace orvane::OrvaneWorkspaceRTF
