// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreVfs.h"

#include <QtGlobal>

#include <cstring>
#include <sqlite3.h>
#include <string_view>

namespace orvane {

namespace {

constexpr const char* layerName = "orvane-held-folder";
constexpr std::string_view heldFolders = "/proc/self/fd/";

sqlite3_vfs* systemLayer = nullptr;

int fullPathname(sqlite3_vfs*, const char* name, int size, char* full)
{
    const std::string_view path(name);
    if (!path.starts_with(heldFolders))
        return systemLayer->xFullPathname(systemLayer, name, size, full);
    if (path.size() >= size_t(size))
        return SQLITE_CANTOPEN;
    std::memcpy(full, name, path.size() + 1);
    return SQLITE_OK;
}

} // namespace

const char* storeVfs()
{
    static const bool registered = [] {
        systemLayer = sqlite3_vfs_find(nullptr);
        static sqlite3_vfs layer = *systemLayer;
        layer.zName = layerName;
        layer.xFullPathname = fullPathname;
        return sqlite3_vfs_register(&layer, 0) == SQLITE_OK;
    }();
    if (!registered)
        qFatal("SQLite takes no file layer");
    return layerName;
}

} // namespace orvane
