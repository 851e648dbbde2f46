// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreVfs.h"

#include <QtGlobal>

#include <cstring>
#include <map>
#include <mutex>
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

int (*systemRead)(sqlite3_file*, void*, int, sqlite3_int64) = nullptr;

int read(sqlite3_file* file, void* bytes, int size, sqlite3_int64 at)
{
    const int code = systemRead(file, bytes, size, at);
    return code == SQLITE_IOERR_CORRUPTFS ? SQLITE_IOERR_READ : code;
}

// The methods of a file with our way of reading. SQLite has some few tables of them, all of which
// read alike.
const sqlite3_io_methods* withOurRead(const sqlite3_io_methods* methods)
{
    static std::mutex mutex;
    static std::map<const sqlite3_io_methods*, sqlite3_io_methods> tables;
    const std::lock_guard lock(mutex);
    const auto [table, isNew] = tables.try_emplace(methods, *methods);
    if (isNew) {
        systemRead = methods->xRead;
        table->second.xRead = read;
    }
    return &table->second;
}

int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    const int code = systemLayer->xOpen(systemLayer, name, file, flags, outFlags);
    if (code == SQLITE_OK && file->pMethods)
        file->pMethods = withOurRead(file->pMethods);
    return code;
}

} // namespace

const char* storeVfs()
{
    static const bool registered = [] {
        systemLayer = sqlite3_vfs_find(nullptr);
        static sqlite3_vfs layer = *systemLayer;
        layer.zName = layerName;
        layer.xFullPathname = fullPathname;
        layer.xOpen = open;
        return sqlite3_vfs_register(&layer, 0) == SQLITE_OK;
    }();
    if (!registered)
        qFatal("SQLite takes no file layer");
    return layerName;
}

} // namespace orvane
