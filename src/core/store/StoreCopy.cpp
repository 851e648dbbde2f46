// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreCopy.h"

#include "core/records/RecordFields.h"
#include "core/store/PersistentStoreRecovery.h"
#include "core/store/StoreFiles.h"
#include "core/store/StoreStatement.h"
#include "core/store/WriteAheadLog.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

template <typename Work>
class AtEnd {
public:
    explicit AtEnd(Work work)
        : m_work(std::move(work))
    {}
    ~AtEnd() { m_work(); }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;

private:
    Work m_work;
};

void removeStore(const QString& path)
{
    QFile::remove(path + "-journal"_L1);
    for (const QString& file : persistentStoreFiles(path))
        QFile::remove(file);
}

StoreError errorOf(const FileError& error)
{
    const auto code = error.code == FileError::Code::NoSpace ? StoreError::Code::NoSpace
                                                             : StoreError::Code::Other;
    return {code, error.text()};
}

StoreError errorOf(const StoreOpenFailure& failure)
{
    if (const auto* damage = std::get_if<StoreDamage>(&failure))
        return {StoreError::Code::Other, damage->description};
    const auto& error = std::get<StoreOpenError>(failure);
    const auto code = error.code == StoreOpenError::Code::NoSpace ? StoreError::Code::NoSpace
                                                                  : StoreError::Code::Other;
    return {code, error.text()};
}

// A copy has no write-ahead log: what is pending goes into it, and its generation says that all is
// there.
std::expected<void, StoreError> complete(const QString& path, PendingChanges pending,
                                         const StoreSchema& schema)
{
    auto opened = openStore(path, schema, StoreAccess::ReadWrite);
    if (!opened)
        return std::unexpected(errorOf(opened.error()));
    StoreWriter writer(*opened->connection, opened->state.storeKey);
    const auto done = commitChanges(*opened, writer, pending, WalState::InUse);
    if (!done)
        return std::unexpected(done.error().toStoreError());
    if (const auto& left = *done)
        qWarning("%ls lacks changes: %ls", qUtf16Printable(path), qUtf16Printable(left->text()));
    StoreState state = opened->state;
    state.generation += state.generation % 2;
    const auto even = opened->connection->transact([&] { writer.writeState(state); });
    if (!even)
        return std::unexpected(even.error().toStoreError());
    const auto checkpointed = opened->connection->checkpoint();
    if (!checkpointed || !*checkpointed)
        return std::unexpected(checkpointed ? StoreError{StoreError::Code::Busy, path}
                                            : checkpointed.error().toStoreError());
    opened->bytes->detach();
    opened->layout.detach();
    opened->connection->closeCheckpointed();
    return {};
}

} // namespace

std::expected<void, StoreError> writeStoreCopy(StoreConnection& connection,
                                               const PendingChanges& pending, const QString& path,
                                               const StoreSchema& schema)
{
    const QString unfinished = path + ".new"_L1;
    removeStore(unfinished);
    const AtEnd cleanUp([&] { removeStore(unfinished); });
    const QByteArray name = unfinished.toUtf8();
    const auto copied = connection.run([&] {
        StoreStatement statement(connection.database(), "VACUUM INTO ?");
        statement.bindText(1, name);
        statement.run();
    });
    if (!copied)
        return std::unexpected(copied.error().toStoreError());
    if (auto completed = complete(unfinished, pending, schema); !completed)
        return completed;
    if (const auto synced = syncFile(unfinished); !synced)
        return std::unexpected(errorOf(synced.error()));
    if (const auto renamed = renameToFreeName(unfinished, path); !renamed)
        return std::unexpected(errorOf(renamed.error()));
    if (const auto synced = syncFile(path); !synced)
        return std::unexpected(errorOf(synced.error()));
    return {};
}

std::expected<NotebookSnapshot, StoreOpenError> readStoreCopy(const QString& path,
                                                              const StoreSchema& schema)
{
    using Code = StoreOpenError::Code;
    const auto refused = [&](Code code, const QString& detail) {
        return std::unexpected(StoreOpenError{code, path, detail, std::nullopt});
    };
    const QFileInfo info(path);
    if (!info.exists())
        return refused(Code::Missing, {});
    if (!info.isFile())
        return refused(Code::Unreadable, u"the store is not a file"_s);
    const QTemporaryDir folder;
    const QString copy = folder.filePath(u"copy.store"_s);
    if (!folder.isValid() || !QFile::copy(path, copy))
        return refused(Code::NoSpace, u"it can't be copied for reading"_s);
    const QStringList from = persistentStoreFiles(info.absoluteFilePath());
    const QStringList to = persistentStoreFiles(copy);
    if (QFileInfo(from.at(1)).isFile() && !QFile::copy(from.at(1), to.at(1)))
        return refused(Code::NoSpace, u"its write-ahead log can't be copied for reading"_s);
    for (const QString& file : to)
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);

    auto opened = openStore(copy, schema, StoreAccess::ReadWrite);
    if (!opened) {
        if (const auto* damage = std::get_if<StoreDamage>(&opened.error()))
            return refused(Code::Unreadable, damage->description);
        StoreOpenError error = std::get<StoreOpenError>(std::move(opened.error()));
        error.path = path;
        return std::unexpected(std::move(error));
    }
    NotebookSnapshot snapshot = opened->snapshot();
    for (const Shared<NoteRecord>& note : std::as_const(snapshot.notes)) {
        forEachBytes(*note, [](int, const Blob* bytes) {
            if (bytes)
                static_cast<void>(bytes->read());
        });
        holdImages(*note);
    }
    opened->bytes->detach();
    return snapshot;
}

} // namespace orvane
