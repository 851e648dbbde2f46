// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreSession.h"

#include "core/store/StoreCopy.h"
#include "core/store/StoreJournal.h"

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

StoreSession::StoreSession(OpenedStore&& opened, StoreFiles& files, int foldAtPages,
                           bool isReadOnly)
    : m_store(std::move(opened))
    , m_files(files)
    , m_foldAtPages(foldAtPages)
    , m_readOnly(isReadOnly || m_store.connection->isReadOnly())
{
    if (m_readOnly)
        return;
    m_files.remember();
    m_writer = std::make_unique<StoreWriter>(*m_store.connection, m_store.state.storeKey);
    // Without a journal, an odd generation was copied or mended by hand from one with a journal.
    if (hasJournal(m_files.path()) || m_store.state.generation % 2 != 0) {
        m_journal = JournalState::InUse;
        fold();
    }
}

StoreSession::~StoreSession()
{
    close();
}

// Copies the journal into the file. The generation is raised first, so that a copy of the journal
// made before no longer fits the file.
bool StoreSession::fold()
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
    m_journal = JournalState::Folded;
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
    auto done = commitChanges(m_store, *m_writer, m_pending, m_journal);
    if (!done)
        return std::unexpected(done.error().toStoreError());
    if (m_store.state.generation % 2 != 0)
        m_journal = JournalState::InUse;
    if (m_store.connection->journalPages() >= m_foldAtPages)
        fold();
    if (const auto& problem = *done)
        return std::unexpected(*problem);
    return {};
}

std::expected<void, StoreError> StoreSession::confirmFiles()
{
    if (m_readOnly || !m_store.connection)
        return {};
    if (auto ours = m_files.storeInPlace(); !ours) {
        // Beside another file our journal would be taken for that file's.
        if (ours.error().code == StoreError::Code::Replaced &&
            m_files.journalInPlace().value_or(false))
            static_cast<void>(m_files.setJournalAside());
        return ours;
    }
    const auto journal = m_files.journalInPlace();
    if (!journal)
        return std::unexpected(journal.error());
    return *journal ? std::expected<void, StoreError>() : mendJournal();
}

// The connection has the journal open, with or without a name: its bytes go back under the name,
// as a crash would have left them, and another connection takes over.
std::expected<void, StoreError> StoreSession::mendJournal()
{
    if (auto aside = m_files.setJournalAside(); !aside)
        return aside;
    if (const auto restored = restoreJournal(*m_store.connection, m_files.path()); !restored) {
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
        return std::unexpected(replaced(u"the journal can't be put back"_s));
    m_store.bytes->attach(**opened);
    m_store.layout.detach();
    m_writer = std::make_unique<StoreWriter>(**opened, m_store.state.storeKey);
    m_store.connection = *std::move(opened);
    m_files.remember();
    ++m_mendings;
    qWarning("The journal of %ls was taken away and was written anew",
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
    if (ours && (m_journal == JournalState::Folded || fold()))
        m_store.connection->closeFolded();
    else if (!m_readOnly)
        qWarning("%ls is closed with its journal beside it", qUtf16Printable(m_files.place()));
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
