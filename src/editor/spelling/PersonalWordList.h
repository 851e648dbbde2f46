// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/AtomicFile.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <expected>

namespace orvane {

/// The words that a person has taught the spelling check, for all languages, kept in a file; and
/// those that it ignores until the program ends. Main thread.
class PersonalWordList : public QObject {
    Q_OBJECT
public:
    /// Reads `path`; a file that is missing or unreadable counts as empty. An empty path keeps
    /// nothing.
    explicit PersonalWordList(const QString& path, QObject* parent = nullptr);

    /// A learned or ignored word, also with a capital first letter or in capitals where it was
    /// learned without.
    [[nodiscard]] bool accepts(const QString& word) const;

    /// Keeps the word and writes the file, together with what another process has added to it
    /// meanwhile. On an error the word counts all the same until the program ends; a file that
    /// can't be read is left alone.
    std::expected<void, FileError> learn(const QString& word);
    std::expected<void, FileError> forget(const QString& word);
    void ignore(const QString& word);

    /// Learned words, sorted.
    [[nodiscard]] QStringList words() const;

signals:
    void changed();

private:
    /// Adds what is in the file.
    std::expected<void, FileError> takeOver();
    std::expected<void, FileError> write();

    QString m_path;
    QSet<QString> m_learned;
    QSet<QString> m_ignored;
};

} // namespace orvane
