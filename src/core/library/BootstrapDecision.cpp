// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/library/BootstrapDecision.h"

#include <QCoreApplication>

namespace orvane {

using Destination = OrvaneWorkspaceLaunchDestination;

QString label(Destination destination)
{
    switch (destination) {
    case Destination::Projects:
        return QCoreApplication::translate("LaunchDestination", "Launch to Projects");
    case Destination::LastProject:
        return QCoreApplication::translate("LaunchDestination", "Launch to Last Project");
    case Destination::LastNote:
        return QCoreApplication::translate("LaunchDestination", "Launch to Last Note");
    }
    return {};
}

BootstrapDecision decideBootstrap(const QList<OrvaneProjectRecord>& projects, bool welcomeDismissed,
                                  std::optional<Destination> destination,
                                  std::optional<QUuid> lastOpenedProjectID)
{
    if (projects.isEmpty())
        return ShowBrowser{ShowBrowser::Reason::NoProjects, std::nullopt};
    if (!welcomeDismissed)
        return ShowBrowser{ShowBrowser::Reason::FirstLaunchWelcome, projects.first().id};
    const bool opensSaved =
        destination == Destination::LastProject || destination == Destination::LastNote;
    const auto isSaved = [&](const OrvaneProjectRecord& project) {
        return project.id == lastOpenedProjectID;
    };
    if (opensSaved && std::any_of(projects.begin(), projects.end(), isSaved))
        return OpenSavedProject{*lastOpenedProjectID};
    return ShowBrowser{ShowBrowser::Reason::Ordinary, projects.first().id};
}

} // namespace orvane
