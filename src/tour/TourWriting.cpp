// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "tour/TourWriting.h"

#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/app/OrvaneWorkspaceApp.h"
#include "shell/window/MainWindow.h"
#include "tour/TourHand.h"

#include <QMenu>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

class WritingStops {
public:
    WritingStops(OrvaneWorkspaceApp& app, const TourHand& hand,
                 const std::function<void(const QString& name)>& picture)
        : m_app(app)
        , m_hand(hand)
        , m_picture(picture)
    {}

    void focusMode()
    {
        run(u"Focus Mode"_s);
        m_hand.press(Qt::Key_Home, Qt::ControlModifier);
        inBothLooks(u"focus-paragraph"_s);
        run(u"Focus on the Sentence"_s);
        m_hand.press(Qt::Key_Home, Qt::ControlModifier);
        m_hand.press(Qt::Key_Down);
        inBothLooks(u"focus-sentence"_s);
        const QSize wide = m_app.window().size();
        m_app.window().resize(m_app.window().minimumSize());
        run(u"Typewriter Mode"_s);
        m_hand.press(Qt::Key_End, Qt::ControlModifier);
        m_picture(u"typewriter"_s);
        run(u"Typewriter Mode"_s);
        m_app.window().resize(wide);
        run(u"Focus on the Paragraph"_s);
        run(u"Focus Mode"_s);
    }

    void contextMenu(const std::function<void(QWidget&, const QString&)>& pictureOfPopup)
    {
        EditorView& view = m_app.window().editorPane().textView();
        m_hand.press(Qt::Key_Home, Qt::ControlModifier);
        m_hand.press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
        QMenu menu(&view);
        view.fillContextMenu(menu, view.caretRect().center());
        menu.popup(view.mapToGlobal(view.caretRect().bottomLeft().toPoint()));
        TourHand::settle();
        pictureOfPopup(menu, u"menu-text"_s);
        menu.close();
        m_hand.press(Qt::Key_Home);
    }

    void linkSheet()
    {
        EditorSession& session = m_app.window().editorPane().session();
        const EditorMode mode = session.mode();
        session.setMode(EditorMode::richText);
        m_hand.press(Qt::Key_Home, Qt::ControlModifier);
        m_hand.press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
        m_hand.press(Qt::Key_K, Qt::ControlModifier);
        m_hand.type(u"the survey"_s);
        m_hand.press(Qt::Key_Return);
        inBothLooks(u"link-refused"_s);
        m_hand.press(Qt::Key_A, Qt::ControlModifier);
        m_hand.type(u"example.org/survey"_s);
        m_hand.press(Qt::Key_Return);
        m_hand.press(Qt::Key_Left);
        m_hand.press(Qt::Key_K, Qt::ControlModifier);
        inBothLooks(u"link-edited"_s);
        m_hand.press(Qt::Key_Backtab, Qt::ShiftModifier);
        m_hand.press(Qt::Key_Down);
        m_picture(u"link-to-note"_s);
        m_hand.press(Qt::Key_Escape);
        m_picture(u"link"_s);
        m_hand.press(Qt::Key_Z, Qt::ControlModifier);
        session.setMode(mode);
    }

private:
    /// A command by its title, from the palette.
    void run(const QString& title)
    {
        m_hand.press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        m_hand.type(title);
        m_hand.press(Qt::Key_Return);
    }
    void inBothLooks(const QString& name)
    {
        m_picture(name);
        m_app.themes().applyTheme(signatureBundle().id, AppearanceThemeMode::Light);
        m_picture(name + u"-light"_s);
        m_app.themes().applyTheme(signatureBundle().id, AppearanceThemeMode::Dark);
    }

    OrvaneWorkspaceApp& m_app;
    const TourHand& m_hand;
    const std::function<void(const QString& name)>& m_picture;
};

} // namespace

void tourWriting(OrvaneWorkspaceApp& app, const TourHand& hand,
                 const std::function<void(const QString& name)>& picture,
                 const std::function<void(QWidget& shown, const QString& name)>& pictureOfPopup)
{
    app.window().editorPane().focusText();
    WritingStops stops(app, hand, picture);
    stops.focusMode();
    stops.contextMenu(pictureOfPopup);
    stops.linkSheet();
}

} // namespace orvane
