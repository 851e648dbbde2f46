// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/ProjectRecord.h"
#include "platform/AtomicFile.h"
#include "platform/FileStamp.h"
#include "platform/Machine.h"

#include <QHash>
#include <QStringList>

#include <expected>
#include <optional>
#include <vector>

namespace orvane {

/// Decides every path of the project library, finds projects by their manifests and creates new
/// ones. Two roots are read, the current one and one left by the earlier name of the product; only
/// the current one is written to. Never shows anything; main thread. Paths are absolute.
class ProjectLibraryController {
public:
    /// With an override that folder alone is the library.
    explicit ProjectLibraryController(UserFolders folders,
                                      std::optional<QString> projectsDirectoryOverride = {});

    /// Documents/OrvaneWorkspace, or the override.
    [[nodiscard]] QString projectsDirectoryPath() const;
    /// Documents/OrvaneNotes.
    [[nodiscard]] QString legacyProjectsDirectoryPath() const;
    /// The roots that discovery walks, current first; the legacy one only when it exists.
    [[nodiscard]] QStringList readableProjectsDirectoryPaths() const;
    std::expected<void, FileError> ensureProjectsDirectoryExists() const;

    /// Direct children of the roots that are folders with a manifest. Order within a root is that
    /// of the names; nothing is deduplicated.
    [[nodiscard]] QStringList projectRootPathsWithManifests();
    /// Reads the manifests; folders whose manifest can't be read or decoded are skipped, their
    /// files untouched. A manifest that has not changed on disk since the last call is not read
    /// again.
    [[nodiscard]] QList<OrvaneProjectRecord> decodedProjects(const QStringList& rootPaths);

    /// The projects of the library in the browser's order. Cheap when nothing changed on disk since
    /// the last call: then each project is only looked at.
    [[nodiscard]] QList<OrvaneProjectRecord> sortedProjects();
    /// How many folders had a manifest, readable or not, when `sortedProjects` last looked.
    [[nodiscard]] qsizetype manifestCount() const { return m_manifestCount; }

    /// Makes the project's folder, its data folder and its manifest. What was made before a
    /// failure stays behind.
    std::expected<OrvaneProjectRecord, FileError>
    createProject(const QString& name, const std::optional<QString>& iconName, Timestamp now);
    /// A free folder path in the current root: the sanitized name, or it with " 2", " 3" … behind.
    [[nodiscard]] QString uniqueProjectRootPath(const QString& name) const;
    /// Writes the manifest to the place it is read from, then to the visible place; only a failure
    /// of the first counts.
    static std::expected<void, FileError> writeManifest(const OrvaneProjectRecord& project);

    /// The data folder of a project: ".orvaneworkspace", or ".orvanenotes" where only that exists.
    [[nodiscard]] static QString projectDataDirectoryPath(const QString& rootPath);
    /// The manifest to read and to write first: the first that exists of the hidden and visible,
    /// current and legacy names, else the visible current one.
    [[nodiscard]] static QString manifestPath(const QString& rootPath);
    /// The visible manifest to write second.
    [[nodiscard]] static QString visibleManifestPath(const QString& rootPath);
    /// "/" and ":" become "-"; control characters are dropped; the length is cut to what a file
    /// name may have; blank or dots alone become "Untitled Project".
    [[nodiscard]] static QString sanitizedFolderName(const QString& name);

private:
    struct CachedProject {
        FileStamp folder;
        FileStamp manifest;
        QString manifestPath;
        std::optional<OrvaneProjectRecord> record;
    };

    /// A readable root as it was when it was last listed, and what tells that it still is.
    struct KnownRoot {
        struct Child {
            QByteArray folderName;
            QByteArray manifestName; ///< below the root
            FileStamp folder;
            FileStamp manifest;
        };
        QString path;
        FileStamp folder;
        std::vector<Child> children;
    };

    std::optional<OrvaneProjectRecord> decodedProject(const QString& rootPath);
    [[nodiscard]] bool isUnchanged() const;
    [[nodiscard]] std::vector<KnownRoot> knownRoots(const QStringList& projectPaths) const;

    UserFolders m_folders;
    std::optional<QString> m_override;
    QHash<QString, CachedProject> m_cache;
    std::vector<KnownRoot> m_knownRoots;
    QList<OrvaneProjectRecord> m_sorted;
    qsizetype m_manifestCount = 0;
};

} // namespace orvane
