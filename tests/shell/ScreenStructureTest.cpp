// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Looks at each screen as a person would after a change of its layout: is everything inside what
// it stands in, is no text cut, does every control say its name.
#include "ShellFixture.h"
#include "appearance/AppearanceTokens.h"
#include "appearance/themes/BundledThemes.h"
#include "core/store/ProjectLock.h"
#include "editor/pane/EditorPaneView.h"
#include "shell/projects/ProjectsBrowserView.h"
#include "shell/settings/SettingsWindow.h"
#include "shell/window/ElidedLabel.h"
#include "tour/TourSafety.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class ScreenStructureTest : public ShellTest {
protected:
    static QString nameOf(const QWidget& widget)
    {
        return QString::fromLatin1(widget.metaObject()->className()) + u" “"_s +
               widget.accessibleName() + widget.property("text").toString() + u"”"_s;
    }

    void checkScreen(const char* screen) { checkScreen(window(), screen); }

    /// `pictured` are looks of which the screen shows pictures.
    void checkScreen(QWidget& shown, const char* screen, const QList<Tokens>& pictured = {})
    {
        TourHand::settle();
        const QString where = QString::fromLatin1(screen) + m_look + u": "_s;
        QSet<QRgb> known = colorsOf(m_app->look().tokens());
        for (QWidget* widget : shown.findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->isWindow())
                continue;
            const QString name = where + nameOf(*widget);
            checkInside(*widget, name);
            checkText(*widget, name);
            checkNamed(*widget, name);
            checkPalette(*widget, known, name);
        }
        for (const Tokens& look : pictured)
            known.unite(colorsOf(look));
        // What lies behind a sheet is dimmed.
        QWidget* sheet = window().sheets().topSheet();
        checkNoStockColor((sheet ? sheet : &shown)->grab().toImage(), known, where);
    }

    /// Every colour that the look gives to a palette.
    static QSet<QRgb> colorsOf(const Tokens& tokens)
    {
        QSet<QRgb> colors{tokens.selection.rgba(), tokens.textOnSelection.rgba(),
                          tokens.pageText.rgba()};
        for (const SurfaceTokens& s : tokens.surfaces) {
            for (const QColor& color : {s.ground, s.text, s.textSecondary, s.field, s.control,
                                        s.danger, s.link, s.accent, s.border, s.textOnSelectedRow})
                colors.insert(color.rgba());
        }
        return colors;
    }

    static void checkPalette(const QWidget& widget, const QSet<QRgb>& known, const QString& name)
    {
        for (const auto role : {QPalette::Window, QPalette::WindowText, QPalette::Base,
                                QPalette::Text, QPalette::Button, QPalette::ButtonText,
                                QPalette::PlaceholderText, QPalette::Highlight}) {
            EXPECT_TRUE(known.contains(widget.palette().color(QPalette::Active, role).rgba()))
                << qUtf8Printable(name) << " has a stock colour as " << role;
        }
    }

    /// No part of the picture larger than a button is painted in a colour of the plain toolkit.
    static void checkNoStockColor(const QImage& picture, const QSet<QRgb>& known,
                                  const QString& where)
    {
        QHash<QRgb, int> areas;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                ++areas[picture.pixel(x, y)];
        }
        const std::unique_ptr<QStyle> plain(QStyleFactory::create(u"Fusion"_s));
        const QPalette stock = plain->standardPalette();
        for (int role = 0; role < QPalette::NColorRoles; ++role) {
            const QRgb color = stock.color(QPalette::ColorRole(role)).rgba();
            if (!known.contains(color) && qAlpha(color) == 255 && color != 0xFF000000) {
                EXPECT_LT(areas.value(color), 24 * 24)
                    << qUtf8Printable(where) << QColor(color).name().toStdString();
            }
        }
    }

    static void checkInside(const QWidget& widget, const QString& name)
    {
        const bool scrolls = qobject_cast<const QScrollBar*>(&widget) ||
                             widget.objectName().startsWith(u"qt_scrollarea"_s) ||
                             widget.parentWidget()->objectName().startsWith(u"qt_scrollarea"_s);
        if (!scrolls) {
            EXPECT_TRUE(widget.parentWidget()->rect().contains(widget.geometry()))
                << qUtf8Printable(name);
        }
        const auto* area = qobject_cast<const QScrollArea*>(&widget);
        if (area && area->horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff) {
            EXPECT_LE(area->widget()->width(), area->viewport()->width()) << qUtf8Printable(name);
        }
    }

    static void checkText(QWidget& widget, const QString& name)
    {
        const QFontMetrics metrics(widget.font());
        if (const auto* label = qobject_cast<QLabel*>(&widget)) {
            if (qobject_cast<const ElidedLabel*>(label) || label->text().isEmpty())
                return;
            const QRect room = label->contentsRect();
            if (label->wordWrap()) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width()) - 1)
                    << qUtf8Printable(name);
            } else {
                EXPECT_GE(room.width() + 1, metrics.horizontalAdvance(label->text()))
                    << qUtf8Printable(name);
            }
            EXPECT_GE(room.height(), metrics.height() - 1) << qUtf8Printable(name);
        } else if (qobject_cast<QAbstractButton*>(&widget) || qobject_cast<QLineEdit*>(&widget) ||
                   qobject_cast<QComboBox*>(&widget) || qobject_cast<QAbstractSpinBox*>(&widget)) {
            const auto* button = qobject_cast<QAbstractButton*>(&widget);
            if (button && button->text().isEmpty())
                return;
            const QSize needed = widget.minimumSizeHint();
            EXPECT_GE(widget.height(), needed.height()) << qUtf8Printable(name);
            if (button || qobject_cast<QAbstractSpinBox*>(&widget)) {
                EXPECT_GE(widget.width(), needed.width()) << qUtf8Printable(name);
            }
        }
    }

    static void checkNamed(const QWidget& widget, const QString& name)
    {
        if (widget.focusPolicy() == Qt::NoFocus || widget.focusProxy())
            return;
        const bool hasText = !widget.property("text").toString().isEmpty();
        EXPECT_TRUE(hasText || !widget.accessibleName().isEmpty()) << qUtf8Printable(name);
    }

    /// Does `check` in every built-in look.
    void inEachLook(const std::function<void()>& check)
    {
        for (const QUuid& theme : {signatureBundle().id, googleWorkspaceBundle().id}) {
            for (const auto mode : {AppearanceThemeMode::Light, AppearanceThemeMode::Dark}) {
                m_app->themes().applyTheme(theme, mode);
                m_look = u" in "_s + m_app->themes().bundle(theme)->name + u' ' + modeText(mode);
                check();
            }
        }
        m_look.clear();
    }

    QString m_look;
};

TEST_F(ScreenStructureTest, EveryScreenAtBothSizes)
{
    start();
    const QString longTitle =
        u"A project with a title that is much longer than its tile has room for, by far"_s;
    for (const QSize& size : {QSize(1440, 900), QSize(960, 600)}) {
        window().resize(size);
        if (sheetTitle() == u"Welcome to OrvaneWorkspace"_s) {
            checkScreen("welcome");
            press(u"Read Guide"_s);
            checkScreen("guide");
            window().resize(960, 600);
            checkScreen("guide in a small window");
            window().resize(size);
            m_hand->press(Qt::Key_Escape);
            m_hand->press(Qt::Key_Escape);
            checkScreen("browser without projects");
            ASSERT_TRUE(state().projectSession().createProject(longTitle, {}).has_value());
        }
        state().projectSession().presentProjectsBrowser();
        while (window().sheets().topSheet())
            m_hand->press(Qt::Key_Escape);
        checkScreen("browser");
        press(u"New Project"_s);
        checkScreen("new project");
        m_hand->press(Qt::Key_Escape);
        state().projectSession().presentEditor();
        checkScreen("no note selected");
        state().createNote(longTitle + u"\n\nText."_s, {});
        checkScreen("note");
        window().editorPane().session().setMode(EditorMode::richText);
        checkScreen("rich note");
        window().editorPane().session().setMode(EditorMode::plainText);
        press(u"New Folder"_s);
        checkScreen("new folder");
        m_hand->press(Qt::Key_Escape);
    }
}

TEST_F(ScreenStructureTest, EveryScreenInEveryBuiltInLook)
{
    dismissWelcome();
    start();
    ASSERT_TRUE(state().projectSession().createProject(u"Tidewater, a novel"_s, {}));
    state().createFolder(u"Manuscript"_s);
    state().createNote(u"Low water\nMara counts the posts again."_s, {});
    inEachLook([this] {
        state().projectSession().presentEditor();
        window().editorPane().session().setMode(EditorMode::richText);
        checkScreen("rich note");
        window().editorPane().session().setMode(EditorMode::plainText);
        checkScreen("note");
        press(u"New Folder"_s);
        checkScreen("name sheet");
        m_hand->press(Qt::Key_Escape);
        state().projectSession().presentProjectsBrowser();
        checkScreen("browser");
        press(u"New Project"_s);
        checkScreen("new project");
        m_hand->press(Qt::Key_Escape);
        Question question;
        question.title = u"Move “Tidewater” to Trash?"_s;
        question.text = u"The folder goes to the desktop's trash."_s;
        question.buttons = {u"Move to Trash"_s, u"Cancel"_s};
        question.tone = Question::Tone::Destructive;
        EXPECT_TRUE(answering([&] { state().services().questions.ask(question); },
                              [this] { checkScreen("question"); }));
        for (const auto& [name, safety] : sampleSafetyQuestions()) {
            const auto shown = state().services().questions.show(safety, [](const Answer&) {});
            checkScreen(qUtf8Printable(name));
        }
    });
}

TEST_F(ScreenStructureTest, EveryPageOfTheSettingsInEveryBuiltInLook)
{
    dismissWelcome();
    start();
    SettingsWindow& settings = m_app->showSettings();
    QList<Tokens> builtIn;
    for (const AppearanceThemeBundle& bundle : m_app->themes().themeBundles())
        builtIn << tokensFor(bundle.light.values) << tokensFor(bundle.dark.values);
    for (const QSize& size : {settings.size(), settings.minimumSize()}) {
        settings.resize(size);
        inEachLook([&] {
            for (int page = 0; page < settingsPageCount; ++page) {
                settings.showPage(SettingsPageId(page));
                checkScreen(settings, qUtf8Printable(title(SettingsPageId(page))),
                            page == int(SettingsPageId::Appearance) ? builtIn : QList<Tokens>());
            }
        });
    }
}

TEST_F(ScreenStructureTest, AStartWhoseProjectIsOpenElsewhereSaysSoOverTheBrowser)
{
    dismissWelcome();
    start();
    ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}).has_value());
    defaults().set(u"settings.general.launchDestination"_s, u"lastNote"_s);
    const QString folder = state().projectSession().persistenceController()->storageDirectory();
    quit();
    const auto lock = ProjectLock::take(folder, {});
    ASSERT_TRUE(lock);
    m_app = std::make_unique<OrvaneWorkspaceApp>(UserFolders::below(m_home.path()));
    m_app->start();
    QStringList said;
    QTimer answer;
    answer.callOnTimeout([&] {
        Sheet* sheet = window().sheets().topSheet();
        if (!sheet)
            return;
        for (const auto* label : sheet->findChildren<QLabel*>())
            said.append(label->text());
        sheet->dismiss();
    });
    answer.start(20);
    TourHand::waitFor([&] { return !said.isEmpty(); }, std::chrono::seconds(5));
    EXPECT_TRUE(said.contains(u"Project Is Open Elsewhere"_s)) << qPrintable(said.join(u'|'));
    EXPECT_EQ(state().projectSession().rootPresentationMode(), RootPresentationMode::Projects);
    EXPECT_TRUE(window().findChild<ProjectsBrowserView*>()->isVisible());
}

TEST_F(ScreenStructureTest, TheFirstFrameIsComplete)
{
    dismissWelcome();
    {
        start();
        ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}).has_value());
        state().createNote(u"Low water\nMara counts."_s, {});
        defaults().set(u"settings.general.launchDestination"_s, u"lastNote"_s);
        quit();
    }
    const UserFolders folders = UserFolders::below(m_home.path());
    m_app = std::make_unique<OrvaneWorkspaceApp>(folders);
    m_app->start();
    const QImage first = window().grab().toImage();
    m_hand = std::make_unique<TourHand>(window());
    TourHand::waitFor([] { return false; }, std::chrono::milliseconds(300));
    const QImage later = window().grab().toImage();
    ASSERT_EQ(first.size(), later.size());
    int different = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x)
            different += first.pixel(x, y) != later.pixel(x, y);
    }
    // The caret and the rings of focus come with the window's activation.
    EXPECT_LT(different, 5'000);
    EXPECT_EQ(first.pixelColor(5, first.height() / 2),
              signatureDarkTokens().on(Surface::Binder).ground);
    EXPECT_EQ(first.pixelColor(first.width() / 2, first.height() - 60),
              signatureDarkTokens().on(Surface::Page).ground);
}

} // namespace
} // namespace orvane
