// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/UserDefaults.h"

#include "platform/SetAside.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLockFile>
#include <QTimer>

#include <chrono>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// Milliseconds from a change to its writing: the frame that shows it goes first.
constexpr int writePause = 50;

// Each value is an object with one member that names its type, see docs/formats.md.
QJsonObject encode(const DefaultsValue& value)
{
    struct Encoder {
        QJsonObject operator()(bool v) const { return {{"bool"_L1, v}}; }
        QJsonObject operator()(qint64 v) const { return {{"integer"_L1, QString::number(v)}}; }
        QJsonObject operator()(double v) const { return {{"double"_L1, v}}; }
        QJsonObject operator()(const QString& v) const { return {{"string"_L1, v}}; }
        QJsonObject operator()(const QByteArray& v) const
        {
            return {{"data"_L1, QString::fromLatin1(v.toBase64())}};
        }
        QJsonObject operator()(const QStringList& v) const
        {
            return {{"strings"_L1, QJsonArray::fromStringList(v)}};
        }
        QJsonObject operator()(const QJsonObject& v) const { return {{"map"_L1, v}}; }
    };
    return std::visit(Encoder{}, value);
}

std::optional<DefaultsValue> decodeStrings(const QJsonValue& held)
{
    QStringList texts;
    for (const auto& item : held.toArray()) {
        if (!item.isString())
            return std::nullopt;
        texts.append(item.toString());
    }
    return texts;
}

std::optional<DefaultsValue> decode(const QJsonValue& value)
{
    const QJsonObject object = value.toObject();
    if (object.size() != 1)
        return std::nullopt;
    const QString type = object.begin().key();
    const QJsonValue held = object.begin().value();
    if (type == "bool"_L1 && held.isBool())
        return held.toBool();
    if (type == "integer"_L1 && held.isString()) {
        bool isNumber = false;
        const qint64 number = held.toString().toLongLong(&isNumber);
        return isNumber ? std::optional<DefaultsValue>(number) : std::nullopt;
    }
    if (type == "double"_L1 && held.isDouble())
        return held.toDouble();
    if (type == "string"_L1 && held.isString())
        return held.toString();
    if (type == "data"_L1 && held.isString())
        return QByteArray::fromBase64(held.toString().toLatin1());
    if (type == "strings"_L1 && held.isArray())
        return decodeStrings(held);
    if (type == "map"_L1 && held.isObject())
        return held.toObject();
    return std::nullopt;
}

/// The file's entries, none when there is no file, or nothing when it holds none of ours.
std::expected<std::optional<QJsonObject>, FileError> readEntries(const QString& path)
{
    const auto bytes = readFile(path, FileLimit::settings);
    if (!bytes && bytes.error().code == FileError::Code::NotFound)
        return QJsonObject();
    if (!bytes)
        return std::unexpected(bytes.error());
    const QJsonDocument document = QJsonDocument::fromJson(*bytes);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

QHash<QString, DefaultsValue> decodeAll(const QJsonObject& entries)
{
    QHash<QString, DefaultsValue> values;
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        if (auto value = decode(it.value()))
            values.insert(it.key(), *std::move(value));
    }
    return values;
}

} // namespace

UserDefaults::UserDefaults(QObject* parent)
    : QObject(parent)
{}

UserDefaults::UserDefaults(const QString& path, QObject* parent)
    : QObject(parent)
    , m_path(path)
    , m_writeTimer(new QTimer(this))
{
    m_writeTimer->setSingleShot(true);
    m_writeTimer->setInterval(writePause);
    connect(m_writeTimer, &QTimer::timeout, this, [this] { (void)flush(); });
    const auto entries = readEntries(path);
    if (entries && *entries)
        m_values = decodeAll(**entries);
    else
        m_mustSetAside = true;
}

UserDefaults::~UserDefaults()
{
    (void)flush();
}

bool UserDefaults::contains(const QString& key) const
{
    return m_values.contains(key);
}

std::optional<DefaultsValue> UserDefaults::value(const QString& key) const
{
    const auto it = m_values.constFind(key);
    return it == m_values.cend() ? std::nullopt : std::optional(*it);
}

void UserDefaults::set(const QString& key, const DefaultsValue& value)
{
    const auto it = m_values.constFind(key);
    if (it != m_values.cend() && *it == value)
        return;
    m_values.insert(key, value);
    markPending(key);
}

void UserDefaults::remove(const QString& key)
{
    if (m_values.remove(key))
        markPending(key);
}

QStringList UserDefaults::keys() const
{
    QStringList all = m_values.keys();
    all.sort();
    return all;
}

void UserDefaults::markPending(const QString& key)
{
    m_pending.insert(key);
    if (m_writeTimer && !m_writeTimer->isActive())
        m_writeTimer->start();
    emit changed(key);
}

void UserDefaults::refresh(const QStringList& keys)
{
    if (m_path.isEmpty() || m_mustSetAside)
        return;
    const auto entries = readEntries(m_path);
    if (!entries || !*entries)
        return;
    for (const QString& key : keys) {
        const auto stored = decode((*entries)->value(key));
        if (!stored || m_pending.contains(key) || value(key) == stored)
            continue;
        m_values.insert(key, *stored);
        emit changed(key);
    }
}

std::expected<void, FileError> UserDefaults::flush()
{
    if (m_path.isEmpty() || m_pending.isEmpty())
        return {};
    auto written = writePending();
    if (written)
        m_pending.clear();
    else
        qWarning("Settings can't be written: %ls", qUtf16Printable(written.error().text()));
    return written;
}

std::expected<void, FileError> UserDefaults::writePending()
{
    if (auto folder = makeFolder(QFileInfo(m_path).absolutePath()); !folder)
        return folder;
    // Another process may have written meanwhile: its keys are taken over, ours win where both
    // changed the same one.
    QLockFile lock(m_path + ".lock"_L1);
    if (!obstacleAt(lock.fileName())) // which the toolkit would open, and wait for a pipe
        lock.tryLock(std::chrono::milliseconds(2000).count());
    const auto entries = readEntries(m_path);
    if (!entries)
        return std::unexpected(entries.error());
    const bool isDamaged = !*entries;
    if (isDamaged || m_mustSetAside) {
        QFile file(m_path);
        if (file.exists() && !file.copy(setAsidePath(m_path)))
            return std::unexpected(FileError{FileError::Code::Other, m_path, file.errorString()});
        m_mustSetAside = false;
    }
    // What a file held that was whole when it was read is still known.
    if (isDamaged)
        m_pending += QSet<QString>(m_values.keyBegin(), m_values.keyEnd());
    QJsonObject object = entries->value_or(QJsonObject());
    for (const QString& key : std::as_const(m_pending)) {
        const auto it = m_values.constFind(key);
        if (it == m_values.cend())
            object.remove(key);
        else
            object.insert(key, encode(*it));
    }
    return writeFileAtomically(m_path, QJsonDocument(object).toJson());
}

} // namespace orvane
