// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreWorker.h"

#include "core/StoreFixture.h"
#include "core/store/StoreFiles.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <SQLiteCpp/Database.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

// What belongs to the main thread doesn't get into a job by mistake.
static_assert(!isSendable<Blob> && !isSendable<NoteText> && !isSendable<NoteRecord>);
static_assert(!isSendable<Shared<NoteRecord>> && !isSendable<QList<Shared<NoteRecord>>>);
static_assert(!isSendable<const char*> && !isSendable<std::optional<Blob>>);
static_assert(isSendable<StoreReading::Result<QList<StoredNote>>>);

class StoreWorkerTest : public StoreFixture {
protected:
    std::unique_ptr<PersistenceController> controller = open();

    void save(int notes)
    {
        NotebookSnapshot snapshot{{makeFolder(1)}, {}, std::nullopt};
        for (int i = 1; i <= notes; ++i)
            snapshot.notes.append(makeNote(i, idOf(1)));
        ASSERT_TRUE(controller->save(snapshot));
    }
    /// What a job gives, waited for by the event loop.
    template <typename Function, typename... Values>
    auto wait(Function function, Values... values)
    {
        using Outcome = std::invoke_result_t<Function, StoreReading&, const Values&...>;
        std::optional<Outcome> told;
        controller->worker()->read(
            function, [&](const Outcome& outcome) { told = outcome; }, values...);
        QElapsedTimer timer;
        timer.start();
        while (!told && timer.elapsed() < 20'000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        return told.value();
    }
};

StoreReading::Result<QHash<QUuid, QByteArray>> bodies(StoreReading& store)
{
    QHash<QUuid, QByteArray> found;
    const auto damaged = store.forEachBody([&](const QUuid& id, QByteArrayView utf8) {
        found.insert(id, utf8.toByteArray());
        return StoreReading::Next::GoOn;
    });
    if (!damaged)
        return std::unexpected(damaged.error());
    return found;
}

constexpr auto readBodies = [](StoreReading& store) {
    return bodies(store);
};
constexpr auto readNotes = [](StoreReading& store) {
    return store.notes();
};

TEST_F(StoreWorkerTest, SeesWhatWasLastCommitted)
{
    save(3);
    EXPECT_EQ(wait(readNotes)->size(), 3);
    NoteRecord changed = makeNote(2, idOf(1));
    changed.body = u"ebb \u00e9 \U0001F4DA"_s;
    changed.tags = {u"tide"_s};
    ASSERT_TRUE(controller->saveNote(changed));
    const auto texts = wait(readBodies);
    ASSERT_TRUE(texts) << qPrintable(texts.error().text());
    EXPECT_EQ(QString::fromUtf8(texts->value(changed.id)), u"ebb \u00e9 \U0001F4DA"_s);
    EXPECT_EQ(texts->size(), 3);
    const auto notes = *wait(readNotes);
    const auto found = std::ranges::find(notes, changed.id, &StoredNote::id);
    ASSERT_NE(found, notes.end());
    EXPECT_EQ(found->tags, changed.tags);
    EXPECT_EQ(found->title, changed.title);
    EXPECT_EQ(found->folderID, idOf(1));
    EXPECT_EQ(found->bodySize, changed.body.utf8().size());
}

TEST_F(StoreWorkerTest, IsTrueToItselfWhileTheStoreIsWritten)
{
    // Each save gives all three notes the same words; no look may see two of them.
    const auto write = [&](int round) {
        NotebookSnapshot snapshot{{makeFolder(1)}, {}, std::nullopt};
        for (int i = 1; i <= 3; ++i) {
            NoteRecord note = makeNote(i, idOf(1));
            note.body = u"round %1"_s.arg(round);
            snapshot.notes.append(note);
        }
        ASSERT_TRUE(controller->save(snapshot));
    };
    write(0);
    int looks = 0;
    for (int i = 0; i < 60; ++i) {
        controller->worker()->read(readBodies, [&](const auto& texts) {
            ++looks;
            ASSERT_TRUE(texts) << qPrintable(texts.error().text());
            const QList<QByteArray> values = texts->values();
            EXPECT_EQ(QSet<QByteArray>(values.begin(), values.end()).size(), 1);
        });
        write(i + 1);
    }
    EXPECT_EQ(wait(readBodies)->value(makeNote(1, idOf(1)).id), QByteArray("round 60"));
    EXPECT_EQ(looks, 60) << "in the order in which they were asked for";
}

TEST_F(StoreWorkerTest, DamagedTextsArePassedOverAndCounted)
{
    save(3);
    controller.reset();
    SQLite::Database(store().toStdString(), SQLite::OPEN_READWRITE)
        .exec("UPDATE OrvaneNoteBytes SET bytes = zeroblob(4) WHERE row = 2 * 64 + 5;"
              "DELETE FROM OrvaneNoteBytes WHERE row = 3 * 64 + 5");
    controller = open();
    const auto damaged = wait([](StoreReading& store) {
        return store.forEachBody(
            [](const QUuid&, QByteArrayView) { return StoreReading::Next::GoOn; });
    });
    ASSERT_TRUE(damaged);
    EXPECT_EQ(*damaged, 2);
    const auto stopped = wait([](StoreReading& store) {
        int seen = 0;
        const auto done = store.forEachBody([&](const QUuid&, QByteArrayView) {
            ++seen;
            return StoreReading::Next::Stop;
        });
        return done ? StoreReading::Result<int>(seen) : std::unexpected(done.error());
    });
    EXPECT_EQ(*stopped, 1);
}

TEST_F(StoreWorkerTest, AStoreThatClosesTellsNobodyAndWaitsForNoLongRead)
{
    save(400);
    bool told = false;
    for (int i = 0; i < 50; ++i)
        controller->worker()->read(readBodies, [&](const auto&) { told = true; });
    QElapsedTimer timer;
    timer.start();
    controller.reset();
    EXPECT_LT(timer.elapsed(), 5'000);
    QCoreApplication::processEvents();
    EXPECT_FALSE(told);
    EXPECT_EQ(files(), QStringList{u"OrvaneWorkspace.store"_s})
        << "its write-ahead log is in the file";
}

TEST_F(StoreWorkerTest, BeginningsAreLearntWithoutReadingTexts)
{
    NoteRecord longText = makeNote(1, idOf(1));
    longText.body = u"first\nsecond "_s + QString(50'000, u'x');
    NoteRecord empty = makeNote(2, idOf(1));
    empty.body = {};
    ASSERT_TRUE(controller->save({{makeFolder(1)}, {longText, empty}, std::nullopt}));
    controller.reset();
    controller = open();
    const NotebookSnapshot loaded = controller->load();
    const auto note = *std::ranges::find_if(
        loaded.notes, [&](const auto& each) { return each->id == longText.id; });
    EXPECT_FALSE(note->body.knowsBeginning(100));
    EXPECT_TRUE(note->body.beginning(100).isEmpty());
    bool told = false;
    controller->learnBeginnings(loaded.notes, 100, [&] { told = true; });
    (void)wait(readNotes);
    EXPECT_TRUE(told);
    EXPECT_TRUE(note->body.knowsBeginning(100));
    EXPECT_EQ(note->body.beginning(12), u"first\nsecond"_s);
    EXPECT_FALSE(note->body.utf8().isLoaded());
    EXPECT_EQ(note->body, longText.body) << "what is known is not taken for all of it";
}

} // namespace
} // namespace orvane
