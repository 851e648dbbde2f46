// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/FontsAhead.h"

#include <QFontDatabase>

#include <fontconfig/fontconfig.h>

namespace orvane {

std::future<void> readFontSettings()
{
    return std::async(std::launch::async, [] { static_cast<void>(FcInit()); });
}

std::future<void> findFonts(std::future<void> settings)
{
    return std::async(std::launch::async, [settings = std::move(settings)] {
        settings.wait();
        static_cast<void>(QFontDatabase::families());
    });
}

} // namespace orvane
