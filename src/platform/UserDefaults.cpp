// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/UserDefaults.h"

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
    for (const QJsonValue& item : held.toArray()) {
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

/// Nothing when the file is there and is not ours to read.
std::optional<QHash<QString, DefaultsValue>> load(const QString& path)
{
    const auto bytes = readFile(path);
    if (!bytes && bytes.error().code == FileError::Code::NotFound)
        return QHash<QString, DefaultsValue>();
    if (!bytes)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(*bytes);
    if (!document.isObject())
        return std::nullopt;
    QHash<QString, DefaultsValue> values;
    const QJsonObject object = document.object();
    for (auto it = object.begin(); it != object.end(); ++it) {
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
    auto values = load(path);
    m_fileIsDamaged = !values;
    m_values = std::move(values).value_or(QHash<QString, DefaultsValue>());
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

std::expected<void, FileError> UserDefaults::flush()
{
    if (m_path.isEmpty() || m_pending.isEmpty())
        return {};
    if (auto folder = makeFolder(QFileInfo(m_path).absolutePath()); !folder) {
        qWarning("Settings can't be written: %ls", qUtf16Printable(folder.error().text()));
        return folder;
    }
    // Another process may have written meanwhile: its keys are taken over, ours win where both
    // changed the same one.
    QLockFile lock(m_path + ".lock"_L1);
    lock.tryLock(std::chrono::milliseconds(2000).count());
    if (m_fileIsDamaged) {
        QFile::remove(m_path + ".damaged"_L1);
        QFile::copy(m_path, m_path + ".damaged"_L1);
        m_fileIsDamaged = false;
    }
    QHash<QString, DefaultsValue> merged = load(m_path).value_or(QHash<QString, DefaultsValue>());
    for (const QString& key : std::as_const(m_pending)) {
        const auto it = m_values.constFind(key);
        if (it == m_values.cend())
            merged.remove(key);
        else
            merged.insert(key, *it);
    }
    QJsonObject object;
    for (auto it = merged.cbegin(); it != merged.cend(); ++it)
        object.insert(it.key(), encode(it.value()));
    auto written = writeFileAtomically(m_path, QJsonDocument(object).toJson());
    if (written)
        m_pending.clear();
    else
        qWarning("Settings can't be written: %ls", qUtf16Printable(written.error().text()));
    return written;
}

} // namespace orvane
