// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Looks at each screen as a person would after a change of its layout: is everything inside what
// it stands in, is no text cut, does every control say its name.
#include "ShellFixture.h"
#include "appearance/AppearanceTokens.h"
#include "shell/ElidedLabel.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

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

    void checkScreen(const char* screen)
    {
        TourHand::settle();
        for (QWidget* widget : window().findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->isWindow())
                continue;
            const QString name = QString::fromLatin1(screen) + u": "_s + nameOf(*widget);
            checkInside(*widget, name);
            checkText(*widget, name);
            checkNamed(*widget, name);
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
                   qobject_cast<QComboBox*>(&widget)) {
            const auto* button = qobject_cast<QAbstractButton*>(&widget);
            if (button && button->text().isEmpty())
                return;
            const QSize needed = widget.minimumSizeHint();
            EXPECT_GE(widget.height(), needed.height()) << qUtf8Printable(name);
            if (button) {
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
            ASSERT_TRUE(state().createProject(longTitle, {}).has_value());
        }
        state().presentProjectsBrowser();
        while (window().sheets().topSheet())
            m_hand->press(Qt::Key_Escape);
        checkScreen("browser");
        press(u"New Project"_s);
        checkScreen("new project");
        m_hand->press(Qt::Key_Escape);
        state().presentEditor();
        checkScreen("no note selected");
        state().createNote(longTitle + u"\n\nText."_s, {});
        checkScreen("note");
        press(u"New Folder"_s);
        checkScreen("new folder");
        m_hand->press(Qt::Key_Escape);
    }
}

TEST_F(ScreenStructureTest, TheFirstFrameIsComplete)
{
    dismissWelcome();
    {
        start();
        ASSERT_TRUE(state().createProject(u"Tidewater"_s, {}).has_value());
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
