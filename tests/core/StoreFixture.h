// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/Records.h"
#include "core/store/PersistenceController.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace orvane {

/// A data folder of its own for each test.
class StoreFixture : public ::testing::Test {
protected:
    QTemporaryDir temporary;
    QString folder = temporary.filePath(QStringLiteral("data"));
    ManualClock clock;

    std::unique_ptr<PersistenceController> open(const PersistenceController::Options& options = {})
    {
        auto opened = PersistenceController::open(folder, clock, options);
        if (!opened) {
            ADD_FAILURE() << qPrintable(opened.error().text());
            return nullptr;
        }
        return *std::move(opened);
    }
    [[nodiscard]] QString store() const { return storePath(folder); }
    [[nodiscard]] QString wal() const { return persistentStoreFiles(store()).at(1); }
    [[nodiscard]] QStringList files() const
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
};

inline QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// The store and its write-ahead log as they stand, by file name.
inline QMap<QString, QByteArray> storeBytes(const QString& path)
{
    QMap<QString, QByteArray> bytes;
    for (const QString& file : persistentStoreFiles(path).first(2)) {
        if (QFileInfo(file).isFile())
            bytes.insert(QFileInfo(file).fileName(), bytesOf(file));
    }
    return bytes;
}

/// A snapshot in a form that compares what is in it, whatever its order.
struct NotebookContents {
    QMap<QUuid, FolderRecord> folders;
    QMap<QUuid, NoteRecord> notes;
    bool hasLayout = false;
    QMap<QString, QList<QUuid>> orders;
    QSet<QUuid> expanded;

    bool operator==(const NotebookContents&) const = default;

    NotebookContents() = default;
    explicit NotebookContents(const NotebookSnapshot& snapshot)
        : hasLayout(snapshot.binderLayout.has_value())
    {
        for (const auto& folder : snapshot.folders)
            folders.insert(folder->id, *folder);
        for (const auto& note : snapshot.notes)
            notes.insert(note->id, *note);
        if (!hasLayout)
            return;
        for (const auto& entry : snapshot.binderLayout->folderOrderEntries)
            orders.insert(QStringLiteral("f") + entry.parentFolderID.value_or(QUuid()).toString(),
                          entry.childFolderIDs);
        for (const auto& entry : snapshot.binderLayout->noteOrderEntries)
            orders.insert(QStringLiteral("n") + entry.folderID.toString(), entry.noteIDs);
        const auto& ids = snapshot.binderLayout->expandedFolderIDs;
        expanded = QSet<QUuid>(ids.cbegin(), ids.cend());
    }
};

/// While it lives, no file of this process grows beyond `bytes`: a disk that is full.
class FullDisk {
public:
    explicit FullDisk(qint64 bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = rlim_t(bytes);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before = {};
};

} // namespace orvane
