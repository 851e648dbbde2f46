// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/PersistenceController.h"

#include "core/records/InboxFolder.h"
#include "core/records/RecordJson.h"
#include "core/store/StoreCopy.h"
#include "core/store/StoreFiles.h"
#include "core/store/StoreSession.h"
#include "core/store/WriteAheadLog.h"
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

StoreOpenError folderError(const FileError& error)
{
    auto code = StoreOpenError::Code::Unreadable;
    if (error.code == FileError::Code::NotFound)
        code = StoreOpenError::Code::Missing;
    else if (error.code == FileError::Code::NoAccess)
        code = StoreOpenError::Code::NoAccess;
    return {code, error.path, error.detail, std::nullopt};
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
// move. A store that a link leads to stays where it is.
std::expected<PersistentStoreRecovery, StoreOpenError>
moveAside(const StoreFiles& files, const QString& description, Timestamp now)
{
    PersistentStoreRecovery recovery{
        QUrl::fromLocalFile(files.named(backupDirectory(files.path(), now))), description};
    const auto failed = [&](const QString& detail) {
        return std::unexpected(StoreOpenError{StoreOpenError::Code::RecoveryFailed, files.path(),
                                              description + "; "_L1 + detail, std::nullopt});
    };
    if (files.isLink())
        return failed(u"it is a link to a file elsewhere"_s);
    if (const auto written = recovery.write(files.folder()); !written)
        return failed(written.error().text());
    backUpPersistentStoreFiles(files.path(), now);
    if (files.anyStands())
        return failed(u"its files can't be moved aside"_s);
    return recovery;
}

} // namespace

struct PersistenceController::Private {
    const Clock& clock;
    Options options;
    const StoreSchema& schema;
    std::optional<StoreFiles> files;
    bool hadExisting = false;
    std::optional<PersistentStoreRecovery> recovery;
    std::optional<ProjectLock> lock;
    std::unique_ptr<StoreSession> session;
    std::unique_ptr<StoreCheck> check;
    std::unique_ptr<StoreWorker> worker;
    int workerMendings = 0;

    Private(const Clock& time, const Options& chosen)
        : clock(time)
        , options(chosen)
        , schema(chosen.schema ? *chosen.schema : StoreSchema::current())
    {}

    std::expected<void, StoreOpenError> open(const QString& dataFolder);
    /// By the number of their rows.
    [[nodiscard]] QHash<qint64, Blob> unknownTexts(const QList<Shared<NoteRecord>>& notes,
                                                   qsizetype units) const;
    std::expected<void, StoreOpenError> holdFolder(const QString& dataFolder);
    std::expected<void, StoreOpenError> openFiles();
    std::expected<void, StoreOpenError> openForReading();
    std::expected<void, StoreOpenError> create();
    std::expected<void, StoreOpenError> recover(const StoreDamage& damage);
    void use(OpenedStore&& opened, bool readOnly = false);
    void importLegacyJSONIfNeeded(const QString& legacyPath);
};

std::expected<void, StoreOpenError> PersistenceController::Private::open(const QString& dataFolder)
{
    if (auto held = holdFolder(dataFolder); !held)
        return held;
    auto opened = openFiles();
    if (opened)
        return opened;
    StoreOpenError error = std::move(opened.error());
    error.path = files->named(error.path);
    error.detail = files->named(error.detail);
    return std::unexpected(std::move(error));
}

std::expected<void, StoreOpenError>
PersistenceController::Private::holdFolder(const QString& dataFolder)
{
    if (!options.folder) {
        if (options.ifMissing == IfMissing::Create) {
            if (auto problem = folderProblem(dataFolder))
                return std::unexpected(*std::move(problem));
        }
        auto held = FolderHandle::open(dataFolder);
        if (!held)
            return std::unexpected(folderError(held.error()));
        options.folder = *std::move(held);
    }
    files.emplace(options.folder);
    return {};
}

std::expected<void, StoreOpenError> PersistenceController::Private::openFiles()
{
    const QString& path = files->path();
    hadExisting = files->anyStands();
    if (files->isBrokenLink())
        return std::unexpected(StoreOpenError{StoreOpenError::Code::Missing, path,
                                              u"it is a link that leads to no file"_s,
                                              std::nullopt});
    if (!hadExisting && options.ifMissing == IfMissing::Refuse)
        return std::unexpected(
            StoreOpenError{StoreOpenError::Code::Missing, path, {}, std::nullopt});
    auto taken = ProjectLock::take(files->folder(), clock.now());
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
    if (lock->wasStale() && !hasWal(path))
        qWarning("%ls was not closed by its last program and has no write-ahead log",
                 qUtf16Printable(files->place()));

    auto opened = openStore(path, schema, StoreAccess::ReadWrite, options.beginning);
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
    auto opened = openStore(files->path(), schema, StoreAccess::ReadOnly);
    if (opened) {
        use(*std::move(opened), true);
        return {};
    }
    if (const auto* damage = std::get_if<StoreDamage>(&opened.error()))
        return std::unexpected(StoreOpenError{StoreOpenError::Code::RecoveryFailed, files->path(),
                                              damage->description, std::nullopt});
    return std::unexpected(std::get<StoreOpenError>(opened.error()));
}

std::expected<void, StoreOpenError> PersistenceController::Private::create()
{
    const QString& path = files->path();
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
    auto aside = moveAside(*files, damage.description, clock.now());
    if (!aside)
        return std::unexpected(aside.error());
    recovery = *std::move(aside);
    return create();
}

void PersistenceController::Private::use(OpenedStore&& opened, bool readOnly)
{
    session = std::make_unique<StoreSession>(std::move(opened), *files, options.checkpointAtPages,
                                             readOnly);
}

void PersistenceController::Private::importLegacyJSONIfNeeded(const QString& legacyPath)
{
    const auto report = [](const QString& error) {
        qWarning("OrvaneWorkspace legacy JSON import failed: %ls", qUtf16Printable(error));
    };
    const StoreState& state = session->store().state;
    if (session->isReadOnly() || !QFileInfo(legacyPath).isFile() || state.folderCount > 0 ||
        state.noteCount > 0)
        return;
    const auto bytes = readFile(legacyPath, FileLimit::earlierNotebook);
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
    session->pending().put(*snapshot);
    if (const auto saved = session->flush(); !saved)
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
    auto p = std::make_unique<Private>(clock, options);
    if (auto opened = p->open(QDir::cleanPath(dataFolder)); !opened)
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
    return open(folder, clock,
                {.legacyJSONPath = legacyJSON(folder), .shouldImportLegacyJSON = true});
}

bool PersistenceController::hasLegacyNotebook(const QString& applicationSupportFolder)
{
    const QString folder = legacyFolder(applicationSupportFolder);
    return anyExists(persistentStoreFiles(orvane::storePath(folder))) ||
           QFileInfo::exists(legacyJSON(folder));
}

QString PersistenceController::storageDirectory() const
{
    return m_private->files->folderPlace();
}

QString PersistenceController::storePath() const
{
    return m_private->files->place();
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
    return m_private->session->isReadOnly();
}

NotebookSnapshot PersistenceController::load()
{
    NotebookSnapshot snapshot = m_private->session->store().snapshot();
    moveNotesToInboxIfNoFolder(snapshot, m_private->clock.now());
    return snapshot;
}

std::expected<void, StoreError> PersistenceController::save(const NotebookSnapshot& snapshot)
{
    m_private->session->pending().put(snapshot);
    return m_private->session->flush();
}

std::expected<void, StoreError> PersistenceController::saveNote(const Shared<NoteRecord>& note)
{
    m_private->session->pending().put(note);
    return m_private->session->flush();
}

std::expected<void, StoreError>
PersistenceController::saveFolder(const Shared<FolderRecord>& folder)
{
    m_private->session->pending().put(folder);
    return m_private->session->flush();
}

std::expected<void, StoreError>
PersistenceController::saveLayout(const BinderLayoutSnapshot& layout)
{
    m_private->session->pending().put(layout);
    return m_private->session->flush();
}

std::expected<void, StoreError> PersistenceController::saveAgain()
{
    StoreSession& session = *m_private->session;
    return session.pending().isEmpty() ? session.confirmFiles() : session.flush();
}

bool PersistenceController::hasUnsaved() const
{
    return m_private->session->pending().differFrom(m_private->session->store());
}

QList<Shared<NoteRecord>> PersistenceController::unsavedNotes() const
{
    return m_private->session->pending().notesBeside(m_private->session->store());
}

QList<Shared<FolderRecord>> PersistenceController::unsavedFolders() const
{
    return m_private->session->pending().foldersBeside(m_private->session->store());
}

const Shared<NoteRecord>* PersistenceController::storedNote(const QUuid& id) const
{
    const auto* slot = m_private->session->store().notes.find(id);
    return slot ? &slot->record : nullptr;
}

void PersistenceController::discardUnsaved()
{
    m_private->session->pending().clear();
}

std::expected<void, StoreError> PersistenceController::confirmFiles()
{
    return m_private->session->confirmFiles();
}

std::expected<void, StoreError> PersistenceController::writeCopy(const QString& path)
{
    return m_private->session->writeCopy(path, m_private->schema);
}

std::expected<NotebookSnapshot, StoreOpenError>
PersistenceController::readOnlyCopy(const QString& path)
{
    return readStoreCopy(path, StoreSchema::current());
}

StoreWorker* PersistenceController::worker()
{
    if (m_private->session->store().copy)
        return nullptr;
    // One that began with a write-ahead log that was mended since sees what was in the former one.
    const int mendings = m_private->session->mendings();
    if (!m_private->worker || std::exchange(m_private->workerMendings, mendings) != mendings)
        m_private->worker = std::make_unique<StoreWorker>(m_private->files->path());
    return m_private->worker.get();
}

QHash<qint64, Blob>
PersistenceController::Private::unknownTexts(const QList<Shared<NoteRecord>>& notes,
                                             qsizetype units) const
{
    QHash<qint64, Blob> texts;
    const auto& stored = session->store().notes;
    for (const Shared<NoteRecord>& note : notes) {
        const auto* slot = stored.find(note->id);
        // What was changed since it was stored is in memory.
        if (slot && !note->body.knowsBeginning(units) &&
            slot->record->body.utf8().isSameCell(note->body.utf8()))
            texts.insert(slot->row, note->body.utf8());
    }
    return texts;
}

void PersistenceController::readBeginnings(const QList<Shared<NoteRecord>>& notes, qsizetype units)
{
    const QHash<qint64, Blob> wanted = m_private->unknownTexts(notes, units);
    StoreConnection& connection = *m_private->session->store().connection;
    const auto read = connection.run([&] {
        return orvane::readBeginnings(connection.database(), wanted.keys(),
                                      NoteText::bytesFor(units));
    });
    if (!read)
        return; // asked for again when they are shown
    for (auto each = read->cbegin(); each != read->cend(); ++each)
        wanted.constFind(each.key())->learn(each.value());
}

void PersistenceController::learnBeginnings(const QList<Shared<NoteRecord>>& notes, qsizetype units,
                                            std::function<void()> done)
{
    const QHash<qint64, Blob> wanted = m_private->unknownTexts(notes, units);
    StoreWorker* reader = wanted.isEmpty() ? nullptr : worker();
    if (!reader)
        return;
    reader->read([](StoreReading& store, const QList<qint64>& rows,
                    qsizetype size) { return store.beginnings(rows, size); },
                 [wanted, done = std::move(done)](const auto& read) {
                     if (!read)
                         return;
                     for (auto each = read->cbegin(); each != read->cend(); ++each)
                         wanted.constFind(each.key())->learn(each.value());
                     done();
                 },
                 wanted.keys(), NoteText::bytesFor(units));
}

void PersistenceController::checkInBackground(StoreCheck::Done done)
{
    StoreSession& session = *m_private->session;
    const bool aside = session.store().copy != nullptr;
    if (m_private->check || aside || !session.confirmFiles())
        return;
    // A check that began with a write-ahead log that was not ours says nothing about the store.
    const auto report = [&session, mendings = session.mendings(),
                         done = std::move(done)](StoreCheckResult result) {
        if (!session.confirmFiles() || session.mendings() != mendings)
            result = {};
        done(result);
    };
    m_private->check = std::make_unique<StoreCheck>(m_private->files->path(), report);
}

std::expected<PersistentStoreRecovery, StoreOpenError>
PersistenceController::protectAfterDamage(std::unique_ptr<PersistenceController> controller,
                                          const QString& errorDescription, const Clock& clock)
{
    Private& p = *controller->m_private;
    const auto failed = [&](const QString& detail) {
        return std::unexpected(StoreOpenError{StoreOpenError::Code::RecoveryFailed,
                                              p.files->place(), detail, std::nullopt});
    };
    if (p.session->isReadOnly())
        return failed(errorDescription);
    p.check.reset();
    p.worker.reset();
    const auto ours = p.session->confirmFiles();
    p.session->abandon(); // with its write-ahead log, as it is
    if (!ours)
        return failed(ours.error().text());
    auto aside = moveAside(*p.files, errorDescription, clock.now());
    if (aside)
        return *std::move(aside);
    return failed(p.files->named(aside.error().detail));
}

} // namespace orvane
