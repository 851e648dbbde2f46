// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/ProjectRecord.h"
#include "platform/UserDefaults.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

/// What is remembered of a project's folder, so that it is known when its disk is gone, and told
/// from a copy of it.
struct KnownProject {
    /// Absolute path, as the library lists it.
    QString folder;
    QUuid id;
    QString title;
    std::optional<QString> iconName;
    /// When the folder was last there; kept to about an hour.
    Timestamp lastSeen;
    /// Whether it has been opened: of several folders with one id, the one that this is true of is
    /// the project, and the others are copies.
    bool wasOpened = false;
    /// A folder that stayed behind when its project was moved.
    bool isSetAside = false;

    bool operator==(const KnownProject&) const = default;
};

/// The projects that this person has seen on this machine, one entry a folder. Values; kept in the
/// user defaults under `projects.known.v1`.
class KnownProjects {
public:
    [[nodiscard]] static KnownProjects load(const UserDefaults& defaults);
    /// Writes them if they differ from what was loaded or saved last.
    void save(UserDefaults& defaults);

    [[nodiscard]] const QList<KnownProject>& all() const { return m_projects; }
    [[nodiscard]] const KnownProject* at(const QString& folder) const;
    /// The folder that is the project of this id: the one that was opened.
    [[nodiscard]] const KnownProject* opened(const QUuid& id) const;

    /// Takes over what the library lists now. A folder that is listed for the first time, with the
    /// id of one that is gone, is that project under another name.
    void see(const QList<OrvaneProjectRecord>& listed, Timestamp now);
    /// The project of this folder is being opened: from now on it is the one of its id, and what
    /// was known of the id elsewhere is set aside or, where nothing is there, forgotten.
    void open(const OrvaneProjectRecord& project, Timestamp now);
    void forget(const QString& folder);
    /// The folder has another name now.
    void move(const QString& from, const QString& to);

    /// Those that are not among `listed` and whose folder isn't there. Newest first.
    [[nodiscard]] QList<KnownProject> missing(const QList<OrvaneProjectRecord>& listed) const;

    bool operator==(const KnownProjects& other) const { return m_projects == other.m_projects; }

private:
    KnownProject* find(const QString& folder);

    QList<KnownProject> m_projects;
    QList<KnownProject> m_saved;
};

/// Whether a folder with the manifest of that id stands at `folder`.
[[nodiscard]] bool holdsProject(const QString& folder, const QUuid& id);

/// Whether the two paths lead to one folder.
[[nodiscard]] bool isSameFolder(const QString& one, const QString& other);

} // namespace orvane
