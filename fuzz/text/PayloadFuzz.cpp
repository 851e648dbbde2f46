// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/MemoryLimit.h"
#include "text/attachments/AttachmentManager.h"
#include "text/value/OWChartBlock.h"

using namespace orvane;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArray payload(reinterpret_cast<const char*>(data), qsizetype(size));
    const fuzz::MemoryLimit limit(size);
    (void)AttachmentManager::decodePayload(payload);
    (void)OWChartBlock::fromJson(payload);
    return 0;
}
