// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What comes from other programs.
#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/EditorSession.h"
#include "shell/app/OrvaneWorkspaceApp.h"
#include "shell/window/MainWindow.h"
#include "tour/TourHand.h"
#include "tour/TourPages.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Minutes as a word processor writes them: two footnotes, a list of two levels, a comment, and a
/// drawing that can't be shown.
constexpr char minutes[] =
    R"({\rtf1\ansi\deff0{\fonttbl{\f0 Georgia;}}
{\*\listtable{\list\listtemplateid1{\listlevel\levelnfc0\levelstartat1{\leveltext\'02\'00.;}{\levelnumbers\'01;}\fi-360\li720}{\listlevel\levelnfc23\levelstartat1{\leveltext\'01\u9702 ?;}{\levelnumbers;}\fi-360\li1440}\listid1}}
{\*\listoverridetable{\listoverride\listid1\listoverridecount0\ls1}}
\f0\fs32\pard\sa120 The petition was read on the ninth{\super\chftn}{\footnote\pard\plain\fs28{\super\chftn} Minutes of 9 March 1912, leaf 4, in the county\u8217 's copy.} and laid by. Three things were asked of the county:\par
\pard\ls1\ilvl0\fi-360\li720{\listtext 1.\tab}that the rate be levied on the wall and not on the ditch;\par
{\listtext 2.\tab}that a keeper be named,\par
\pard\ls1\ilvl1\fi-360\li1440{\listtext\u9702 ?\tab}sworn, and paid by the tide,\par
{\listtext\u9702 ?\tab}with a book in two hands;{\super\chftn}{\footnote\pard\plain\fs28{\super\chftn} That is, by the keeper and by whoever relieves him.}\par
\pard\ls1\ilvl0\fi-360\li720{\listtext 3.\tab}that {\*\atrfstart 1}no post be cut{\*\atrfend 1}{\*\atnid HB}{\*\atnauthor H. Brandt}\chatn{\*\annotation{\*\atnref 1}\pard\plain\fs28 Is there a date for this? The survey has it two years later.} without his leave.\par
\pard\sa120{\pict{\*\picprop{\sp{\sn wzDescription}{\sv Section of the wall at the sluice}}}\wmetafile8\picwgoal8050\pichgoal3855 0100090000}\par
The county took eleven days over the answer, and gave it in one line.\par})";

} // namespace

void tourOthers(OrvaneWorkspaceApp& app, const TourHand& hand,
                const std::function<void(const QString&)>& picture)
{
    AppState& state = app.appState();
    EditorPaneView& pane = app.window().editorPane();
    const auto note = state.createNote(u"Minutes, 1912"_s, {});
    if (!note)
        return;
    pane.session().setMode(EditorMode::richText);
    pane.session().setTitle(u"Minutes, 1912"_s);
    auto* copied = new QMimeData;
    copied->setData(u"text/rtf"_s, minutes);
    copied->setText(u"The petition was read on the ninth and laid by."_s);
    QGuiApplication::clipboard()->setMimeData(copied);
    for (const auto mode : {AppearanceThemeMode::Light, AppearanceThemeMode::Dark}) {
        app.themes().applyTheme(signatureBundle().id, mode);
        pane.focusText();
        hand.press(Qt::Key_A, Qt::ControlModifier);
        hand.press(Qt::Key_V, Qt::ControlModifier);
        TourHand::waitFor([] { return false; }, 600ms); // until the words are counted
        picture(u"notes-of-others-"_s +
                (mode == AppearanceThemeMode::Light ? u"light"_s : u"dark"_s));
    }
    hand.press(Qt::Key_Right);
}

} // namespace orvane
