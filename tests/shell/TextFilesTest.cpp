// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/TextFiles.h"

#include "ShellFixture.h"
#include "shell/desktop/OpeningSheet.h"
#include "shell/desktop/RequestOpener.h"
#include "shell/sheets/MessageText.h"

#include <QStringEncoder>
#include <QTest>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

TEST(TextFiles, EachEncodingIsReadWhole)
{
    const QString text = u"Ebbe — “früh”, 5 €\nzwei"_s;
    const auto marked = [&](QStringConverter::Encoding encoding) {
        QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
        return QByteArray(encoder(text));
    };
    struct Case {
        const char* name;
        QByteArray bytes;
        std::optional<QString> text;
    };
    const Case cases[] = {
        {"UTF-8", text.toUtf8(), text},
        {"UTF-8 with a mark", "\xef\xbb\xbf" + text.toUtf8(), text},
        {"UTF-16, little end first", marked(QStringConverter::Utf16LE), text},
        {"UTF-16, big end first", marked(QStringConverter::Utf16BE), text},
        {"UTF-32", marked(QStringConverter::Utf32LE), text},
        {"half a unit of UTF-16", marked(QStringConverter::Utf16LE).chopped(1), std::nullopt},
        {"a mark of UTF-8 before what isn't", "\xef\xbb\xbf\xff", std::nullopt},
        {"Windows-1252",
         "Ebbe \x97 \x93"
         "fr\xfch\x94, 5 \x80\nzwei",
         text},
        {"each byte of Windows-1252 that has no character", "\x81\x8d\x8f\x90\x9d",
         QString::fromLatin1("\x81\x8d\x8f\x90\x9d")},
        {"ends of lines", "a\r\nb\rc\n", u"a\nb\nc\n"_s},
        {"nothing", "", u""_s},
        {"a picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto utf8 = textAsUtf8(c.bytes);
        EXPECT_EQ(utf8.has_value(), c.text.has_value());
        if (utf8 && c.text) {
            EXPECT_EQ(QString::fromUtf8(*utf8), *c.text);
        }
    }
}

TEST(TextFiles, FiftyMegabytesComeInBesideTheEventLoop)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"long.txt"_s);
    const QByteArray text =
        QByteArray("Mara counts the posts again, and again.\r\n").repeated(1'280'000);
    ASSERT_TRUE(writeFileAtomically(path, text));
    ASSERT_GT(text.size(), 50 << 20);
    TextFilesReader reader({path}, TextFilesReader::fromDisk());
    bool isDone = false;
    QObject::connect(&reader, &TextFilesReader::finished, [&] { isDone = true; });
    qint64 longest = 0;
    int turns = 0;
    QElapsedTimer turn;
    turn.start();
    while (!isDone) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(1);
        longest = std::max(longest, turn.restart());
        ++turns;
    }
    EXPECT_GT(turns, 10);
    EXPECT_LT(longest, 1'000) << "milliseconds of a turn";
    ASSERT_EQ(reader.files().size(), 1);
    EXPECT_EQ(reader.files().first().utf8.size(), text.size() - 1'280'000);
}

/// The program with a disk that gives a megabyte in 20 ms.
class SlowDiskTest : public ShellTest {
protected:
    void SetUp() override
    {
        dismissWelcome();
        start();
        ASSERT_TRUE(state().projectSession().createProject(u"Tidewater"_s, {}));
        m_opener = std::make_unique<RequestOpener>(
            state(), window(),
            [](const QString& path, qint64 limit,
               const std::function<bool(qint64, qint64)>& piece) {
                return readFile(path, limit, [&](qint64 read, qint64 whole) {
                    QThread::msleep(20);
                    return piece(read, whole);
                });
            });
    }
    void TearDown() override { m_opener.reset(); }
    QString fileOf(const QString& name, qsizetype megabytes)
    {
        const QString path = m_home.filePath(name);
        const QByteArray line("Mara counts the posts again, and again.\n");
        EXPECT_TRUE(writeFileAtomically(path, line.repeated((megabytes << 20) / line.size())));
        return path;
    }
    OpeningSheet* progress() { return qobject_cast<OpeningSheet*>(window().sheets().topSheet()); }

    std::unique_ptr<RequestOpener> m_opener;
};

TEST_F(SlowDiskTest, SeveralFilesShowOneProgressAndCanBeCancelled)
{
    const QStringList files{fileOf(u"one.txt"_s, 20), fileOf(u"two.md"_s, 20)};
    for (const bool byKey : {true, false}) {
        SCOPED_TRACE(byKey);
        QElapsedTimer timer;
        timer.start();
        m_opener->open({{}, files, {}});
        ASSERT_TRUE(TourHand::waitFor([&] { return progress(); }, 1s));
        EXPECT_GE(timer.elapsed(), 150);
        QStringList shown;
        for (const auto* label : progress()->findChildren<QLabel*>())
            shown.append(label->text());
        EXPECT_TRUE(shown.contains(u"Reading “one.txt”"_s)) << qPrintable(shown.join(u'|'));
        EXPECT_TRUE(shown.last().endsWith(u" of 41.9 MB"_s)) << qPrintable(shown.join(u'|'));
        m_hand->type(u"a word \n"_s); // which was meant for the text
        ASSERT_TRUE(progress());
        byKey ? m_hand->press(Qt::Key_Escape) : press(u"Cancel"_s);
        QTest::qWait(100);
        EXPECT_FALSE(window().sheets().topSheet());
        EXPECT_TRUE(state().notes().isEmpty()) << "nothing is left behind";
    }
}

TEST_F(SlowDiskTest, WhatTheDesktopCallsTextIsOpenedAndMarkupIsLeftAlone)
{
    QStringList files;
    const std::pair<QString, QByteArray> rows[] = {{u"README"_s, "Low water.\n"},
                                                   {u"page.html"_s, "<html><p>Low</p></html>"},
                                                   {u"letter.rtf"_s, "{\\rtf1 Low water}"}};
    for (const auto& [name, bytes] : rows) {
        files.append(m_home.filePath(name));
        ASSERT_TRUE(writeFileAtomically(files.last(), bytes));
    }
    QString words;
    EXPECT_TRUE(answering(
        [&] {
            m_opener->open({{}, files, {}});
        },
        [&] { words = find<MessageText>()->toPlainText(); }));
    EXPECT_EQ(words.count(u"is neither a project nor a text file"_s), 2) << qPrintable(words);
    ASSERT_EQ(state().notes().size(), 1);
    EXPECT_EQ((*state().notes().begin())->title, u"README"_s);
}

TEST_F(SlowDiskTest, AllOfThemBecomeNotesAndWhatCantIsSaid)
{
    const QString bad = m_home.filePath(u"picture.txt"_s);
    ASSERT_TRUE(writeFileAtomically(bad, QByteArray("a\0b", 3)));
    QFile huge(m_home.filePath(u"huge.txt"_s));
    ASSERT_TRUE(huge.open(QFile::WriteOnly) && huge.resize(FileLimit::textToOpen + 1));
    QString words;
    EXPECT_TRUE(answering(
        [&] {
            m_opener->open(
                {{}, {fileOf(u"one.txt"_s, 1), bad, huge.fileName(), fileOf(u"two.md"_s, 1)}, {}});
        },
        [&] { words = find<MessageText>()->toPlainText(); }));
    EXPECT_EQ(words,
              u"“picture.txt” can't be read as text.\n\n“huge.txt” can't be read. It is larger "
              "than 64 megabytes, which no such file is."_s);
    ASSERT_EQ(state().notes().size(), 2);
    const NoteRecord& first = **state().notes().begin();
    EXPECT_EQ(first.title, u"one"_s);
    EXPECT_GT(first.body.utf8().size(), 1'000'000);
}

} // namespace
} // namespace orvane
