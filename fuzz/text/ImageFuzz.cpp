// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/Input.h"
#include "text/attachments/ImageIntake.h"
#include "text/attachments/ImagePictures.h"
#include "text/attachments/SafeSvg.h"

#include <QGuiApplication>

#include <cstdlib>

using namespace orvane;

// Words in a drawing take fonts.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static QGuiApplication application(*argc, *argv);
    return 0;
}

// What was taken can be shown and taken again, and a safe drawing stays as it is.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArray bytes = fuzz::input(data, size);
    if (const auto accepted = acceptImage(bytes)) {
        const QImage shown = decodedImage(accepted->bytes, QSize(64, 64));
        if (shown.isNull() || accepted->size.isEmpty() || !acceptImage(accepted->bytes))
            std::abort();
    }
    if (const auto safe = safeSvg(bytes)) {
        if (safeSvg(*safe) != safe)
            std::abort();
    }
    return 0;
}
