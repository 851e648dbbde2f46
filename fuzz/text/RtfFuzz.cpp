// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/Input.h"
#include "support/MemoryLimit.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"
#include "text/rtf/RtfReader.h"

#include <cstdlib>

using namespace orvane;

// What was read must write and read again as the same text.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArray rtf = fuzz::input(data, size);
    std::optional<RtfContent> content;
    {
        const fuzz::MemoryLimit limit(std::size_t(rtf.size()));
        content = readRtf(rtf);
    }
    if (!content || content->text.isEmpty())
        return 0;
    const auto written =
        OrvaneWorkspaceRTF::data(content->text, HeadingSizes(), content->backgroundColor);
    if (!written || !OrvaneWorkspaceRTF::read(*written))
        std::abort();
    return 0;
}
