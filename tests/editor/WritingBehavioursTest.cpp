// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/WritingBehaviours.h"

#include "ViewFixture.h"
#include "commands/AppCommandEvents.h"
#include "support/TestServices.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QBuffer>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// A view with what a writer feels in it, worked by keys and mouse.
class WritingBehavioursTest : public ViewFixture {
protected:
    void show(EditorMode mode)
    {
        view.setFormatting(mode == EditorMode::richText ? TextFormatting::rich
                                                        : TextFormatting::plain);
        behaviours.showText(note, mode);
    }
    void commit(const QString& text, int from = 0, int length = 0)
    {
        QInputMethodEvent event;
        event.setCommitString(text, from, length);
        QApplication::sendEvent(&view, &event);
    }
    QStringList menuTitles()
    {
        QMenu menu;
        view.fillContextMenu(menu, view.caretRect().center());
        QStringList titles;
        for (const QAction* action : menu.actions())
            titles.append(action->isSeparator() ? u"-"_s : action->text());
        return titles;
    }
    static QString paragraphs(int count)
    {
        QString text;
        for (int i = 0; i < count; ++i)
            text +=
                u"Paragraph %1 begins here. It has words enough to be broken into two lines, at "
                "the least! Or so one hopes.\n"_s.arg(i);
        return text;
    }
    QImage onScreen()
    {
        QApplication::processEvents();
        return view.screen()->grabWindow(view.winId()).toImage();
    }

    TestServices test;
    const QUuid note = QUuid::createUuid();
    WritingBehaviours behaviours{view, test.services()};
};

TEST_F(WritingBehavioursTest, BracketsAndQuotes)
{
    struct Case {
        const char* name;
        QString before;
        QString typed;
        QString after;
    };
    const Case cases[] = {
        {"a bracket is closed", u"a |"_s, u"("_s, u"a (|)"_s},
        {"each kind", u"|b"_s, u"{"_s, u"{|}b"_s},
        {"the selection is put between", u"x [abc] y"_s, u"("_s, u"x ([abc]) y"_s},
        {"and keeps its direction", u"]abc["_s, u"{"_s, u"{]abc[}"_s},
        {"quotes, too", u"[a\nb]"_s, u"\""_s, u"\"[a\nb]\""_s},
        {"a closing one replaces it", u"x[abc]"_s, u")"_s, u"x)|"_s},
        {"what is there is passed", u"(a|)"_s, u")"_s, u"(a)|"_s},
        {"only the same", u"(a|)"_s, u"]"_s, u"(a]|)"_s},
        {"a quote opens", u"say |"_s, u"\""_s, u"say \"|\""_s},
        {"is passed", u"\"a|\""_s, u"\""_s, u"\"a\"|"_s},
        {"and closes", u"\"a b |"_s, u"\""_s, u"\"a b \"|"_s},
        {"counted in its paragraph", u"it's\n|"_s, u"'"_s, u"it's\n'|'"_s},
        {"one that is open there", u"it's |"_s, u"'"_s, u"it's '|"_s},
        {"a mark of inches", u"a 5|"_s, u"\""_s, u"a 5\"|"_s},
        {"of feet", u"a 6|"_s, u"'"_s, u"a 6'|"_s},
        {"which isn't counted", u"a 5\" and |"_s, u"\""_s, u"a 5\" and \"|\""_s},
        {"a digit at a quotation's end", u"\"in 1984|"_s, u"\""_s, u"\"in 1984\"|"_s},
        {"behind which one opens", u"\"in 1984\" |"_s, u"\""_s, u"\"in 1984\" \"|\""_s},
        {"an even number opens again", u"'a' |"_s, u"'"_s, u"'a' '|'"_s},
        {"an apostrophe stays alone", u"don|"_s, u"'"_s, u"don'|"_s},
        {"a letter is a letter", u"(a|)"_s, u"b"_s, u"(ab|)"_s},
    };
    for (const EditorMode mode : {EditorMode::richText, EditorMode::plainText}) {
        show(mode);
        for (const Case& one : cases) {
            set(one.before);
            const QString before = marked();
            const QString text = view.plainText();
            press(one.typed);
            EXPECT_EQ(marked().toStdString(), one.after.toStdString()) << one.name;
            if (view.plainText() == text)
                continue;
            press(u"Ctrl+Z"_s);
            EXPECT_EQ(marked().toStdString(), before.toStdString()) << one.name << ", undone";
            press(u"Ctrl+Shift+Z"_s);
            EXPECT_EQ(marked().toStdString(), one.after.toStdString()) << one.name << ", redone";
        }
    }
    set(u"teh|"_s);
    commit(u"("_s, -3, 3);
    EXPECT_EQ(marked(), u"(|"_s) << "what an input method replaces is no selection";
    view.gateway().setChangeFilter([](TextRange, const QString&) { return false; });
    press(u"("_s);
    EXPECT_EQ(marked(), u"(|"_s) << "refused";
    view.gateway().setChangeFilter(nullptr);

    autoBracketingSetting.write(test.defaults, false);
    press(u"["_s);
    EXPECT_EQ(marked(), u"([|"_s) << "turned off";
    autoBracketingSetting.write(test.defaults, true);
    show(EditorMode::markdown);
    press(u"["_s);
    EXPECT_EQ(marked(), u"([[|"_s) << "never in Markdown";
}

TEST_F(WritingBehavioursTest, PastedLinesLookLikeTheParagraphAtTheCaret)
{
    show(EditorMode::richText);
    ParagraphStyle here;
    here.headIndent = here.firstLineHeadIndent = 30;
    here.alignment = TextAlignment::center;
    ParagraphStyle behind;
    behind.spacingBefore = 12;
    const auto load = [&] {
        AttributedString text(u"ab\nbehind"_s);
        text.setParagraphStyle({0, 2}, here);
        text.setParagraphStyle({4, 1}, behind);
        view.gateway().load(text, {});
        view.setSelection(TextSelection::caret(1));
    };
    const auto check = [&](const char* how) {
        EXPECT_EQ(view.plainText(), u"aone\ntwo\nthreeb\nbehind"_s) << how;
        for (const QString& word : {u"one"_s, u"two"_s, u"three"_s})
            EXPECT_EQ(*view.store().paragraphStyle(view.plainText().indexOf(word)), here)
                << how << word.toStdString();
        EXPECT_EQ(*view.store().paragraphStyle(view.store().length()), behind) << how;
    };
    for (const bool isSmart : {false, true}) {
        for (const char* keys : {"Ctrl+V", "Ctrl+Shift+V"}) {
            smartPasteSetting.write(test.defaults, isSmart);
            QGuiApplication::clipboard()->setText(u"one\ntwo\nthree"_s);
            load();
            if (keys == QByteArray("Ctrl+V"))
                press(u"Ctrl+V"_s);
            else
                view.pastePlain();
            check(keys);
            press(u"Ctrl+Z"_s);
            EXPECT_EQ(marked(), u"a|b\nbehind"_s);
        }
    }
}

TEST_F(WritingBehavioursTest, AddressesBecomeLinks)
{
    struct Case {
        const char* name;
        QString typed;
        QString shown; ///< of the link, empty for none
        QString address;
    };
    const Case cases[] = {
        {"with a scheme", u"see https://example.org/a_b?c=d#e "_s,
         u"https://example.org/a_b?c=d#e"_s, u"https://example.org/a_b?c=d#e"_s},
        {"without", u"www.example.org "_s, u"www.example.org"_s, u"https://www.example.org"_s},
        {"of mail", u"to a.b@example.org, "_s, u"a.b@example.org"_s, u"mailto:a.b@example.org"_s},
        {"in brackets", u"(http://example.org/x). "_s, u"http://example.org/x"_s,
         u"http://example.org/x"_s},
        {"brackets of its own", u"https://example.org/x_(y) "_s, u"https://example.org/x_(y)"_s,
         u"https://example.org/x_(y)"_s},
        {"a file", u"notes.txt "_s, {}, {}},
        {"an abbreviation", u"e.g. this "_s, {}, {}},
        {"what would be run", u"file:///etc/passwd "_s, {}, {}},
        {"a scheme alone", u"https:// "_s, {}, {}},
        {"a sign alone", u"a @ b "_s, {}, {}},
    };
    const auto links = [&] {
        QStringList found;
        view.store().forEachCharacterRun({0, view.store().length()},
                                         [&](TextRange run, const SharedCharacterStyle& style) {
                                             if (!style->link.isEmpty())
                                                 found << view.store().text(run) << style->link;
                                         });
        return found;
    };
    autoBracketingSetting.write(test.defaults, false);
    for (const Case& one : cases) {
        const QStringList wanted =
            one.shown.isEmpty() ? QStringList() : QStringList{one.shown, one.address};
        for (const char* end : {"", "Return", "Tab"}) {
            show(EditorMode::richText);
            view.gateway().load({}, {});
            type(*end == 0 ? one.typed : one.typed.trimmed());
            if (*end != 0)
                press(QString::fromLatin1(end));
            EXPECT_EQ(links(), wanted) << one.name << " typed " << end;
            type(u"x"_s);
            EXPECT_EQ(links(), wanted) << one.name << ", what follows";
        }
        view.gateway().load({}, {});
        QGuiApplication::clipboard()->setText(one.typed.trimmed() + u"\nnext"_s);
        press(u"Ctrl+V"_s);
        EXPECT_EQ(links(), wanted) << one.name << " pasted";
        show(EditorMode::plainText);
        view.gateway().load({}, {});
        type(one.typed);
        EXPECT_TRUE(links().isEmpty()) << one.name << " without formatting";
    }
    show(EditorMode::richText);
    view.gateway().load({}, {});
    type(u"www.example.org "_s);
    press(u"Ctrl+Z"_s);
    press(u"Ctrl+Z"_s);
    EXPECT_TRUE(links().isEmpty()) << "taken back";
    EXPECT_EQ(view.plainText(), u"www.example.org"_s);
}

TEST_F(WritingBehavioursTest, PastedTextFitsThePlace)
{
    const QString web =
        u"<p style=\"font-family:Courier;font-size:40px;color:red;background:yellow\">"
        "a <b>bold</b> <i>italic</i> <a href=\"https://example.org\">link</a> "
        "<u>line</u></p>"_s;
    CharacterStyle here;
    here.font = TextFont{u"Charis SIL"_s, 19, 400, false};
    here.foreground = RgbaColor{0.2, 0.4, 0.6, 1};
    CharacterStyle foreign;
    foreign.font = TextFont{u"Courier"_s, 40, 700, false};
    foreign.background = RgbaColor{1, 1, 0, 1};
    const QByteArray rtf = *OrvaneWorkspaceRTF::data(AttributedString(u"from rtf"_s, foreign), {});
    const auto pasteInto = [&](const std::function<void(QMimeData&)>& fill) {
        view.gateway().load(AttributedString(u"ab"_s, here), here);
        view.setSelection(TextSelection::caret(1));
        auto* data = new QMimeData;
        fill(*data);
        QGuiApplication::clipboard()->setMimeData(data);
        press(u"Ctrl+V"_s);
        return view.store().attributedText();
    };
    const auto styleOf = [&](const AttributedString& text, const QString& word) {
        return *text.characterStyle(text.text().indexOf(word));
    };
    show(EditorMode::richText);

    const AttributedString clean = pasteInto([&](QMimeData& data) { data.setHtml(web); });
    EXPECT_EQ(clean.text(), u"aa bold italic link lineb"_s);
    CharacterStyle wanted = here;
    EXPECT_EQ(styleOf(clean, u"a bold"_s), wanted);
    wanted.font->weight = 700;
    EXPECT_EQ(styleOf(clean, u"bold"_s), wanted);
    wanted = here;
    wanted.font->italic = true;
    EXPECT_EQ(styleOf(clean, u"italic"_s), wanted);
    EXPECT_EQ(styleOf(clean, u"link"_s).link, u"https://example.org"_s);
    EXPECT_EQ(styleOf(clean, u"link"_s).foreground, here.foreground);
    EXPECT_EQ(styleOf(clean, u"line"_s).underline, TextLine::single);
    press(u"Ctrl+Z"_s);
    EXPECT_EQ(marked(), u"a|b"_s) << "one step";

    const AttributedString fromRtf = pasteInto([&](QMimeData& data) {
        data.setHtml(web);
        data.setData(u"text/rtf"_s, rtf);
        data.setText(u"from text"_s);
    });
    EXPECT_EQ(fromRtf.text(), u"afrom rtfb"_s) << "the richest form";
    EXPECT_EQ(styleOf(fromRtf, u"from"_s).font->family, here.font->family);
    EXPECT_EQ(pasteInto([&](QMimeData& data) {
                  data.setData(u"text/rtf"_s, "damaged");
                  data.setText(u"from text"_s);
              }),
              AttributedString(u"afrom textb"_s, here))
        << "what can't be read falls to the next form";

    view.setSelection({0, view.store().length()});
    view.gateway().performUndoableDocumentEdit(u"Format"_s, [&](DocumentEditor& editor) {
        editor.setCharacterStyle({0, 4}, foreign);
    });
    const AttributedString own = view.store().attributedText();
    press(u"Ctrl+C"_s);
    press(u"Ctrl+V"_s);
    EXPECT_EQ(view.store().attributedText(), own) << "our own keeps its looks";

    smartPasteSetting.write(test.defaults, false);
    const AttributedString raw = pasteInto([&](QMimeData& data) { data.setHtml(web); });
    EXPECT_NE(styleOf(raw, u"a bold"_s).font->family, here.font->family);
    smartPasteSetting.write(test.defaults, true);
    show(EditorMode::plainText);
    const AttributedString plain = pasteInto([&](QMimeData& data) { data.setHtml(web); });
    EXPECT_EQ(plain.text(), u"ab"_s) << "no characters, nothing to paste";
}

TEST_F(WritingBehavioursTest, FocusIsOnWhatIsWritten)
{
    struct Case {
        const char* name;
        QString marked;
        QString paragraph;
        QString sentence;
    };
    const Case cases[] = {
        {"inside", u"One. Tw|o is it? Three.\nFour."_s, u"One. Two is it? Three.\n"_s,
         u"Two is it? "_s},
        {"at its start", u"One. |Two. Three."_s, u"One. Two. Three."_s, u"Two. "_s},
        {"at the very end", u"One.\nTwo. Three.|"_s, u"Two. Three."_s, u"Three."_s},
        {"at the end of a paragraph", u"One. Two.|\nThree."_s, u"One. Two.\n"_s, u"Two.\n"_s},
        {"in a quotation", u"She said: “I |see. It ends.” Then."_s,
         u"She said: “I see. It ends.” Then."_s, u"She said: “I see. "_s},
        {"no end of a sentence", u"It cost 3.5 crowns, e.g. he|re. Yes."_s,
         u"It cost 3.5 crowns, e.g. here. Yes."_s, u"It cost 3.5 crowns, e.g. here. "_s},
        {"titles and initials", u"So. Dr. J. Br|own of St. Ives saw Mr. Kemp. He fled."_s,
         u"So. Dr. J. Brown of St. Ives saw Mr. Kemp. He fled."_s,
         u"Dr. J. Brown of St. Ives saw Mr. Kemp. "_s},
        {"not before them", u"S|o. Dr. J. Brown."_s, u"So. Dr. J. Brown."_s, u"So. "_s},
        {"an empty paragraph", u"One.\n|\nTwo."_s, u"\n"_s, u"\n"_s},
        {"an empty text", u"|"_s, u""_s, u""_s},
        {"a selection", u"One. T[wo.\nThree. F]our. Five.\n"_s,
         u"One. Two.\nThree. Four. Five.\n"_s, u"Two.\nThree. Four. "_s},
    };
    focusModeSetting.write(test.defaults, true);
    for (const Case& one : cases) {
        set(one.marked);
        setFocusParagraph(test.services());
        ASSERT_TRUE(view.focusRange()) << one.name;
        EXPECT_EQ(view.store().text(*view.focusRange()), one.paragraph) << one.name;
        setFocusSentence(test.services());
        EXPECT_EQ(view.store().text(*view.focusRange()), one.sentence) << one.name;
    }
    set(u"One. Two|"_s);
    type(u". Three"_s);
    EXPECT_EQ(view.store().text(*view.focusRange()), u"Three"_s) << "a sentence ends while typing";
    press(u"Ctrl+Z"_s);
    press(u"Ctrl+Home"_s);
    EXPECT_EQ(view.store().text(*view.focusRange()), u"One. "_s);

    int posted = 0;
    const auto observation = test.notifications.observe(AppCommandEvents::focusModeChanged,
                                                        [&](const NoPayload&) { ++posted; });
    toggleFocusMode(test.services());
    EXPECT_FALSE(view.focusRange());
    toggleFocusMode(test.services());
    EXPECT_TRUE(view.focusRange());
    EXPECT_EQ(posted, 2);
    EditGateway& first = view.gateway();
    TextStore otherStore;
    EditGateway other(otherStore);
    other.loadPlainText(u"Another. Text."_s);
    view.setGateway(&other);
    EXPECT_EQ(view.focusRange(), (TextRange{0, 9}));
    view.setGateway(&first);
}

TEST_F(WritingBehavioursTest, SentencesAreSoughtNearTheCaretOnly)
{
    const QString one = u"Word and word and word. "_s;
    QString text;
    while (text.size() < 3'000'000)
        text += one;
    view.setPlainText(text);
    const qsizetype middle = one.size() * (text.size() / one.size() / 2);
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 20; ++i) {
        const auto range = focusedTextRange(view.store(), TextSelection::caret(middle + i),
                                            FocusGranularity::sentence);
        EXPECT_EQ(range, (TextRange{middle, one.size()}));
    }
    EXPECT_LT(timer.elapsed(), 500) << "reading all of it takes that for each";
}

TEST_F(WritingBehavioursTest, DimmingIsDrawnOnlyAndWhereItChanges)
{
    set(paragraphs(8));
    const AttributedString before = view.store().attributedText();
    const QSignalSpy changes(&view, &EditorView::textChanged);
    EditorLook look = view.look();
    look.text.dimmed = QColor(250, 0, 0);
    view.setLook(look);
    const auto reds = [&] {
        const QImage image = onScreen();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor c = image.pixelColor(x, y);
                count += c.red() > 200 && c.green() < 60;
            }
        }
        return count;
    };
    EXPECT_EQ(reds(), 0);
    focusModeSetting.write(test.defaults, true);
    const int dimmed = reds();
    EXPECT_GT(dimmed, 500);
    setFocusSentence(test.services());
    EXPECT_GT(reds(), dimmed);
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_EQ(view.store().attributedText(), before);
    EXPECT_FALSE(view.gateway().canUndo());

    for (const auto focus : {setFocusParagraph, setFocusSentence}) {
        focus(test.services());
        view.setSelection(TextSelection::caret(30));
        for (const char* key :
             {"x",    ".",          " ",          "Y",          "Return",     "Down",
              "Down", "Ctrl+Right", "Ctrl+Right", "Ctrl+Right", "Ctrl+Right", "Shift+Down",
              "Left", "Delete",     "Backspace",  "Ctrl+End",   "Ctrl+Home",  "Return",
              "Up",   "Ctrl+Z",     "Ctrl+Z",     "Ctrl+A",     "Right",      "PgUp"}) {
            press(QString::fromLatin1(key));
            const QImage shown = onScreen();
            view.viewport()->update();
            EXPECT_EQ(shown, onScreen()) << key;
        }
    }
}

/// How far down the view, as a share of its height, the caret's line begins.
double shareOf(const EditorView& view)
{
    return view.caretRect().top() / view.viewport()->height();
}

TEST_F(WritingBehavioursTest, TheTypewriterKeepsItsLine)
{
    set(paragraphs(60));
    press(u"Ctrl+Home"_s);
    toggleTypewriterMode(test.services());
    EXPECT_EQ(view.verticalScrollBar()->value(), 0) << "nothing stands above the first line";
    const double near = 1.5 / view.viewport()->height();
    for (const qreal zoom : {1.0, 1.25, 1.1}) {
        view.setZoom(zoom);
        view.setSelection(TextSelection::caret(view.store().length() / 2));
        for (const char* key :
             {"Down", "Up", "Return", "x", "Return", "Backspace", "Backspace", "End", "Down",
              "Home", "PgDown", "PgUp", "Ctrl+End", "y", "Return", "Ctrl+Z"}) {
            SCOPED_TRACE(key);
            press(QString::fromLatin1(key));
            EXPECT_NEAR(shareOf(view), 0.45, near * zoom);
        }
        press(u"Down"_s);
        const QPointF origin = view.textOrigin();
        type(u"some words"_s);
        EXPECT_EQ(view.textOrigin(), origin) << "within a line nothing moves";
    }
}

TEST_F(WritingBehavioursTest, TheTypewriterLeavesThePointerItsPlace)
{
    set(paragraphs(60));
    typewriterModeSetting.write(test.defaults, true);
    view.setSelection(TextSelection::caret(view.store().length() / 2));
    const int before = view.verticalScrollBar()->value();
    const QPoint point(200, 60);
    QTest::qWait(QApplication::doubleClickInterval() + 50); // a click of its own
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, point);
    QApplication::processEvents();
    EXPECT_EQ(view.verticalScrollBar()->value(), before) << "not while the button is down";
    EXPECT_EQ(view.positionAt(point), view.selection().position);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, point);
    QApplication::processEvents();
    EXPECT_NEAR(shareOf(view), 0.45, 0.01);

    const int there = view.verticalScrollBar()->value();
    press(u"Shift+Down"_s);
    press(u"Shift+Down"_s);
    EXPECT_EQ(view.verticalScrollBar()->value(), there) << "a selection is no caret";
    view.clearFocus();
    view.setSelection(TextSelection::caret(10));
    EXPECT_EQ(view.verticalScrollBar()->value(), there) << "nobody writes";
    view.setFocus();
    typewriterModeSetting.write(test.defaults, false);
    press(u"Ctrl+Home"_s);
    press(u"Down"_s);
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
    press(u"Ctrl+End"_s);
    EXPECT_GT(shareOf(view), 0.8) << "as always, when it is off";
}

TEST_F(WritingBehavioursTest, TheContextMenuBeginsWithTheSelection)
{
    show(EditorMode::richText);
    set(u"one |two"_s);
    EXPECT_EQ(menuTitles().mid(0, 3), QStringList({u"Focus Mode"_s, u"-"_s, u"Undo"_s}));
    set(u"one [two]"_s);
    EXPECT_EQ(menuTitles().mid(0, 5),
              QStringList({u"Save Selection to New Note"_s, u"Link Selection to Note…"_s,
                           u"Focus Mode"_s, u"-"_s, u"Undo"_s}));
    QMenu menu;
    view.fillContextMenu(menu, {});
    const auto focus = menu.actions().at(2)->menu()->actions();
    EXPECT_EQ(focus.at(0)->text(), u"Enable Focus Mode"_s);
    EXPECT_TRUE(focus.at(2)->isChecked());
    focus.at(0)->trigger();
    focus.at(3)->trigger();
    EXPECT_EQ(view.focusRange(), (TextRange{0, 7}));
    EXPECT_EQ(focusModeGranularitySetting.read(test.defaults), u"sentence"_s);

    SelectionForNewNote saved;
    const auto observation =
        test.notifications.observe(AppCommandEvents::saveSelectionToNewNote,
                                   [&](const SelectionForNewNote& posted) { saved = posted; });
    menu.actions().at(0)->trigger();
    EXPECT_EQ(saved.text, u"two"_s);
    EXPECT_EQ(OrvaneWorkspaceRTF::read(saved.rtf)->text.text(), u"two"_s);
    QByteArray png;
    QBuffer buffer(&png);
    QImage(4, 4, QImage::Format_RGB32).save(&buffer, "PNG");
    AttributedString pictured(u"see "_s);
    pictured.append(AttributedString::object(
        OrvaneNoteImageAttachment::fromImageData(png, QSizeF(40, 30), QUuid::createUuid())));
    view.gateway().load(pictured, {});
    view.setSelection({0, 5});
    menu.actions().at(0)->trigger();
    EXPECT_EQ(saved.text, u"see  "_s) << "an image is a blank to a reader of plain text";
    EXPECT_TRUE(OrvaneWorkspaceRTF::read(saved.rtf)->text.characterStyle(4)->imageAttachment());

    show(EditorMode::plainText);
    menu.actions().at(0)->trigger();
    EXPECT_EQ(saved.rtf, QByteArray()) << "plain text has no attributes to save";
    behaviours.showText(std::nullopt, EditorMode::plainText);
    EXPECT_EQ(menuTitles().front(), u"Undo"_s);
}

} // namespace
} // namespace orvane
