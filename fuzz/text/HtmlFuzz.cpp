// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/Input.h"
#include "support/MemoryLimit.h"
#include "text/archive/TextArchive.h"
#include "text/html/HtmlReader.h"

#include <cstdlib>

using namespace orvane;

// What was read must be sound enough to be stored.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArray html = fuzz::input(data, size);
    AttributedString text;
    {
        const fuzz::MemoryLimit limit(std::size_t(html.size()));
        text = readHtmlBytes(html).text;
    }
    if (!TextArchive::decode(TextArchive::encode(text)))
        std::abort();
    return 0;
}
