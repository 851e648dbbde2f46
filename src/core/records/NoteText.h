// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/Blob.h"

#include <QString>

namespace orvane {

/// Plain text of a note as a record holds it: immutable UTF-8 bytes that may still stand unread in
/// the store, so that opening a project costs the same however long its notes are. Halves of
/// surrogate pairs that stand alone become U+FFFD. Copies share the bytes. Main thread.
class NoteText {
public:
    NoteText();
    NoteText(const QString& text); // NOLINT(google-explicit-constructor): a text is a text
    explicit NoteText(Blob utf8)
        : m_utf8(std::move(utf8))
    {}

    /// The whole text, made anew by each call, or the reason why it can't be read.
    [[nodiscard]] std::expected<QString, QString> read() const;
    /// The same; empty where it can't be read, which is logged.
    [[nodiscard]] QString readOrNothing() const;
    /// Whether so many UTF-16 units of the beginning, or all there are, are known without reading.
    [[nodiscard]] bool knowsBeginning(qsizetype units) const;
    /// The first characters, at most `units` UTF-16 units, as far as they are known without
    /// reading.
    [[nodiscard]] QString beginning(qsizetype units) const;
    /// At most so many bytes stand for that many UTF-16 units.
    [[nodiscard]] static qsizetype bytesFor(qsizetype units);
    /// The first line with text in it, trimmed and cut to `longestFirstLine` UTF-16 units, without
    /// reading: empty where it isn't known.
    [[nodiscard]] QString firstLine() const;
    static constexpr qsizetype longestFirstLine = 200;

    [[nodiscard]] bool isEmpty() const { return m_utf8.isEmpty(); }
    /// Reads the bytes when they are not read yet.
    [[nodiscard]] bool isReadable() const { return m_utf8.read().has_value(); }
    [[nodiscard]] const Blob& utf8() const { return m_utf8; }

    /// Both read.
    bool operator==(const NoteText& other) const = default;
    friend bool operator==(const NoteText& a, const QString& b) { return a.readOrNothing() == b; }

private:
    Blob m_utf8;
};

size_t qHash(const NoteText& text, size_t seed = 0);

} // namespace orvane
