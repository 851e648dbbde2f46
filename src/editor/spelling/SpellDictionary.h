// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/AtomicFile.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <expected>
#include <memory>

namespace orvane {

/// The files of one dictionary.
struct DictionaryFiles {
    QString language; ///< as "en_US"
    QString affixes;  ///< path of the ".aff" file
    QString words;    ///< path of the ".dic" file

    bool operator==(const DictionaryFiles&) const = default;
};

/// The folders in which this system keeps spelling dictionaries, the person's own first.
[[nodiscard]] QStringList dictionaryFolders();

/// The dictionaries in `folders` that have both files, by language; the first folder that has a
/// language wins.
[[nodiscard]] QList<DictionaryFiles> dictionariesIn(const QStringList& folders);

/// Of `dictionaries`, the one for `locale` ("de_AT"), else one of the same language that is used in
/// the language's own country, else any of the language; null if there is none.
[[nodiscard]] const DictionaryFiles* dictionaryFor(const QList<DictionaryFiles>& dictionaries,
                                                   const QString& locale);

/// An open dictionary. One thread at a time; opening takes some tens of milliseconds.
class SpellDictionary {
public:
    [[nodiscard]] static std::expected<std::unique_ptr<SpellDictionary>, FileError>
    open(const DictionaryFiles& files);
    ~SpellDictionary();
    Q_DISABLE_COPY_MOVE(SpellDictionary)

    [[nodiscard]] bool contains(const QString& word) const;
    /// What may have been meant, the likeliest first. Can take a tenth of a second.
    [[nodiscard]] QStringList suggestions(const QString& word) const;
    /// Whether words in `script` can be looked up at all.
    [[nodiscard]] bool covers(QChar::Script script) const;

private:
    struct Engine;
    explicit SpellDictionary(std::unique_ptr<Engine> engine);

    std::unique_ptr<Engine> m_engine;
    QSet<int> m_scripts;
};

} // namespace orvane
