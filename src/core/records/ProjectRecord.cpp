// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/ProjectRecord.h"

#include "core/records/RecordJson.h"
#include "text/rtf/BinderRTF.h"

#include <QCollator>
#include <QCoreApplication>

#include <algorithm>
#include <limits>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

std::optional<int> countIn(JsonObjectReader& reader, QLatin1String key)
{
    const auto number = reader.optionalNumber(key);
    constexpr double most = std::numeric_limits<int>::max();
    return number ? std::optional(int(std::clamp(*number, 0.0, most))) : std::nullopt;
}

} // namespace

QByteArray OrvaneProjectManifest::encoded() const
{
    QJsonObject object{
        {"id"_L1, uuidText(id)},
        {"name"_L1, name},
        {"createdAt"_L1, toIso8601(createdAt)},
        {"updatedAt"_L1, toIso8601(updatedAt)},
    };
    if (iconName)
        object.insert("iconName"_L1, *iconName);
    if (titleRTF)
        object.insert("titleRTF"_L1, QString::fromLatin1(titleRTF->toBase64()));
    if (hasStore)
        object.insert("hasStore"_L1, true);
    if (coverColor)
        object.insert("coverColor"_L1, *coverColor);
    if (noteCount)
        object.insert("noteCount"_L1, *noteCount);
    if (wordCount)
        object.insert("wordCount"_L1, *wordCount);
    return encodeJson(object);
}

std::expected<OrvaneProjectManifest, JsonError>
OrvaneProjectManifest::decoded(const QByteArray& bytes)
{
    const auto json = parseJson(bytes);
    if (!json)
        return std::unexpected(json.error());
    JsonObjectReader reader(*json);
    OrvaneProjectManifest manifest;
    manifest.id = reader.uuid("id"_L1);
    manifest.name = reader.string("name"_L1);
    manifest.createdAt = reader.date("createdAt"_L1);
    manifest.updatedAt = reader.date("updatedAt"_L1);
    manifest.iconName = reader.optionalString("iconName"_L1);
    manifest.titleRTF = reader.optionalBytes("titleRTF"_L1);
    manifest.hasStore = reader.optionalBoolean("hasStore"_L1).value_or(false);
    manifest.coverColor = reader.optionalString("coverColor"_L1);
    manifest.noteCount = countIn(reader, "noteCount"_L1);
    manifest.wordCount = countIn(reader, "wordCount"_L1);
    return reader.finish(std::move(manifest));
}

QString OrvaneProjectRecord::titleForDisplay() const
{
    if (titleRTF) {
        if (const auto rich = BinderRTF::plainString(*titleRTF))
            return *rich;
    }
    const QString trimmed = name.trimmed();
    return trimmed.isEmpty() ? QCoreApplication::translate("Project", "Untitled Project") : trimmed;
}

void sortProjects(QList<OrvaneProjectRecord>& projects)
{
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(projects.begin(), projects.end(),
                     [&](const OrvaneProjectRecord& a, const OrvaneProjectRecord& b) {
                         if (a.updatedAt != b.updatedAt)
                             return a.updatedAt > b.updatedAt;
                         return collator.compare(a.titleForDisplay(), b.titleForDisplay()) < 0;
                     });
}

} // namespace orvane
