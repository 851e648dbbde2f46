// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/images/ImageTools.h"

#include "SelectedNoteFixture.h"
#include "appearance/AppearanceTokens.h"
#include "commands/ImageCommands.h"
#include "editor/images/ImageEditing.h"
#include "editor/images/ImagePopover.h"
#include "editor/pane/EditorTextHost.h"
#include "editor/view/EditorView.h"
#include "platform/AtomicFile.h"
#include "support/TestServices.h"
#include "text/attachments/AttachmentManager.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QDoubleSpinBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <gtest/gtest.h>

#include <algorithm>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
namespace Format = EditorFormatNotifications;
using WrapMode = OrvaneNoteImageWrapMode;

QByteArray pngOf(QSize size, const QColor& color = Qt::darkRed)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return *AttachmentManager::pngData(image);
}

/// So large that it is read beside the thread.
QByteArray photographOf(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x * 7 % 256, y * 13 % 256, x * y % 251));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "JPEG", 95);
    return bytes;
}

class ImageToolsTest : public ::testing::Test {
protected:
    ImageToolsTest()
    {
        pane.session().setMode(EditorMode::richText);
        pane.resize(900, 700);
        pane.show();
        QApplication::setActiveWindow(&pane);
        pane.focusText();
        QApplication::processEvents();
    }
    [[nodiscard]] EditorView& view() const { return pane.textView(); }
    [[nodiscard]] EditGateway& text() const { return view().gateway(); }
    [[nodiscard]] const TextStore& store() const { return view().store(); }
    /// "#" for each image.
    [[nodiscard]] std::string shown() const
    {
        return store().text().replace(QChar(objectCharacter), u'#').toStdString();
    }
    /// Text with the image where "#" stands.
    void load(const QString& marked, QSize size = {300, 200}, WrapMode mode = WrapMode::inLine,
              QPointF offset = {})
    {
        text().loadPlainText(QString(marked).remove(u'#'));
        at = marked.indexOf(u'#');
        text().setSelection(TextSelection::caret(at));
        ASSERT_TRUE(ImageEditing::insert(text(), {{pngOf(size), size, {}}}));
        ImageEditing::applyWrapMode(text(), at, mode);
        if (!offset.isNull())
            ImageEditing::setOffset(text(), at, offset);
        at = store().text().indexOf(QChar(objectCharacter));
        text().setSelection(TextSelection::caret(0));
        QApplication::processEvents();
    }
    [[nodiscard]] const OrvaneNoteImageAttachment& image() const
    {
        return *ImageEditing::imageAt(store(), store().text().indexOf(QChar(objectCharacter)));
    }
    [[nodiscard]] QRectF frame() const
    {
        const QRectF inLine = view().layout().objectRect(int(at));
        if (!image().isFloating())
            return view().toViewport(inLine);
        return view().toViewport(
            QRectF(inLine.topLeft() + image().floatingOffset, image().renderedSize));
    }
    [[nodiscard]] QWidget* page() const { return view().viewport(); }
    void click(QPointF point) { QTest::mouseClick(page(), Qt::LeftButton, {}, point.toPoint()); }
    void drag(QPointF from, QPointF distance)
    {
        QTest::mousePress(page(), Qt::LeftButton, {}, from.toPoint());
        for (const qreal share : {0.3, 0.6, 1.0})
            QTest::mouseMove(page(), (from + distance * share).toPoint());
        QTest::mouseRelease(page(), Qt::LeftButton, {}, (from + distance).toPoint());
        QApplication::processEvents();
    }
    [[nodiscard]] bool isSelected() const { return view().selection().range() == TextRange{at, 1}; }
    [[nodiscard]] ImagePopover* popover() const
    {
        // One that was closed goes with the next turn of the event loop.
        const auto all = pane.window()->findChildren<ImagePopover*>();
        const auto shown = std::ranges::find_if(all, &QWidget::isVisible);
        return shown == all.end() ? nullptr : *shown;
    }
    bool dropped(const QMimeData& data, qsizetype position)
    {
        const QPointF point = view().toViewport(view().layout().caretRect(int(position))).center();
        QDragEnterEvent enter(point.toPoint(), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(page(), &enter);
        QDragMoveEvent move(point.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(page(), &move);
        QDropEvent event(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(page(), &event);
        return event.isAccepted();
    }

    TestServices test;
    AppState app{test.services()};
    QUuid project = *app.projectSession().createProject(u"P"_s, {});
    QUuid note = *app.createNote(u"A\nfirst"_s, {});
    QUuid other = *app.createNote(u"B\nsecond"_s, {});
    Look look{signatureDarkTokens()};
    std::unique_ptr<EditorPaneView> shownPane = [this] {
        app.selection().selectNote(note);
        return paneOfSelection(app, look);
    }();
    EditorPaneView& pane = *shownPane;
    qsizetype at = 0;
};

TEST(ImageHandles, ADragMakesTheSizeThatItsHandleSays)
{
    struct Row {
        const char* name;
        ResizeHandle handle;
        QPointF distance;
        bool isLocked;
        QSizeF size; ///< of 300 × 200
    };
    const Row rows[] = {
        {"corner", ResizeHandle::bottomRight, {30, 0}, true, {330, 220}},
        {"corner by its longer way", ResizeHandle::bottomRight, {3, 100}, true, {450, 300}},
        {"corner, free", ResizeHandle::bottomRight, {30, -40}, false, {330, 160}},
        {"the other corner", ResizeHandle::topLeft, {-30, 0}, true, {330, 220}},
        {"top right, free", ResizeHandle::topRight, {30, 40}, false, {330, 160}},
        {"bottom left, free", ResizeHandle::bottomLeft, {30, 40}, false, {270, 240}},
        {"side", ResizeHandle::right, {-60, 500}, true, {240, 160}},
        {"left side, free", ResizeHandle::left, {-60, 500}, false, {360, 200}},
        {"top", ResizeHandle::top, {500, -100}, true, {450, 300}},
        {"bottom, free", ResizeHandle::bottom, {500, 100}, false, {300, 300}},
        {"least, free", ResizeHandle::bottomRight, {-900, -900}, false, {60, 48}},
        {"least, locked", ResizeHandle::bottomRight, {-900, -900}, true, {72, 48}},
        {"most, locked", ResizeHandle::right, {90'000, 0}, true, {4000, 4000 * 2.0 / 3}},
    };
    for (const Row& row : rows) {
        const QSizeF size = resized({300, 200}, row.handle, row.distance, row.isLocked);
        EXPECT_NEAR(size.width(), row.size.width(), 1e-6) << row.name;
        EXPECT_NEAR(size.height(), row.size.height(), 1e-6) << row.name;
    }
    const QRectF area(0, 0, 500, 300);
    EXPECT_EQ(clampedFloatingOrigin(area, {100, 50}, {-20, 280}), QPointF(0, 250));
    EXPECT_EQ(clampedFloatingOrigin(area, {900, 900}, {40, 40}), QPointF(0, 0));
}

TEST_F(ImageToolsTest, TheTextMakesRoomAsThePlacementSays)
{
    const QString words = u"word "_s.repeated(40);
    struct Row {
        const char* name;
        WrapMode mode;
        qreal leastHeight;
        qreal mostHeight;
    };
    load(words);
    text().loadPlainText(words);
    const qreal plain = view().layout().height();
    const Row rows[] = {
        {"in line", WrapMode::inLine, plain + 150, plain + 230},
        {"top and bottom", WrapMode::topAndBottom, plain + 190, plain + 300},
        {"behind", WrapMode::behindText, plain - 1, plain + 1},
        {"in front", WrapMode::inFrontOfText, plain - 1, plain + 1},
    };
    for (const Row& row : rows) {
        load(words.first(50) + u'#' + words.sliced(50), {300, 200}, row.mode);
        view().layout().ensureLaidOut(store().blockAt(0));
        EXPECT_GE(view().layout().height(), row.leastHeight) << row.name;
        EXPECT_LE(view().layout().height(), row.mostHeight) << row.name;
        const bool isAlone = row.mode == WrapMode::topAndBottom;
        EXPECT_EQ(store().text().count(u'\n'), isAlone ? 2 : 0) << row.name;
        EXPECT_FALSE(ImageEditing::applyWrapMode(text(), at, row.mode)) << "twice";
    }

    // No wider than the column, nor in page view higher than a page.
    load(u"#"_s, {440, 4'000});
    const QRectF whole = view().layout().objectRect(0);
    EXPECT_NEAR(whole.height(), 4'000, 1);
    EditorGeometry geometry = view().textGeometry();
    geometry.tallestObject = 500;
    view().setGeometry(geometry);
    const QRectF fitted = view().layout().objectRect(0);
    EXPECT_NEAR(fitted.height(), 500, 1);
    EXPECT_NEAR(fitted.width(), 55, 1);
    ImageEditing::setSize(text(), 0, 3'000, 100, false);
    EXPECT_NEAR(view().layout().objectRect(0).width(), view().layout().width(), 1);
    EXPECT_EQ(image().renderedSize, QSizeF(3'000, 100)) << "what is stored stays";
}

TEST_F(ImageToolsTest, AlignmentAndOffsetPlaceAnImageThatHasItsLine)
{
    load(u"#"_s, {300, 200}, WrapMode::topAndBottom);
    const qreal width = view().layout().width();
    struct Row {
        const char* name;
        TextAlignment alignment;
        qreal offset;
        qreal left;
    };
    const Row rows[] = {{"left", TextAlignment::left, 0, 0},
                        {"natural", TextAlignment::natural, 0, 0},
                        {"centre", TextAlignment::center, 0, (width - 300) / 2},
                        {"right", TextAlignment::right, 0, width - 300},
                        {"moved", TextAlignment::left, 50, 50},
                        {"moved out", TextAlignment::right, 50, width - 300},
                        {"moved back", TextAlignment::center, -9'000, 0}};
    for (const Row& row : rows) {
        text().performUndoableDocumentEdit(u"Align"_s, [&](DocumentEditor& editor) {
            editor.modifyParagraphStyles(
                {at, 1}, [&](ParagraphStyle& style) { style.alignment = row.alignment; });
        });
        ImageEditing::setOffset(text(), at, {row.offset, 0});
        EXPECT_NEAR(view().layout().objectRect(int(at)).left(), row.left, 0.1) << row.name;
        EXPECT_NEAR(view().layout().objectRect(int(at)).width(), 300, 0.1) << row.name;
    }
}

TEST_F(ImageToolsTest, AClickSelectsAndHandlesResizeInOneStep)
{
    load(u"Above\n#\nbelow"_s);
    click(frame().center());
    EXPECT_TRUE(isSelected());
    ASSERT_TRUE(popover());
    const QRectF before = frame();
    drag(before.bottomRight(), QPointF(60, 0) * view().zoom());
    EXPECT_NEAR(image().renderedSize.width(), 360, 2);
    EXPECT_NEAR(image().renderedSize.height(), 240, 2);
    EXPECT_TRUE(isSelected());
    EXPECT_EQ(text().undoName(), u"Resize Image");
    text().undo();
    EXPECT_EQ(image().renderedSize, QSizeF(300, 200)) << "all of it at once";

    // Escape takes back what is being dragged, and then lets go.
    view().setSelection(TextSelection::of(TextRange{at, 1}));
    QTest::mousePress(page(), Qt::LeftButton, {}, before.bottomRight().toPoint());
    QTest::mouseMove(page(), (before.bottomRight() + QPointF(90, 60)).toPoint());
    EXPECT_GT(image().renderedSize.width(), 320);
    QTest::keyClick(&view(), Qt::Key_Escape);
    EXPECT_EQ(image().renderedSize, QSizeF(300, 200));
    QTest::mouseRelease(page(), Qt::LeftButton, {}, before.bottomRight().toPoint());
    EXPECT_EQ(image().renderedSize, QSizeF(300, 200));
    view().setSelection(TextSelection::of(TextRange{at, 1}));
    QTest::keyClick(&view(), Qt::Key_Escape);
    EXPECT_EQ(view().selection(), TextSelection::caret(at + 1));
    EXPECT_FALSE(popover());

    view().setSelection(TextSelection::of(TextRange{at, 1}));
    QTest::keyClick(&view(), Qt::Key_Delete);
    EXPECT_EQ(shown(), "Above\n\nbelow");
    text().undo();
    EXPECT_EQ(shown(), "Above\n#\nbelow");
}

TEST_F(ImageToolsTest, ThePopoverTellsSizesAndChangesNoneByThat)
{
    for (const QSize size : {QSize(20, 10), QSize(300, 200), QSize(30, 500), QSize(300, 200)}) {
        load(u"Above\n#\nbelow"_s, size);
        click(frame().center());
        ASSERT_TRUE(popover());
        const auto fields = popover()->findChildren<QDoubleSpinBox*>();
        EXPECT_EQ(fields.at(0)->value(), size.width());
        EXPECT_EQ(fields.at(1)->value(), size.height());
        EXPECT_EQ(image().renderedSize, QSizeF(size)) << size.width();
    }
}

TEST_F(ImageToolsTest, AFloatingImageIsMovedAndStaysOnThePage)
{
    for (const WrapMode mode : {WrapMode::inFrontOfText, WrapMode::behindText}) {
        load(u"#"_s + u"words "_s.repeated(10) + u"\n"_s.repeated(30), {300, 200}, mode,
             {100, 300});
        const QRectF before = frame();
        drag(before.center(), QPointF(40, 30) * view().zoom());
        EXPECT_TRUE(isSelected());
        EXPECT_NEAR(image().floatingOffset.x(), 140, 2);
        EXPECT_NEAR(image().floatingOffset.y(), 330, 2);
        EXPECT_EQ(text().undoName(), u"Move Image");
        text().undo();
        EXPECT_EQ(image().floatingOffset, QPointF(100, 300));
        drag(before.center(), {-900, 0});
        EXPECT_NEAR(image().floatingOffset.x(), 0, 2) << "no further than the margin";
    }

    // Text that stands before an image is what is clicked.
    load(u"words "_s.repeated(400) + u"#"_s, {300, 200}, WrapMode::behindText, {0, -100});
    view().setSelection(TextSelection::caret(0));
    const QPointF onWord = view().toViewport(
        view().layout().caretRect(int(store().length() - 3)).center() + QPointF(-10, 0));
    click(onWord);
    EXPECT_FALSE(isSelected());
}

TEST_F(ImageToolsTest, WhatFloatsIsDrawnWhereItIsSeen)
{
    const auto at_ = [this](QPointF point) {
        return view().viewport()->grab().toImage().pixelColor(point.toPoint());
    };
    load(u"#"_s + u"\n"_s.repeated(200), {300, 200}, WrapMode::inFrontOfText, {50, 2'000});
    EXPECT_NE(at_({200, 200}), QColor(Qt::darkRed));
    view().scrollToRange({82, 0});
    QApplication::processEvents();
    ASSERT_TRUE(frame().intersects(QRectF(view().viewport()->rect())));
    const QPointF seen = (frame() & QRectF(view().viewport()->rect())).center();
    EXPECT_TRUE(QTest::qWaitFor([&] { return at_(seen) == QColor(Qt::darkRed); }))
        << "its anchor is far above";
    ImageEditing::applyWrapMode(text(), at, WrapMode::behindText);
    QApplication::processEvents();
    const QColor faint = at_(seen + QPointF(3, 9));
    EXPECT_NE(faint, QColor(Qt::darkRed));
    EXPECT_GT(faint.red(), 60);

    // Out of focus it is as faint as the text.
    load(u"#\nwords"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return at_(frame().center()) == QColor(Qt::darkRed); }));
    view().setFocusRange(TextRange{2, 5});
    EXPECT_LT(at_(frame().center()).red(), 100);
    view().setFocusRange(TextRange{0, 2});
    EXPECT_EQ(at_(frame().center()), QColor(Qt::darkRed));
}

TEST_F(ImageToolsTest, CommandsDoWhatTheySayToTheImageThatTheyName)
{
    load(u"Above\n#\nbelow"_s, {2'000, 1'000});
    const QUuid id = image().attachmentID;
    EXPECT_EQ(image().renderedSize, QSizeF(440, 220));
    const OrvaneNoteImageAttachment start = image();
    const auto post = [this](const auto& command, const auto& payload) {
        test.notifications.post(command, payload);
    };
    ImageSizeChoice choice{.imageAttachmentID = id, .noteID = note};
    choice.imageWidth = 100;
    post(Format::setImageSize, choice);
    EXPECT_EQ(image().renderedSize, QSizeF(100, 50));
    choice = {
        .imageAttachmentID = id, .imageWidth = 10, .imageHeight = 10, .imageAspectLocked = false};
    post(Format::setImageSize, choice);
    EXPECT_EQ(image().renderedSize, QSizeF(60, 48));
    EXPECT_FALSE(image().aspectRatioLocked);
    post(Format::resetSelectedImageSize, ImageTarget{id, {}});
    EXPECT_EQ(image().renderedSize, QSizeF(440, 220));
    post(Format::setImageDescription, ImageTextChoice{id, u" thirteen posts "_s, {}});
    EXPECT_EQ(image().description, u"thirteen posts");
    view().setSelection(TextSelection::of(TextRange{at, 1}));
    EXPECT_EQ(view().accessibleDescription(), u"Image: thirteen posts");
    view().setSelection(TextSelection::caret(0));
    EXPECT_EQ(view().accessibleDescription(), QString());
    const QByteArray another = pngOf({600, 900}, Qt::blue);
    post(Format::replaceSelectedImage, ImageReplacement{id, another, {}});
    EXPECT_EQ(image().file, ImageFile(another));
    EXPECT_EQ(image().originalSize, QSizeF(600, 900));
    EXPECT_EQ(image().renderedSize, QSizeF(440, 660));
    EXPECT_EQ(image().attachmentID, id);
    EXPECT_EQ(image().description, u"thirteen posts");
    post(Format::replaceSelectedImage, ImageReplacement{id, "no image", {}});
    EXPECT_EQ(image().file, ImageFile(another));
    post(Format::setImageWrapMode, ImageWrapModeChoice{id, u"Behind Text"_s, {}});
    EXPECT_EQ(image().wrapMode, WrapMode::behindText);
    post(Format::setImageWrapMode, ImageWrapModeChoice{id, u"Beside Text"_s, {}});
    EXPECT_EQ(image().wrapMode, WrapMode::behindText);
    post(Format::setImageOffset, ImageOffsetChoice{id, {30, 40}, {}});
    EXPECT_EQ(image().floatingOffset, QPointF(30, 40));
    const OrvaneNoteImageAttachment end = image();
    post(Format::removeSelectedImage, ImageTarget{QUuid::createUuid(), {}});
    post(Format::removeSelectedImage, ImageTarget{id, other});
    EXPECT_EQ(shown(), "Above\n#\nbelow") << "another image, and another note";
    view().setSelection(TextSelection::caret(0));
    post(Format::removeSelectedImage, ImageTarget{});
    EXPECT_EQ(shown(), "Above\n#\nbelow") << "none is selected";
    post(Format::removeSelectedImage, ImageTarget{id, {}});
    EXPECT_EQ(shown(), "Above\n\nbelow");
    text().undo();
    EXPECT_EQ(image(), end);
    while (text().canUndo() && store().text().contains(QChar(objectCharacter)) &&
           !(image() == start))
        text().undo();
    EXPECT_EQ(image(), start);

    pane.session().setMode(EditorMode::richText);
    text().setEditable(false);
    post(Format::removeSelectedImage, ImageTarget{id, {}});
    post(Format::setImageWrapMode, ImageWrapModeChoice{id, u"Behind Text"_s, {}});
    EXPECT_EQ(image(), start) << "nothing in a note that can't be changed";
    text().setEditable(true);
}

TEST_F(ImageToolsTest, ACaptionIsTheParagraphBelow)
{
    struct Row {
        const char* name;
        QString text;
        std::string withCaption;
    };
    const Row rows[] = {{"between paragraphs", u"Above\n#\nbelow"_s, "Above\n#\nPosts\nbelow"},
                        {"at the end", u"Above\n#"_s, "Above\n#\nPosts"},
                        {"alone", u"#"_s, "#\nPosts"},
                        {"within words", u"a # b\nbelow"_s, "a # b\nPosts\nbelow"}};
    for (const Row& row : rows) {
        load(row.text);
        const std::string before = shown();
        const TextFont base = view().layout().baseFont();
        ASSERT_TRUE(ImageEditing::setCaption(text(), at, u" Posts "_s, base)) << row.name;
        EXPECT_EQ(shown(), row.withCaption) << row.name;
        EXPECT_EQ(ImageEditing::caption(store(), at), u"Posts") << row.name;
        EXPECT_FALSE(ImageEditing::setCaption(text(), at, u"Posts"_s, base)) << row.name;
        const qsizetype words = store().text().indexOf(u"Posts");
        EXPECT_EQ(store().paragraphStyle(words)->alignment, TextAlignment::center) << row.name;
        EXPECT_NE(store().paragraphStyle(at)->alignment, TextAlignment::center) << row.name;
        const bool hasMore = shown().ends_with("below");
        EXPECT_EQ(store().paragraphStyle(store().length())->alignment == TextAlignment::center,
                  !hasMore)
            << row.name;
        ASSERT_TRUE(ImageEditing::setCaption(text(), at, u"Thirteen"_s, base)) << row.name;
        EXPECT_EQ(ImageEditing::caption(store(), at), u"Thirteen") << row.name;
        ASSERT_TRUE(ImageEditing::setCaption(text(), at, QString(), base)) << row.name;
        EXPECT_EQ(shown(), before) << row.name;
        for (int i = 0; i < 3; ++i)
            text().undo();
        EXPECT_EQ(shown(), before) << row.name;
        EXPECT_EQ(ImageEditing::caption(store(), at), QString()) << row.name;
    }

    // In the field of the popover.
    load(u"#\nbelow"_s);
    click(frame().center());
    ASSERT_TRUE(popover());
    auto* field = popover()->findChild<QLineEdit*>();
    field->setFocus();
    QTest::keyClicks(field, u"At dusk"_s);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(shown(), "#\nAt dusk\nbelow");
    EXPECT_TRUE(isSelected());
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(popover());
    EXPECT_TRUE(view().hasFocus());
}

TEST_F(ImageToolsTest, ImagesThatArePastedAndDroppedComeInWhereTheyWereWanted)
{
    const QByteArray small = pngOf({20, 10});
    const auto load_ = [this] {
        text().loadPlainText(u"one two"_s);
        view().setSelection(TextSelection::caret(3));
    };
    load_();
    auto* pasted = new QMimeData;
    pasted->setData(u"image/png"_s, small);
    QApplication::clipboard()->setMimeData(pasted);
    QTest::keyClick(&view(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown(), "one# two");
    EXPECT_EQ(image().file, ImageFile(small));
    EXPECT_EQ(text().undoName(), u"Insert Image");

    // What is copied as an image is one to other programs, too.
    view().setSelection(TextSelection::of(TextRange{3, 1}));
    view().copy();
    EXPECT_EQ(QApplication::clipboard()->mimeData()->data(u"image/png"_s), small);
    view().setSelection(TextSelection::caret(0));
    view().paste();
    EXPECT_EQ(shown(), "#one# two");

    // Text with a picture of itself is text.
    auto* sheet = new QMimeData;
    sheet->setText(u"4.90"_s);
    sheet->setData(u"image/png"_s, small);
    QApplication::clipboard()->setMimeData(sheet);
    load_();
    view().paste();
    EXPECT_EQ(shown(), "one4.90 two");

    // Files, one that is none among them, while somebody writes on.
    const QByteArray photograph = photographOf({900, 700});
    const QString one = test.folder.filePath(u"one.jpg"_s);
    const QString broken = test.folder.filePath(u"broken.png"_s);
    const QString three = test.folder.filePath(u"three.png"_s);
    ASSERT_TRUE(writeFileAtomically(one, photograph));
    ASSERT_TRUE(writeFileAtomically(broken, "no image"));
    ASSERT_TRUE(writeFileAtomically(three, small));
    QMimeData files;
    files.setUrls(
        {QUrl::fromLocalFile(one), QUrl::fromLocalFile(broken), QUrl::fromLocalFile(three)});
    load_();
    EXPECT_TRUE(dropped(files, 3));
    view().setSelection(TextSelection::caret(0));
    QTest::keyClicks(&view(), u"zero "_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return shown().contains('#'); }));
    EXPECT_EQ(shown(), "zero one#\n# two");
    EXPECT_EQ(view().selection(), TextSelection::caret(5)) << "who writes stays there";
    EXPECT_EQ(image().file, ImageFile(photograph)) << "its own bytes";
    ASSERT_EQ(test.questions.asked.size(), 1);
    EXPECT_TRUE(test.questions.asked.last().text.contains(u"broken.png"));

    // Another note is opened meanwhile.
    load_();
    EXPECT_TRUE(dropped(files, 3));
    app.selection().selectNote(other);
    pane.session().setMode(EditorMode::richText);
    ASSERT_TRUE(QTest::qWaitFor([this] { return test.questions.asked.size() == 3; }));
    EXPECT_EQ(shown(), "B\nsecond");
}

TEST_F(ImageToolsTest, ANoteThatHoldsNoImagesIsAskedAbout)
{
    const QByteArray small = pngOf({20, 10});
    const auto paste = [&] {
        auto* data = new QMimeData;
        data->setData(u"image/png"_s, small);
        QApplication::clipboard()->setMimeData(data);
        view().setSelection(TextSelection::caret(store().length()));
        view().paste();
    };
    pane.session().setMode(EditorMode::plainText);
    paste();
    EXPECT_EQ(shown(), "A\nfirst") << "no is the last answer";
    ASSERT_EQ(test.questions.asked.size(), 1);
    EXPECT_EQ(test.questions.asked.last().buttons.size(), 2);
    test.questions.answers = {{0}};
    paste();
    EXPECT_EQ(pane.session().mode(), EditorMode::richText);
    EXPECT_EQ(shown(), "A\nfirst#");

    app.selection().selectNote(other);
    pane.session().setMode(EditorMode::markdown);
    test.questions.answers = {{0}};
    paste();
    const QString line = store().text();
    ASSERT_TRUE(line.startsWith(u"B\nsecond![Image](assets/images/"_s)) << line.toStdString();
    const QString address = line.sliced(line.indexOf(u'(') + 1).chopped(1);
    const QString data = ProjectLibraryController::projectDataDirectoryPath(
        app.projectSession().projectAccessPath());
    EXPECT_EQ(readFile(data + u'/' + address), small);
    // The folder can't be written.
    ASSERT_TRUE(QDir(data + u"/assets"_s).removeRecursively());
    ASSERT_TRUE(writeFileAtomically(data + u"/assets"_s, "in the way"));
    test.questions.answers = {{0}, {0}};
    paste();
    EXPECT_EQ(store().text(), line) << "nothing is linked to that isn't there";
    EXPECT_EQ(test.questions.asked.last().buttons.size(), 1) << "and that is said";
}

} // namespace
} // namespace orvane
