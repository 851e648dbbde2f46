// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/CoreBench.h"
#include "core/StoreSamples.h"
#include "core/state/AppState.h"
#include "support/Bench.h"
#include "support/TestServices.h"

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
              "embeddedFileType, embeddedFileAssetID, isPinned, pdfSourceURLString, titleRTF, "
              "bytes "
              "FROM OrvaneNote LEFT JOIN OrvaneNoteBytes AS text ON text.row = 64 * OrvaneNote.row "
              "+ 5"}) {
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

constexpr int savesPerRound = 2;
constexpr int saveRounds = 400;

/// The program's state with a project of so many notes open, and SQLite alone on the same file.
class OpenProject {
public:
    explicit OpenProject(int notes)
        : m_state(m_services.services())
    {
        const auto id = m_state.projectSession().createProject(u"Sample"_s, std::nullopt);
        if (!id)
            qFatal("no project");
        const QString folder = ProjectLibraryController::projectDataDirectoryPath(
            m_state.projectSession().project(*id)->rootPath);
        m_state.projectSession().closeProject();
        makeSampleStore(folder, {.notes = notes, .body = 1024, .rtf = 0, .payload = 0});
        m_state.projectSession().openProject(*id, false);
        if (m_state.notes().size() != notes)
            qFatal("the project is not open");
        m_plain.emplace(storePath(folder));
        m_plain->run("PRAGMA wal_autocheckpoint = 0");
        m_update.emplace(*m_plain, "UPDATE OrvaneNote SET isPinned = ? WHERE row = ?");
    }

    /// Milliseconds for one.
    double saveNote()
    {
        const auto& notes = m_state.notes().records();
        return average([&] { m_state.togglePinNote(notes.at(nextPlace(notes.size()))->id); });
    }
    double plainUpdate()
    {
        const auto rows = m_state.notes().size();
        return average([&] { m_update->run(++m_value, nextPlace(rows) + 1); });
    }

private:
    template <typename Work>
    double average(Work&& work)
    {
        const double time = seconds([&] {
            for (int i = 0; i < savesPerRound; ++i)
                work();
        });
        if (m_state.projectSession().saveFailure())
            qFatal("%ls", qUtf16Printable(m_state.projectSession().saveFailure()->error));
        return time * 1000 / savesPerRound;
    }
    qsizetype nextPlace(qsizetype size) { return m_place = (m_place + 7919) % size; }

    TestServices m_services;
    AppState m_state;
    std::optional<PlainSQLite> m_plain;
    std::optional<PlainStatement> m_update;
    qsizetype m_place = 0;
    qint64 m_value = 0;
};

Measurement saveNote()
{
    OpenProject project(50'000);
    return interleave(
        saveRounds, [&] { return project.saveNote(); }, [&] { return project.plainUpdate(); });
}

Measurement saveNoteFlat()
{
    OpenProject large(50'000);
    OpenProject small(500);
    return interleave(
        saveRounds, [&] { return large.saveNote(); }, [&] { return small.saveNote(); });
}

} // namespace

void addStoreRows()
{
    add({.name = "store/save-note", .unit = "ms", .target = 1.3, .run = saveNote});
    add({.name = "store/save-note-flat", .unit = "ms", .target = 1.3, .run = saveNoteFlat});
    add({.name = "store/load", .unit = "ms", .target = 2.0, .run = load});
    add({.name = "store/load-weight", .unit = "ms", .target = 1.3, .run = loadWeight});
}

} // namespace orvane::bench
