// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/Records.h"
#include "core/library/BootstrapDecision.h"
#include "core/state/NavigationHistory.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using Destination = OrvaneWorkspaceLaunchDestination;
using Reason = ShowBrowser::Reason;

TEST(Bootstrap, DecidesWhatIsSeenFirst)
{
    QList<OrvaneProjectRecord> projects(2);
    projects[0].id = idOf(1);
    projects[1].id = idOf(2);
    struct Row {
        const char* name;
        bool hasProjects;
        bool welcomed;
        std::optional<Destination> destination;
        std::optional<QUuid> last;
        BootstrapDecision decision;
    };
    const ShowBrowser ordinary{Reason::Ordinary, idOf(1)};
    const Row rows[] = {
        {"nothing there", false, true, Destination::LastNote, idOf(1),
         ShowBrowser{Reason::NoProjects, std::nullopt}},
        {"welcome not answered", true, false, Destination::LastNote, idOf(2),
         ShowBrowser{Reason::FirstLaunchWelcome, idOf(1)}},
        {"setting never made", true, true, std::nullopt, idOf(2), ordinary},
        {"browser asked for", true, true, Destination::Projects, idOf(2), ordinary},
        {"last project", true, true, Destination::LastProject, idOf(2), OpenSavedProject{idOf(2)}},
        {"last note", true, true, Destination::LastNote, idOf(2), OpenSavedProject{idOf(2)}},
        {"last project deleted", true, true, Destination::LastProject, idOf(3), ordinary},
        {"none opened before", true, true, Destination::LastProject, std::nullopt, ordinary},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(decideBootstrap(row.hasProjects ? projects : QList<OrvaneProjectRecord>(),
                                  row.welcomed, row.destination, row.last),
                  row.decision);
    }
    for (const Destination each :
         {Destination::Projects, Destination::LastProject, Destination::LastNote})
        EXPECT_EQ(fromRawValue<OrvaneWorkspaceLaunchDestination>(rawValue(each)), each);
    EXPECT_EQ(fromRawValue<OrvaneWorkspaceLaunchDestination>(QString()), std::nullopt);
}

const auto everything = [](const QUuid&) {
    return true;
};

TEST(NavigationHistory, GoesBackAndForwardAndCutsWhatLayAhead)
{
    NavigationHistory history;
    EXPECT_EQ(history.navigate(-1, everything), std::nullopt);
    for (int i = 1; i <= 4; ++i)
        history.record(idOf(i));
    history.record(idOf(4)); // already there
    EXPECT_EQ(history.entries().size(), 4);
    EXPECT_EQ(history.navigate(-1, everything), idOf(3));
    EXPECT_EQ(history.navigate(-1, everything), idOf(2));
    EXPECT_TRUE(history.canGoForward());
    history.record(idOf(9));
    EXPECT_FALSE(history.canGoForward());
    EXPECT_EQ(history.entries(), (QList<QUuid>{idOf(1), idOf(2), idOf(9)}));
    EXPECT_EQ(history.navigate(1, everything), std::nullopt);
}

TEST(NavigationHistory, BackIntoADeletedNoteRemovesTheEntryAndStays)
{
    NavigationHistory history;
    for (int i = 1; i <= 3; ++i)
        history.record(idOf(i));
    const auto notTwo = [](const QUuid& id) {
        return id != idOf(2);
    };
    EXPECT_EQ(history.navigate(-1, notTwo), std::nullopt);
    EXPECT_EQ(history.entries(), (QList<QUuid>{idOf(1), idOf(3)}));
    EXPECT_EQ(history.index(), 1);
    EXPECT_EQ(history.navigate(-1, notTwo), idOf(1));
}

TEST(NavigationHistory, HoldsEighty)
{
    NavigationHistory history;
    for (int i = 0; i < 81; ++i)
        history.record(idOf(i));
    EXPECT_EQ(history.entries().size(), 80);
    EXPECT_EQ(history.entries().first(), idOf(1));
    EXPECT_EQ(history.index(), 79);
}

} // namespace
} // namespace orvane
