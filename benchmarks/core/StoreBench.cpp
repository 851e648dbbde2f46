// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/CoreBench.h"
#include "core/StoreSamples.h"
#include "support/Bench.h"

#include <QTemporaryDir>

#include <sqlite3.h>

namespace orvane::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 15;

double loadMs(const QString& folder)
{
    SystemClock clock;
    std::unique_ptr<PersistenceController> controller;
    NotebookSnapshot snapshot;
    const double time = seconds([&] {
        controller = openSample(folder, clock);
        snapshot = controller->load();
    });
    if (snapshot.notes.isEmpty())
        qFatal("nothing was loaded");
    return time * 1000;
}

// Every light column and body of the same rows, copied into one buffer a row.
double stepMs(const QString& folder)
{
    std::vector<std::string> rows;
    const double time = seconds([&] {
        PlainSQLite database(storePath(folder));
        for (const char* sql :
             {"SELECT id, name, createdAt, parentFolderID, iconName, tagsJSON, isPinned, titleRTF "
              "FROM OrvaneFolder",
              "SELECT id, folderID, title, createdAt, updatedAt, tagsJSON, iconName, "
              "embeddedFileType, embeddedFileAssetID, isPinned, pdfSourceURLString, titleRTF, body "
              "FROM OrvaneNote"}) {
            sqlite3_stmt* statement = database.prepare(sql);
            const int columns = sqlite3_column_count(statement);
            while (sqlite3_step(statement) == SQLITE_ROW) {
                std::string& row = rows.emplace_back();
                for (int i = 0; i < columns; ++i) {
                    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, i));
                    row.append(bytes ? bytes : "", size_t(sqlite3_column_bytes(statement, i)));
                }
            }
            sqlite3_finalize(statement);
        }
    });
    if (rows.empty())
        qFatal("nothing was read");
    return time * 1000;
}

Measurement load()
{
    QTemporaryDir folder;
    makeSampleStore(folder.path(), {.notes = 5000});
    return interleave(
        rounds, [&] { return loadMs(folder.path()); }, [&] { return stepMs(folder.path()); });
}

Measurement loadWeight()
{
    QTemporaryDir heavy;
    QTemporaryDir light;
    makeSampleStore(heavy.path(), {.notes = 5000, .payload = 80 * 1024});
    makeSampleStore(light.path(), {.notes = 5000, .payload = 8 * 1024});
    return interleave(
        rounds, [&] { return loadMs(heavy.path()); }, [&] { return loadMs(light.path()); });
}

} // namespace

void addStoreRows()
{
    add({.name = "store/load", .unit = "ms", .target = 2.0, .run = load});
    add({.name = "store/load-weight", .unit = "ms", .target = 1.3, .run = loadWeight});
}

} // namespace orvane::bench
