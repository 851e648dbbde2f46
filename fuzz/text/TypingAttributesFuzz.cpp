// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/MemoryLimit.h"
#include "text/archive/NoteEditorTypingAttributesCodec.h"

#include <cstdlib>

using namespace orvane;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const fuzz::MemoryLimit limit(size);
    const auto attributes = NoteEditorTypingAttributesCodec::unarchive(bytes);
    if (!attributes)
        return 0;
    const auto again = NoteEditorTypingAttributesCodec::archive(*attributes);
    if (again && NoteEditorTypingAttributesCodec::unarchive(*again) != attributes)
        std::abort();
    return 0;
}
