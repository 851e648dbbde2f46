// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/PersistenceController.h"

#include "core/InboxFolder.h"
#include "core/RecordJson.h"
#include "core/StoreCommit.h"
#include "core/StoreJournal.h"
#include "core/StoreOpening.h"
#include "platform/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

StoreOpenError lockError(const ProjectLock::Failure& failure)
{
    using Problem = ProjectLock::Problem;
    auto code = StoreOpenError::Code::Unreadable;
    if (failure.problem == Problem::Held)
        code = StoreOpenError::Code::LockedByOther;
    else if (failure.problem == Problem::NoAccess)
        code = StoreOpenError::Code::NoAccess;
    else if (failure.problem == Problem::NoSpace)
        code = StoreOpenError::Code::NoSpace;
    return {code, failure.path, failure.detail, failure.holder};
}

std::optional<StoreOpenError> folderProblem(const QString& folder)
{
    const auto made = makeFolder(folder);
    if (made || QFileInfo(folder).isDir())
        return std::nullopt;
    auto code = StoreOpenError::Code::Unreadable;
    if (made.error().code == FileError::Code::NoAccess)
        code = StoreOpenError::Code::NoAccess;
    else if (made.error().code == FileError::Code::NoSpace)
        code = StoreOpenError::Code::NoSpace;
    return StoreOpenError{code, folder, made.error().detail, std::nullopt};
}

bool anyExists(const QStringList& paths)
{
    return std::ranges::any_of(paths, [](const QString& path) { return QFileInfo::exists(path); });
}

QString legacyFolder(const QString& applicationSupport)
{
    const QString current = applicationSupport + "/OrvaneWorkspace"_L1;
    const QString earlier = applicationSupport + "/OrvaneNotes"_L1;
    return !QFileInfo(current).isDir() && QFileInfo(earlier).isDir() ? earlier : current;
}

QString legacyJSON(const QString& folder)
{
    return folder + "/notebook.json"_L1;
}

// The marker comes first: from then on the project is protected, whatever happens while the files
// move.
std::expected<PersistentStoreRecovery, StoreOpenError>
moveAside(const QString& folder, const QString& path, const QString& description, Timestamp now)
{
    PersistentStoreRecovery recovery{QUrl::fromLocalFile(backupDirectory(path, now)), description};
    const auto failed = [&](const QString& detail) {
        return std::unexpected(StoreOpenError{StoreOpenError::Code::RecoveryFailed, path,
                                              description + "; "_L1 + detail, std::nullopt});
    };
    if (const auto written = recovery.write(folder); !written)
        return failed(written.error().text());
    backUpPersistentStoreFiles(path, now);
    if (anyExists(persistentStoreFiles(path)))
        return failed(u"its files can't be moved aside"_s);
    return recovery;
}

} // namespace

struct PersistenceController::Private {
    const Clock& clock;
    QString folder;
    QString path;
    const StoreSchema& schema;
    int foldAtPages;
    bool hadExisting = false;
    bool readOnly = false;
    std::optional<PersistentStoreRecovery> recovery;
    std::optional<ProjectLock> lock;
    OpenedStore store;
    std::unique_ptr<StoreWriter> writer;
    PendingChanges pending;
    JournalState journal = JournalState::Folded;
    std::unique_ptr<StoreCheck> check;

    Private(const Clock& time, const QString& dataFolder, const Options& options)
        : clock(time)
        , folder(dataFolder)
        , path(orvane::storePath(dataFolder))
        , schema(options.schema ? *options.schema : StoreSchema::current())
        , foldAtPages(options.foldAtPages)
        , hadExisting(anyExists(persistentStoreFiles(path)))
    {}
    ~Private() { close(); }

    std::expected<void, StoreOpenError> open();
    std::expected<void, StoreOpenError> openForReading();
    std::expected<void, StoreOpenError> create();
    std::expected<void, StoreOpenError> recover(const StoreDamage& damage);
    void use(OpenedStore&& opened);
    void importLegacyJSONIfNeeded(const QString& legacyPath);
    std::expected<void, StoreError> flush();
    bool fold();
    void close();
};

std::expected<void, StoreOpenError> PersistenceController::Private::open()
{
    if (auto problem = folderProblem(folder))
        return std::unexpected(*std::move(problem));
    auto taken = ProjectLock::take(folder, clock.now());
    if (!taken) {
        if (taken.error().problem == ProjectLock::Problem::NoAccess && hadExisting)
            return openForReading();
        return std::unexpected(lockError(taken.error()));
    }
    lock.emplace(*std::move(taken));
    if (!hadExisting)
        return create();
    if (QFileInfo::exists(path) && !QFileInfo(path).isWritable())
        return openForReading();
    if (lock->wasStale() && !hasJournal(path))
        qWarning("%ls was not closed by its last program and has no journal",
                 qUtf16Printable(path));

    auto opened = openStore(path, schema, StoreAccess::ReadWrite);
    if (opened) {
        use(*std::move(opened));
        return {};
    }
    if (const auto* damage = std::get_if<StoreDamage>(&opened.error()))
        return recover(*damage);
    const auto& error = std::get<StoreOpenError>(opened.error());
    if (error.code == StoreOpenError::Code::NoAccess)
        return openForReading();
    return std::unexpected(error);
}

std::expected<void, StoreOpenError> PersistenceController::Private::openForReading()
{
    auto opened = openStore(path, schema, StoreAccess::ReadOnly);
    if (opened) {
        readOnly = true;
        use(*std::move(opened));
        return {};
    }
    if (const auto* damage = std::get_if<StoreDamage>(&opened.error()))
        return std::unexpected(StoreOpenError{StoreOpenError::Code::RecoveryFailed, path,
                                              damage->description, std::nullopt});
    return std::unexpected(std::get<StoreOpenError>(opened.error()));
}

std::expected<void, StoreOpenError> PersistenceController::Private::create()
{
    if (auto created = createStore(path, schema); !created)
        return created;
    auto opened = openStore(path, schema, StoreAccess::ReadWrite);
    if (opened) {
        use(*std::move(opened));
        return {};
    }
    if (const auto* damage = std::get_if<StoreDamage>(&opened.error()))
        return std::unexpected(StoreOpenError{StoreOpenError::Code::RecoveryFailed, path,
                                              damage->description, std::nullopt});
    return std::unexpected(std::get<StoreOpenError>(opened.error()));
}

std::expected<void, StoreOpenError>
PersistenceController::Private::recover(const StoreDamage& damage)
{
    qCritical("OrvaneWorkspace store failed to load: %ls. Backing up store files and attempting "
              "recovery...",
              qUtf16Printable(damage.description));
    auto aside = moveAside(folder, path, damage.description, clock.now());
    if (!aside)
        return std::unexpected(aside.error());
    recovery = *std::move(aside);
    return create();
}

void PersistenceController::Private::use(OpenedStore&& opened)
{
    store = std::move(opened);
    if (readOnly || store.connection->isReadOnly()) {
        readOnly = true;
        return;
    }
    writer = std::make_unique<StoreWriter>(*store.connection, store.state.storeKey);
    if (hasJournal(path)) {
        journal = JournalState::InUse;
        fold();
    }
}

// Copies the journal into the file. The generation is raised first, so that a copy of the journal
// made before no longer fits the file.
bool PersistenceController::Private::fold()
{
    if (store.state.generation % 2 != 0) {
        StoreState next = store.state;
        ++next.generation;
        const auto raised = store.connection->transact([&] { writer->writeState(next); });
        if (!raised)
            return false;
        store.state = next;
    }
    const auto complete = store.connection->checkpoint();
    if (!complete || !*complete)
        return false;
    journal = JournalState::Folded;
    return true;
}

std::expected<void, StoreError> PersistenceController::Private::flush()
{
    if (readOnly) {
        pending.clear();
        return std::unexpected(
            StoreError{StoreError::Code::ReadOnly, u"the project can't be written"_s});
    }
    auto done = commitChanges(store, *writer, pending, journal);
    if (!done)
        return std::unexpected(done.error().toStoreError());
    pending.clear();
    if (store.state.generation % 2 != 0)
        journal = JournalState::InUse;
    if (store.connection->journalPages() >= foldAtPages)
        fold();
    if (const auto& problem = *done)
        return std::unexpected(*problem);
    return {};
}

void PersistenceController::Private::close()
{
    check.reset();
    if (!store.connection)
        return;
    if (!pending.isEmpty()) {
        if (const auto saved = flush(); !saved)
            qCritical("Changes could not be saved before closing: %ls",
                      qUtf16Printable(saved.error().text()));
    }
    store.bytes->detach();
    store.layout = LayoutStore();
    if (!readOnly) {
        if (journal == JournalState::Folded || fold())
            store.connection->closeFolded();
        else
            qWarning("%ls is closed with its journal beside it", qUtf16Printable(path));
    }
    writer.reset();
    store.connection.reset();
    lock.reset();
}

void PersistenceController::Private::importLegacyJSONIfNeeded(const QString& legacyPath)
{
    const auto report = [](const QString& error) {
        qWarning("OrvaneWorkspace legacy JSON import failed: %ls", qUtf16Printable(error));
    };
    if (readOnly || !QFileInfo(legacyPath).isFile() || store.state.folderCount > 0 ||
        store.state.noteCount > 0)
        return;
    const auto bytes = readFile(legacyPath);
    if (!bytes)
        return report(bytes.error().text());
    const auto json = parseJson(*bytes);
    if (!json)
        return report(json.error().text());
    auto snapshot = fromJson<NotebookSnapshot>(*json);
    if (!snapshot)
        return report(snapshot.error().text());
    moveNotesToInboxIfNoFolder(*snapshot, clock.now());
    if (snapshot->folders.isEmpty())
        return;
    pending.put(*snapshot);
    if (const auto saved = flush(); !saved)
        return report(saved.error().text());
    const QString aside = QFileInfo(legacyPath).absolutePath() + "/notebook.pre_coredata.json"_L1;
    if (!QFileInfo::exists(aside) && !QDir().rename(legacyPath, aside))
        report(aside);
}

PersistenceController::PersistenceController(std::unique_ptr<Private> p)
    : m_private(std::move(p))
{}

PersistenceController::~PersistenceController() = default;

PersistenceController::Opened
PersistenceController::open(const QString& dataFolder, const Clock& clock, const Options& options)
{
    auto p = std::make_unique<Private>(clock, QDir::cleanPath(dataFolder), options);
    if (auto opened = p->open(); !opened)
        return std::unexpected(opened.error());
    if (options.shouldImportLegacyJSON)
        p->importLegacyJSONIfNeeded(options.legacyJSONPath);
    return std::unique_ptr<PersistenceController>(new PersistenceController(std::move(p)));
}

PersistenceController::Opened PersistenceController::open(const QString& dataFolder,
                                                          const Clock& clock)
{
    return open(dataFolder, clock, Options());
}

PersistenceController::Opened
PersistenceController::legacyShared(const QString& applicationSupportFolder, const Clock& clock)
{
    const QString folder = legacyFolder(applicationSupportFolder);
    return open(folder, clock, {legacyJSON(folder), true, nullptr, Options().foldAtPages});
}

bool PersistenceController::hasLegacyNotebook(const QString& applicationSupportFolder)
{
    const QString folder = legacyFolder(applicationSupportFolder);
    return anyExists(persistentStoreFiles(orvane::storePath(folder))) ||
           QFileInfo::exists(legacyJSON(folder));
}

const QString& PersistenceController::storageDirectory() const
{
    return m_private->folder;
}

const QString& PersistenceController::storePath() const
{
    return m_private->path;
}

bool PersistenceController::hadExistingPersistentStore() const
{
    return m_private->hadExisting;
}

const std::optional<PersistentStoreRecovery>& PersistenceController::persistentStoreRecovery() const
{
    return m_private->recovery;
}

bool PersistenceController::isReadOnly() const
{
    return m_private->readOnly;
}

NotebookSnapshot PersistenceController::load()
{
    const OpenedStore& store = m_private->store;
    NotebookSnapshot snapshot{store.folders.records(), store.notes.records(),
                              store.layout.layout()};
    const auto older = [](const auto& a, const auto& b) {
        return a->createdAt < b->createdAt;
    };
    const auto newer = [](const auto& a, const auto& b) {
        return a->updatedAt > b->updatedAt;
    };
    if (!std::ranges::is_sorted(snapshot.folders, older))
        std::ranges::stable_sort(snapshot.folders, older);
    if (!std::ranges::is_sorted(snapshot.notes, newer))
        std::ranges::stable_sort(snapshot.notes, newer);
    moveNotesToInboxIfNoFolder(snapshot, m_private->clock.now());
    return snapshot;
}

std::expected<void, StoreError> PersistenceController::save(const NotebookSnapshot& snapshot)
{
    m_private->pending.put(snapshot);
    return m_private->flush();
}

std::expected<void, StoreError> PersistenceController::saveNote(const Shared<NoteRecord>& note)
{
    m_private->pending.put(note);
    return m_private->flush();
}

std::expected<void, StoreError>
PersistenceController::saveFolder(const Shared<FolderRecord>& folder)
{
    m_private->pending.put(folder);
    return m_private->flush();
}

std::expected<void, StoreError>
PersistenceController::saveLayout(const BinderLayoutSnapshot& layout)
{
    m_private->pending.put(layout);
    return m_private->flush();
}

void PersistenceController::checkInBackground(StoreCheck::Done done)
{
    const bool aside = m_private->store.copy != nullptr;
    if (!m_private->check && !aside)
        m_private->check = std::make_unique<StoreCheck>(m_private->path, std::move(done));
}

std::expected<PersistentStoreRecovery, StoreOpenError>
PersistenceController::protectAfterDamage(std::unique_ptr<PersistenceController> controller,
                                          const QString& errorDescription, const Clock& clock)
{
    Private& p = *controller->m_private;
    if (p.readOnly)
        return std::unexpected(StoreOpenError{StoreOpenError::Code::RecoveryFailed, p.path,
                                              errorDescription, std::nullopt});
    p.check.reset();
    p.store.bytes->detach();
    p.store.layout = LayoutStore();
    p.writer.reset();
    p.store.connection.reset(); // with its journal, as it is
    return moveAside(p.folder, p.path, errorDescription, clock.now());
}

} // namespace orvane
