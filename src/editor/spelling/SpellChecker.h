// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/spelling/PersonalWordList.h"
#include "editor/spelling/SpellDictionary.h"
#include "text/value/TextRange.h"

#include <QHash>
#include <QObject>

#include <memory>

namespace orvane {

/// Judges the spelling of texts in one language. The dictionary is read on another thread; until it
/// is there, and if it can't be read, nothing is wrong. Each word is looked up once. Main thread.
class SpellChecker : public QObject {
    Q_OBJECT
public:
    /// Begins to read the dictionary. `personal` outlives it.
    SpellChecker(const DictionaryFiles& files, PersonalWordList& personal,
                 QObject* parent = nullptr);
    ~SpellChecker() override;

    [[nodiscard]] const QString& language() const { return m_files.language; }
    [[nodiscard]] bool isReady() const { return m_dictionary != nullptr; }

    [[nodiscard]] bool isCorrect(const QString& word) const;
    /// The misspelt words of a paragraph, in its positions. What touches one of `skipped` (by
    /// rising position), such as code, is passed over.
    [[nodiscard]] QList<TextRange> misspellings(QStringView text,
                                                const QList<TextRange>& skipped = {}) const;
    /// What may have been meant, the likeliest first, at most `most`.
    [[nodiscard]] QStringList suggestions(const QString& word, qsizetype most = 6) const;

signals:
    /// Other words than before may be wrong.
    void changed();

private:
    void load();

    DictionaryFiles m_files;
    PersonalWordList& m_personal;
    std::shared_ptr<SpellDictionary> m_dictionary;
    mutable QHash<QString, bool> m_known;
};

} // namespace orvane
