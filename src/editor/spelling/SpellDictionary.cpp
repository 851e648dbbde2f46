// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/SpellDictionary.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <hunspell/hunspell.hxx>
#include <map>

namespace orvane {

using namespace Qt::StringLiterals;

QStringList dictionaryFolders()
{
    QStringList folders;
    const QStringList roots =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const QLatin1StringView name : {"hunspell"_L1, "myspell/dicts"_L1, "myspell"_L1}) {
        for (const QString& root : roots)
            folders.append(root + u'/' + name);
    }
    return folders;
}

QList<DictionaryFiles> dictionariesIn(const QStringList& folders)
{
    std::map<QString, DictionaryFiles> found;
    for (const QString& folder : folders) {
        for (const QFileInfo& words : QDir(folder).entryInfoList({u"*.dic"_s}, QDir::Files)) {
            const QString language = words.completeBaseName();
            const QFileInfo affixes(words.dir(), language + ".aff"_L1);
            // Hyphenation patterns come in files of the same endings.
            if (language.startsWith("hyph_"_L1) || !affixes.isReadable() || !words.isReadable())
                continue;
            found.try_emplace(language, DictionaryFiles{language, affixes.absoluteFilePath(),
                                                        words.absoluteFilePath()});
        }
    }
    QList<DictionaryFiles> dictionaries;
    for (const auto& [language, files] : found)
        dictionaries.append(files);
    return dictionaries;
}

const DictionaryFiles* dictionaryFor(const QList<DictionaryFiles>& dictionaries,
                                     const QString& locale)
{
    const QString wanted = QString(locale).replace(u'-', u'_');
    const QString language = wanted.section(u'_', 0, 0);
    const QString usual = QLocale(language).name();
    const DictionaryFiles* best = nullptr;
    int bestRank = 0;
    for (const DictionaryFiles& files : dictionaries) {
        int rank = 0;
        if (files.language == wanted)
            rank = 3;
        else if (files.language == usual || files.language == language)
            rank = 2;
        else if (files.language.startsWith(language + u'_'))
            rank = 1;
        if (rank > bestRank) {
            best = &files;
            bestRank = rank;
        }
    }
    return best;
}

struct SpellDictionary::Engine {
    Engine(const DictionaryFiles& files)
        : hunspell(QFile::encodeName(files.affixes).constData(),
                   QFile::encodeName(files.words).constData())
        , encoding(hunspell.get_dict_encoding())
        , isUtf8(QString::fromStdString(encoding).compare(u"UTF-8"_s, Qt::CaseInsensitive) == 0)
    {}

    /// Nothing for a word that the dictionary's encoding can't hold.
    [[nodiscard]] std::optional<std::string> encoded(const QString& word) const
    {
        if (isUtf8)
            return word.toStdString();
        QStringEncoder encoder(encoding.c_str(), QStringEncoder::Flag::Stateless);
        if (!encoder.isValid())
            return std::nullopt;
        const QByteArray bytes = encoder.encode(word);
        if (encoder.hasError() || decoded(bytes.toStdString()) != word)
            return std::nullopt;
        return bytes.toStdString();
    }
    [[nodiscard]] QString decoded(const std::string& word) const
    {
        if (isUtf8)
            return QString::fromStdString(word);
        QStringDecoder decoder(encoding.c_str());
        return decoder.isValid() ? QString(decoder.decode(QByteArrayView(word)))
                                 : QString::fromLatin1(word);
    }

    mutable Hunspell hunspell;
    std::string encoding;
    bool isUtf8;
};

namespace {

/// The scripts of words from all parts of a dictionary's file.
template <typename Decode>
QSet<int> sampledScripts(const QString& path, Decode&& decode)
{
    constexpr int samples = 256;
    QFile file(path);
    QSet<int> scripts;
    if (!file.open(QIODevice::ReadOnly))
        return scripts;
    for (int i = 0; i < samples; ++i) {
        file.seek(file.size() * i / samples);
        file.readLine(); // the rest of a line
        const QString word = decode(file.readLine().toStdString()).section(u'/', 0, 0);
        for (const QChar c : word) {
            if (c.isLetter())
                scripts.insert(int(c.script()));
        }
    }
    return scripts;
}

QString asWritten(const QString& word)
{
    return QString(word)
        .replace(u'\u2019', u'\'')
        .remove(u'\u00ad')
        .normalized(QString::NormalizationForm_C);
}

} // namespace

SpellDictionary::SpellDictionary(std::unique_ptr<Engine> engine)
    : m_engine(std::move(engine))
{}

SpellDictionary::~SpellDictionary() = default;

std::expected<std::unique_ptr<SpellDictionary>, FileError>
SpellDictionary::open(const DictionaryFiles& files)
{
    for (const QString& path : {files.affixes, files.words}) {
        if (auto obstacle = obstacleAt(path, FileLimit::dictionary))
            return std::unexpected(*std::move(obstacle));
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            const auto code = file.exists() ? FileError::Code::NoAccess : FileError::Code::NotFound;
            return std::unexpected(FileError{code, path, file.errorString()});
        }
    }
    std::unique_ptr<SpellDictionary> dictionary(
        new SpellDictionary(std::make_unique<Engine>(files)));
    const Engine& engine = *dictionary->m_engine;
    dictionary->m_scripts =
        sampledScripts(files.words, [&](const std::string& line) { return engine.decoded(line); });
    return dictionary;
}

bool SpellDictionary::contains(const QString& word) const
{
    const auto bytes = m_engine->encoded(asWritten(word));
    return bytes && m_engine->hunspell.spell(*bytes);
}

QStringList SpellDictionary::suggestions(const QString& word) const
{
    const auto bytes = m_engine->encoded(asWritten(word));
    QStringList suggestions;
    if (!bytes)
        return suggestions;
    for (const std::string& suggestion : m_engine->hunspell.suggest(*bytes))
        suggestions.append(m_engine->decoded(suggestion));
    return suggestions;
}

bool SpellDictionary::covers(QChar::Script script) const
{
    return m_scripts.isEmpty() || m_scripts.contains(int(script));
}

} // namespace orvane
