// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/ColumnText.h"

#include "core/records/Blob.h"
#include "core/records/RecordJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtEndian>

#include <array>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype uuidLength = 36;

constexpr std::array<qint8, 256> hexDigits = [] {
    std::array<qint8, 256> digits{};
    digits.fill(-1);
    for (int i = 0; i < 10; ++i)
        digits['0' + i] = qint8(i);
    for (int i = 0; i < 6; ++i)
        digits['a' + i] = digits['A' + i] = qint8(10 + i);
    return digits;
}();

// The common form, a list of texts without escapes; nothing for any other.
std::optional<QStringList> plainTexts(QByteArrayView json)
{
    if (!json.startsWith('[') || !json.endsWith(']') || json.contains('\\'))
        return std::nullopt;
    QStringList texts;
    QByteArrayView rest = json.sliced(1, json.size() - 2);
    while (!rest.isEmpty()) {
        const qsizetype end = rest.indexOf('"', 1);
        if (!rest.startsWith('"') || end < 0)
            return std::nullopt;
        texts.append(QString::fromUtf8(rest.sliced(1, end - 1)));
        rest = rest.sliced(end + 1);
        if (rest.isEmpty())
            break;
        if (!rest.startsWith(',') || rest.size() == 1)
            return std::nullopt;
        rest = rest.sliced(1);
    }
    return texts;
}

// Takes `text` from the front of `rest`; false when something else is there.
bool take(QByteArrayView& rest, QByteArrayView text)
{
    if (!rest.startsWith(text))
        return false;
    rest = rest.sliced(text.size());
    return true;
}

// Takes the ids of a JSON list behind its opening bracket, and the closing one.
std::optional<QList<QUuid>> takeIds(QByteArrayView& rest)
{
    QList<QUuid> ids;
    ids.reserve(rest.size() / (uuidLength + 3));
    while (!take(rest, "]")) {
        if ((!ids.isEmpty() && !take(rest, ",")) || rest.size() < uuidLength + 2)
            return std::nullopt;
        const auto id = uuidFromStore(rest.sliced(1, uuidLength));
        if (!id || rest.front() != '"' || rest[uuidLength + 1] != '"')
            return std::nullopt;
        ids.append(*id);
        rest = rest.sliced(uuidLength + 2);
    }
    return ids;
}

// The form in which parts are written; nothing for any other.
std::optional<QList<QUuid>> plainPart(QByteArrayView json, bool isFolderOrder,
                                      const std::optional<QUuid>& container)
{
    const QByteArray id = container ? '"' + uuidToStore(*container) + '"' : QByteArray();
    if (!isFolderOrder && !take(json, "{\"folderID\":" + id + ",\"noteIDs\":["))
        return std::nullopt;
    if (isFolderOrder && !take(json, "{\"childFolderIDs\":["))
        return std::nullopt;
    auto ids = takeIds(json);
    if (isFolderOrder && container && !take(json, ",\"parentFolderID\":" + id))
        return std::nullopt;
    return json == QByteArrayView("}") ? ids : std::nullopt;
}

} // namespace

std::optional<QUuid> uuidFromStore(QByteArrayView text)
{
    if (text.size() != uuidLength)
        return std::nullopt;
    std::array<uchar, 16> bytes;
    int wrong = 0;
    int at = 0;
    for (uchar& byte : bytes) {
        if (at == 8 || at == 13 || at == 18 || at == 23)
            wrong |= int(text[at++] != '-');
        const signed char high = hexDigits[uchar(text[at])];
        const signed char low = hexDigits[uchar(text[at + 1])];
        wrong |= int((high | low) < 0);
        byte = uchar((high & 15) << 4 | (low & 15));
        at += 2;
    }
    if (wrong != 0)
        return std::nullopt;
    return QUuid::fromRfc4122(QByteArrayView(bytes.data(), bytes.size()));
}

QByteArray uuidToStore(const QUuid& id)
{
    return id.toByteArray(QUuid::WithoutBraces).toUpper();
}

QStringList tagsFromStore(QByteArrayView json)
{
    if (json.size() <= 2)
        return {};
    if (auto texts = plainTexts(json))
        return *std::move(texts);
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromRawData(json.data(), json.size()));
    if (!document.isArray())
        return {};
    QStringList tags;
    for (const auto& value : document.array()) {
        if (!value.isString())
            return {};
        tags.append(value.toString());
    }
    return tags;
}

QByteArray tagsToStore(const QStringList& tags)
{
    if (tags.isEmpty())
        return "[]";
    return QJsonDocument(QJsonArray::fromStringList(tags)).toJson(QJsonDocument::Compact);
}

QList<ImageEntry> imagesFromStore(QByteArrayView json)
{
    constexpr qsizetype digits = 64;
    QList<ImageEntry> images;
    for (const QString& text : tagsFromStore(json)) {
        bool isNumber = false;
        const qint64 length = text.sliced(std::min(text.size(), digits + 1)).toLongLong(&isNumber);
        const QByteArray hash = QByteArray::fromHex(text.left(digits).toLatin1());
        if (isNumber && length > 0 && length <= qint64(Blob::largestSize) &&
            text.at(digits) == u':' && hash.size() == digits / 2)
            images.append({hash, length});
    }
    return images;
}

QByteArray imagesToStore(const QList<ImageEntry>& images)
{
    QStringList texts;
    for (const ImageEntry& image : images)
        texts.append(
            QString::fromLatin1(image.hash.toHex() + ':' + QByteArray::number(image.length)));
    return tagsToStore(texts);
}

qint64 imageRow(const QByteArray& hash)
{
    return -1 - qint64(qFromBigEndian<quint64>(hash.constData()) >> 1);
}

std::optional<QList<QUuid>> layoutPartFromStore(QByteArrayView json, bool isFolderOrder,
                                                const std::optional<QUuid>& container)
{
    if (auto ids = plainPart(json, isFolderOrder, container))
        return ids;
    const auto value = parseJson(QByteArray::fromRawData(json.data(), json.size()));
    if (!value)
        return std::nullopt;
    if (isFolderOrder) {
        const auto entry = fromJson<BinderFolderOrderEntry>(*value);
        return entry && entry->parentFolderID == container ? std::optional(entry->childFolderIDs)
                                                           : std::nullopt;
    }
    const auto entry = fromJson<BinderNoteOrderEntry>(*value);
    return entry && entry->folderID == container ? std::optional(entry->noteIDs) : std::nullopt;
}

QByteArray layoutPartToStore(const QList<QUuid>& ids, bool isFolderOrder,
                             const std::optional<QUuid>& container)
{
    const QJsonObject json = isFolderOrder
                                 ? toJson(BinderFolderOrderEntry{container, ids})
                                 : toJson(BinderNoteOrderEntry{container.value_or(QUuid()), ids});
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

} // namespace orvane
