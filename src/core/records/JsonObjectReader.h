// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Timestamp.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <expected>
#include <optional>

namespace orvane {

/// Why a piece of JSON is not the record it should be. `path` names the key, as in
/// "notes[3].updatedAt".
struct JsonError {
    QString path;
    QString problem;

    bool operator==(const JsonError&) const = default;
    [[nodiscard]] QString text() const;
};

/// Reads the typed members of one JSON object and remembers the first thing that was wrong. A
/// required member must be there; a member of the wrong type is wrong whether it is required or
/// not, because dropping it would lose what it holds. `null` counts as absent. Unknown keys are
/// passed over. After a failure the readers give empty values; ask `error()` at the end.
class JsonObjectReader {
public:
    explicit JsonObjectReader(const QJsonValue& value, QString path = {});

    QString string(QLatin1String key);
    QUuid uuid(QLatin1String key);
    Timestamp date(QLatin1String key);
    double number(QLatin1String key);
    bool boolean(QLatin1String key);
    QJsonArray array(QLatin1String key);
    QJsonValue object(QLatin1String key);
    QList<QUuid> uuids(QLatin1String key);

    std::optional<QString> optionalString(QLatin1String key);
    std::optional<QUuid> optionalUuid(QLatin1String key);
    std::optional<Timestamp> optionalDate(QLatin1String key);
    std::optional<double> optionalNumber(QLatin1String key);
    std::optional<bool> optionalBoolean(QLatin1String key);
    /// Base64 text.
    std::optional<QByteArray> optionalBytes(QLatin1String key);
    std::optional<QStringList> optionalStrings(QLatin1String key);
    [[nodiscard]] bool has(QLatin1String key) const;

    [[nodiscard]] QString pathOf(QLatin1String key) const;
    void fail(const QString& path, const QString& problem);
    void adopt(const JsonError& error);
    [[nodiscard]] bool failed() const { return m_error.has_value(); }
    [[nodiscard]] const std::optional<JsonError>& error() const { return m_error; }

    /// `value` when nothing was wrong, else the first error.
    template <typename T>
    [[nodiscard]] std::expected<T, JsonError> finish(T value) const
    {
        if (m_error)
            return std::unexpected(*m_error);
        return value;
    }

private:
    QJsonValue take(QLatin1String key, QJsonValue::Type type, const char* typeName, bool required);

    QJsonObject m_object;
    QString m_path;
    std::optional<JsonError> m_error;
};

/// Upper case, 8-4-4-4-12, without braces.
[[nodiscard]] QString uuidText(const QUuid& id);

/// Reads 8-4-4-4-12 in either case, without braces; anything else gives nothing.
[[nodiscard]] std::optional<QUuid> uuidFromText(QStringView text);

/// The object or array that the bytes hold.
[[nodiscard]] std::expected<QJsonValue, JsonError> parseJson(const QByteArray& bytes);

} // namespace orvane
