// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/MemoryLimit.h"
#include "text/archive/TextArchive.h"
#include "text/html/HtmlReader.h"

#include <cstdlib>

using namespace orvane;

// What was read must be sound enough to be stored.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    AttributedString text;
    {
        const fuzz::MemoryLimit limit(size);
        text = readHtmlBytes(QByteArrayView(data, qsizetype(size)));
    }
    if (!TextArchive::decode(TextArchive::encode(text)))
        std::abort();
    return 0;
}
