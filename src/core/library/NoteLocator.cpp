// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/library/NoteLocator.h"

#include "core/library/ProjectLibraryController.h"
#include "core/records/JsonObjectReader.h"
#include "core/store/PersistentStoreRecovery.h"

#include <QFileInfo>
#include <QUrl>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

namespace orvane {

namespace {

/// A store with a write-ahead log beside it is in use, or was when its program died.
bool isAtRest(const QString& store)
{
    return QFileInfo::exists(store) && QFileInfo(store + QStringLiteral("-wal")).size() == 0;
}

bool holdsNote(const QString& store, const QUuid& noteID)
{
    try {
        // Immutable: SQLite then makes no files of its own beside the store.
        const QByteArray address = QUrl::fromLocalFile(store).toEncoded() + "?immutable=1";
        SQLite::Database database(address.constData(), SQLite::OPEN_READONLY | SQLite::OPEN_URI);
        SQLite::Statement statement(database, "SELECT 1 FROM OrvaneNote WHERE id = ?");
        statement.bind(1, uuidText(noteID).toStdString());
        return statement.executeStep();
    } catch (const SQLite::Exception&) {
        return false;
    }
}

} // namespace

std::optional<QString> projectHoldingNote(const QList<OrvaneProjectRecord>& projects,
                                          const QUuid& noteID)
{
    for (const OrvaneProjectRecord& project : projects) {
        const QString store =
            storePath(ProjectLibraryController::projectDataDirectoryPath(project.rootPath));
        if (isAtRest(store) && holdsNote(store, noteID))
            return project.rootPath;
    }
    return std::nullopt;
}

} // namespace orvane
