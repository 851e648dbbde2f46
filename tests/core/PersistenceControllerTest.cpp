// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/PersistenceController.h"

#include "core/Records.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

class StoreFixture : public ::testing::Test {
protected:
    QTemporaryDir temporary;
    QString folder = temporary.filePath(u"data"_s);
    ManualClock clock;

    std::unique_ptr<PersistenceController> open()
    {
        auto opened = PersistenceController::open(folder, clock);
        if (!opened) {
            ADD_FAILURE() << qPrintable(opened.error().text());
            return nullptr;
        }
        return *std::move(opened);
    }
    [[nodiscard]] QStringList files() const
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
};

NoteRecord fullNote(int number, const QUuid& container)
{
    NoteRecord note = makeNote(number, container);
    note.body = u"Line \u2028 \U0001F4DA end\n"_s + QChar(0) + u"after a zero"_s;
    note.tags = {u"one"_s, u"\"two\""_s};
    note.bodyRTF = Blob(QByteArray("{\\rtf1 ") + QByteArray(5000, 'r'));
    note.richContentPayload = Blob(QByteArray(9000, '\0'));
    note.editorTypingAttributesPayload = Blob(QByteArray("t"));
    note.titleRTF = Blob(QByteArray("{\\rtf1 title}"));
    note.iconName = u"sf:doc"_s;
    note.embeddedFileType = u"com.adobe.pdf"_s;
    note.embeddedFileAssetID = QString(u""_s);
    note.embeddedFilePayload = Blob(QByteArray());
    note.isPinned = true;
    note.shapesPayload = Blob(QByteArray("[]"));
    note.pdfSourceURLString = u"orvaneworkspace://pdf/x"_s;
    return note;
}

FolderRecord fullFolder(int number)
{
    FolderRecord folder = makeFolder(number, idOf(7));
    folder.iconName = u"star"_s;
    folder.titleRTF = Blob(QByteArray("{\\rtf1 folder}"));
    folder.tags = {u"tag"_s};
    folder.isPinned = true;
    return folder;
}

TEST_F(StoreFixture, GivesBackWhatWasSavedFromOneFileAtRest)
{
    NotebookSnapshot saved;
    saved.folders = {fullFolder(1), makeFolder(2)};
    saved.notes = {fullNote(13, idOf(1)), makeNote(12, idOf(2)), makeNote(11, idOf(9))};
    saved.binderLayout = BinderLayoutSnapshot{
        {{std::nullopt, {idOf(1), idOf(2)}}, {idOf(2), {}}}, {{idOf(1), {idOf(13)}}}, {idOf(2)}};
    {
        const auto controller = open();
        EXPECT_FALSE(controller->hadExistingPersistentStore());
        EXPECT_EQ(controller->load(), NotebookSnapshot());
        ASSERT_TRUE(controller->save(saved));
    }
    EXPECT_EQ(files(), QStringList{u"OrvaneWorkspace.store"_s});
    const auto controller = open();
    EXPECT_TRUE(controller->hadExistingPersistentStore());
    EXPECT_FALSE(controller->persistentStoreRecovery());
    const NotebookSnapshot loaded = controller->load();
    EXPECT_FALSE(loaded.notes.first()->bodyRTF->isLoaded());
    EXPECT_EQ(loaded, saved);
}

} // namespace
} // namespace orvane
