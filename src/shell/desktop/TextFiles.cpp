// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/TextFiles.h"

#include <QFileInfo>
#include <QStringDecoder>

#include <array>

namespace orvane {

namespace {

/// Characters 0x80 to 0x9F; the five that have none keep their number.
/// https://encoding.spec.whatwg.org/index-windows-1252.txt
constexpr std::array<char16_t, 32> windows1252{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

qsizetype unitSize(QStringConverter::Encoding encoding)
{
    switch (encoding) {
    case QStringConverter::Utf16:
    case QStringConverter::Utf16LE:
    case QStringConverter::Utf16BE:
        return 2;
    case QStringConverter::Utf32:
    case QStringConverter::Utf32LE:
    case QStringConverter::Utf32BE:
        return 4;
    default:
        return 1;
    }
}

bool isUtf8(const QByteArray& bytes)
{
    return QUtf8StringView(bytes).isValidUtf8();
}

QByteArray fromWindows1252(const QByteArray& bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar& c : text) {
        if (c >= u'\u0080' && c <= u'\u009f')
            c = windows1252[c.unicode() - 0x80];
    }
    return text.toUtf8();
}

QByteArray withPlainLineEnds(QByteArray utf8)
{
    if (utf8.contains('\r'))
        utf8.replace("\r\n", "\n").replace('\r', '\n');
    return utf8;
}

} // namespace

std::optional<QByteArray> textAsUtf8(const QByteArray& file)
{
    QByteArray utf8 = file;
    if (const auto marked = QStringConverter::encodingForData(file)) {
        if (file.size() % unitSize(*marked) != 0)
            return std::nullopt; // which the decoder keeps to itself
        QStringDecoder decoder(*marked, QStringConverter::Flag::Stateless);
        const QString text = decoder(file);
        if (decoder.hasError())
            return std::nullopt;
        utf8 = text.toUtf8();
    } else if (!isUtf8(file)) {
        utf8 = fromWindows1252(file);
    }
    if (utf8.contains('\0'))
        return std::nullopt;
    return withPlainLineEnds(std::move(utf8));
}

TextFilesReader::TextFilesReader(const QStringList& paths, Read read, QObject* parent)
    : QObject(parent)
    , m_thread([this, paths, read = std::move(read)] {
        work(paths, read);
        QMetaObject::invokeMethod(this, &TextFilesReader::finished, Qt::QueuedConnection);
    })
{}

TextFilesReader::~TextFilesReader()
{
    m_isCancelled = true;
    m_thread.join();
}

TextFilesReader::Progress TextFilesReader::progress() const
{
    const std::lock_guard lock(m_mutex);
    return m_progress;
}

TextFilesReader::Read TextFilesReader::fromDisk()
{
    return [](const QString& path, qint64 limit, const std::function<bool(qint64, qint64)>& piece) {
        return readFile(path, limit, piece);
    };
}

void TextFilesReader::work(const QStringList& paths, const Read& read)
{
    qint64 whole = 0;
    for (const QString& path : paths)
        whole += QFileInfo(path).size();
    qint64 before = 0;
    for (const QString& path : paths) {
        const auto told = [&](qint64 sofar) {
            const std::lock_guard lock(m_mutex);
            m_progress = {QFileInfo(path).fileName(), before + sofar, whole};
        };
        told(0);
        const auto bytes = read(path, FileLimit::textToOpen, [&](qint64 sofar, qint64) {
            told(sofar);
            return !m_isCancelled;
        });
        if (m_isCancelled)
            return;
        before += QFileInfo(path).size();
        TextFile file{path, TextFile::Outcome::Unreadable, {}, {}};
        if (!bytes) {
            file.error = bytes.error();
        } else if (auto utf8 = textAsUtf8(*bytes)) {
            file.outcome = TextFile::Outcome::Read;
            file.utf8 = *std::move(utf8);
        } else {
            file.outcome = TextFile::Outcome::NotText;
        }
        m_files.append(std::move(file));
    }
}

} // namespace orvane
