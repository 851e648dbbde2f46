// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/attachments/RichNoteContentPayload.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

#include <cmath>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView opening = R"({"archiveData":")";
constexpr QByteArrayView closing = R"(","version":1})";

std::optional<QByteArray> fromBase64(const QByteArray& text)
{
    auto decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return std::nullopt;
    return std::move(*decoded);
}

// What `toJson` writes for version 1 needs no JSON parser, which for a long note counts.
std::optional<QByteArray> ownArchive(const QByteArray& json)
{
    if (!json.startsWith(opening) || !json.endsWith(closing))
        return std::nullopt;
    const qsizetype size = json.size() - opening.size() - closing.size();
    if (size < 0)
        return std::nullopt;
    return fromBase64(QByteArray::fromRawData(json.data() + opening.size(), size));
}

} // namespace

QByteArray RichNoteContentPayload::toJson() const
{
    QByteArray json;
    json.reserve(opening.size() + 4 * (archiveData.size() / 3 + 1) + 32);
    json.append(opening);
    json.append(archiveData.toBase64());
    json.append(R"(","version":)");
    json.append(QByteArray::number(version));
    json.append('}');
    return json;
}

std::optional<RichNoteContentPayload> RichNoteContentPayload::fromJson(const QByteArray& json)
{
    if (auto archive = ownArchive(json))
        return RichNoteContentPayload{currentVersion, std::move(*archive)};
    const QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonValue version = document[u"version"];
    const QJsonValue archive = document[u"archiveData"];
    if (!version.isDouble() || !archive.isString())
        return std::nullopt;
    const double number = version.toDouble();
    if (std::floor(number) != number || std::abs(number) > 1e6)
        return std::nullopt;
    const auto bytes = fromBase64(archive.toString().toLatin1());
    if (!bytes)
        return std::nullopt;
    return RichNoteContentPayload{int(number), *bytes};
}

} // namespace orvane
