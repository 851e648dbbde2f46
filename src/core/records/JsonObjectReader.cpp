// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/JsonObjectReader.h"

#include <QJsonDocument>

namespace orvane {

using namespace Qt::StringLiterals;

QString JsonError::text() const
{
    return path.isEmpty() ? problem : path + ": "_L1 + problem;
}

JsonObjectReader::JsonObjectReader(const QJsonValue& value, QString path)
    : m_object(value.toObject())
    , m_path(std::move(path))
{
    if (!value.isObject())
        fail(m_path, u"an object is expected"_s);
}

QString JsonObjectReader::pathOf(QLatin1String key) const
{
    return m_path.isEmpty() ? QString(key) : m_path + u'.' + key;
}

void JsonObjectReader::fail(const QString& path, const QString& problem)
{
    if (!m_error)
        m_error = JsonError{path, problem};
}

void JsonObjectReader::adopt(const JsonError& error)
{
    if (!m_error)
        m_error = error;
}

bool JsonObjectReader::has(QLatin1String key) const
{
    const auto it = m_object.constFind(key);
    return it != m_object.constEnd() && !it->isNull();
}

QJsonValue JsonObjectReader::take(QLatin1String key, QJsonValue::Type type, const char* typeName,
                                  bool required)
{
    QJsonValue value = m_object.value(key);
    if (value.isUndefined() || value.isNull()) {
        if (required)
            fail(pathOf(key), u"the key is missing"_s);
        return QJsonValue(QJsonValue::Undefined);
    }
    if (value.type() != type) {
        fail(pathOf(key), QLatin1String(typeName) + u" is expected"_s);
        return QJsonValue(QJsonValue::Undefined);
    }
    return value;
}

QString JsonObjectReader::string(QLatin1String key)
{
    return take(key, QJsonValue::String, "text", true).toString();
}

std::optional<QString> JsonObjectReader::optionalString(QLatin1String key)
{
    const QJsonValue value = take(key, QJsonValue::String, "text", false);
    return value.isUndefined() ? std::nullopt : std::optional(value.toString());
}

QUuid JsonObjectReader::uuid(QLatin1String key)
{
    const QJsonValue value = take(key, QJsonValue::String, "an identifier", true);
    if (value.isUndefined())
        return {};
    const auto id = uuidFromText(value.toString());
    if (!id)
        fail(pathOf(key), u"an identifier is expected"_s);
    return id.value_or(QUuid());
}

std::optional<QUuid> JsonObjectReader::optionalUuid(QLatin1String key)
{
    return has(key) ? std::optional(uuid(key)) : std::nullopt;
}

Timestamp JsonObjectReader::date(QLatin1String key)
{
    const QJsonValue value = take(key, QJsonValue::String, "an ISO 8601 date", true);
    if (value.isUndefined())
        return {};
    const auto time = fromIso8601(value.toString());
    if (!time)
        fail(pathOf(key), u"an ISO 8601 date is expected"_s);
    return time.value_or(Timestamp());
}

std::optional<Timestamp> JsonObjectReader::optionalDate(QLatin1String key)
{
    return has(key) ? std::optional(date(key)) : std::nullopt;
}

double JsonObjectReader::number(QLatin1String key)
{
    return take(key, QJsonValue::Double, "a number", true).toDouble();
}

std::optional<double> JsonObjectReader::optionalNumber(QLatin1String key)
{
    const QJsonValue value = take(key, QJsonValue::Double, "a number", false);
    return value.isUndefined() ? std::nullopt : std::optional(value.toDouble());
}

bool JsonObjectReader::boolean(QLatin1String key)
{
    return take(key, QJsonValue::Bool, "true or false", true).toBool();
}

std::optional<bool> JsonObjectReader::optionalBoolean(QLatin1String key)
{
    const QJsonValue value = take(key, QJsonValue::Bool, "true or false", false);
    return value.isUndefined() ? std::nullopt : std::optional(value.toBool());
}

QJsonArray JsonObjectReader::array(QLatin1String key)
{
    return take(key, QJsonValue::Array, "a list", true).toArray();
}

QJsonValue JsonObjectReader::object(QLatin1String key)
{
    return take(key, QJsonValue::Object, "an object", true);
}

QList<QUuid> JsonObjectReader::uuids(QLatin1String key)
{
    QList<QUuid> ids;
    const QJsonArray values = array(key);
    ids.reserve(values.size());
    for (const QJsonValue value : values) {
        const auto id = uuidFromText(value.toString());
        if (!id) {
            fail(u"%1[%2]"_s.arg(pathOf(key)).arg(ids.size()), u"an identifier is expected"_s);
            return {};
        }
        ids.append(*id);
    }
    return ids;
}

std::optional<QByteArray> JsonObjectReader::optionalBytes(QLatin1String key)
{
    const QJsonValue value = take(key, QJsonValue::String, "Base64 text", false);
    if (value.isUndefined())
        return std::nullopt;
    auto decoded = QByteArray::fromBase64Encoding(value.toString().toLatin1(),
                                                  QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded) {
        fail(pathOf(key), u"Base64 text is expected"_s);
        return std::nullopt;
    }
    return std::move(decoded.decoded);
}

std::optional<QStringList> JsonObjectReader::optionalStrings(QLatin1String key)
{
    const QJsonValue value = take(key, QJsonValue::Array, "a list of texts", false);
    if (value.isUndefined())
        return std::nullopt;
    QStringList texts;
    for (const QJsonValue item : value.toArray()) {
        if (!item.isString()) {
            fail(u"%1[%2]"_s.arg(pathOf(key)).arg(texts.size()), u"text is expected"_s);
            return std::nullopt;
        }
        texts.append(item.toString());
    }
    return texts;
}

QString uuidText(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QUuid> uuidFromText(QStringView text)
{
    if (text.size() != 36)
        return std::nullopt;
    const QUuid id = QUuid::fromString(text);
    // A text that doesn't parse gives the null id, which is itself a possible value.
    if (id.isNull() && text != "00000000-0000-0000-0000-000000000000"_L1)
        return std::nullopt;
    return id;
}

std::expected<QJsonValue, JsonError> parseJson(const QByteArray& bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        return std::unexpected(JsonError{u"byte %1"_s.arg(error.offset), error.errorString()});
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

} // namespace orvane
