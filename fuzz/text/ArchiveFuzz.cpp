// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/MemoryLimit.h"
#include "text/archive/TextArchive.h"

#include <cstdlib>

using namespace orvane;

// What decodes must encode to something that decodes to the same.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArray archive(reinterpret_cast<const char*>(data), qsizetype(size));
    std::expected<AttributedString, TextArchive::Error> decoded;
    {
        const fuzz::MemoryLimit limit(size);
        decoded = TextArchive::decode(archive);
    }
    if (!decoded)
        return 0;
    const auto again = TextArchive::decode(TextArchive::encode(*decoded));
    if (!again || !(*again == *decoded))
        std::abort();
    return 0;
}
