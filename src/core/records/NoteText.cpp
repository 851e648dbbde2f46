// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/NoteText.h"

#include <QStringDecoder>

#include <algorithm>

namespace orvane {

namespace {

constexpr qsizetype longestInUtf8 = 3; // bytes that one UTF-16 unit can take

const Blob& nothing()
{
    static const Blob empty{QByteArray()};
    return empty;
}

QString decodedBeginning(QByteArrayView utf8, qsizetype units)
{
    // A decoder keeps a character that the cut has halved to itself.
    QStringDecoder decoder(QStringDecoder::Utf8);
    return QString(decoder(utf8.first(std::min(units * longestInUtf8, utf8.size())))).left(units);
}

bool isBlank(QChar unit)
{
    return unit.isSpace();
}

} // namespace

NoteText::NoteText()
    : m_utf8(nothing())
{}

NoteText::NoteText(const QString& text)
    : m_utf8(text.isEmpty() ? nothing() : Blob(text.toUtf8()))
{}

std::expected<QString, QString> NoteText::read() const
{
    auto utf8 = m_utf8.read();
    if (!utf8)
        return std::unexpected(utf8.error());
    return QString::fromUtf8(*utf8);
}

QString NoteText::readOrNothing() const
{
    return QString::fromUtf8(m_utf8.readOrNothing());
}

qsizetype NoteText::bytesFor(qsizetype units)
{
    return units * longestInUtf8;
}

bool NoteText::knowsBeginning(qsizetype units) const
{
    return m_utf8.isLoaded() || m_utf8.known().size() >= std::min(bytesFor(units), m_utf8.size());
}

QString NoteText::beginning(qsizetype units) const
{
    return decodedBeginning(m_utf8.known(), units);
}

QString NoteText::firstLine() const
{
    // What stands before the first line is mostly nothing, and at worst the whole text.
    const QByteArray utf8 = m_utf8.known();
    for (qsizetype units = 2 * longestFirstLine;; units *= 8) {
        const QString text = decodedBeginning(utf8, units);
        const auto* const begin = std::ranges::find_if_not(std::as_const(text), isBlank);
        const auto* const end = std::find(begin, text.cend(), u'\n');
        const bool isWhole = end != text.cend() || end - begin > longestFirstLine;
        if (isWhole || units * longestInUtf8 >= utf8.size()) {
            QString line = QStringView(begin, end).left(longestFirstLine).trimmed().toString();
            if (!line.isEmpty() && line.back().isHighSurrogate())
                line.chop(1);
            return line;
        }
    }
}

size_t qHash(const NoteText& text, size_t seed)
{
    return qHash(text.utf8(), seed);
}

} // namespace orvane
