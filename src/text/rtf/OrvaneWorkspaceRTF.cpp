// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/OrvaneWorkspaceRTF.h"

#include "text/rtf/RtfReader.h"
#include "text/rtf/RtfWriter.h"

namespace orvane::OrvaneWorkspaceRTF {

std::optional<QByteArray> data(const AttributedString& document, const HeadingSizes& headings,
                               const std::optional<RgbaColor>& documentBackgroundColor)
{
    if (document.isEmpty())
        return std::nullopt;
    return RtfWriter(document, headings).write(documentBackgroundColor);
}

std::optional<ImportedText> read(const QByteArray& rtf)
{
    auto content = readRtf(rtf);
    if (!content)
        return std::nullopt;
    return ImportedText{std::move(content->text), content->account};
}

} // namespace orvane::OrvaneWorkspaceRTF
