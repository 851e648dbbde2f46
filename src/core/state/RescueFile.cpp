// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/RescueFile.h"

#include "core/library/ProjectLibraryController.h"
#include "core/notebook/Notebook.h"
#include "core/records/RecordFields.h"
#include "core/records/RecordJson.h"
#include "core/records/Wording.h"
#include "core/store/StoreReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(RescueFile)
};

constexpr QLatin1StringView descriptionName("rescue.json");
constexpr int version = 1;
constexpr int nameAttempts = 1000;
constexpr qsizetype longestTextName = 80;
constexpr qsizetype mostTextFiles = 100;

std::unexpected<FileError> failed(const QString& path, const QString& detail)
{
    return std::unexpected(FileError{FileError::Code::Other, path, detail});
}

// Of a store that is gone nothing more can be read: what was read before is kept.
std::optional<Blob> readable(const std::optional<Blob>& bytes)
{
    const auto read = bytes ? bytes->read() : std::unexpected(QString());
    return read ? std::optional(Blob(*read)) : std::nullopt;
}

Shared<NoteRecord> withReadBytes(const Shared<NoteRecord>& note)
{
    return note.with([](NoteRecord& each) {
        forEachField<NoteRecord>([&]<typename Type>(const RecordField<NoteRecord, Type>& field) {
            if constexpr (std::is_same_v<Type, std::optional<Blob>>)
                each.*field.member = readable(each.*field.member);
        });
        each.body = NoteText(readable(each.body.utf8()).value_or(Blob(QByteArray())));
    });
}

QString textName(const NoteRecord& note, const QStringList& taken)
{
    const QString title =
        ProjectLibraryController::sanitizedFolderName(note.titleForList()).left(longestTextName);
    QString name = title + ".txt"_L1;
    for (int i = 2; taken.contains(name, Qt::CaseInsensitive); ++i)
        name = u"%1 %2.txt"_s.arg(title).arg(i);
    return name;
}

template <typename Record>
void putIn(QList<Shared<Record>>& records, const Shared<Record>& record)
{
    const auto found = std::ranges::find_if(
        records, [&](const Shared<Record>& each) { return each->id == record->id; });
    if (found == records.end())
        records.append(record);
    else
        *found = record;
}

} // namespace

RescueFile::~RescueFile() = default;

std::expected<std::unique_ptr<RescueFile>, FileError>
RescueFile::create(const QString& folder, const RescueOrigin& origin, const Clock& clock)
{
    if (QFileInfo::exists(folder) || QFileInfo(folder).isSymLink())
        return std::unexpected(FileError{FileError::Code::Exists, folder, qt_error_string(EEXIST)});
    if (auto made = makeFolder(folder); !made)
        return std::unexpected(made.error());
    std::unique_ptr<RescueFile> rescue(new RescueFile);
    rescue->m_folder = folder;
    rescue->m_origin = origin;
    if (auto begun = rescue->begin(clock); !begun) {
        rescue.reset();
        QDir(folder).removeRecursively(); // nothing is in it yet
        return std::unexpected(begun.error());
    }
    (void)syncFolder(QFileInfo(folder).absolutePath());
    return rescue;
}

std::expected<void, FileError> RescueFile::begin(const Clock& clock)
{
    auto store = PersistenceController::open(m_folder, clock);
    if (!store)
        return failed(store.error().path, store.error().detail);
    m_store = *std::move(store);
    // A store without any folder would give its notes one.
    Notebook empty;
    ensureTrashFolder(empty.folders, clock.now());
    m_content.folders = empty.folders.records();
    if (auto saved = m_store->save(m_content); !saved)
        return failed(m_store->storePath(), saved.error().text());
    return describe();
}

std::expected<std::unique_ptr<RescueFile>, FileError>
RescueFile::createIn(const QString& parent, const RescueOrigin& origin, const Clock& clock)
{
    if (auto made = makeFolder(parent); !made)
        return std::unexpected(made.error());
    const QString title = Words::tr("%1, %2", "project and day")
                              .arg(origin.projectTitle, dayOfMonthInWords(origin.writtenAt));
    const QString base = parent + u'/' + ProjectLibraryController::sanitizedFolderName(title);
    QString folder = base;
    for (int i = 2; i < nameAttempts; ++i) {
        auto created = create(folder, origin, clock);
        if (created || created.error().code != FileError::Code::Exists)
            return created;
        folder = u"%1 %2"_s.arg(base).arg(i);
    }
    return failed(base, qt_error_string(EEXIST));
}

std::expected<void, FileError>
RescueFile::keep(const QList<Shared<NoteRecord>>& notes, const QList<Shared<FolderRecord>>& folders,
                 const std::function<std::optional<Timestamp>(const QUuid&)>& stored)
{
    for (const Shared<FolderRecord>& folder : folders)
        putIn(m_content.folders, folder);
    QList<Shared<NoteRecord>> changed;
    for (const Shared<NoteRecord>& note : notes) {
        const auto before = m_kept.constFind(note->id);
        const bool isKept = before != m_kept.cend() && before->isSame(note);
        if (isKept || !note->body.isReadable())
            continue;
        changed.append(withReadBytes(note));
        putIn(m_content.notes, changed.last());
        m_kept.insert(note->id, note);
        const auto known = std::ranges::find(m_notes, note->id, &RescuedNote::id);
        if (known == m_notes.end())
            m_notes.append({note->id, note->titleForList(), stored(note->id)});
        else
            known->title = note->titleForList();
    }
    if (auto saved = m_store->save(m_content); !saved) {
        m_kept.clear(); // the next time everything is tried again
        return failed(m_store->storePath(), saved.error().text());
    }
    if (auto written = writeTexts(changed); !written)
        return written;
    return describe();
}

// A file a note where they can be looked through, else all in one.
std::expected<void, FileError> RescueFile::writeTexts(const QList<Shared<NoteRecord>>& notes)
{
    if (m_content.notes.size() > mostTextFiles) {
        QByteArray all;
        for (const Shared<NoteRecord>& note : std::as_const(m_content.notes))
            all += note->titleForList().toUtf8() + "\n\n" + note->body.utf8().readOrNothing() +
                   "\n\n\n";
        return writeFileAtomically(m_folder + u'/' + Words::tr("All notes") + ".txt"_L1, all);
    }
    for (const Shared<NoteRecord>& note : notes) {
        QString& file = m_textFiles[note->id];
        if (file.isEmpty())
            file = textName(*note, m_textFiles.values());
        if (auto written =
                writeFileAtomically(m_folder + u'/' + file, note->body.utf8().readOrNothing());
            !written)
            return written;
    }
    return {};
}

std::expected<void, FileError> RescueFile::describe() const
{
    QJsonArray notes;
    for (const RescuedNote& note : m_notes) {
        QJsonObject object{{"id"_L1, uuidText(note.id)}, {"title"_L1, note.title}};
        if (note.storedUpdatedAt)
            object.insert("storedUpdatedAt"_L1, toIso8601(*note.storedUpdatedAt));
        notes.append(object);
    }
    return writeFileAtomically(m_folder + u'/' + descriptionName,
                               encodeJson(QJsonObject{
                                   {"version"_L1, version},
                                   {"projectID"_L1, uuidText(m_origin.projectID)},
                                   {"projectTitle"_L1, m_origin.projectTitle},
                                   {"projectFolder"_L1, m_origin.projectFolder},
                                   {"writtenAt"_L1, toIso8601(m_origin.writtenAt)},
                                   {"isOffered"_L1, m_origin.isOffered},
                                   {"notes"_L1, notes},
                               }));
}

QList<FoundRescue> RescueFile::find(const QStringList& parents)
{
    QList<FoundRescue> found;
    for (const QString& parent : parents) {
        for (const QString& name : QDir(parent).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const QString folder = parent + u'/' + name;
            const auto bytes = readFile(folder + u'/' + descriptionName, FileLimit::manifest);
            const auto json = bytes ? parseJson(*bytes) : std::unexpected(JsonError());
            if (!json)
                continue;
            JsonObjectReader reader(*json);
            FoundRescue rescue{folder, {}, {}};
            rescue.origin.projectID = reader.uuid("projectID"_L1);
            rescue.origin.projectTitle = reader.string("projectTitle"_L1);
            rescue.origin.projectFolder = reader.string("projectFolder"_L1);
            rescue.origin.writtenAt = reader.date("writtenAt"_L1);
            const QJsonArray notes = reader.array("notes"_L1);
            const bool isKnownVersion = int(reader.number("version"_L1)) == version;
            for (const QJsonValue note : notes) {
                JsonObjectReader part(note, "notes"_L1);
                RescuedNote rescued{part.uuid("id"_L1), part.string("title"_L1), {}};
                if (const auto date = part.optionalString("storedUpdatedAt"_L1))
                    rescued.storedUpdatedAt = fromIso8601(*date);
                if (part.error())
                    reader.adopt(*part.error());
                rescue.notes.append(rescued);
            }
            const bool isOffered = reader.boolean("isOffered"_L1);
            if (!reader.failed() && isKnownVersion && isOffered)
                found.append(rescue);
        }
    }
    std::ranges::stable_sort(found, std::ranges::greater(),
                             [](const FoundRescue& rescue) { return rescue.origin.writtenAt; });
    return found;
}

std::expected<NotebookSnapshot, FileError> RescueFile::read(const QString& folder,
                                                            const Clock& clock)
{
    auto store = PersistenceController::open(folder, clock);
    if (!store)
        return failed(store.error().path, store.error().detail);
    if ((*store)->persistentStoreRecovery())
        return failed(folder, (*store)->persistentStoreRecovery()->errorDescription);
    NotebookSnapshot snapshot = (*store)->load();
    for (Shared<NoteRecord>& note : snapshot.notes) {
        std::optional<QString> problem;
        forEachBytes(*note, [&](int, const Blob* bytes) {
            if (const auto read = bytes ? bytes->read() : QByteArray(); !read)
                problem = read.error();
        });
        if (problem)
            return failed(folder, *problem);
        holdImages(*note);
    }
    return snapshot;
}

} // namespace orvane
