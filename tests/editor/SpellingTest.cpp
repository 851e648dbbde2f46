// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/Spelling.h"

#include "editor/spelling/SpelledWords.h"
#include "support/NoDescriptors.h"
#include "support/TestServices.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// Small dictionaries in a folder.
struct Dictionaries {
    QTemporaryDir folder;

    Dictionaries()
    {
        add(u"en_US"_s, "SET UTF-8\nTRY esianrtolcd\nWORDCHARS '\n",
            "5\nhello\nworld\ndon't\nNaomi\nna\u00efve\n");
        add(u"de_DE"_s, "SET ISO8859-1\nTRY esianr\n", "2\nsch\xf6n\nHaus\n");
        add(u"hyph_de_DE"_s, "", "");
        write(u"fr_FR.dic"_s, "1\nmot\n"); // without affixes
    }
    void write(const QString& name, const QByteArray& bytes) const
    {
        ASSERT_TRUE(writeFileAtomically(folder.filePath(name), bytes));
    }
    void add(const QString& language, const QByteArray& affixes, const QByteArray& words) const
    {
        write(language + u".aff"_s, affixes);
        write(language + u".dic"_s, words);
    }
};

QStringList texts(QStringView text, const QList<TextRange>& ranges)
{
    QStringList words;
    for (const TextRange range : ranges)
        words.append(text.sliced(range.location, range.length).toString());
    return words;
}

TEST(Spelling, WhatCountsAsAWord)
{
    struct Row {
        const char* name;
        QString text;
        QStringList words;
    };
    const Row rows[] = {
        {"apostrophes",
         u"Don't say 'hello', it’s"_s,
         {u"Don't"_s, u"say"_s, u"hello"_s, u"it’s"_s}},
        {"hyphens part words", u"well-known"_s, {u"well"_s, u"known"_s}},
        {"numbers and codes", u"2nd abc1 x86 snake_case e.g. ok"_s, {u"ok"_s}},
        {"capitals and letters", u"NASA I a we"_s, {u"we"_s}},
        {"addresses",
         u"at me@example.com or https://a.example/path/wrod, www.b.example ok"_s,
         {u"at"_s, u"or"_s, u"ok"_s}},
        {"accents in both forms", u"naïve nai\u0308ve"_s, {u"naïve"_s, u"nai\u0308ve"_s}},
        {"scripts without spaces", u"日本語 ไทย слово"_s, {u"слово"_s}},
        {"emoji and objects", u"a😀word\ufffcword"_s, {u"word"_s, u"word"_s}},
        {"no text", QString(), {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(texts(row.text, spelledWords(row.text)), row.words);
    }
}

TEST(Spelling, DictionariesOfTheSystem)
{
    const Dictionaries dictionaries;
    const auto found =
        dictionariesIn({u"/nowhere"_s, dictionaries.folder.path(), dictionaries.folder.path()});
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].language, u"de_DE"_s);
    EXPECT_EQ(dictionaryFor(found, u"en_GB"_s), &found[1]);
    EXPECT_EQ(dictionaryFor(found, u"de-AT"_s), &found[0]);
    EXPECT_EQ(dictionaryFor(found, u"es_ES"_s), nullptr);
    EXPECT_EQ(Spelling::displayName(u"de_DE"_s), u"German (Germany)"_s);

    const auto missing =
        SpellDictionary::open({u"xx"_s, u"/nowhere/xx.aff"_s, u"/nowhere/xx.dic"_s});
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().code, FileError::Code::NotFound);
}

TEST(Spelling, ANoteIsCheckedInItsLanguage)
{
    TestServices services;
    const Dictionaries dictionaries;
    const QString wordsPath = services.folder.filePath(u"configuration/words.txt"_s);
    Spelling spelling(services.defaults, wordsPath, {dictionaries.folder.path()}, u"en_US"_s);
    const QUuid english = QUuid::createUuid();
    const QUuid german = QUuid::createUuid();
    spelling.setLanguage(german, u"de_DE"_s);
    ASSERT_EQ(spelling.languageOf(english), u"en_US"_s);

    SpellChecker* checker = spelling.checkerFor(english);
    ASSERT_TRUE(checker);
    EXPECT_TRUE(checker->misspellings(u"wrold"_s).isEmpty()) << "before the dictionary is read";
    QSignalSpy changed(checker, &SpellChecker::changed);
    ASSERT_TRUE(changed.wait());

    const QString text = u"Hello wrold, don’t na\u00ef\u00adve wrold naomi слово"_s;
    EXPECT_EQ(texts(text, checker->misspellings(text)),
              (QStringList{u"wrold"_s, u"wrold"_s, u"naomi"_s}));
    EXPECT_EQ(texts(text, checker->misspellings(text, {{0, 8}, {14, 2}})),
              (QStringList{u"wrold"_s, u"naomi"_s}));
    EXPECT_EQ(checker->suggestions(u"wrold"_s).value(0), u"world"_s);

    SpellChecker* other = spelling.checkerFor(german);
    QSignalSpy ready(other, &SpellChecker::changed);
    ASSERT_TRUE(other->isReady() || ready.wait());
    EXPECT_EQ(texts(u"schön Huas"_s, other->misspellings(u"schön Huas"_s)), QStringList{u"Huas"_s});
    EXPECT_EQ(other->suggestions(u"schon"_s), QStringList{u"schön"_s});

    spelling.setEnabled(false);
    EXPECT_EQ(spelling.checkerFor(english), nullptr);
}

TEST(Spelling, LearnedWordsAreKeptAndIgnoredOnesAreNot)
{
    TestServices services;
    const QString path = services.folder.filePath(u"configuration/words.txt"_s);
    PersonalWordList first(path);
    PersonalWordList second(path);
    EXPECT_TRUE(first.learn(u"wrold"_s));
    EXPECT_TRUE(second.learn(u"Orvane"_s));
    second.ignore(u"blah"_s);
    EXPECT_EQ(readFile(path), QByteArray("Orvane\nwrold\n"));

    struct Row {
        QString word;
        bool accepted;
    };
    const Row rows[] = {{u"wrold"_s, true},  {u"Wrold"_s, true},  {u"WROLD"_s, true},
                        {u"wRold"_s, false}, {u"Orvane"_s, true}, {u"orvane"_s, false},
                        {u"blah"_s, true},   {u"other"_s, false}};
    for (const Row& row : rows)
        EXPECT_EQ(second.accepts(row.word), row.accepted) << row.word.toStdString();

    PersonalWordList third(path);
    EXPECT_TRUE(third.accepts(u"Orvane"_s));
    EXPECT_FALSE(third.accepts(u"blah"_s));
    EXPECT_TRUE(third.forget(u"wrold"_s));
    EXPECT_EQ(third.words(), QStringList{u"Orvane"_s});

    {
        const NoDescriptors none;
        PersonalWordList fourth(path);
        EXPECT_FALSE(fourth.learn(u"new"_s));
        EXPECT_TRUE(fourth.accepts(u"new"_s));
        EXPECT_FALSE(third.forget(u"Orvane"_s));
    }
    EXPECT_EQ(readFile(path), QByteArray("Orvane\n"));

    PersonalWordList blocked(services.folder.filePath(u"configuration/words.txt/under"_s));
    EXPECT_FALSE(blocked.learn(u"word"_s));
    EXPECT_TRUE(blocked.accepts(u"word"_s));
}

} // namespace
} // namespace orvane
