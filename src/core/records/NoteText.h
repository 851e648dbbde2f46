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

    /// The whole text, made anew by each call. Empty where the bytes can't be read; `isReadable`
    /// tells that from a text without a character.
    [[nodiscard]] QString text() const;
    operator QString() const { return text(); } // NOLINT(google-explicit-constructor)
    /// The first characters, at most `units` UTF-16 units.
    [[nodiscard]] QString beginning(qsizetype units) const;
    [[nodiscard]] bool isEmpty() const { return m_utf8.isEmpty(); }
    /// Reads the bytes when they are not read yet.
    [[nodiscard]] bool isReadable() const { return m_utf8.tryBytes().has_value(); }
    [[nodiscard]] const Blob& utf8() const { return m_utf8; }

    bool operator==(const NoteText& other) const = default;
    friend bool operator==(const NoteText& a, const QString& b) { return a.text() == b; }

private:
    Blob m_utf8;
};

size_t qHash(const NoteText& text, size_t seed = 0);

} // namespace orvane
