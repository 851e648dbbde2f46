// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/AtomicFile.h"

#include <QByteArray>
#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

class QTimer;

namespace orvane {

/// A value of the user defaults. Its type is part of it: a number never reads as text, and a
/// missing key is told from a zero.
using DefaultsValue =
    std::variant<bool, qint64, double, QString, QByteArray, QStringList, QJsonObject>;

/// Settings and session values by key, for one person on this machine. A value is taken only if
/// the key exists with the asked type, so that the coded default stands otherwise; a whole number
/// also reads as a double. A change is seen at once, told by `changed`, and written to disk some
/// fifty milliseconds later together with what else has changed. Main thread.
class UserDefaults : public QObject {
    Q_OBJECT
public:
    /// Values in memory only, for tests and the tour.
    explicit UserDefaults(QObject* parent = nullptr);
    /// Values kept in the file at `path`. A file that can't be read counts as empty, and a copy of
    /// it is set aside as "<name>.damaged" before the first write.
    explicit UserDefaults(const QString& path, QObject* parent = nullptr);
    ~UserDefaults() override;

    [[nodiscard]] bool contains(const QString& key) const;
    [[nodiscard]] std::optional<DefaultsValue> value(const QString& key) const;

    template <typename T>
    [[nodiscard]] std::optional<T> get(const QString& key) const
    {
        const auto it = m_values.constFind(key);
        if (it == m_values.cend())
            return std::nullopt;
        if (const T* held = std::get_if<T>(&*it))
            return *held;
        if constexpr (std::is_same_v<T, double>) {
            if (const qint64* whole = std::get_if<qint64>(&*it))
                return double(*whole);
        }
        return std::nullopt;
    }
    template <typename T>
    [[nodiscard]] T get(const QString& key, const T& otherwise) const
    {
        return get<T>(key).value_or(otherwise);
    }

    void set(const QString& key, const DefaultsValue& value);
    /// Text literals would otherwise become booleans.
    void set(const QString& key, const char* value) = delete;
    void remove(const QString& key);
    [[nodiscard]] QStringList keys() const;

    /// Takes over what another process has written under these keys; what is pending here stays.
    /// For values that hold many things, before one of these is changed. While the file can't be
    /// read, what is known stands.
    void refresh(const QStringList& keys);

    /// Writes what is pending now. Everything else in the file is kept, also what another process
    /// has written and entries that this version can't read. A file that can't be read now is left
    /// alone. An error is also logged; the values stay pending and go out with the next write.
    std::expected<void, FileError> flush();

signals:
    /// A key was set to another value or removed.
    void changed(const QString& key);

private:
    void markPending(const QString& key);
    std::expected<void, FileError> writePending();

    QString m_path;
    QHash<QString, DefaultsValue> m_values;
    QSet<QString> m_pending;
    bool m_mustSetAside = false;
    QTimer* m_writeTimer = nullptr;
};

/// Names a setting: its key and what stands when the key is absent or of another type.
template <typename T>
struct Setting {
    QStringView key; ///< of a literal, which lives as long as the program
    T fallback;

    /// Refers to the literal: nothing is allocated.
    [[nodiscard]] QString keyText() const
    {
        return QString::fromRawData(reinterpret_cast<const QChar*>(key.utf16()), key.size());
    }
    [[nodiscard]] T read(const UserDefaults& defaults) const
    {
        return defaults.get<T>(keyText(), fallback);
    }
    void write(UserDefaults& defaults, const T& value) const { defaults.set(keyText(), value); }
};

} // namespace orvane
