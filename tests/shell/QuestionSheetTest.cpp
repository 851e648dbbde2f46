// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellFixture.h"
#include "shell/sheets/MessageText.h"
#include "shell/sheets/QuestionSheetParts.h"
#include "tour/TourSafety.h"

#include <QAccessible>
#include <QDesktopServices>
#include <QScrollBar>
#include <QTest>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr auto quiet = 450ms;

/// Takes what would go to the file manager.
class UrlCatcher : public QObject {
    Q_OBJECT
public:
    UrlCatcher() { QDesktopServices::setUrlHandler(u"file"_s, this, "take"); }
    ~UrlCatcher() override { QDesktopServices::unsetUrlHandler(u"file"_s); }
    QList<QUrl> urls;
public slots:
    void take(const QUrl& url) { urls.append(url); }
};

class QuestionSheetTest : public ShellTest {
protected:
    void SetUp() override
    {
        dismissWelcome();
        start();
        ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}));
    }

    static Question sample(const QString& name)
    {
        for (const auto& [each, question] : sampleSafetyQuestions()) {
            if (each == name)
                return question;
        }
        return {};
    }
    void show(const Question& question)
    {
        m_shown = state().services().questions.show(
            question, [this](const Answer& answer) { m_answers.append(answer.button); });
        TourHand::settle();
    }
    static void wait() { QTest::qWait(quiet.count()); }
    Sheet* sheet() { return window().sheets().topSheet(); }
    QString focused()
    {
        const auto* button = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
        return button ? button->text() : QString();
    }
    /// What a screen reader says of the parts of a class.
    template <typename T>
    QStringList spoken(QAccessible::Role role)
    {
        QStringList said;
        for (T* part : sheet()->findChildren<T*>()) {
            QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(part);
            EXPECT_EQ(interface->role(), role);
            said.append(interface->text(QAccessible::Name) + u": "_s +
                        interface->text(QAccessible::Description));
        }
        return said;
    }

    std::unique_ptr<ShownQuestion> m_shown;
    QList<int> m_answers;
};

TEST_F(QuestionSheetTest, KeysThatWereMeantForTheTextDontAnswer)
{
    show(sample(u"leaving"_s));
    // As they wait in the queue when the question comes up in the middle of a sentence.
    m_hand->type(u"and then\n"_s);
    QTest::qWait(100);
    m_hand->type(u"went on \n"_s);
    EXPECT_EQ(m_answers, QList<int>());
    ASSERT_TRUE(sheet());
    wait();
    QTest::sendKeyEvent(QTest::Press, QApplication::focusWidget(), Qt::Key_Return, u"\r"_s, {});
    TourHand::settle();
    EXPECT_EQ(m_answers, QList<int>{0}) << "Return takes the default";

    show(sample(u"leaving"_s));
    wait();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, u"\r"_s, true);
    QApplication::sendEvent(QApplication::focusWidget(), &held);
    TourHand::settle();
    EXPECT_EQ(m_answers.size(), 1) << "a held Return goes on repeating itself";
    m_hand->press(Qt::Key_Escape);
    EXPECT_EQ(m_answers, QList<int>({0, 1})) << "Escape stays";
}

TEST_F(QuestionSheetTest, TheKeyboardReachesEverything)
{
    const UrlCatcher catcher;
    Question question = sample(u"disk-gone"_s);
    question.rows.first().showsPath = m_home.path();
    show(question);
    wait();
    EXPECT_EQ(focused(), u"Try Again"_s);
    QStringList stops;
    for (int i = 0; i < 4; ++i) {
        m_hand->press(Qt::Key_Tab);
        stops.append(focused());
    }
    EXPECT_EQ(stops, QStringList({u"Show"_s, u"Close Project"_s, u"Save a Copy Elsewhere…"_s,
                                  u"Try Again"_s}));
    m_hand->press(Qt::Key_Tab);
    m_hand->press(Qt::Key_Return);
    EXPECT_EQ(catcher.urls, QList<QUrl>{QUrl::fromLocalFile(m_home.path())});
    EXPECT_TRUE(sheet()) << "to look at the folder answers nothing";
    m_hand->press(Qt::Key_Escape);
    EXPECT_EQ(m_answers, QList<int>{Question::noButton});
}

TEST_F(QuestionSheetTest, ChangesInItsPlace)
{
    Question question = sample(u"disk-gone"_s);
    show(question);
    wait();
    m_hand->press(Qt::Key_Tab);
    ASSERT_EQ(focused(), u"Show"_s);
    const QRect place = sheet()->geometry();
    const QWidget* before = QApplication::focusWidget();
    question.kept = u"230 words in 2 notes, written since 14:31, are kept in"_s;
    question.explanation = u"Last tried at 14:36:24."_s; // shorter by a line
    m_shown->change(question);
    TourHand::settle();
    EXPECT_EQ(QApplication::focusWidget(), before);
    EXPECT_EQ(sheet()->geometry(), place);
    QStringList texts;
    for (const auto* text : sheet()->findChildren<MessageText*>())
        texts.append(text->toPlainText());
    EXPECT_TRUE(texts.contains(question.kept)) << qPrintable(texts.join(u'|'));

    question.rows.append({QuestionIcon::Note, u"3. Salt"_s, u"12 words"_s});
    question.buttons[1] = u"Save Elsewhere…"_s;
    m_shown->change(question);
    TourHand::settle();
    EXPECT_GT(sheet()->height(), place.height());
    EXPECT_EQ(QApplication::focusWidget(), before);
    EXPECT_TRUE(button(u"Save Elsewhere…"_s));
}

TEST_F(QuestionSheetTest, GoesWithItsHandle)
{
    show(sample(u"leaving"_s));
    m_shown.reset();
    TourHand::settle();
    EXPECT_FALSE(sheet());
    show(sample(u"leaving"_s));
    sheet()->dismiss();
    m_shown.reset(); // before the answer is told
    TourHand::settle();
    EXPECT_EQ(m_answers, QList<int>());

    // Below another question it goes without touching that one.
    show(sample(u"disk-gone"_s));
    QList<int> answers;
    std::unique_ptr<ShownQuestion> above;
    above = state().services().questions.show(sample(u"leaving"_s), [&](const Answer& answer) {
        answers.append(answer.button);
        above.reset();
    });
    wait();
    m_hand->press(Qt::Key_Tab);
    const QString before = focused();
    m_shown.reset();
    TourHand::settle();
    EXPECT_EQ(focused(), before);
    m_hand->press(Qt::Key_Escape);
    EXPECT_EQ(answers, QList<int>{1});
    EXPECT_FALSE(sheet());
}

TEST_F(QuestionSheetTest, FitsWhateverItSays)
{
    const QString longName = u"a-name-without-a-single-blank-"_s.repeated(30);
    Question many = sample(u"leaving"_s);
    many.title = u"200 notes of “%1” are not saved yet"_s.arg(longName);
    many.rows.clear();
    for (int i = 0; i < 200; ++i)
        many.rows.append({QuestionIcon::Note, u"%1. %2"_s.arg(i).arg(longName), longName});
    Question wordy = sample(u"replaced-store"_s);
    wordy.text = u"The path is /home/writer/%1. "_s.arg(longName).repeated(8);
    wordy.explanation = wordy.text;
    wordy.sides.first() = {QuestionIcon::Folder, longName, {u"a/"_s + longName, longName}};
    wordy.buttons = {u"Show both of them beside each other"_s, u"Keep the one that is open here"_s,
                     u"Take the one that is on the disk now"_s};
    for (const Question& question : {many, wordy}) {
        for (const QSize& size : {QSize(960, 600), QSize(1440, 900)}) {
            window().resize(size);
            show(question);
            EXPECT_TRUE(window().rect().contains(sheet()->geometry()));
            EXPECT_EQ(sheet()->width(), 632);
            for (const QString& text : question.buttons) {
                QAbstractButton* each = button(text);
                ASSERT_TRUE(each) << qPrintable(text);
                EXPECT_TRUE(sheet()->rect().contains(
                    QRect(each->mapTo(sheet(), QPoint(0, 0)), each->size())));
            }
            EXPECT_GE(sheet()->findChild<QuestionTitle*>()->height(), 20);
        }
    }
    window().resize(960, 600);
    show(many);
    auto* list = sheet()->findChild<QuestionRowList*>();
    EXPECT_GE(list->height(), 110) << "some rows are seen";
    EXPECT_GT(list->verticalScrollBar()->maximum(), 0);
    list->setFocus(Qt::TabFocusReason);
    m_hand->press(Qt::Key_PageDown);
    EXPECT_GT(list->verticalScrollBar()->value(), 0) << "the keyboard scrolls it";
}

TEST_F(QuestionSheetTest, ScreenReadersHearItsParts)
{
    show(sample(u"copy-or-moved"_s));
    EXPECT_EQ(spoken<QuestionSideCard>(QAccessible::Grouping).value(1),
              u"Known before: Documents/OrvaneWorkspace/Tidewater\n41 notes, 86,420 words\n"
              "Changed today, 14:35"_s);
    show(sample(u"leaving"_s));
    EXPECT_EQ(spoken<QuestionRowView>(QAccessible::ListItem).value(1),
              u"3. Salt: 12 words since 14:35"_s);
    EXPECT_EQ(spoken<QuestionRowList>(QAccessible::List).size(), 1);
}

TEST_F(QuestionSheetTest, IsMirroredWhereOneReadsFromTheRight)
{
    window().setLayoutDirection(Qt::RightToLeft);
    show(sample(u"disk-gone"_s));
    const auto x = [this](const QString& text) {
        return button(text)->mapTo(sheet(), QPoint(0, 0)).x();
    };
    EXPECT_LT(x(u"Try Again"_s), x(u"Save a Copy Elsewhere…"_s));
    EXPECT_LT(x(u"Save a Copy Elsewhere…"_s), x(u"Close Project"_s));
    EXPECT_LT(button(u"Show"_s)->x(), 40);
    // The triangle stands at the right edge of the title.
    auto* title = sheet()->findChild<QuestionTitle*>();
    const QImage picture = title->grab().toImage();
    const QRgb warning = m_app->look().tokens().on(Surface::Card).warning.rgb();
    int leftmost = picture.width();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < leftmost; ++x) {
            if ((picture.pixel(x, y) | 0xFF000000) == warning)
                leftmost = x;
        }
    }
    EXPECT_GT(leftmost, picture.width() - 20);
    EXPECT_LT(leftmost, picture.width());
}

} // namespace
} // namespace orvane

#include "QuestionSheetTest.moc"
