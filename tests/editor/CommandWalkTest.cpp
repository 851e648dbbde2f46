// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// All that a person can do to a text, in any order: every step is taken back and made again, and
// what is stored is what is seen.
#include "SelectedNoteFixture.h"
#include "appearance/AppearanceTokens.h"
#include "commands/EditorFormatNotifications.h"
#include "commands/ImageCommands.h"
#include "commands/TableCommands.h"
#include "editor/images/ImageEditing.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/StoredText.h"
#include "editor/view/EditorView.h"
#include "support/TestServices.h"
#include "text/attachments/AttachmentManager.h"
#include "text/store/Graphemes.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QTest>
#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
namespace App = AppCommandEvents;
namespace Format = EditorFormatNotifications;

class CommandWalkTest : public ::testing::Test {
protected:
    CommandWalkTest()
    {
        pane.resize(900, 600);
        pane.show();
        QApplication::setActiveWindow(&pane);
        pane.focusText();
        QApplication::processEvents();
        fillSteps();
    }

    struct Step {
        QString name;
        std::function<void()> take;
    };
    template <typename Payload>
    void posts(const Notification<Payload>& command, const Payload& payload = {})
    {
        steps.push_back({QString::fromLatin1(command.name), [this, command, payload] {
                             test.notifications.post(command, payload);
                         }});
    }
    void presses(const QString& keys)
    {
        const QKeyCombination key = QKeySequence(keys)[0];
        steps.push_back({keys, [this, key] {
                             QTest::keyClick(&view(), key.key(), key.keyboardModifiers());
                         }});
    }
    void types(const QString& text)
    {
        steps.push_back({u"type "_s + text, [this, text] {
                             QTest::keyClicks(&view(), text);
                         }});
    }
    void fillSteps();
    void fillImageSteps();

    [[nodiscard]] EditorView& view() const { return pane.textView(); }
    [[nodiscard]] EditGateway& gateway() const { return view().gateway(); }
    [[nodiscard]] AttributedString text() const { return view().store().attributedText(); }
    [[nodiscard]] int below(qsizetype limit) { return int(random() % unsigned(limit)); }
    void copySomething();
    void selectSomewhere();
    void takeStep();
    void checkStored();

    TestServices test;
    AppState app{test.services()};
    QUuid project = *app.projectSession().createProject(u"P"_s, {});
    QUuid note = *app.createNote(u"It's \"late\", (said) Mara.\n1. one\n2. two\n- dash"_s, {});
    Look look{signatureDarkTokens()};
    std::unique_ptr<EditorPaneView> shownPane = paneOfSelection(app, look);
    EditorPaneView& pane = *shownPane;
    std::vector<Step> steps;
    std::mt19937 random{19'450'508};
    int changed = 0;
    bool isWrittenInMode = false;
};

void CommandWalkTest::fillImageSteps()
{
    QImage picture(90, 60, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    const QByteArray png = *AttachmentManager::pngData(picture);
    steps.push_back({u"insert image"_s, [this, png] {
                         (void)ImageEditing::insert(gateway(), {{png, {90, 60}, {}}});
                     }});
    steps.push_back({u"select an image"_s, [this] {
                         const QString all = view().store().text();
                         const qsizetype at =
                             all.indexOf(QChar(objectCharacter), below(all.size() + 1));
                         if (at >= 0)
                             view().setSelection(TextSelection::of(TextRange{at, 1}));
                     }});
    for (const QString& word :
         {u"In Line with Text"_s, u"Top and Bottom"_s, u"Behind Text"_s, u"In Front of Text"_s})
        posts(Format::setImageWrapMode, ImageWrapModeChoice{{}, word, {}});
    posts(Format::setImageSize, ImageSizeChoice{.imageWidth = 120});
    posts(Format::resetSelectedImageSize);
    posts(Format::setImageOffset, ImageOffsetChoice{{}, {12, 34}, {}});
    posts(Format::replaceSelectedImage, ImageReplacement{{}, png, {}});
    posts(Format::removeSelectedImage);
    posts(Format::setImageDescription, ImageTextChoice{{}, u"posts"_s, {}});
    posts(Format::setImageCaption, ImageTextChoice{{}, u"At dusk"_s, {}});
    posts(Format::setImageCaption, ImageTextChoice{});
}

void CommandWalkTest::fillSteps()
{
    for (const QString& keys :
         {u"Return"_s, u"Return"_s, u"Backspace"_s, u"Backspace"_s, u"Del"_s, u"Tab"_s,
          u"Shift+Tab"_s, u"Shift+Return"_s, u"Ctrl+Backspace"_s, u"Ctrl+V"_s, u"Ctrl+X"_s})
        presses(keys);
    for (const QString& piece :
         {u"word "_s, u"("_s, u")"_s, u"\""_s, u"'"_s, u"["_s, u"a"_s, u"1. "_s, u"- "_s})
        types(piece);
    for (const QString& piece : {u"\u05d0\u05d1 "_s, u"\U0001F600"_s, u"\U0001F44D\U0001F3FD"_s,
                                 u"e\u0301"_s, u"\U0001F469\u200D\U0001F467"_s, u"\u0301"_s})
        steps.push_back({piece, [this, piece] {
                             gateway().type(piece);
                         }});
    for (const auto& command : {Format::bold,          Format::italic,
                                Format::underline,     Format::strikethrough,
                                Format::superscript,   Format::subscript,
                                Format::alignLeft,     Format::alignCenter,
                                Format::alignRight,    Format::alignJustified,
                                Format::bulletList,    Format::numberedList,
                                Format::paragraphBody, Format::removeCustomBullet,
                                App::applyHeading1,    App::applyHeading4,
                                App::makeUppercase,    App::makeLowercase,
                                App::capitalize,       App::insertPageBreak})
        posts(command);
    posts(Format::setListStyle, ListStyleChoice{u"upperRoman"_s, {}});
    posts(Format::setCustomBullet, CustomBulletChoice{u"\u2726"_s, RgbaColor{1, 0, 0, 1}, {}});
    posts(Format::setCustomBullet, CustomBulletChoice{u"\U0001F33F"_s, {}, {}});
    posts(Format::setFont, FontChoice{{}, 21.0, {}});
    posts(Format::foregroundNSColor, ColorChoice{RgbaColor{0.2, 0.4, 0.6, 1}, {}});
    posts(Format::highlightNSColor, ColorChoice{RgbaColor{0.9, 0.9, 0.1, 0.3}, {}});
    posts(Format::highlightNSColor);
    posts(Format::setParagraphBackgroundColor, ColorChoice{RgbaColor{0, 0.5, 0, 0.2}, {}});
    for (const auto& command :
         {TableCommands::addRowAbove, TableCommands::addRowBelow, TableCommands::addColumnLeft,
          TableCommands::addColumnRight, TableCommands::removeRow, TableCommands::removeColumn,
          TableCommands::moveRowUp, TableCommands::moveRowDown, TableCommands::moveColumnLeft,
          TableCommands::moveColumnRight, TableCommands::sortAscending, TableCommands::selectRow,
          TableCommands::selectColumn, TableCommands::selectTable, TableCommands::sortDescending,
          TableCommands::clearCellFill, TableCommands::deleteTable,
          TableCommands::convertTextToTable, TableCommands::convertTableToText})
        posts(command);
    posts(TableCommands::insertOfSize, TableSize{2, 3, {}});
    fillImageSteps();
    ParagraphMetrics metrics;
    metrics.lineSpacing = 4;
    metrics.headIndent = 18;
    metrics.keepWithNext = true;
    posts(Format::setParagraphMetrics, metrics);
}

/// What is pasted next: plain text, or prose, a list or a table as browsers copy them.
void CommandWalkTest::copySomething()
{
    static const QString pieces[] = {
        {},
        u"<h2>Low water</h2><p>She <b>counts</b> the <i>posts</i> (again).</p><p>It's late.</p>"_s,
        u"<p>Things:</p><ul><li>salt</li><li>rope<ul><li>tarred</li></ul></li></ul><p>end</p>"_s,
        u"<p>Tides</p><table><tr><td>high</td><td>6:12</td></tr><tr><td>low</td><td>12:40</td>"
        "</tr></table><p>measured by the wall</p>"_s,
        u"<table><tr><td rowspan=2>a</td><td>b</td></tr><tr><td>c</td></tr></table>"_s,
    };
    auto* copied = new QMimeData;
    copied->setText(u"Two lines of \"text\"\nthat came from elsewhere"_s);
    if (const QString& html = pieces[below(below(4) + 2)]; !html.isEmpty())
        copied->setHtml(html);
    QApplication::clipboard()->setMimeData(copied);
}

void CommandWalkTest::selectSomewhere()
{
    const QString plain = view().plainText();
    const auto place = [&] {
        return graphemeStart(plain, below(plain.size() + 1));
    };
    const qsizetype anchor = place();
    const qsizetype other =
        below(20) == 0 ? place() : graphemeEnd(plain, std::min(anchor + below(25), plain.size()));
    view().setSelection({anchor, below(2) == 0 ? anchor : other});
}

/// A step that changes the text is undone to what was before and redone to what came of it.
void CommandWalkTest::takeStep()
{
    // Editing a rich note without its formatting is agreed to.
    test.questions.answers = {{0}};
    gateway().breakUndoCoalescing();
    const AttributedString before = text();
    const TextSelection selected = view().selection();
    const Step& step = steps.at(std::size_t(below(qsizetype(steps.size()))));
    SCOPED_TRACE(qUtf8Printable(step.name +
                                u" at %1-%2 of "_s.arg(selected.anchor).arg(selected.position) +
                                before.text().toHtmlEscaped()));
    step.take();
    const AttributedString after = text();
    ASSERT_LE(view().selection().range().end(), after.length());
    ASSERT_TRUE(isGraphemeBoundary(after.text(), view().selection().anchor));
    ASSERT_TRUE(isGraphemeBoundary(after.text(), view().selection().position));
    ASSERT_TRUE(after.text().isValidUtf16());
    if (after == before)
        return;
    ++changed;
    isWrittenInMode = true;
    int taken = 0;
    // What is typed piece by piece may be several steps.
    while (text() != before && gateway().canUndo() && taken < 6) {
        gateway().undo();
        ++taken;
    }
    ASSERT_EQ(text(), before);
    for (int i = 0; i < taken; ++i)
        ASSERT_TRUE(gateway().redo());
    ASSERT_EQ(text(), after);
}

void CommandWalkTest::checkStored()
{
    test.clock.advance(2s);
    const NoteRecord& stored = *app.note(note);
    ASSERT_EQ(stored.body.readOrNothing(), plainForm(text().text()));
    if (pane.session().mode() != EditorMode::richText || !isWrittenInMode || text().isEmpty())
        return;
    ASSERT_TRUE(stored.richContentPayload);
    const auto archived =
        AttachmentManager::decodePayload(stored.richContentPayload->readOrNothing());
    ASSERT_TRUE(archived);
    ASSERT_EQ(*archived, text());
}

TEST_F(CommandWalkTest, EachStepIsTakenBackAndStored)
{
    const int steps = qEnvironmentVariableIsSet("ORVANE_LONG") ? 30'000 : 1'200;
    for (int i = 0; i < steps; ++i) {
        if (i % 400 == 0) {
            pane.session().setMode(i % 1200 == 800 ? EditorMode::plainText : EditorMode::richText);
            isWrittenInMode = false;
        }
        if (below(2) == 0)
            selectSomewhere();
        if (below(20) == 0)
            copySomething();
        takeStep();
        ASSERT_FALSE(HasFatalFailure()) << "step " << i;
        if (i % 50 == 0)
            checkStored();
        if (text().length() > 3'000) {
            view().setSelection({0, text().length()});
            QTest::keyClick(&view(), Qt::Key_Backspace);
        }
        for (int tries = 0; text().length() < 300 && tries < 9; ++tries) {
            copySomething();
            QTest::keyClick(&view(), Qt::Key_V, Qt::ControlModifier);
        }
    }
    EXPECT_GT(changed, steps / 3);
}

} // namespace
} // namespace orvane
