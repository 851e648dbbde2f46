// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreFixture.h"
#include "core/records/RecordFields.h"
#include "core/store/StoreReader.h"

#include <QRandomGenerator>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// A notebook that changes at random, and what of it the store must hold.
class Model {
public:
    explicit Model(quint32 seed)
        : random(seed)
    {
        memory.folders = {makeFolder(0)};
        layOut();
    }

    NotebookSnapshot memory;
    /// What the store would hold if every save so far had succeeded.
    NotebookSnapshot wanted;
    QRandomGenerator random;

    void layOut()
    {
        memory.binderLayout = BinderLayoutSnapshot{{{std::nullopt, {}}}, {{idOf(0), {}}}, {}};
    }
    int below(qsizetype end) { return int(random.bounded(int(end))); }

    void change()
    {
        const int kind = below(9);
        if (kind < 3 || memory.notes.isEmpty())
            return addNote();
        const int place = below(memory.notes.size());
        if (kind == 3)
            return removeNote(place);
        if (kind == 4)
            return memory.notes.move(place, below(memory.notes.size()));
        if (kind == 5)
            return changeFolders();
        if (kind == 6)
            return changeLayout();
        changeNote(place);
    }
    void changeNote(int place)
    {
        memory.notes[place] = memory.notes.at(place).with([&](NoteRecord& note) {
            note.updatedAt.msecs += 1 + below(5000);
            switch (below(6)) {
            case 0:
                note.body = QString(below(9000), u'\u00e9');
                break;
            case 1:
                note.isPinned = !note.isPinned;
                break;
            case 2:
                note.bodyRTF = bytes();
                break;
            case 3:
                note.richContentPayload.reset();
                note.titleRTF = bytes();
                break;
            case 4:
                note.shapesPayload = Blob(QByteArray());
                note.tags = {u"a"_s, u"b\\\"c"_s};
                break;
            default: // the same bytes in another place
                if (note.bodyRTF)
                    note.bodyRTF = Blob(QByteArray(note.bodyRTF->readOrNothing()));
            }
        });
    }

private:
    int m_lastId = 100;

    Blob bytes() { return Blob(QByteArray(below(6000), char('a' + below(26)))); }
    void addNote()
    {
        NoteRecord note = makeNote(++m_lastId, idOf(0));
        if (below(2) == 0)
            note.richContentPayload = bytes();
        // A duplicate shares the bytes of the note that it is made from.
        if (!memory.notes.isEmpty() && below(3) == 0) {
            note = *memory.notes.at(below(memory.notes.size()));
            note.id = idOf(m_lastId);
        }
        memory.notes.insert(below(memory.notes.size() + 1), note);
        order().insert(below(order().size() + 1), note.id);
    }
    void removeNote(int place)
    {
        order().removeAll(memory.notes.at(place)->id);
        memory.notes.removeAt(place);
        if (below(20) == 0) {
            memory.notes = memory.notes.mid(memory.notes.size() / 2);
            order() = order().mid(order().size() / 3);
        }
    }
    void changeFolders()
    {
        if (memory.folders.size() > 3) {
            memory.binderLayout->noteOrderEntries.removeLast();
            return memory.folders.removeAt(1 + below(memory.folders.size() - 1));
        }
        FolderRecord folder = makeFolder(++m_lastId);
        folder.titleRTF = bytes();
        memory.folders.append(folder);
        memory.binderLayout->noteOrderEntries.append({folder.id, {idOf(m_lastId + 7)}});
    }
    void changeLayout()
    {
        memory.binderLayout->expandedFolderIDs = {idOf(below(50))};
        QList<QUuid>& ids = order();
        for (int i = below(300); i > 0; --i)
            ids.append(idOf(100'000 + below(1'000'000)));
        if (ids.size() > 600)
            ids.remove(below(100), 400);
    }
    QList<QUuid>& order() { return memory.binderLayout->noteOrderEntries.first().noteIDs; }
};

void readAllBytes(const NotebookSnapshot& snapshot)
{
    for (const auto& note : snapshot.notes) {
        forEachBytes(*note, [](int, const Blob* bytes) {
            if (bytes)
                static_cast<void>(bytes->read());
        });
    }
}

class StoreModel : public StoreFixture, public ::testing::WithParamInterface<int> {
protected:
    std::unique_ptr<PersistenceController> controller;

    void reopen()
    {
        controller.reset();
        controller = open({.checkpointAtPages = 40});
        ASSERT_TRUE(controller);
        ASSERT_FALSE(controller->persistentStoreRecovery());
    }
    /// What a process would find that opened the project now, after this one was killed.
    NotebookContents afterACrash()
    {
        const QTemporaryDir copy;
        const auto bytes = storeBytes(store());
        for (auto file = bytes.cbegin(); file != bytes.cend(); ++file)
            writeBytes(copy.filePath(file.key()), *file);
        const auto opened = PersistenceController::open(copy.path(), clock);
        EXPECT_TRUE(opened);
        const NotebookSnapshot snapshot = (*opened)->load();
        readAllBytes(snapshot);
        return NotebookContents(snapshot);
    }
    bool save(Model& model)
    {
        const int kind = model.below(5);
        if (kind == 0 && !model.memory.notes.isEmpty()) {
            const auto note = model.memory.notes.at(model.below(model.memory.notes.size()));
            put(model.wanted.notes, note);
            return controller->saveNote(note).has_value();
        }
        if (kind == 1 && !model.memory.folders.isEmpty()) {
            auto& folder = model.memory.folders.first();
            folder = folder.with([](FolderRecord& record) { record.name += u'!'; });
            put(model.wanted.folders, folder);
            return controller->saveFolder(folder).has_value();
        }
        if (kind == 2) {
            model.wanted.binderLayout = model.memory.binderLayout;
            return controller->saveLayout(*model.memory.binderLayout).has_value();
        }
        model.wanted = model.memory;
        return controller->save(model.memory).has_value();
    }
    template <typename Record>
    static void put(QList<Shared<Record>>& records, const Shared<Record>& record)
    {
        records.removeIf([&](const auto& other) { return other->id == record->id; });
        records.append(record);
    }
};

// Any changes, saved whole or one by one, on a disk that is full now and then: the store holds what
// the last successful save stood for, and what failed follows.
TEST_P(StoreModel, HoldsWhatTheLastSuccessfulSaveStoodFor)
{
    Model model{quint32(GetParam())};
    NotebookSnapshot stored;
    int failures = 0;
    reopen();
    ASSERT_TRUE(controller->save(model.memory));
    stored = model.wanted = model.memory;
    for (int step = 0; step < 200; ++step) {
        model.change();
        std::optional<FullDisk> full;
        if (model.below(6) == 0)
            full.emplace(QFileInfo(wal()).size() + model.below(3) * 4096);
        const bool saved = save(model);
        EXPECT_TRUE(saved || full);
        full.reset();
        failures += saved ? 0 : 1;
        if (saved)
            stored = model.wanted;
        if (model.below(12) != 0)
            continue;
        readAllBytes(stored);
        readAllBytes(model.wanted);
        EXPECT_EQ(afterACrash(), NotebookContents(stored)) << "step " << step;
        reopen(); // what failed is tried once more when the store closes
        stored = model.wanted;
        const NotebookContents loaded(controller->load());
        const NotebookContents expected(stored);
        ASSERT_EQ(loaded.folders, expected.folders);
        ASSERT_EQ(loaded.notes, expected.notes);
        ASSERT_EQ(loaded, expected) << "the layout, in step " << step;
        reopen(); // and goes on with bytes that nobody has read
        stored = model.wanted = model.memory = controller->load();
        if (!model.memory.binderLayout)
            model.layOut();
    }
    EXPECT_GT(failures, 5);
}

INSTANTIATE_TEST_SUITE_P(Seeds, StoreModel, ::testing::Range(1, 7));

} // namespace
} // namespace orvane
