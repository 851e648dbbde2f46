// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "Records.h"
#include "StoreFixture.h"
#include "core/store/ColumnText.h"
#include "core/store/StoreReading.h"
#include "support/FaultyFiles.h"

#include <QCoreApplication>
#include <QCryptographicHash>

#include <SQLiteCpp/SQLiteCpp.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

NoteImage imageOf(char letter, qsizetype size = 60'000)
{
    const QByteArray bytes(size, letter);
    return {QCryptographicHash::hash(bytes, QCryptographicHash::Sha256), Blob(bytes)};
}

NoteRecord illustrated(int number, const NoteImages& images)
{
    NoteRecord note = makeNote(number, idOf(1));
    note.images = images;
    return note;
}

class StoreImages : public StoreFixture {
protected:
    /// How many rows of images the file has, once the store is closed.
    int rows()
    {
        return SQLite::Database(store().toStdString())
            .execAndGet("SELECT count(*) FROM OrvaneNoteBytes WHERE row < 0")
            .getInt();
    }
    static QByteArray bytesOf(PersistenceController& controller, int note, int image = 0)
    {
        for (const auto& each : controller.load().notes) {
            if (each->id == idOf(note))
                return each->images->at(image).bytes.readOnce().value_or("unreadable");
        }
        return "no note";
    }
};

TEST_F(StoreImages, AreStoredOnceAndNotHeldInMemory)
{
    const NoteImage harbour = imageOf('h');
    const NoteImage wall = imageOf('w');
    {
        const auto controller = open();
        const NoteRecord note = illustrated(2, {harbour, wall});
        ASSERT_TRUE(controller->save({{makeFolder(1)}, {note}, std::nullopt}));
        EXPECT_FALSE(harbour.bytes.isLoaded()) << "it is in the store now";
        EXPECT_EQ(*harbour.bytes.readOnce(), QByteArray(60'000, 'h'));
        EXPECT_FALSE(harbour.bytes.isLoaded()) << "reading once keeps nothing";
        ASSERT_TRUE(controller->saveNote(illustrated(3, {imageOf('h')})));
        EXPECT_EQ(bytesOf(*controller, 3), QByteArray(60'000, 'h'));

        auto reading = StoreReading::open(store(), {});
        ASSERT_TRUE(reading);
        EXPECT_EQ(*reading->image(wall.hash), QByteArray(60'000, 'w'));
        EXPECT_FALSE(reading->image(imageOf('x').hash));
    }
    EXPECT_EQ(rows(), 2);
    const auto again = open();
    EXPECT_EQ(bytesOf(*again, 2, 1), QByteArray(60'000, 'w'));
    EXPECT_EQ(bytesOf(*again, 3), QByteArray(60'000, 'h'));
}

TEST_F(StoreImages, StayUntilTheStoreClosesAndNoNoteHasThem)
{
    const NoteRecord note = illustrated(2, {imageOf('h'), imageOf('w')});
    ASSERT_TRUE(open()->save({{makeFolder(1)}, {note, illustrated(3, {imageOf('h')})}, {}}));
    {
        const auto controller = open();
        NotebookSnapshot snapshot = controller->load();
        const Shared<NoteRecord> removed =
            snapshot.notes.at(snapshot.notes.at(0)->id == idOf(2) ? 0 : 1);
        snapshot.notes.removeOne(removed);
        ASSERT_TRUE(controller->save(snapshot));
        EXPECT_EQ(*removed->images->at(1).bytes.readOnce(), QByteArray(60'000, 'w'))
            << "it may be taken back";
        snapshot.notes.append(removed);
        ASSERT_TRUE(controller->save(snapshot));
    }
    EXPECT_EQ(rows(), 2);
    {
        const auto controller = open();
        ASSERT_TRUE(controller->saveNote(illustrated(2, {})));
        EXPECT_TRUE(controller->load().notes.size() == 2);
    }
    EXPECT_EQ(rows(), 1) << "the other note still has one of them";
    EXPECT_EQ(bytesOf(*open(), 3), QByteArray(60'000, 'h'));
}

TEST_F(StoreImages, ADamagedOneIsNoDamageOfTheStore)
{
    const NoteImage harbour = imageOf('h');
    ASSERT_TRUE(open()->save({{makeFolder(1)}, {illustrated(2, {harbour})}, std::nullopt}));
    SQLite::Database(store().toStdString(), SQLite::OPEN_READWRITE)
        .exec("UPDATE OrvaneNoteBytes SET bytes = zeroblob(60000) WHERE row < 0");
    {
        const auto controller = open();
        ASSERT_FALSE(controller->persistentStoreRecovery());
        std::optional<StoreCheckResult> checked;
        controller->checkInBackground([&](const StoreCheckResult& found) { checked = found; });
        while (!checked)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_EQ(checked->outcome, StoreCheckResult::Outcome::Sound);
        EXPECT_EQ(bytesOf(*controller, 2), "unreadable");
        // Changing the note leaves it alone; the same image coming again mends it.
        NoteRecord changed = *controller->load().notes.first();
        changed.title = u"Changed"_s;
        ASSERT_TRUE(controller->saveNote(changed));
        EXPECT_EQ(bytesOf(*controller, 2), "unreadable");
        ASSERT_TRUE(controller->saveNote(illustrated(3, {imageOf('h')})));
        EXPECT_EQ(bytesOf(*controller, 2), QByteArray(60'000, 'h'));
    }
    EXPECT_EQ(rows(), 1);
}

TEST_F(StoreImages, WhatCouldNotBeStoredStaysInMemoryAndGoesOutLater)
{
    const NoteImage harbour = imageOf('h');
    const auto controller = open();
    ASSERT_TRUE(controller->save({{makeFolder(1)}, {makeNote(2, idOf(1))}, std::nullopt}));
    {
        const FaultyFiles fault(folder, {.call = 1, .onward = true});
        EXPECT_FALSE(controller->saveNote(illustrated(2, {harbour})));
    }
    EXPECT_TRUE(harbour.bytes.isLoaded());
    ASSERT_TRUE(controller->saveNote(illustrated(3, {})));
    EXPECT_FALSE(harbour.bytes.isLoaded());
    EXPECT_EQ(bytesOf(*controller, 2), QByteArray(60'000, 'h'));
}

TEST_F(StoreImages, GoAlongToACopyAndToAnotherStore)
{
    const NoteImage harbour = imageOf('h');
    const QString copy = temporary.filePath(u"copy.store"_s);
    NotebookSnapshot loaded;
    const auto controller = open();
    ASSERT_TRUE(controller->save({{makeFolder(1)}, {illustrated(2, {harbour})}, std::nullopt}));
    ASSERT_TRUE(controller->writeCopy(copy));
    loaded = controller->load();

    const QString other = temporary.filePath(u"other"_s);
    {
        auto there = PersistenceController::open(other, clock);
        ASSERT_TRUE(there);
        ASSERT_TRUE((*there)->save(loaded));
        EXPECT_EQ(bytesOf(**there, 2), QByteArray(60'000, 'h'));
    }
    EXPECT_EQ(bytesOf(*controller, 2), QByteArray(60'000, 'h')) << "here it is where it was";
    const auto read = PersistenceController::readOnlyCopy(copy);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->notes.first()->images->size(), 1);
    EXPECT_EQ(SQLite::Database(copy.toStdString())
                  .execAndGet("SELECT length(bytes) FROM OrvaneNoteBytes WHERE row < 0")
                  .getInt(),
              60'000);
}

TEST_F(StoreImages, TheColumnTakesWhatIsAnImageAndNothingElse)
{
    const QByteArray hash = imageOf('h').hash;
    const QByteArray text = imagesToStore({{hash, 60'000}});
    ASSERT_EQ(imagesFromStore(text).size(), 1);
    EXPECT_EQ(imagesFromStore(text).first().hash, hash);
    EXPECT_EQ(imagesFromStore(text).first().length, 60'000);
    EXPECT_LT(imageRow(hash), 0);
    for (const QByteArray& odd :
         {QByteArray("[]"), QByteArray("no list"), QByteArray(R"(["ab:3"])"),
          QByteArray(text).replace(":60000", ":-1"), QByteArray(text).replace(":60000", ""),
          QByteArray(text).replace(":60000", ":99999999999999"), QByteArray(text).replace(':', "")})
        EXPECT_TRUE(imagesFromStore(odd).isEmpty()) << odd.constData();
}

} // namespace
} // namespace orvane
