// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/SingleInstance.h"

#include <QCborMap>
#include <QCborValue>
#include <QFile>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>
#include <gtest/gtest.h>

#include <ctime>
#include <deque>
#include <sys/resource.h>
#include <sys/socket.h>
#include <thread>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Role = SingleInstance::Role;

TEST(OpenRequest, ArgumentsBecomeLinksAndFiles)
{
    const OpenRequest request = openRequestFor(
        {u"orvaneworkspace://note/0F"_s, u"ORVANENOTES://pdf/1?page=2"_s, u"notes/../a b.md"_s,
         u"/home/x/ö.txt"_s, u"file:///home/x/with%20blank.rtf"_s, u"https://example.org"_s, u""_s},
        u"/work"_s);
    EXPECT_EQ(request.links,
              QStringList({u"orvaneworkspace://note/0F"_s, u"ORVANENOTES://pdf/1?page=2"_s}));
    EXPECT_EQ(request.files,
              QStringList({u"/work/a b.md"_s, u"/home/x/ö.txt"_s, u"/home/x/with blank.rtf"_s}));
    EXPECT_TRUE(openRequestFor({}, u"/"_s).isEmpty());
}

TEST(OpenRequest, OnlyWholeMessagesAreTaken)
{
    const OpenRequest request{{u"orvaneworkspace://note/1"_s}, {u"/a/b"_s}, u"token"_s};
    const QByteArray message = encoded(request);
    EXPECT_EQ(decodedOpenRequest(message), request);
    for (qsizetype length = 0; length < message.size(); ++length)
        EXPECT_EQ(decodedOpenRequest(message.first(length)), std::nullopt) << length;

    const auto changed = [&](const QString& key, const QCborValue& value) {
        QCborMap map = QCborValue::fromCbor(message).toMap();
        map[key] = value;
        return decodedOpenRequest(map.toCborValue().toCbor());
    };
    EXPECT_EQ(changed(u"version"_s, 2), std::nullopt);
    EXPECT_EQ(changed(u"links"_s, u"orvaneworkspace://note/1"_s), std::nullopt);
    EXPECT_EQ(changed(u"links"_s, QCborArray{u"https://example.org"_s}), std::nullopt);
    EXPECT_EQ(changed(u"files"_s, QCborArray{u"relative"_s}), std::nullopt);
    EXPECT_EQ(changed(u"files"_s, QCborArray{1}), std::nullopt);
    EXPECT_EQ(changed(u"activationToken"_s, QCborValue()), std::nullopt);
    EXPECT_EQ(decodedOpenRequest(QByteArray(longestOpenRequest + 1, '\0')), std::nullopt);
}

/// A further start, in a thread of its own so that the first can answer.
Role claimElsewhere(const QString& folder, const OpenRequest& request,
                    std::chrono::milliseconds patience)
{
    std::atomic<bool> done = false;
    Role role{};
    std::thread thread([&] {
        SingleInstance further(folder);
        role = further.claim(request, patience);
        done = true;
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return done.load(); }, 10'000));
    thread.join();
    return role;
}

TEST(SingleInstance, FurtherStartsHandOverWhatTheyWereAskedToOpen)
{
    QTemporaryDir folder;
    QList<OpenRequest> taken;
    OpenRequest many{{u"orvaneworkspace://note/1"_s}, {}, u"token"_s};
    for (int i = 0; i < 5000; ++i)
        many.files.append(u"/home/x/a long name of a file, number %1.md"_s.arg(i));
    {
        SingleInstance first(folder.path());
        QObject::connect(&first, &SingleInstance::requested,
                         [&](const OpenRequest& request) { taken.append(request); });
        ASSERT_EQ(first.claim({}), Role::First);
        EXPECT_EQ(claimElsewhere(folder.path(), many, 5s), Role::HandedOver);
        EXPECT_EQ(claimElsewhere(folder.path(), {}, 5s), Role::HandedOver);
        EXPECT_EQ(taken, QList<OpenRequest>({many, {}}));

        // Whatever else comes through the socket is dropped, and the program goes on.
        for (const QByteArray& noise : {"\xff\xff\xff\xff"_ba, QByteArray("\0\0\0\5hello", 9)}) {
            QLocalSocket stranger;
            stranger.connectToServer(folder.filePath(u"orvaneworkspace.socket"_s));
            ASSERT_TRUE(stranger.waitForConnected());
            stranger.write(noise);
            EXPECT_TRUE(QTest::qWaitFor(
                [&] { return stranger.state() == QLocalSocket::UnconnectedState; }));
        }
        EXPECT_EQ(taken.size(), 2);
    }
    SingleInstance next(folder.path());
    EXPECT_EQ(next.claim({}), Role::First) << "after the first has ended";
}

TEST(SingleInstance, AProgramThatHangsIsToldFromOneThatDied)
{
    QTemporaryDir folder;
    QLockFile hanging(folder.filePath(u"orvaneworkspace.lock"_s));
    hanging.setStaleLockTime(0);
    ASSERT_TRUE(hanging.tryLock());
    SingleInstance further(folder.path());
    EXPECT_EQ(further.claim({}, 200ms), Role::NotAnswering);
    hanging.unlock();

    QFile lock(folder.filePath(u"orvaneworkspace.lock"_s));
    ASSERT_TRUE(lock.open(QFile::WriteOnly));
    lock.write("999999999\norvaneworkspace\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    lock.close();
    QFile socket(folder.filePath(u"orvaneworkspace.socket"_s));
    ASSERT_TRUE(socket.open(QFile::WriteOnly));
    socket.close();
    EXPECT_EQ(further.claim({}, 200ms), Role::First) << "what a crash left is swept away";
    EXPECT_EQ(claimElsewhere(folder.path(), {}, 5s), Role::HandedOver);
}

TEST(SingleInstance, AFolderThatTakesNoLockKeepsNobodyOut)
{
    QTemporaryDir folder;
    SingleInstance instance(folder.filePath(u"missing"_s));
    EXPECT_EQ(instance.claim({}, 200ms), Role::First);
}

/// A running program with short patience, and strangers that connect to it.
class CrowdedInstanceTest : public testing::Test {
protected:
    void SetUp() override
    {
        QObject::connect(&first, &SingleInstance::requested,
                         [this](const OpenRequest& request) { taken.append(request); });
        ASSERT_EQ(first.claim({}), Role::First);
    }
    LocalSocket stranger() const
    {
        return LocalSocket::connectedTo(folder.filePath(u"orvaneworkspace.socket"_s), 100ms);
    }
    static bool isDropped(const LocalSocket& socket)
    {
        char byte = 0;
        return ::recv(socket.descriptor(), &byte, 1, MSG_DONTWAIT) == 0 || errno == ECONNRESET;
    }
    static QByteArray message(const OpenRequest& request)
    {
        const QByteArray content = encoded(request);
        QByteArray length(4, Qt::Uninitialized);
        qToBigEndian(quint32(content.size()), length.data());
        return length + content;
    }
    static double processorSeconds()
    {
        timespec time{};
        ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
    }

    QTemporaryDir folder;
    SingleInstance first{folder.path(), {.held = 8, .patience = 400ms, .pause = 200ms}};
    QList<OpenRequest> taken;
};

TEST_F(CrowdedInstanceTest, WhoSendsNothingWholeIsDropped)
{
    const OpenRequest request{{}, {u"/home/x/a.md"_s}, {}};
    const QByteArray whole = message(request);
    struct Case {
        const char* name;
        QByteArray sent;
        bool isTaken;
    };
    for (const Case& c : {Case{"nothing", {}, false},
                          {"half a length", whole.first(2), false},
                          {"half a message", whole.first(whole.size() / 2), false},
                          {"a huge one begun", QByteArray("\0\xf4\x24\0{", 5), false},
                          {"a whole one", whole, true}}) {
        SCOPED_TRACE(c.name);
        taken.clear();
        const LocalSocket peer = stranger();
        ASSERT_TRUE(peer.isOpen());
        ASSERT_TRUE(peer.write(c.sent));
        QTest::qWait(150);
        EXPECT_EQ(taken.size(), c.isTaken ? 1 : 0);
        QTest::qWait(400);
        if (!c.isTaken) {
            EXPECT_TRUE(isDropped(peer));
        }
    }
    // A slow one that is whole in time, and goes without reading its answer.
    taken.clear();
    {
        const LocalSocket peer = stranger();
        for (qsizetype i = 0; i < whole.size(); i += 20) {
            ASSERT_TRUE(peer.write(
                QByteArrayView(whole).sliced(i, std::min<qsizetype>(20, whole.size() - i))));
            QTest::qWait(10);
        }
    }
    EXPECT_EQ(taken, QList<OpenRequest>{request});
    // What came in time counts, however late the program looks at it.
    taken.clear();
    const LocalSocket peer = stranger();
    QTest::qWait(50);
    ASSERT_TRUE(peer.write(whole));
    QThread::msleep(500);
    EXPECT_TRUE(QTest::qWaitFor([&] { return taken.size() == 1; }, 1'000));
}

TEST_F(CrowdedInstanceTest, AThousandConnectionsLeaveRoomForTheNextStart)
{
    std::deque<LocalSocket> crowd;
    int still = 0;
    for (int i = 0; i < 1000; ++i) {
        crowd.push_back(stranger());
        ASSERT_TRUE(crowd.back().isOpen()) << i;
        if (i % 10 == 0)
            QTest::qWait(5);
        if (crowd.size() > 100)
            crowd.pop_front();
    }
    QTest::qWait(50);
    for (const LocalSocket& each : crowd)
        still += isDropped(each) ? 0 : 1;
    EXPECT_LE(still, 8) << "only the newest are held";
    EXPECT_EQ(claimElsewhere(folder.path(), {}, 5s), Role::HandedOver);
    EXPECT_EQ(taken.size(), 1);
}

TEST_F(CrowdedInstanceTest, WithoutDescriptorsItWaitsAndComesBack)
{
    std::deque<LocalSocket> crowd;
    for (int i = 0; i < 10; ++i)
        crowd.push_back(stranger());
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const int next = ::dup(0);
    ::close(next);
    rlimit none = before;
    none.rlim_cur = rlim_t(next);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const double start = processorSeconds();
    QTest::qWait(1'000);
    const double used = processorSeconds() - start;
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_LT(used, 0.3) << "seconds of processor time in one of waiting";
    crowd.clear();
    EXPECT_EQ(claimElsewhere(folder.path(), {}, 5s), Role::HandedOver);
}

} // namespace
} // namespace orvane
