// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/NoteVersionHistoryStore.h"

#include "core/ProjectLibraryController.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

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

std::expected<Timeline, QString> readTimeline(const QString& path)
{
    const auto bytes = readFile(path);
    if (!bytes && bytes.error().code == FileError::Code::NotFound)
        return Timeline();
    if (!bytes)
        return std::unexpected(bytes.error().text());
    const QJsonDocument document = QJsonDocument::fromJson(*bytes);
    if (!document.isArray())
        return std::unexpected(path);
    Timeline timeline;
    const QJsonArray array = document.array();
    timeline.reserve(array.size());
    for (const QJsonValue value : array) {
        auto snapshot = fromJson(value);
        if (!snapshot)
            return std::unexpected(snapshot.error().text());
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

QList<NoteVersionSnapshot> NoteVersionHistoryStore::snapshots(const QString& projectRootPath,
                                                              const QUuid& noteID)
{
    return readTimeline(filePath(projectRootPath, noteID)).value_or(Timeline());
}

bool NoteVersionHistoryStore::appendSnapshot(const NoteRecord& note, const QString& projectRootPath,
                                             const std::optional<QString>& label, Timestamp now)
{
    NoteVersionSnapshot snapshot;
    snapshot.id = QUuid::createUuid();
    snapshot.noteID = note.id;
    snapshot.capturedAt = now;
    snapshot.title = note.title;
    snapshot.bodyPlain = note.body;
    if (note.bodyRTF && !note.bodyRTF->isEmpty())
        snapshot.bodyRTFBase64 = QString::fromLatin1(note.bodyRTF->bytes().toBase64());
    const bool payloadIsAboutToGo =
        label == "Before Restore"_L1 || label == beforeFormattingLossLabel;
    if (payloadIsAboutToGo && note.richContentPayload)
        snapshot.richContentPayloadBase64 =
            QString::fromLatin1(note.richContentPayload->bytes().toBase64());
    snapshot.label = label;
    snapshot.wordCount = wordCount(snapshot.bodyPlain);

    (void)makeFolder(historyDirectoryPath(projectRootPath));
    const QString path = filePath(projectRootPath, note.id);
    std::optional<KnownTimeline> known = knownTimeline(path);
    const auto file = known ? readFile(path) : std::unexpected(FileError{});
    QByteArray reencoded;
    QByteArrayView entries;
    if (known && file && file->size() >= arrayStart.size() + arrayEnd.size()) {
        entries = QByteArrayView(*file).sliced(arrayStart.size());
        entries.chop(arrayEnd.size());
    } else {
        auto timeline = readTimeline(path);
        if (!timeline) {
            qWarning("A version history can't be read and is set aside: %ls",
                     qUtf16Printable(timeline.error()));
            QFile::remove(path + ".damaged"_L1);
            if (!QFile::rename(path, path + ".damaged"_L1))
                return false;
            timeline = Timeline();
        }
        known = KnownTimeline{{}, timeline->size()};
        reencoded = entriesText(*timeline);
        entries = reencoded;
    }
    const qsizetype surplus = std::max<qsizetype>(0, known->count + 1 - maxSnapshots());
    const QByteArray text = timelineText(withoutFirst(entries, surplus), entriesText({snapshot}));
    if (!writeFileAtomically(path, text))
        return false;
    m_known.insert(path, {FileStamp::of(path), known->count + 1 - surplus});
    m_notifications.post(snapshotsDidChange, note.id);
    return true;
}

std::optional<NoteVersionHistoryStore::KnownTimeline>
NoteVersionHistoryStore::knownTimeline(const QString& path) const
{
    const auto known = m_known.constFind(path);
    if (known == m_known.cend() || known->file != FileStamp::of(path))
        return std::nullopt;
    return *known;
}

void NoteVersionHistoryStore::deleteSnapshot(const QUuid& id, const QUuid& noteID,
                                             const QString& projectRootPath)
{
    const QString path = filePath(projectRootPath, noteID);
    auto timeline = readTimeline(path);
    if (!timeline)
        return;
    timeline->removeIf([&](const NoteVersionSnapshot& snapshot) { return snapshot.id == id; });
    m_known.remove(path);
    const QByteArray entries = entriesText(*timeline);
    if (writeFileAtomically(path, timelineText(entries, {})))
        m_notifications.post(snapshotsDidChange, noteID);
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
