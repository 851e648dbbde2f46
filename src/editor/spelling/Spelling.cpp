// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/Spelling.h"

#include <QLocale>

namespace orvane {

namespace {

QString languagesKey()
{
    return QString::fromUtf16(spellingLanguagesKey);
}

QString keyOf(const QUuid& note)
{
    return note.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace

Spelling::Spelling(UserDefaults& defaults, const QString& personalWordsPath,
                   const QStringList& folders, const QString& locale, QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_personal(personalWordsPath)
    , m_dictionaries(dictionariesIn(folders))
    , m_locale(locale)
{
    connect(&m_defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key == languagesKey() || key == spellingEnabledSetting.keyText())
            emit settingsChanged();
    });
}

Spelling::~Spelling() = default;

QString Spelling::displayName(const QString& language)
{
    const QLocale locale(language);
    if (locale.language() == QLocale::C)
        return language;
    QString name = QLocale::languageToString(locale.language());
    if (!language.contains(u'_'))
        return name;
    return QStringLiteral("%1 (%2)").arg(name, QLocale::territoryToString(locale.territory()));
}

bool Spelling::isEnabled() const
{
    return spellingEnabledSetting.read(m_defaults);
}

void Spelling::setEnabled(bool enabled)
{
    spellingEnabledSetting.write(m_defaults, enabled);
}

const DictionaryFiles* Spelling::filesFor(const QUuid& note) const
{
    const auto languages = m_defaults.get<QJsonObject>(languagesKey(), {});
    const QString own = languages.value(keyOf(note)).toString();
    if (own == noSpellingLanguage)
        return nullptr;
    const DictionaryFiles* files = own.isEmpty() ? nullptr : dictionaryFor(m_dictionaries, own);
    return files ? files : dictionaryFor(m_dictionaries, m_locale);
}

QString Spelling::languageOf(const QUuid& note) const
{
    const DictionaryFiles* files = filesFor(note);
    return files ? files->language : QString();
}

void Spelling::setLanguage(const QUuid& note, const QString& language)
{
    auto languages = m_defaults.get<QJsonObject>(languagesKey(), {});
    const QString chosen = language.isEmpty() ? QString::fromUtf16(noSpellingLanguage) : language;
    languages.insert(keyOf(note), chosen);
    languages.insert(QString::fromUtf16(lastSpellingLanguage), chosen);
    m_defaults.set(languagesKey(), DefaultsValue(languages));
}

void Spelling::beginNote(const QUuid& note)
{
    auto languages = m_defaults.get<QJsonObject>(languagesKey(), {});
    const QString last = languages.value(QString::fromUtf16(lastSpellingLanguage)).toString();
    if (last.isEmpty() || languages.contains(keyOf(note)))
        return;
    languages.insert(keyOf(note), last);
    m_defaults.set(languagesKey(), DefaultsValue(languages));
}

SpellChecker* Spelling::checkerFor(const QUuid& note)
{
    const DictionaryFiles* files = isEnabled() ? filesFor(note) : nullptr;
    if (!files)
        return nullptr;
    auto& checker = m_checkers[files->language];
    if (!checker)
        checker = std::make_unique<SpellChecker>(*files, m_personal);
    return checker.get();
}

} // namespace orvane
