// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/WaylandGlobals.h"

#include "shell/desktop/LocalSocket.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

QByteArray words(std::initializer_list<quint32> numbers)
{
    return {reinterpret_cast<const char*>(numbers.begin()), qsizetype(numbers.size() * 4)};
}

QByteArray message(quint32 object, quint32 opcode, const QByteArray& arguments)
{
    return words({object, quint32(arguments.size() + 8) << 16 | opcode}) + arguments;
}

QByteArray global(quint32 number, QByteArray name)
{
    const auto length = quint32(name.size() + 1);
    name.append(4 - name.size() % 4, '\0');
    return message(2, 0, words({number, length}) + name + words({1}));
}

TEST(WaylandGlobals, AreKnownOnceTheAnswerIsWhole)
{
    const QByteArray answer = message(1, 1, words({7})) + global(1, "wl_compositor") +
                              message(2, 1, words({9})) + global(2, "wl_shm") +
                              message(3, 0, words({0}));
    EXPECT_EQ(globalsIn(answer), (QList<QByteArray>{"wl_compositor", "wl_shm"}));
    for (qsizetype size = 0; size < answer.size(); ++size)
        EXPECT_EQ(globalsIn(answer.first(size)), std::nullopt) << size;
    struct Row {
        const char* name;
        QByteArray broken;
    };
    const Row rows[] = {
        {"a size that is too small", words({2, 4U << 16})},
        {"a text longer than its message", message(2, 0, words({1, 4000, 0, 1}))},
        {"a text of no length", message(2, 0, words({1, 0, 0, 1}))},
        {"no room for a text", message(2, 0, words({1}))},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(globalsIn(row.broken), std::nullopt);
        EXPECT_TRUE(
            globalsIn(row.broken + message(3, 0, {})).value_or(QList<QByteArray>()).isEmpty());
    }
}

TEST(WaylandGlobals, NobodyWaitsForACompositorThatDoesntAnswer)
{
    const QTemporaryDir folder;
    EXPECT_EQ(waylandGlobals(folder.filePath(u"nobody"_s)), std::nullopt);
    const LocalSocket silent = LocalSocket::listeningAt(folder.filePath(u"silent"_s));
    ASSERT_TRUE(silent.isOpen());
    EXPECT_EQ(waylandGlobals(folder.filePath(u"silent"_s)), std::nullopt);
}

} // namespace
} // namespace orvane
