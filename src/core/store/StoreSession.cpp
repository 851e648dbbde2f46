// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreSession.h"

#include "core/store/ColumnText.h"
#include "core/store/StoreCopy.h"
#include "core/store/WriteAheadLog.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

bool sameState(const StoreState& a, const StoreState& b)
{
    return a.storeKey == b.storeKey && a.generation == b.generation &&
           a.folderCount == b.folderCount && a.noteCount == b.noteCount;
}

StoreError replaced(const QString& detail)
{
    return {StoreError::Code::Replaced, detail};
}

} // namespace

StoreSession::StoreSession(OpenedStore&& opened, StoreFiles& files, int checkpointAtPages,
                           bool isReadOnly)
    : m_store(std::move(opened))
    , m_files(files)
    , m_checkpointAtPages(checkpointAtPages)
    , m_readOnly(isReadOnly || m_store.connection->isReadOnly())
{
    if (m_readOnly)
        return;
    m_files.remember();
    m_writer = std::make_unique<StoreWriter>(*m_store.connection, m_store.state.storeKey);
    // Without a write-ahead log, an odd generation was copied or mended by hand from one with a
    // write-ahead log.
    if (hasWal(m_files.path()) || m_store.state.generation % 2 != 0) {
        m_wal = WalState::InUse;
        checkpoint();
    }
}

StoreSession::~StoreSession()
{
    close();
}

// Copies the write-ahead log into the file. The generation is raised first, so that a copy of the
// write-ahead log made before no longer fits the file.
bool StoreSession::checkpoint()
{
    if (m_store.state.generation % 2 != 0) {
        StoreState next = m_store.state;
        ++next.generation;
        const auto raised = m_store.connection->transact([&] { m_writer->writeState(next); });
        if (!raised)
            return false;
        m_store.state = next;
    }
    const auto complete = m_store.connection->checkpoint();
    if (!complete || !*complete)
        return false;
    m_wal = WalState::Checkpointed;
    return true;
}

std::expected<void, StoreError> StoreSession::flush()
{
    if (m_readOnly) {
        m_pending.clear();
        return std::unexpected(
            StoreError{StoreError::Code::ReadOnly, u"the project can't be written"_s});
    }
    if (auto ours = confirmFiles(); !ours)
        return ours;
    const QList<Shared<NoteRecord>> illustrated = m_pending.notesWithImages();
    auto done = commitChanges(m_store, *m_writer, m_pending, m_wal);
    if (!done)
        return std::unexpected(done.error().toStoreError());
    restImages(illustrated);
    if (m_store.state.generation % 2 != 0)
        m_wal = WalState::InUse;
    if (m_store.connection->walPages() >= m_checkpointAtPages)
        checkpoint();
    if (const auto& problem = *done)
        return std::unexpected(*problem);
    return {};
}

// Images are many and large: once they are stored, nobody keeps them in memory.
void StoreSession::restImages(const QList<Shared<NoteRecord>>& notes) const
{
    for (const Shared<NoteRecord>& note : notes) {
        const auto* slot = m_store.notes.find(note->id);
        if (!slot || &*slot->record != &*note)
            continue; // it was left out
        for (const NoteImage& image : *note->images) {
            if (image.bytes.isLoaded() && !image.bytes.isEmpty())
                image.bytes.rest(SharedBlobSource(m_store.bytes.data()), imageRow(image.hash));
        }
    }
}

// While the project is open an image may come back, with what is taken back or pasted.
void StoreSession::removeUnusedImages()
{
    QSet<QByteArray> used;
    for (const Shared<NoteRecord>& note : m_store.notes.records()) {
        for (const NoteImage& image : note->images.value_or(NoteImages()))
            used.insert(image.hash);
    }
    const auto unused = m_store.connection->run([&] { return m_writer->imagesBeside(used); });
    if (!unused || unused->isEmpty())
        return;
    StoreState next = m_store.state;
    if (m_wal == WalState::Checkpointed)
        ++next.generation;
    const auto removed = m_store.connection->transact([&] {
        m_writer->writeState(next);
        m_writer->removeImages(*unused);
    });
    if (!removed)
        return; // they take room until the next close
    m_store.state = next;
    m_wal = WalState::InUse;
}

std::expected<void, StoreError> StoreSession::confirmFiles()
{
    if (m_readOnly || !m_store.connection)
        return {};
    if (auto ours = m_files.storeInPlace(); !ours) {
        // Beside another file our write-ahead log would be taken for that file's.
        if (ours.error().code == StoreError::Code::Replaced && m_files.walInPlace().value_or(false))
            static_cast<void>(m_files.setWalAside());
        return ours;
    }
    const auto wal = m_files.walInPlace();
    if (!wal)
        return std::unexpected(wal.error());
    return *wal ? std::expected<void, StoreError>() : mendWal();
}

// The connection has the write-ahead log open, with or without a name: its bytes go back under the
// name, as a crash would have left them, and another connection takes over.
std::expected<void, StoreError> StoreSession::mendWal()
{
    if (auto aside = m_files.setWalAside(); !aside)
        return aside;
    if (const auto restored = restoreWal(*m_store.connection, m_files.path()); !restored) {
        const auto code = restored.error().code == FileError::Code::NoSpace
                              ? StoreError::Code::NoSpace
                              : StoreError::Code::Other;
        return std::unexpected(StoreError{code, restored.error().text()});
    }
    auto opened = StoreConnection::open(m_files.path(), StoreConnection::Access::ReadWrite);
    if (!opened)
        return std::unexpected(replaced(opened.error().detail));
    const auto state = (*opened)->run([&] { return readStoreState((*opened)->database()); });
    if (!state || !sameState(*state, m_store.state))
        return std::unexpected(replaced(u"the write-ahead log can't be put back"_s));
    m_store.bytes->attach(**opened);
    m_store.layout.detach();
    m_writer = std::make_unique<StoreWriter>(**opened, m_store.state.storeKey);
    m_store.connection = *std::move(opened);
    m_files.remember();
    ++m_mendings;
    qWarning("The write-ahead log of %ls was taken away and was written anew",
             qUtf16Printable(m_files.place()));
    return {};
}

std::expected<void, StoreError> StoreSession::writeCopy(const QString& path,
                                                        const StoreSchema& schema)
{
    return writeStoreCopy(*m_store.connection, m_pending, path, schema);
}

void StoreSession::close()
{
    if (!m_store.connection)
        return;
    if (!m_readOnly && !m_pending.isEmpty()) {
        if (const auto saved = flush(); !saved)
            qCritical("Changes could not be saved before closing: %ls",
                      qUtf16Printable(saved.error().text()));
    }
    const bool ours = !m_readOnly && confirmFiles().has_value();
    if (ours)
        removeUnusedImages();
    if (ours && (m_wal == WalState::Checkpointed || checkpoint()))
        m_store.connection->closeCheckpointed();
    else if (!m_readOnly)
        qWarning("%ls is closed with its write-ahead log beside it",
                 qUtf16Printable(m_files.place()));
    abandon();
}

void StoreSession::abandon()
{
    m_store.bytes->detach();
    m_store.layout = LayoutStore();
    m_writer.reset();
    m_store.connection.reset();
}

} // namespace orvane
