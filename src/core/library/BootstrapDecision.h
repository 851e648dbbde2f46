// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/ProjectRecord.h"
#include "platform/StoredWords.h"

#include <QList>
#include <QUuid>

#include <optional>
#include <variant>

namespace orvane {

/// Where the program goes at its start, as stored under `settings.general.launchDestination`.
enum class OrvaneWorkspaceLaunchDestination { Projects, LastProject, LastNote };

template <>
inline constexpr auto storedWords<OrvaneWorkspaceLaunchDestination> =
    std::to_array<QStringView>({u"projects", u"lastProject", u"lastNote"});

/// The words in the settings, "Launch to Projects" and so on.
[[nodiscard]] QString label(OrvaneWorkspaceLaunchDestination destination);

/// What to show first.
struct ShowBrowser {
    enum class Reason { NoProjects, FirstLaunchWelcome, Ordinary };
    Reason reason = Reason::Ordinary;
    std::optional<QUuid> selectedProjectID;

    bool operator==(const ShowBrowser&) const = default;
};
struct OpenSavedProject {
    QUuid projectID;

    bool operator==(const OpenSavedProject&) const = default;
};
using BootstrapDecision = std::variant<ShowBrowser, OpenSavedProject>;

/// `projects` in the browser's order. An unanswered welcome always shows the browser.
[[nodiscard]] BootstrapDecision
decideBootstrap(const QList<OrvaneProjectRecord>& projects, bool welcomeDismissed,
                std::optional<OrvaneWorkspaceLaunchDestination> destination,
                std::optional<QUuid> lastOpenedProjectID);

} // namespace orvane
