// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/NoteText.h"

#include <QStringDecoder>

namespace orvane {

namespace {

constexpr qsizetype longestInUtf8 = 3; // bytes that one UTF-16 unit can take

const Blob& nothing()
{
    static const Blob empty{QByteArray()};
    return empty;
}

} // namespace

NoteText::NoteText()
    : m_utf8(nothing())
{}

NoteText::NoteText(const QString& text)
    : m_utf8(text.isEmpty() ? nothing() : Blob(text.toUtf8()))
{}

QString NoteText::text() const
{
    return QString::fromUtf8(m_utf8.bytes());
}

QString NoteText::beginning(qsizetype units) const
{
    const QByteArray bytes = m_utf8.bytes();
    // A decoder keeps a character that the cut has halved to itself.
    QStringDecoder decoder(QStringDecoder::Utf8);
    return QString(
               decoder(QByteArrayView(bytes).first(std::min(units * longestInUtf8, bytes.size()))))
        .left(units);
}

size_t qHash(const NoteText& text, size_t seed)
{
    return qHash(text.utf8(), seed);
}

} // namespace orvane
