// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/spelling/SpellChecker.h"
#include "platform/UserDefaults.h"

#include <QUuid>

#include <map>

namespace orvane {

/// The spelling check of the program: which languages there are, which one each note is written in,
/// and a checker for each language in use. Main thread.
class Spelling : public QObject {
    Q_OBJECT
public:
    /// Looks for dictionaries in `folders`. Notes without a language of their own are taken to be
    /// in that of `locale`, as "en_US".
    Spelling(UserDefaults& defaults, const QString& personalWordsPath, const QStringList& folders,
             const QString& locale, QObject* parent = nullptr);
    ~Spelling() override;

    [[nodiscard]] PersonalWordList& personalWords() { return m_personal; }
    [[nodiscard]] const QList<DictionaryFiles>& dictionaries() const { return m_dictionaries; }
    /// What a person reads for a language: "English (United States)".
    [[nodiscard]] static QString displayName(const QString& language);

    [[nodiscard]] bool isEnabled() const;
    void setEnabled(bool enabled);

    /// Empty if the note is not to be checked or there is no dictionary for its language.
    [[nodiscard]] QString languageOf(const QUuid& note) const;
    /// An empty language for no checking.
    void setLanguage(const QUuid& note, const QString& language);
    /// Gives a note that has no language of its own, as a new one, that which was chosen last.
    void beginNote(const QUuid& note);
    /// The checker for the note's language; null if there is none or checking is off.
    [[nodiscard]] SpellChecker* checkerFor(const QUuid& note);

signals:
    /// A note's language, or whether there is any checking.
    void settingsChanged();

private:
    [[nodiscard]] const DictionaryFiles* filesFor(const QUuid& note) const;

    UserDefaults& m_defaults;
    PersonalWordList m_personal;
    QList<DictionaryFiles> m_dictionaries;
    QString m_locale;
    std::map<QString, std::unique_ptr<SpellChecker>> m_checkers;
};

/// settings.editor.spelling.enabled, and the languages of notes by upper-case UUID text.
inline constexpr Setting<bool> spellingEnabledSetting{u"settings.editor.spelling.enabled", true};
inline constexpr char16_t spellingLanguagesKey[] = u"settings.editor.spelling.languages";
/// Beside the notes: what was chosen last.
inline constexpr char16_t lastSpellingLanguage[] = u"last";
/// In place of a language: the note is not checked.
inline constexpr char16_t noSpellingLanguage[] = u"none";

} // namespace orvane
