// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/MemoryLimit.h"
#include "text/OrvaneWorkspaceRTF.h"
#include "text/rtf/RtfReader.h"

#include <cstdlib>

using namespace orvane;

// What was read must write and read again as the same text.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    std::optional<RtfContent> content;
    {
        const fuzz::MemoryLimit limit(size);
        content = readRtf(QByteArrayView(data, qsizetype(size)));
    }
    if (!content || content->text.isEmpty())
        return 0;
    const auto written = OrvaneWorkspaceRTF::data(content->text, content->backgroundColor);
    if (!written || !OrvaneWorkspaceRTF::read(*written))
        std::abort();
    return 0;
}
