// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/library/BootstrapDecision.h"
#include "core/records/JsonObjectReader.h"
#include "platform/UserDefaults.h"

#include <QList>
#include <QUuid>

#include <optional>

/// Where the program stood when it was last used: keys of the user defaults.
namespace orvane::SessionKeys {

inline const Setting<QString> launchDestination{u"settings.general.launchDestination",
                                                QStringLiteral("projects")};
inline constexpr Setting<bool> welcomeDismissed{u"onboarding.firstLaunchWelcomeDismissed", false};
inline constexpr Setting<bool> confirmBeforeOpen{u"settings.projects.confirmBeforeOpen", true};

/// An identifier as text.
inline const QString lastOpenedProjectID = QStringLiteral("session.lastOpenedProjectID");
/// Identifiers as texts, most recent first.
inline const QString openProjectHistoryIDs = QStringLiteral("session.openProjectHistoryIDs.v1");

/// Folders outside the library in which a person has had words written to a file, as texts.
inline const QString rescueFoldersKey = QStringLiteral("session.rescueFolders.v1");

[[nodiscard]] inline QStringList rescueFolders(const UserDefaults& defaults)
{
    return defaults.get<QStringList>(rescueFoldersKey, {});
}

inline void addRescueFolder(UserDefaults& defaults, const QString& folder)
{
    QStringList folders = rescueFolders(defaults);
    folders.removeAll(folder);
    folders.prepend(folder);
    defaults.set(rescueFoldersKey, folders);
}

/// Identifiers as texts: the notes of long lines that are being shown, and those that took so long
/// to show that no start opens them by itself.
inline const QString slowNoteIDs = QStringLiteral("session.slowNoteIDs");

/// The note last selected in a project.
[[nodiscard]] inline QString lastOpenedNoteID(const QUuid& projectID)
{
    return QStringLiteral("session.lastOpenedNoteID.") + uuidText(projectID);
}

[[nodiscard]] inline std::optional<QUuid> readUuid(const UserDefaults& defaults, const QString& key)
{
    const auto text = defaults.get<QString>(key);
    return text ? uuidFromText(*text) : std::nullopt;
}

/// Texts that are no identifiers are dropped.
[[nodiscard]] inline QList<QUuid> readUuids(const UserDefaults& defaults, const QString& key)
{
    QList<QUuid> ids;
    for (const QString& text : defaults.get<QStringList>(key, {})) {
        if (const auto id = uuidFromText(text))
            ids.append(*id);
    }
    return ids;
}

inline void writeUuids(UserDefaults& defaults, const QString& key, const QList<QUuid>& ids)
{
    QStringList texts;
    for (const QUuid& id : ids)
        texts.append(uuidText(id));
    defaults.set(key, texts);
}

/// Nothing where the setting holds a word that names none.
[[nodiscard]] inline std::optional<OrvaneWorkspaceLaunchDestination>
readLaunchDestination(const UserDefaults& defaults)
{
    return fromRawValue<OrvaneWorkspaceLaunchDestination>(launchDestination.read(defaults));
}

} // namespace orvane::SessionKeys
