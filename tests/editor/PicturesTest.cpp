// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// How the editor looks, held against pictures that somebody has looked at.
#include "SelectedNoteFixture.h"
#include "appearance/AppearanceTokens.h"
#include "appearance/WornLook.h"
#include "appearance/themes/BundledThemes.h"
#include "commands/AppCommandEvents.h"
#include "editor/view/EditorSettings.h"
#include "editor/view/EditorView.h"
#include "support/KeptPictures.h"
#include "support/TestServices.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QProcess>
#include <QStyleFactory>
#include <QTest>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// Headings, a list of two levels, every mark, links, a table, and a page break.
constexpr char minutes[] =
    R"({\rtf1\ansi\deff0{\fonttbl{\f0 Georgia;}}{\colortbl;\red180\green30\blue30;\red255\green230\blue120;}
\f0\fs48\b Minutes\b0\par\fs32
The {\b petition} was {\i read} on the {\ul ninth}, {\strike tabled}, {\cf1 noted} and {\highlight2 laid by}.\par
\qc Centred {\super 1} and {\sub 2}\par\pard
{\field{\*\fldinst{HYPERLINK "https://example.org/"}}{\fldrslt The county's page}} says no more.\par
\trowd\trgaph80\clbrdrt\brdrs\clbrdrl\brdrs\clbrdrb\brdrs\clbrdrr\brdrs\cellx3000\clbrdrt\brdrs\clbrdrl\brdrs\clbrdrb\brdrs\clbrdrr\brdrs\cellx6000
\intbl Hour\cell Height\cell\row
\trowd\trgaph80\clbrdrt\brdrs\clbrdrl\brdrs\clbrdrb\brdrs\clbrdrr\brdrs\cellx3000\clbrdrt\brdrs\clbrdrl\brdrs\clbrdrb\brdrs\clbrdrr\brdrs\cellx6000
\intbl Six\cell 3.4 m\cell\row
\pard\qj A justified paragraph, long enough to break into several lines of which the first ones are spread over the whole width of the column.\par})";

const char* alone = "ORVANE_PICTURES_ALONE";

class EditorPictures : public ::testing::Test {
protected:
    EditorPictures()
    {
        QApplication::setCursorFlashTime(0);
        pane->resize(900, 700);
        pane->show();
        QApplication::setActiveWindow(pane.get());
        pane->session().setMode(EditorMode::richText);
        pane->session().setTitle(u"Minutes, 1912"_s);
        pane->focusText();
        auto* copied = new QMimeData;
        copied->setData(u"text/rtf"_s, minutes);
        QGuiApplication::clipboard()->setMimeData(copied);
        QTest::keyClick(&pane->textView(), Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(&pane->textView(), Qt::Key_Home, Qt::ControlModifier);
    }
    ~EditorPictures() override
    {
        pane.reset();
        QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
        QApplication::setCursorFlashTime(1000);
    }
    void SetUp() override
    {
        if (!qEnvironmentVariableIsSet(alone))
            GTEST_SKIP() << "looks the same in a process of its own";
    }
    /// In both looks, once everything that comes later is there.
    void keep(const QString& name)
    {
        for (const bool isLight : {false, true}) {
            look.setTokens(isLight ? tokensFor(signatureBundle().light.values)
                                   : signatureDarkTokens());
            test.clock.advance(3s);
            QTest::qWait(300);
            expectKeptPicture(*pane, name + (isLight ? u"-light"_s : u"-dark"_s));
        }
    }

    TestServices test;
    AppState app{test.services()};
    QUuid project = *app.projectSession().createProject(u"P"_s, {});
    QUuid note = *app.createNote({}, {});
    struct WornFirst {
        explicit WornFirst(Look& look) { wear(look); }
    };
    Look look{signatureDarkTokens()};
    WornFirst worn{look};
    std::unique_ptr<EditorPaneView> pane = paneOfSelection(app, look);
};

// What other tests leave behind in their process, as fonts that were found, is no matter here.
TEST(Pictures, OfTheEditorLookAsTheyDid)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& shard :
         {u"GTEST_TOTAL_SHARDS"_s, u"GTEST_SHARD_INDEX"_s, u"GTEST_FILTER"_s, u"GTEST_OUTPUT"_s})
        environment.remove(shard);
    environment.insert(QString::fromLatin1(alone), u"1"_s);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(), {u"--gtest_filter=EditorPictures.*"_s});
    ASSERT_TRUE(process.waitForFinished(180'000));
    EXPECT_EQ(process.exitCode(), 0) << process.readAll().constData();
}

TEST_F(EditorPictures, ARichNoteWithItsBarAndStrip)
{
    keep(u"rich"_s);
    QTest::keyClick(&pane->textView(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&pane->textView(), Qt::Key_Down, Qt::ShiftModifier);
    focusModeSetting.write(test.defaults, true);
    keep(u"selected"_s);
    pane->resize(560, 500);
    keep(u"narrow"_s);
}

TEST_F(EditorPictures, ThePageWithItsRuler)
{
    pageViewEnabledSetting.write(test.defaults, true);
    rulerVisibleSetting.write(test.defaults, true);
    keep(u"page"_s);
    editorDisplayZoomSetting.write(test.defaults, 0.5);
    keep(u"page-half"_s);
}

TEST_F(EditorPictures, FindingAndReplacing)
{
    test.notifications.post(AppCommandEvents::toggleDocumentFind);
    QTest::keyClicks(QApplication::focusWidget(), u"the"_s);
    keep(u"replace"_s);
}

TEST_F(EditorPictures, MarkdownAndItsMarks)
{
    app.selection().selectNote(*app.createNote(
        u"# Tides of the flats\n\nLow water *stands* for **six** hours, `tide(3)`.\n\n- [x] posts\n"
        "- [ ] nets\n\n> Nobody writes it down.\n\n```\nebb\n```\n[a link](https://example.org/)"_s,
        {}));
    pane->session().setMode(EditorMode::markdown);
    keep(u"markdown"_s);
}

} // namespace
} // namespace orvane
