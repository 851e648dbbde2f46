// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What becomes of an image's bytes while its note is edited, stored and opened again.
#include "SessionFixture.h"
#include "editor/view/EditorView.h"
#include "editor/view/TextMime.h"
#include "platform/AtomicFile.h"
#include "support/Versions.h"
#include "text/attachments/AttachmentManager.h"
#include "text/store/TextStore.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QTest>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

QByteArray jpeg(const QColor& color)
{
    QImage image(1600, 1200, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, (x / 7 + y / 5) % 9 ? color : QColor(x % 256, y % 256, 90));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "JPEG", 90);
    return bytes;
}

class NoteImagesTest : public SessionFixture {
protected:
    NoteImagesTest() { session->setMode(EditorMode::richText); }

    void insert(const QByteArray& bytes)
    {
        const auto image =
            OrvaneNoteImageAttachment::fromImageData(bytes, QSizeF(320, 240), QUuid::createUuid());
        session->gateway().insert(AttributedString::object(image), u"Insert Image"_s);
        test.clock.advance(2s);
    }
    [[nodiscard]] const NoteRecord& record() const { return *app->note(a); }
    [[nodiscard]] bool shows() const
    {
        const auto files =
            AttachmentManager::imageFiles(session->gateway().store().attributedText());
        return files == QList<ImageFile>{ImageFile(m_photo)};
    }
    [[nodiscard]] ImageFile file() const
    {
        return AttachmentManager::imageFiles(session->gateway().store().attributedText()).at(0);
    }
    QByteArray m_photo = jpeg(Qt::darkCyan);
};

TEST_F(NoteImagesTest, BytesAreStoredApartAndGivenUp)
{
    insert(m_photo);
    ASSERT_TRUE(record().images);
    EXPECT_EQ(record().images->size(), 1);
    EXPECT_LT(record().richContentPayload->size(), 2'000);
    EXPECT_LT(record().bodyRTF->size(), 2'000) << "nor are they in the second form";
    EXPECT_FALSE(record().images->first().bytes.isLoaded());
    EXPECT_FALSE(file().bytes()) << "neither the record nor the text holds them";
    EXPECT_EQ(app->imageBytes(file().hash()), m_photo);

    const auto payload = record().richContentPayload;
    type(u" and words"_s);
    test.clock.advance(2s);
    EXPECT_EQ(record().images->size(), 1);

    reopen();
    EXPECT_EQ(file(), ImageFile(m_photo));
    EXPECT_EQ(app->imageBytes(file().hash()), m_photo);
    std::optional<QByteArray> read;
    app->readImage(file().hash(), [&](const auto& bytes) { read = bytes; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return read.has_value(); }));
    EXPECT_EQ(*read, m_photo);
    type(u"!"_s);
    test.clock.advance(2s);
    EXPECT_EQ(app->imageBytes(file().hash()), m_photo) << "saving what was never read keeps it";
}

TEST_F(NoteImagesTest, WhatIsTakenOutComesBackWithUndoAndWithItsVersion)
{
    insert(m_photo);
    app->appendVersionSnapshot(a, u"Manual Save"_s);
    const TextRange all{0, session->gateway().store().length()};
    session->gateway().remove(all, EditKind::other, u"Cut"_s);
    test.clock.advance(2s);
    EXPECT_EQ(app->imageBytes(ImageFile(m_photo).hash()), m_photo);
    session->gateway().undo();
    ASSERT_TRUE(shows()) << "taken back";
    session->gateway().redo();
    test.clock.advance(2s);
    reopen();
    EXPECT_TRUE(
        AttachmentManager::imageFiles(session->gateway().store().attributedText()).isEmpty());
    const auto versions = versionsOf(*app, a);
    const auto kept = std::ranges::find(versions, u"Manual Save"_s, &NoteVersionSnapshot::label);
    ASSERT_NE(kept, versions.end());
    ASSERT_TRUE(app->restoreVersion(*kept));
    ASSERT_TRUE(shows()) << "from its version";
    EXPECT_EQ(app->imageBytes(file().hash()), m_photo);
}

TEST_F(NoteImagesTest, AnotherNoteTakesAnImageWithItsBytes)
{
    insert(m_photo);
    EditorView view;
    view.setImageSource({},
                        [this](const ImageFile& wanted) { return app->imageBytes(wanted.hash()); });
    view.setFormatting(TextFormatting::rich);
    view.setGateway(&session->gateway());
    view.selectAll();
    view.copy();
    view.setGateway(nullptr);
    const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
    const auto text = textMime::decode(*copied, TextFormatting::rich, {});
    ASSERT_TRUE(text);
    EXPECT_EQ(AttachmentManager::imageFiles(text->text).first().bytes(), m_photo);
    EXPECT_TRUE(copied->data(u"text/rtf"_s).contains("jpegblip"));
    app->selection().selectNote(b);
    session->setMode(EditorMode::richText);
    session->gateway().insert(text->text, u"Paste"_s);
    test.clock.advance(2s);
    EXPECT_EQ(app->note(b)->images->size(), 1);
    (void)app->moveNoteToTrash(a);
    EXPECT_TRUE(app->emptyTrashToMacOSUserTrash());
    EXPECT_EQ(app->imageBytes(ImageFile(m_photo).hash()), m_photo);
    const QStringList kept = QDir(test.folder.path() + u"/trash"_s).entryList({u"*.rtf"_s});
    ASSERT_EQ(kept.size(), 1);
    EXPECT_TRUE(readFile(test.folder.path() + u"/trash/"_s + kept.first())->contains("jpegblip"))
        << "what leaves has its images";
}

} // namespace
} // namespace orvane
