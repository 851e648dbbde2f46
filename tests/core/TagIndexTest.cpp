// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/Records.h"
#include "core/tags/TagSettings.h"
#include "core/tags/Tags.h"

#include <QCollator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

QStringList namesOf(const QList<TagRecord>& library)
{
    QStringList names;
    for (const TagRecord& tag : library)
        names.append(tag.name);
    return names;
}

// What the library is, said as simply as can be.
QStringList expectedLibrary(const QList<NoteRecord>& notes)
{
    QStringList names;
    for (const NoteRecord& note : notes)
        names += note.tags;
    names.removeDuplicates();
    names.sort();
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(names.begin(), names.end(), [&](const QString& a, const QString& b) {
        return collator.compare(a, b) < 0;
    });
    return names;
}

TEST(TagIndex, StaysInOrderThroughRandomChanges)
{
    std::mt19937 random(20261122);
    const auto pick = [&](int below) {
        return int(random() % unsigned(below));
    };
    QStringList words{u"Tide"_s, u"tide"_s,  u"TIDE"_s,  u"ebb"_s,   u"Ebb"_s,       u"Éclair"_s,
                      u"zoo"_s,  u"äpfel"_s, u"Apfel"_s, u"10"_s,    u"9"_s,         u"ß"_s,
                      u"SS"_s,   u"a b"_s,   u"a-b"_s,   u"Ωmega"_s, u"\U0001F30A"_s};
    for (int i = 0; i < 60; ++i)
        words.append(u"Word %1"_s.arg(i));
    QList<NoteRecord> notes;
    TagIndex index;
    for (int i = 0; i < 12; ++i) {
        notes.append(makeNote(i + 1, idOf(99)));
        index.add(notes.last());
    }
    for (int round = 0; round < 400; ++round) {
        // Some changes between two looks, so that a tag comes and goes unseen, and now and then
        // many.
        for (int change = round % 8 == 0 ? 30 : pick(3); change >= 0; --change) {
            NoteRecord& note = notes[pick(int(notes.size()))];
            index.remove(note);
            note.tags.clear();
            for (int tags = pick(8); tags > 0; --tags)
                note.tags.append(words.at(pick(int(words.size()))));
            note.tags.removeDuplicates();
            index.add(note);
        }
        ASSERT_EQ(namesOf(index.library()), expectedLibrary(notes)) << "round " << round;
    }
}

TEST(TagIndex, FindsTagsByALetterAndTakesOneSpelling)
{
    NoteRecord note = makeNote(1, idOf(99));
    note.tags = {u"Tide"_s, u"tide"_s, u"flood tide"_s, u"neap"_s};
    TagIndex index;
    index.add(note);
    const auto& library = index.library();
    EXPECT_EQ(tagsContaining(library, u"TID"_s, 9).size(), 2);
    EXPECT_TRUE(tagsContaining(library, u"TID"_s, 9).contains(u"flood tide"_s));
    EXPECT_EQ(tagsContaining(library, u"e"_s, 1), QStringList{u"flood tide"_s});
    EXPECT_EQ(tagsContaining(library, u"x"_s, 9), QStringList());
}

TEST(TagSettings, TwoProgramsKeepEachOthersDecisions)
{
    const QTemporaryDir folder;
    const QString path = folder.path() + u"/settings.json"_s;
    UserDefaults one(path);
    UserDefaults two(path);
    (void)editTagSettings(one, [](TagSettings& settings) {
        settings.colorHexes.insert(u"tide"_s, u"#112233"_s);
        settings.addAlias(u"flood"_s, u"tide"_s);
        settings.autoTagExceptions.append(u"the"_s);
    });
    ASSERT_TRUE(one.flush());
    const TagSettings both = editTagSettings(two, [](TagSettings& settings) {
        settings.colorHexes.insert(u"ebb"_s, u"#445566"_s);
        settings.addAlias(u"low"_s, u"ebb"_s);
        settings.autoTagExceptions.append(u"a"_s);
    });
    ASSERT_TRUE(two.flush());
    EXPECT_EQ(both.colorHexes.size(), 2);
    EXPECT_EQ(both.aliases.size(), 2);
    EXPECT_EQ(both.autoTagExceptions, (QStringList{u"the"_s, u"a"_s}));
    EXPECT_EQ(TagSettings::load(UserDefaults(path)), both);
}

} // namespace
} // namespace orvane
