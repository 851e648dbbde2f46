// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ViewFixture.h"
#include "commands/KeyTable.h"
#include "support/KeyWalk.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QBuffer>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class EditorViewTest : public ViewFixture {
protected:
    void paste(const QString& text)
    {
        QGuiApplication::clipboard()->setText(text);
        press(u"Ctrl+V"_s);
    }
    void compose(const QString& preedit, const QString& commit, int from = 0, int length = 0)
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit, from, length);
        QApplication::sendEvent(&view, &event);
    }
    [[nodiscard]] QString longText(int paragraphs) const
    {
        QString text;
        for (int i = 0; i < paragraphs; ++i)
            text +=
                u"Paragraph %1 has words enough to be broken into two lines, at the least.\n"_s.arg(
                    i);
        return text;
    }
};

TEST_F(EditorViewTest, Keys)
{
    struct Case {
        const char* name;
        QString before;
        QStringList keys;
        QString after;
    };
    const Case cases[] = {
        {"typing", u"ab|cd"_s, {u"x"_s}, u"abx|cd"_s},
        {"typing over a selection", u"a[bc]d"_s, {u"x"_s}, u"ax|d"_s},
        {"Return", u"ab|cd"_s, {u"Return"_s}, u"ab\n|cd"_s},
        {"Enter", u"ab|cd"_s, {u"Enter"_s}, u"ab\n|cd"_s},
        {"Shift+Return breaks the line", u"ab|cd"_s, {u"Shift+Return"_s}, u"ab\u2028|cd"_s},
        {"Tab", u"ab|"_s, {u"Tab"_s}, u"ab\t|"_s},
        {"Backspace", u"ab|cd"_s, {u"Backspace"_s}, u"a|cd"_s},
        {"Backspace joins paragraphs", u"ab\n|cd"_s, {u"Backspace"_s}, u"ab|cd"_s},
        {"Backspace at the start", u"|ab"_s, {u"Backspace"_s}, u"|ab"_s},
        {"Backspace takes a whole emoji", u"a\U0001F600|"_s, {u"Backspace"_s}, u"a|"_s},
        {"Delete", u"ab|cd"_s, {u"Delete"_s}, u"ab|d"_s},
        {"Delete at the end", u"ab|"_s, {u"Delete"_s}, u"ab|"_s},
        {"a selection goes at once", u"a[b\nc]d"_s, {u"Delete"_s}, u"a|d"_s},
        {"Ctrl+Backspace", u"one two|"_s, {u"Ctrl+Backspace"_s}, u"one |"_s},
        {"Ctrl+Delete", u"|one two"_s, {u"Ctrl+Delete"_s}, u"|two"_s},
        {"Left and Right", u"ab|"_s, {u"Left"_s, u"Left"_s, u"Right"_s}, u"a|b"_s},
        {"Left closes a selection at its start", u"a[bc]d"_s, {u"Left"_s}, u"a|bcd"_s},
        {"Right closes it at its end", u"a[bc]d"_s, {u"Right"_s}, u"abc|d"_s},
        {"Ctrl+Right", u"|one two"_s, {u"Ctrl+Right"_s}, u"one |two"_s},
        {"Ctrl+Left", u"one two|"_s, {u"Ctrl+Left"_s}, u"one |two"_s},
        {"Home and End", u"one\ntw|o"_s, {u"Home"_s, u"Shift+End"_s}, u"one\n[two]"_s},
        {"Up keeps to its column", u"abcd\nx\nabcd|"_s, {u"Up"_s, u"Up"_s}, u"abcd|\nx\nabcd"_s},
        {"Up on the first line goes to the start", u"ab|c"_s, {u"Up"_s}, u"|abc"_s},
        {"Down on the last line goes to the end", u"a|bc"_s, {u"Down"_s}, u"abc|"_s},
        {"Shift+Down", u"a|b\nab"_s, {u"Shift+Down"_s}, u"a[b\na]b"_s},
        {"Ctrl+Down goes by paragraphs", u"a|b\ncd"_s, {u"Ctrl+Down"_s}, u"ab\n|cd"_s},
        {"Ctrl+Up", u"ab\nc|d"_s, {u"Ctrl+Up"_s, u"Ctrl+Up"_s}, u"|ab\ncd"_s},
        {"Ctrl+Home", u"ab\nc|d"_s, {u"Ctrl+Home"_s}, u"|ab\ncd"_s},
        {"Ctrl+Shift+End", u"a|b\ncd"_s, {u"Ctrl+Shift+End"_s}, u"a[b\ncd]"_s},
        {"Ctrl+A", u"a|b\ncd"_s, {u"Ctrl+A"_s}, u"[ab\ncd]"_s},
        {"right-to-left: Left goes on", u"|שלום"_s, {u"Left"_s}, u"ש|לום"_s},
        {"undo and redo", u"a|"_s, {u"b"_s, u"Ctrl+Z"_s, u"Ctrl+Shift+Z"_s}, u"ab|"_s},
        {"undo brings the selection back", u"a[bc]d"_s, {u"x"_s, u"Ctrl+Z"_s}, u"a[bc]d"_s},
        {"cut and paste", u"a[bc]d"_s, {u"Ctrl+X"_s, u"End"_s, u"Ctrl+V"_s}, u"adbc|"_s},
        {"copy and paste, the other keys",
         u"a[bc]d"_s,
         {u"Ctrl+Ins"_s, u"End"_s, u"Shift+Ins"_s},
         u"abcdbc|"_s},
        {"an unknown shortcut types nothing", u"ab|"_s, {u"Ctrl+G"_s, u"Alt+X"_s}, u"ab|"_s},
    };
    for (const Case& one : cases) {
        set(one.before);
        for (const QString& key : one.keys)
            press(key);
        EXPECT_EQ(marked().toStdString(), one.after.toStdString()) << one.name;
    }
}

TEST_F(EditorViewTest, EndOfWrappedLineStaysOnIt)
{
    // One word without a blank, so the line is cut within it.
    set(u"|"_s + QString(200, u'm'));
    press(u"End"_s);
    const QRectF end = view.caretRect();
    EXPECT_GT(end.x(), view.viewport()->width() / 2);
    EXPECT_LT(end.y(), 40);
    press(u"Right"_s);
    EXPECT_GT(view.caretRect().y(), end.y()); // the start of the next line and on
    press(u"Up"_s);
    press(u"Home"_s);
    EXPECT_EQ(view.selection().position, 0);
}

TEST_F(EditorViewTest, ReadOnlyTakesNoKeysButSelects)
{
    set(u"ab|cd"_s);
    view.setEditable(false);
    for (const char* key : {"x", "Return", "Backspace", "Delete", "Ctrl+X", "Ctrl+Z"})
        press(QString::fromLatin1(key));
    paste(u"p"_s);
    press(u"Shift+Right"_s);
    EXPECT_EQ(marked(), u"ab[c]d"_s);
    press(u"Ctrl+C"_s);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"c"_s);
}

TEST_F(EditorViewTest, MouseSelectsCharactersWordsAndParagraphs)
{
    set(u"one two three\nfour five"_s);
    QWidget* viewport = view.viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, {}, pointOf(5) - QPoint(3, 0));
    EXPECT_EQ(marked(), u"one t|wo three\nfour five"_s);
    QTest::mouseClick(viewport, Qt::LeftButton, Qt::ShiftModifier, pointOf(16));
    EXPECT_EQ(view.selection().anchor, 5);
    EXPECT_NEAR(double(view.selection().position), 16, 1);

    QTest::mousePress(viewport, Qt::LeftButton, {}, pointOf(1));
    QTest::mouseMove(viewport, pointOf(9));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, pointOf(9));
    EXPECT_FALSE(view.selection().isEmpty());
    QTest::qWait(QApplication::doubleClickInterval() + 10);

    QTest::mouseDClick(viewport, Qt::LeftButton, {}, pointOf(5));
    EXPECT_EQ(marked(), u"one [two] three\nfour five"_s);
    QTest::mouseClick(viewport, Qt::LeftButton, {}, pointOf(5));
    EXPECT_EQ(marked(), u"[one two three\n]four five"_s);

    QTest::qWait(QApplication::doubleClickInterval() + 10);
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, pointOf(5));
    QTest::mousePress(viewport, Qt::LeftButton, {}, pointOf(5));
    QTest::mouseMove(viewport, pointOf(15));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, pointOf(15));
    EXPECT_EQ(marked(), u"[one two three\nfour five]"_s);
}

TEST_F(EditorViewTest, DraggingBeyondTheEdgeScrollsAndSelects)
{
    set(longText(200));
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, pointOf(3));
    QMouseEvent move(QEvent::MouseMove, QPointF(100, 460), view.mapToGlobal(QPointF(100, 460)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(view.viewport(), &move);
    QTest::qWait(300);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, {100, 460});
    EXPECT_GT(view.verticalScrollBar()->value(), 50);
    EXPECT_GT(view.selection().range().length, 1000);
    const int value = view.verticalScrollBar()->value();
    QTest::qWait(60);
    EXPECT_EQ(view.verticalScrollBar()->value(), value);
}

TEST_F(EditorViewTest, ClipboardKeepsLinesAndBlanks)
{
    set(u"|"_s);
    paste(u"a\r\nb\u00a0c\rd"_s);
    EXPECT_EQ(marked(), u"a\nb\u00a0c\nd|"_s);
    press(u"Ctrl+A"_s);
    press(u"Ctrl+C"_s);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"a\nb\u00a0c\nd"_s);
}

TEST_F(EditorViewTest, InputMethods)
{
    struct Case {
        const char* name;
        QString before;
        std::function<void()> work;
        QString after;
    };
    const Case cases[] = {
        {"composing changes nothing", u"ab|cd"_s, [&] { compose(u"にほ"_s, {}); }, u"ab|cd"_s},
        {"committing types", u"ab|cd"_s,
         [&] {
             compose(u"に"_s, {});
             compose({}, u"日本"_s);
         },
         u"ab日本|cd"_s},
        {"giving up leaves nothing", u"ab|cd"_s,
         [&] {
             compose(u"に"_s, {});
             compose({}, {});
         },
         u"ab|cd"_s},
        {"it replaces what is selected", u"a[bc]d"_s,
         [&] {
             compose(u"x"_s, {});
             compose({}, u"y"_s);
         },
         u"ay|d"_s},
        {"it may take back what stands before", u"teh|"_s, [&] { compose({}, u"the"_s, -3, 3); },
         u"the|"_s},
        {"a moved caret ends it", u"ab|cd"_s,
         [&] {
             compose(u"に"_s, {});
             view.setSelection(TextSelection::caret(0));
             press(u"x"_s);
         },
         u"x|abcd"_s},
    };
    for (const Case& one : cases) {
        set(one.before);
        const QString text = view.plainText();
        QSignalSpy changes(&view, &EditorView::textChanged);
        one.work();
        EXPECT_EQ(marked().toStdString(), one.after.toStdString()) << one.name;
        EXPECT_TRUE(view.plainText() != text || changes.isEmpty()) << one.name;
        compose({}, {});
    }
}

TEST_F(EditorViewTest, ComposedTextIsShownAndTheCaretStandsInIt)
{
    set(u"ab|cd"_s);
    const QImage before = picture();
    const qreal x = view.caretRect().x();
    compose(u"composed"_s, {});
    EXPECT_GT(view.caretRect().x(), x + 30);
    EXPECT_NE(picture(), before);
    EXPECT_EQ(view.inputMethodQuery(Qt::ImSurroundingText).toString(), u"abcd"_s);
    EXPECT_EQ(view.inputMethodQuery(Qt::ImCursorPosition).toInt(), 2);
    compose({}, {});
    EXPECT_EQ(picture(), before);
}

TEST_F(EditorViewTest, CaretStaysInSight)
{
    set(longText(3000));
    struct Case {
        const char* name;
        QStringList keys;
    };
    const Case cases[] = {
        {"far down", {u"Ctrl+End"_s}},
        {"up by pages", {u"PgUp"_s, u"PgUp"_s, u"PgUp"_s}},
        {"far up", {u"Ctrl+Home"_s}},
        {"down by lines", QStringList(60, u"Down"_s)},
        {"selecting far", {u"Ctrl+Shift+End"_s}},
        {"typing there", {u"x"_s}},
        {"and back", {u"Ctrl+Z"_s}},
    };
    for (const Case& one : cases) {
        for (const QString& key : one.keys)
            press(key);
        const QRectF caret = view.caretRect();
        EXPECT_GE(caret.top(), 0) << one.name;
        EXPECT_LE(caret.bottom(), view.viewport()->height()) << one.name;
    }
}

TEST_F(EditorViewTest, WhatIsSeenStaysWhileHeightsBecomeKnown)
{
    set(longText(3000));
    view.setSelection(TextSelection::caret(view.store().length() / 2));
    view.ensureCaretVisible();
    qreal y = view.caretRect().top();
    for (int i = 0; i < 40; ++i) {
        QWheelEvent wheel(QPointF(100, 100), view.mapToGlobal(QPointF(100, 100)), QPoint(0, 37),
                          QPoint(0, 37), Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.viewport(), &wheel);
        const qreal now = view.caretRect().top();
        ASSERT_NEAR(now, y + 37, 1.01) << "turn " << i;
        y = now;
    }
}

TEST_F(EditorViewTest, ZoomKeepsLinesAndPlace)
{
    EditorGeometry geometry;
    geometry.pageWidth = 400;
    view.setGeometry(geometry);
    set(longText(300));
    view.scrollToRange({view.store().length() / 2, 0});
    const auto linesAt = [&] {
        QList<qsizetype> starts;
        for (qsizetype p = view.store().length() / 2; starts.size() < 6;) {
            const LaidOutLine line = view.layout().lineAt(int(p));
            starts.append(line.range.location);
            p = line.range.end() + 1;
        }
        return starts;
    };
    const auto before = linesAt();
    for (const qreal zoom : {0.5, 0.75, 1.1, 1.25, 2.0, 3.0}) {
        const QPointF top = view.toPage({0, 0});
        view.setZoom(zoom);
        EXPECT_EQ(linesAt(), before) << zoom;
        EXPECT_NEAR(view.toPage({0, 0}).y(), top.y(), 1) << zoom;
    }
}

TEST_F(EditorViewTest, DrawsCaretAndSelectionWhereTheyAre)
{
    EditorLook look = view.look();
    look.background = Qt::black;
    look.caret = QColor(0, 255, 0);
    look.text.text = Qt::white;
    look.text.selection = QColor(0, 0, 200);
    view.setLook(look);
    set(u"one |two three"_s);
    const auto has = [](const QImage& image, QRectF area, QRgb color) {
        const QRect rect = area.toAlignedRect() & image.rect();
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            for (int x = rect.left(); x <= rect.right(); ++x) {
                if (image.pixel(x, y) == color)
                    return true;
            }
        }
        return false;
    };
    const QRgb green = qRgb(0, 255, 0);
    const QRgb blue = qRgb(0, 0, 200);
    const QRectF caret = view.caretRect().adjusted(-1, 0, 1, 0);
    EXPECT_TRUE(has(picture(), caret, green));
    press(u"Ctrl+Shift+Right"_s);
    const QImage selected = picture();
    EXPECT_FALSE(has(selected, caret, green));
    EXPECT_TRUE(has(selected, QRectF(pointOf(5) - QPoint(3, 8), QSizeF(6, 16)), blue));
    EXPECT_FALSE(has(selected, QRectF(pointOf(10) - QPoint(3, 8), QSizeF(6, 16)), blue));
    press(u"Home"_s);
    EXPECT_FALSE(has(picture(), QRectF(view.viewport()->rect()), blue));
    view.clearFocus();
    EXPECT_FALSE(has(picture(), QRectF(view.viewport()->rect()), green));
}

TEST_F(EditorViewTest, PartialRepaintsEqualWholeOnes)
{
    set(longText(60));
    view.setSelection(TextSelection::caret(200));
    const auto onScreen = [&] {
        QApplication::processEvents();
        return view.screen()->grabWindow(view.winId()).toImage();
    };
    for (const qreal zoom : {1.25, 1.0, 1.1}) {
        view.setZoom(zoom);
        QImage before = onScreen();
        for (const char* key :
             {"x",
              "Return",
              "y",
              "Shift+Down",
              "Delete",
              "Ctrl+Z",
              "Backspace",
              "Ctrl+Shift+Right",
              "Left",
              "Down",
              "z",
              "Ctrl+Shift+End",
              "Ctrl+Home",
              "PgDown",
              "Shift+PgDown",
              "q",
              "Ctrl+Z",
              "Up",
              "End",
              "words to break a line anew, and more",
              "Up",
              "so that the paragraph grows by a line, which moves what stands below",
              "Ctrl+Z",
              "Ctrl+Backspace",
              "Return",
              "Return",
              "Backspace",
              "PgDown",
              "Return"}) {
            if (QByteArray(key).contains(' '))
                type(QString::fromLatin1(key));
            else
                press(QString::fromLatin1(key));
            const QImage shown = onScreen();
            EXPECT_NE(shown, before) << key << " at " << zoom;
            view.viewport()->update();
            EXPECT_EQ(shown, onScreen()) << key << " at " << zoom;
            before = shown;
        }
    }
}

TEST_F(EditorViewTest, DrawsPicturesInTheLine)
{
    QImage red(40, 20, QImage::Format_RGB32);
    red.fill(QColor(250, 0, 0));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    red.save(&buffer, "PNG");
    AttributedString text(u"ab"_s);
    text.append(AttributedString::object(
        OrvaneNoteImageAttachment::fromImageData(bytes, QSizeF(120, 90), QUuid::createUuid())));
    view.gateway().load(text, {});
    const QRectF place = view.toViewport(view.layout().rectsOf({2, 1}).first());
    EXPECT_NEAR(place.width(), 120, 1);
    EXPECT_GE(place.height(), 90);
    const QImage shown = picture();
    const QRectF drawn = view.toViewport(view.layout().objectRect(2));
    EXPECT_EQ(drawn.size(), QSizeF(120, 90));
    EXPECT_EQ(shown.pixel(int(drawn.left()) + 60, int(drawn.top()) + 3), qRgb(250, 0, 0));
    EXPECT_EQ(shown.pixel(int(drawn.left()) + 60, int(drawn.bottom()) - 3), qRgb(250, 0, 0));
    EXPECT_NE(shown.pixel(int(drawn.right()) + 10, int(drawn.top()) + 40), qRgb(250, 0, 0));
    // Beside it the caret is as high as letters, and stands where they do.
    const QRectF caret = view.toViewport(view.layout().caretRect(2));
    EXPECT_LT(caret.height(), 30);
    EXPECT_NEAR(caret.left(), drawn.left(), 1);
    EXPECT_LT(caret.top(), drawn.bottom());
    EXPECT_GT(caret.bottom(), drawn.bottom());
}

TEST_F(EditorViewTest, OnlyADropThatBroughtEverythingIsAMove)
{
    const auto html = [](const QString& text) {
        auto data = std::make_unique<QMimeData>();
        data->setHtml(text);
        return data;
    };
    const auto words = [] {
        auto data = std::make_unique<QMimeData>();
        data->setText(u"words"_s);
        return data;
    };
    const auto file = [] {
        auto data = std::make_unique<QMimeData>();
        data->setUrls({QUrl(u"file:///tmp/manuscript.odt"_s)});
        return data;
    };
    const auto picture = [] {
        auto data = std::make_unique<QMimeData>();
        data->setImageData(QImage(2, 2, QImage::Format_RGB32));
        return data;
    };
    constexpr Qt::DropActions both = Qt::CopyAction | Qt::MoveAction;
    const auto refuse = [this] {
        view.gateway().setEditGuard([] { return false; });
    };
    struct Row {
        const char* name;
        std::function<void()> prepare;
        std::unique_ptr<QMimeData> data;
        Qt::DropActions offered;
        Qt::DropAction done;
    };
    const Row rows[] = {
        {"words", {}, words(), both, Qt::MoveAction},
        {"words with formatting", {}, html(u"<b>words</b>"_s), both, Qt::MoveAction},
        {"words round a picture", {}, html(u"a<img src='x.png'>b"_s), both, Qt::CopyAction},
        {"these, to move alone",
         {},
         html(u"a<img src='x.png'>b"_s),
         Qt::MoveAction,
         Qt::IgnoreAction},
        {"a file", {}, file(), both, Qt::CopyAction},
        {"a picture", {}, picture(), both, Qt::IgnoreAction},
        {"a text that may only be read", [this] { view.setEditable(false); }, words(), both,
         Qt::IgnoreAction},
        {"an edit that is refused", refuse, words(), both, Qt::IgnoreAction},
        {"a filter that refuses",
         [this] {
             view.gateway().setChangeFilter([](TextRange, const QString&) { return false; });
         },
         words(), both, Qt::IgnoreAction},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        set(u"a[bc]d"_s);
        if (row.prepare)
            row.prepare();
        const QPoint point = pointOf(4);
        QDragEnterEvent enters(point, row.offered, row.data.get(), Qt::LeftButton,
                               Qt::ShiftModifier);
        QApplication::sendEvent(view.viewport(), &enters);
        QDropEvent event(point, row.offered, row.data.get(), Qt::LeftButton, Qt::ShiftModifier);
        event.setAccepted(false);
        if (enters.isAccepted())
            QApplication::sendEvent(view.viewport(), &event);
        EXPECT_EQ(event.isAccepted() ? event.dropAction() : Qt::IgnoreAction, row.done);
        EXPECT_TRUE(!enters.isAccepted() || event.dropAction() == row.done);
        EXPECT_EQ(view.plainText() == u"abcd"_s, row.done == Qt::IgnoreAction);
        EXPECT_TRUE(row.done != Qt::IgnoreAction || marked() == u"a[bc]d"_s);
        view.gateway().setEditGuard({});
        view.gateway().setChangeFilter({});
        view.setEditable(true);
    }
}

TEST_F(EditorViewTest, TheTableOfKeysKnowsEachThatATextTakes)
{
    // What belongs to the pane around the text.
    const auto isOfThePane = [](const KeyRow& row) {
        const auto key = fixedKeyOf(row);
        return key == FixedKey::findAndReplace || key == FixedKey::findNext ||
               key == FixedKey::findPrevious || key == FixedKey::superscript ||
               key == FixedKey::subscript || key == FixedKey::pastePlain;
    };
    int taken = 0;
    forEachKey([&](const ShortcutData& pressed) {
        set(u"one two\nthree| four"_s);
        const KeyRow* row = keyRowFor(pressed, KeyPlace::Text);
        const bool isKnown = row && !isOfThePane(*row);
        taken += isKnown ? 1 : 0;
        EXPECT_EQ(takesKey(view, pressed), isKnown) << qPrintable(pressed.desktopText());
    });
    EXPECT_GT(taken, 50);
}

TEST_F(EditorViewTest, KeepsUndoOfEachNoteWhileAnotherIsShown)
{
    TextStore firstStore;
    EditGateway first(firstStore);
    TextStore secondStore;
    EditGateway second(secondStore);
    view.setGateway(&first);
    type(u"first"_s);
    view.setGateway(&second);
    type(u"second"_s);
    EXPECT_EQ(view.plainText(), u"second"_s);
    view.setGateway(&first);
    EXPECT_EQ(view.plainText(), u"first"_s);
    press(u"Ctrl+Z"_s);
    EXPECT_EQ(view.plainText(), u""_s);
    EXPECT_EQ(secondStore.text(), u"second"_s);
    view.setGateway(nullptr);
}

} // namespace
} // namespace orvane
