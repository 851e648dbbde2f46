// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/WriteAheadLog.h"

#include "core/store/PersistentStoreRecovery.h"
#include "core/store/StoreConnection.h"
#include "core/store/StoreFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype headerSize = 32;
constexpr qsizetype frameHeaderSize = 24;
constexpr quint32 magicLittleEndian = 0x377f0682;
constexpr quint32 magicBigEndian = 0x377f0683;

quint32 number(QByteArrayView bytes, qsizetype at)
{
    return qFromBigEndian<quint32>(bytes.data() + at);
}

// The running checksum over header and frames.
struct WalSum {
    bool bigEndian = false;
    quint32 first = 0;
    quint32 second = 0;

    void add(QByteArrayView bytes)
    {
        for (qsizetype at = 0; at + 8 <= bytes.size(); at += 8) {
            first += word(bytes.data() + at) + second;
            second += word(bytes.data() + at + 4) + first;
        }
    }
    [[nodiscard]] bool matches(QByteArrayView bytes, qsizetype at) const
    {
        return number(bytes, at) == first && number(bytes, at + 4) == second;
    }

private:
    [[nodiscard]] quint32 word(const char* at) const
    {
        return bigEndian ? qFromBigEndian<quint32>(at) : qFromLittleEndian<quint32>(at);
    }
};

// The frames that belong to this use of the write-ahead log, before and behind the first damaged
// one.
struct WalScan {
    bool readableHeader = false;
    int commitsBehindDamage = 0;
};

WalScan scan(QByteArrayView wal)
{
    WalScan result;
    const quint32 magic = number(wal, 0);
    WalSum sum{magic == magicBigEndian};
    sum.add(wal.first(24));
    result.readableHeader =
        (magic == magicBigEndian || magic == magicLittleEndian) && sum.matches(wal, 24);
    const qsizetype pageSize = number(wal, 8);
    if (!result.readableHeader || pageSize < 512 || pageSize > 65536)
        return result;
    bool sound = true;
    const qsizetype frameSize = frameHeaderSize + pageSize;
    for (qsizetype at = headerSize; at + frameSize <= wal.size(); at += frameSize) {
        const QByteArrayView frame = wal.sliced(at, frameSize);
        const bool ours = frame.sliced(8, 8) == wal.sliced(16, 8); // both salts
        if (sound && ours) {
            sum.add(frame.first(8));
            sum.add(frame.sliced(frameHeaderSize));
            sound = sum.matches(frame, 16);
        }
        sound = sound && ours;
        const bool isCommit = number(frame, 4) != 0;
        if (!sound && ours && isCommit)
            ++result.commitsBehindDamage;
    }
    return result;
}

} // namespace

bool hasWal(const QString& storePath)
{
    return QFileInfo(persistentStoreFiles(storePath).at(1)).size() > 0;
}

std::optional<QString> walDamage(const QString& storePath)
{
    QFile file(persistentStoreFiles(storePath).at(1));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray wal = file.readAll();
    if (wal.size() < headerSize + frameHeaderSize)
        return std::nullopt;
    const WalScan result = scan(wal);
    if (!result.readableHeader)
        return u"the write-ahead log's header is damaged"_s;
    if (result.commitsBehindDamage > 1)
        return u"the write-ahead log is damaged, and %1 commits behind the damage can't be read"_s
            .arg(result.commitsBehindDamage);
    return std::nullopt;
}

std::optional<StoreState> stateWithoutWal(const QString& storePath)
{
    auto connection = StoreConnection::open(storePath, StoreConnection::Access::Immutable);
    if (!connection)
        return std::nullopt;
    const auto state = (*connection)->run([&] {
        // A checkpoint that was cut short may leave a file shorter than its header says.
        (*connection)->database().exec("PRAGMA writable_schema = ON");
        return readStoreState((*connection)->database());
    });
    return state ? std::optional(*state) : std::nullopt;
}

bool walFits(const StoreState& alone, const StoreState& together)
{
    const qint64 raised = together.generation - alone.generation;
    return alone.storeKey == together.storeKey && raised >= 0 && raised <= 2;
}

std::expected<void, FileError> restoreWal(StoreConnection& connection, const QString& storePath)
{
    const QString path = persistentStoreFiles(storePath).at(1);
    const auto bytes = connection.walBytes();
    if (!bytes)
        return std::unexpected(FileError{FileError::Code::Other, path, bytes.error().detail});
    return writeNewFile(path, *bytes);
}

} // namespace orvane
