// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/SpellChecker.h"

#include "editor/spelling/SpelledWords.h"

#include <QFuture>
#include <QPromise>
#include <QThreadPool>

namespace orvane {

namespace {

constexpr qsizetype mostKnownWords = 100'000;

} // namespace

SpellChecker::SpellChecker(const DictionaryFiles& files, PersonalWordList& personal,
                           QObject* parent)
    : QObject(parent)
    , m_files(files)
    , m_personal(personal)
{
    connect(&m_personal, &PersonalWordList::changed, this, [this] {
        m_known.clear();
        emit changed();
    });
    load();
}

SpellChecker::~SpellChecker() = default;

void SpellChecker::load()
{
    auto promise = std::make_shared<QPromise<std::shared_ptr<SpellDictionary>>>();
    promise->start();
    promise->future().then(this, [this](const std::shared_ptr<SpellDictionary>& dictionary) {
        m_dictionary = dictionary;
        m_known.clear();
        emit changed();
    });
    QThreadPool::globalInstance()->start([promise, files = m_files] {
        auto opened = SpellDictionary::open(files);
        if (!opened)
            qWarning("Spelling dictionary: %ls", qUtf16Printable(opened.error().text()));
        promise->addResult(std::shared_ptr<SpellDictionary>(
            opened ? std::move(*opened) : std::unique_ptr<SpellDictionary>()));
        promise->finish();
    });
}

bool SpellChecker::isCorrect(const QString& word) const
{
    if (!m_dictionary)
        return true;
    const auto known = m_known.constFind(word);
    if (known != m_known.constEnd())
        return *known;
    const auto letter =
        std::find_if(word.begin(), word.end(), [](QChar c) { return c.isLetter(); });
    const bool isForeign = letter == word.end() || !m_dictionary->covers(letter->script());
    const bool isCorrect = isForeign || m_personal.accepts(word) || m_dictionary->contains(word);
    if (m_known.size() >= mostKnownWords)
        m_known.clear();
    m_known.insert(word, isCorrect);
    return isCorrect;
}

QList<TextRange> SpellChecker::misspellings(QStringView text, const QList<TextRange>& skipped) const
{
    QList<TextRange> misspelt;
    if (!m_dictionary)
        return misspelt;
    auto skip = skipped.begin();
    for (const TextRange word : spelledWords(text)) {
        while (skip != skipped.end() && skip->end() <= word.location)
            ++skip;
        const bool isSkipped = skip != skipped.end() && skip->location < word.end();
        if (!isSkipped && !isCorrect(text.sliced(word.location, word.length).toString()))
            misspelt.append(word);
    }
    return misspelt;
}

QStringList SpellChecker::suggestions(const QString& word, qsizetype most) const
{
    if (!m_dictionary)
        return {};
    const QStringList suggestions = m_dictionary->suggestions(word);
    return suggestions.first(std::min(most, suggestions.size()));
}

} // namespace orvane
