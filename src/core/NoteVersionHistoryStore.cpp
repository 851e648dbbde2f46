// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/NoteVersionHistoryStore.h"

#include "core/ProjectLibraryController.h"
#include "platform/SetAside.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <filesystem>
#include <system_error>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

QJsonObject toJson(const NoteVersionSnapshot& snapshot)
{
    QJsonObject object{
        {"id"_L1, uuidText(snapshot.id)},
        {"noteID"_L1, uuidText(snapshot.noteID)},
        {"capturedAt"_L1, toIso8601(snapshot.capturedAt)},
        {"title"_L1, snapshot.title},
        {"bodyPlain"_L1, snapshot.bodyPlain},
    };
    if (snapshot.bodyRTFBase64)
        object.insert("bodyRTFBase64"_L1, *snapshot.bodyRTFBase64);
    if (snapshot.label)
        object.insert("label"_L1, *snapshot.label);
    if (snapshot.wordCount)
        object.insert("wordCount"_L1, *snapshot.wordCount);
    if (snapshot.richContentPayloadBase64)
        object.insert("richContentPayloadBase64"_L1, *snapshot.richContentPayloadBase64);
    return object;
}

std::expected<NoteVersionSnapshot, JsonError> fromJson(const QJsonValue& value)
{
    JsonObjectReader reader(value);
    NoteVersionSnapshot snapshot;
    snapshot.id = reader.uuid("id"_L1);
    snapshot.noteID = reader.uuid("noteID"_L1);
    snapshot.capturedAt = reader.date("capturedAt"_L1);
    snapshot.title = reader.string("title"_L1);
    snapshot.bodyPlain = reader.string("bodyPlain"_L1);
    snapshot.bodyRTFBase64 = reader.optionalString("bodyRTFBase64"_L1);
    snapshot.label = reader.optionalString("label"_L1);
    if (const auto words = reader.optionalNumber("wordCount"_L1))
        snapshot.wordCount = int(*words);
    snapshot.richContentPayloadBase64 = reader.optionalString("richContentPayloadBase64"_L1);
    return reader.finish(std::move(snapshot));
}

using Timeline = QList<NoteVersionSnapshot>;
using Code = VersionHistoryError::Code;

std::unexpected<VersionHistoryError> failed(Code code, const QString& detail)
{
    return std::unexpected(VersionHistoryError{code, detail});
}

// A folder that can't be searched hides a file without being a reason to write a new one.
bool isAbsent(const QString& path)
{
    std::error_code error;
    const auto status = std::filesystem::symlink_status(path.toStdU16String(), error);
    return status.type() == std::filesystem::file_type::not_found;
}

std::expected<Timeline, VersionHistoryError> readTimeline(const QString& path)
{
    const auto bytes = readFile(path, FileLimit::versionHistory);
    if (!bytes && bytes.error().code == FileError::Code::NotFound && isAbsent(path))
        return Timeline();
    if (!bytes)
        return failed(Code::Unreadable, bytes.error().text());
    const QJsonDocument document = QJsonDocument::fromJson(*bytes);
    if (!document.isArray())
        return failed(Code::Damaged, path);
    Timeline timeline;
    const QJsonArray array = document.array();
    timeline.reserve(array.size());
    for (const QJsonValue value : array) {
        auto snapshot = fromJson(value);
        if (!snapshot)
            return failed(Code::Damaged, snapshot.error().text());
        timeline.append(*std::move(snapshot));
    }
    return timeline;
}

// The text of a timeline is edited as text, so that adding a version does not build a hundred
// others anew. It relies on how the encoder lays an array out: entries four blanks deep, each on
// lines of its own, and no line break inside a value.
constexpr QByteArrayView arrayStart("[\n");
constexpr QByteArrayView arrayEnd("\n]\n");
constexpr QByteArrayView entryEnd("\n    }");
constexpr QByteArrayView separator(",\n");

QByteArray entriesText(const Timeline& timeline)
{
    if (timeline.isEmpty())
        return {};
    QJsonArray array;
    for (const NoteVersionSnapshot& snapshot : timeline)
        array.append(toJson(snapshot));
    const QByteArray text = QJsonDocument(array).toJson(QJsonDocument::Indented);
    return text.sliced(arrayStart.size(), text.size() - arrayStart.size() - arrayEnd.size());
}

QByteArrayView withoutFirst(QByteArrayView entries, qsizetype count)
{
    for (; count > 0 && !entries.isEmpty(); --count) {
        const qsizetype end = entries.indexOf(entryEnd);
        const qsizetype next = end + entryEnd.size() + separator.size();
        entries = end < 0 || next > entries.size() ? QByteArrayView() : entries.sliced(next);
    }
    return entries;
}

QByteArray timelineText(QByteArrayView entries, QByteArrayView added)
{
    QByteArray text;
    text.reserve(entries.size() + added.size() + 16);
    text.append(arrayStart).append(entries);
    if (!entries.isEmpty() && !added.isEmpty())
        text.append(separator);
    return text.append(added).append(arrayEnd);
}

std::optional<Blob> decoded(const std::optional<QString>& base64)
{
    if (!base64)
        return std::nullopt;
    auto bytes =
        QByteArray::fromBase64Encoding(base64->toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return bytes ? std::optional<Blob>(std::in_place, std::move(bytes.decoded)) : std::nullopt;
}

std::expected<QByteArray, VersionHistoryError> bytesOf(const std::optional<Blob>& blob)
{
    if (!blob)
        return QByteArray();
    auto bytes = blob->tryBytes();
    if (!bytes)
        return failed(Code::Unreadable, bytes.error());
    return *std::move(bytes);
}

/// The note as a version of it. A version of words that can't be read would be one of no words.
std::expected<NoteVersionSnapshot, VersionHistoryError>
snapshotOf(const NoteRecord& note, const std::optional<QString>& label, Timestamp now)
{
    NoteVersionSnapshot snapshot;
    snapshot.id = QUuid::createUuid();
    snapshot.noteID = note.id;
    snapshot.capturedAt = now;
    snapshot.title = note.title;
    if (const auto body = bytesOf(note.body.utf8()); !body)
        return std::unexpected(body.error());
    snapshot.bodyPlain = note.body;
    const auto rtf = bytesOf(note.bodyRTF);
    if (!rtf)
        return std::unexpected(rtf.error());
    if (!rtf->isEmpty())
        snapshot.bodyRTFBase64 = QString::fromLatin1(rtf->toBase64());
    const bool payloadIsAboutToGo = label && label->startsWith("Before "_L1);
    if (payloadIsAboutToGo && note.richContentPayload) {
        const auto payload = bytesOf(note.richContentPayload);
        if (!payload)
            return std::unexpected(payload.error());
        snapshot.richContentPayloadBase64 = QString::fromLatin1(payload->toBase64());
    }
    snapshot.label = label;
    snapshot.wordCount = wordCount(snapshot.bodyPlain);
    return snapshot;
}

/// The project's data folder is never made here: one that is gone has moved or is unmounted.
std::expected<void, VersionHistoryError> makeHistoryFolder(const QString& path)
{
    std::error_code error;
    std::filesystem::create_directory(path.toStdU16String(), error);
    if (error)
        return failed(Code::NotWritten, path + ": "_L1 + QString::fromStdString(error.message()));
    return {};
}

} // namespace

int wordCount(QStringView text)
{
    int words = 0;
    bool inWord = false;
    for (const QChar c : text) {
        const bool isSpace = c.isSpace();
        words += !isSpace && !inWord;
        inWord = !isSpace;
    }
    return words;
}

std::optional<Blob> NoteVersionSnapshot::bodyRTF() const
{
    return decoded(bodyRTFBase64);
}

std::optional<Blob> NoteVersionSnapshot::richContentPayload() const
{
    return decoded(richContentPayloadBase64);
}

NoteVersionHistoryStore::NoteVersionHistoryStore(UserDefaults& defaults,
                                                 NotificationCenter& notifications)
    : m_defaults(defaults)
    , m_notifications(notifications)
{}

QString NoteVersionHistoryStore::historyDirectoryPath(const QString& projectRootPath)
{
    return ProjectLibraryController::projectDataDirectoryPath(projectRootPath) + "/history"_L1;
}

QString NoteVersionHistoryStore::filePath(const QString& projectRootPath, const QUuid& noteID)
{
    return historyDirectoryPath(projectRootPath) + u'/' + uuidText(noteID) + ".json"_L1;
}

std::expected<QList<NoteVersionSnapshot>, VersionHistoryError>
NoteVersionHistoryStore::snapshots(const QString& projectRootPath, const QUuid& noteID)
{
    return readTimeline(filePath(projectRootPath, noteID));
}

std::expected<void, VersionHistoryError>
NoteVersionHistoryStore::appendSnapshot(const NoteRecord& note, const QString& projectRootPath,
                                        const std::optional<QString>& label, Timestamp now)
{
    const auto snapshot = snapshotOf(note, label, now);
    if (!snapshot)
        return std::unexpected(snapshot.error());
    if (auto folder = makeHistoryFolder(historyDirectoryPath(projectRootPath)); !folder)
        return folder;
    const QString path = filePath(projectRootPath, note.id);
    const auto entries = entriesToAppendTo(path);
    if (!entries)
        return std::unexpected(entries.error());
    const qsizetype surplus = std::max<qsizetype>(0, entries->count + 1 - maxSnapshots());
    const QByteArray text =
        timelineText(withoutFirst(entries->text, surplus), entriesText({*snapshot}));
    if (const auto written = writeFileAtomically(path, text); !written)
        return failed(Code::NotWritten, written.error().text());
    m_known.insert(path, {FileStamp::of(path), entries->count + 1 - surplus});
    m_notifications.post(snapshotsDidChange, note.id);
    return {};
}

std::expected<NoteVersionHistoryStore::Entries, VersionHistoryError>
NoteVersionHistoryStore::entriesToAppendTo(const QString& path) const
{
    if (const auto known = knownTimeline(path)) {
        auto file = readFile(path, FileLimit::versionHistory);
        if (!file)
            return failed(Code::Unreadable, file.error().text());
        if (file->size() >= arrayStart.size() + arrayEnd.size()) {
            file->chop(arrayEnd.size());
            file->remove(0, arrayStart.size());
            return Entries{*std::move(file), known->count};
        }
    }
    auto timeline = readTimeline(path);
    if (!timeline && timeline.error().code == Code::Damaged) {
        qWarning("A version history is damaged and is set aside: %ls",
                 qUtf16Printable(timeline.error().detail));
        QFile file(path);
        if (!file.rename(setAsidePath(path)))
            return failed(Code::NotWritten, path + ": "_L1 + file.errorString());
        timeline = Timeline();
    }
    if (!timeline)
        return std::unexpected(timeline.error());
    return Entries{entriesText(*timeline), timeline->size()};
}

std::optional<NoteVersionHistoryStore::KnownTimeline>
NoteVersionHistoryStore::knownTimeline(const QString& path) const
{
    const auto known = m_known.constFind(path);
    if (known == m_known.cend() || known->file != FileStamp::of(path))
        return std::nullopt;
    return *known;
}

std::expected<void, VersionHistoryError>
NoteVersionHistoryStore::deleteSnapshot(const QUuid& id, const QUuid& noteID,
                                        const QString& projectRootPath)
{
    const QString path = filePath(projectRootPath, noteID);
    auto timeline = readTimeline(path);
    if (!timeline)
        return std::unexpected(timeline.error());
    timeline->removeIf([&](const NoteVersionSnapshot& snapshot) { return snapshot.id == id; });
    m_known.remove(path);
    if (const auto written = writeFileAtomically(path, timelineText(entriesText(*timeline), {}));
        !written)
        return failed(Code::NotWritten, written.error().text());
    m_notifications.post(snapshotsDidChange, noteID);
    return {};
}

bool NoteVersionHistoryStore::isAutoSnapshotEnabled() const
{
    return autoSnapshotEnabledSetting.read(m_defaults);
}

double NoteVersionHistoryStore::autoSnapshotInterval() const
{
    const double stored = autoSnapshotIntervalSetting.read(m_defaults);
    return stored > 0 ? stored : autoSnapshotIntervalSetting.fallback;
}

qsizetype NoteVersionHistoryStore::maxSnapshots() const
{
    const qint64 stored = maxSnapshotsSetting.read(m_defaults);
    return qsizetype(stored > 0 ? stored : maxSnapshotsSetting.fallback);
}

} // namespace orvane
