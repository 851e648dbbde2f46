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

/// The timeline as JSON, checked but not unpacked: an append need not rebuild each entry.
std::expected<QJsonArray, QString> readTimeline(const QString& path)
{
    const auto bytes = readFile(path);
    if (!bytes && bytes.error().code == FileError::Code::NotFound)
        return QJsonArray();
    if (!bytes)
        return std::unexpected(bytes.error().text());
    const QJsonDocument document = QJsonDocument::fromJson(*bytes);
    if (!document.isArray())
        return std::unexpected(path);
    QJsonArray timeline = document.array();
    for (const QJsonValue& value : std::as_const(timeline)) {
        if (const auto snapshot = fromJson(value); !snapshot)
            return std::unexpected(snapshot.error().text());
    }
    return timeline;
}

std::optional<Blob> decoded(const std::optional<QString>& base64)
{
    if (!base64)
        return std::nullopt;
    auto bytes =
        QByteArray::fromBase64Encoding(base64->toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return bytes ? std::optional<Blob>(std::in_place, std::move(bytes.decoded)) : std::nullopt;
}

bool writeTimeline(const QString& path, const QJsonArray& timeline)
{
    return writeFileAtomically(path, QJsonDocument(timeline).toJson(QJsonDocument::Indented))
        .has_value();
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
    const auto timeline = readTimeline(filePath(projectRootPath, noteID));
    QList<NoteVersionSnapshot> list;
    if (!timeline)
        return list;
    list.reserve(timeline->size());
    for (const QJsonValue& value : *timeline)
        list.append(*fromJson(value));
    return list;
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
    if (label == "Before Restore"_L1 && note.richContentPayload)
        snapshot.richContentPayloadBase64 =
            QString::fromLatin1(note.richContentPayload->bytes().toBase64());
    snapshot.label = label;
    snapshot.wordCount = wordCount(note.body);

    (void)makeFolder(historyDirectoryPath(projectRootPath));
    const QString path = filePath(projectRootPath, note.id);
    auto timeline = readTimeline(path);
    if (!timeline) {
        qWarning("A version history can't be read and is set aside: %ls",
                 qUtf16Printable(timeline.error()));
        QFile::remove(path + ".damaged"_L1);
        if (!QFile::rename(path, path + ".damaged"_L1))
            return false;
        timeline = QJsonArray();
    }
    timeline->append(toJson(snapshot));
    while (timeline->size() > maxSnapshots())
        timeline->removeFirst();
    if (!writeTimeline(path, *timeline))
        return false;
    m_notifications.post(snapshotsDidChange, note.id);
    return true;
}

void NoteVersionHistoryStore::deleteSnapshot(const QUuid& id, const QUuid& noteID,
                                             const QString& projectRootPath)
{
    const QString path = filePath(projectRootPath, noteID);
    auto timeline = readTimeline(path);
    if (!timeline)
        return;
    const QString text = uuidText(id);
    for (qsizetype i = timeline->size(); i-- > 0;) {
        if (timeline->at(i).toObject().value("id"_L1).toString().toUpper() == text)
            timeline->removeAt(i);
    }
    if (writeTimeline(path, *timeline))
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
