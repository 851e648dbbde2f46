// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/AtomicFile.h"

#include <QObject>
#include <QStringList>

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>

namespace orvane {

/// The bytes of a text file as UTF-8 with "\n" at the ends of lines. What has a mark of its
/// encoding is read by it (UTF-8, UTF-16, UTF-32), anything else as UTF-8 where it is that, and
/// else as Windows-1252, which has a character for each byte. Nothing for what is no text: a zero
/// character in it, or bytes that its mark's encoding doesn't know.
[[nodiscard]] std::optional<QByteArray> textAsUtf8(const QByteArray& file);

/// What became of one text file.
struct TextFile {
    enum class Outcome { Read, Unreadable, NotText };

    QString path;
    Outcome outcome = Outcome::Unreadable;
    QByteArray utf8;
    FileError error; ///< of `Unreadable`
};

/// Reads text files on a thread of its own. All of them come at once, so that nothing is left to
/// take back when the person cancels.
class TextFilesReader : public QObject {
    Q_OBJECT
public:
    using Read = std::function<std::expected<QByteArray, FileError>(
        const QString& path, qint64 limit, const std::function<bool(qint64, qint64)>& piece)>;
    struct Progress {
        QString name; ///< of the file that is read now
        qint64 read = 0;
        qint64 whole = 0; ///< bytes of all of them
    };

    /// Begins at once. `finished` comes from the event loop.
    TextFilesReader(const QStringList& paths, Read read, QObject* parent = nullptr);
    /// Cancels, and waits for the piece that is being read.
    ~TextFilesReader() override;

    [[nodiscard]] Progress progress() const;
    /// After `finished`, in the order of the paths.
    [[nodiscard]] const QList<TextFile>& files() const { return m_files; }

    /// As `readFile` does it.
    [[nodiscard]] static Read fromDisk();

signals:
    void finished();

private:
    void work(const QStringList& paths, const Read& read);

    QList<TextFile> m_files;
    std::atomic<bool> m_isCancelled = false;
    mutable std::mutex m_mutex;
    Progress m_progress;
    std::thread m_thread;
};

} // namespace orvane
