// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/ProjectRecord.h"
#include "platform/AtomicFile.h"
#include "platform/FileStamp.h"
#include "platform/Machine.h"

#include <QHash>
#include <QStringList>

#include <expected>
#include <functional>
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

    /// Puts what a new project begins with into the data folder given.
    using Fill = std::function<std::expected<void, FileError>(const QString& dataFolder)>;
    /// Makes a project: under a name that discovery passes over, filled, and renamed when it is
    /// complete, so that a failure or a crash leaves no project in part. A manifest that is made
    /// with a `fill` says that the project has a store.
    std::expected<OrvaneProjectRecord, FileError>
    createProject(const QString& name, const std::optional<QString>& iconName, Timestamp now,
                  const Fill& fill = {});
    /// The same with the manifest given, id and dates included, at a path of the caller's choice,
    /// where nothing is yet; the folder above it exists.
    static std::expected<OrvaneProjectRecord, FileError>
    createProjectAt(const QString& rootPath, const OrvaneProjectManifest& manifest,
                    const Fill& fill);
    /// Removes what a crash has left of projects that were being made more than an hour ago.
    void removeUnfinishedProjects(Timestamp now) const;
    /// A free folder path in the current root: the sanitized name, or it with " 2", " 3" … behind.
    [[nodiscard]] QString uniqueProjectRootPath(const QString& name) const;
    /// Writes the manifest to the place it is read from, then to the visible place; only a failure
    /// of the first counts.
    static std::expected<void, FileError> writeManifest(const OrvaneProjectRecord& project);
    static std::expected<void, FileError> writeManifest(const OrvaneProjectManifest& manifest,
                                                        const QString& rootPath);
    /// The manifest of a project's folder; an error when it can't be read or is none.
    [[nodiscard]] static std::expected<OrvaneProjectManifest, FileError>
    readManifest(const QString& rootPath);
    /// Whether the folder shows that the project once had a store, whatever is there of it now:
    /// its manifest says so, or a history, assets, a workspace state or a recovery lies in its
    /// data folder, or it was changed after it was made.
    [[nodiscard]] static bool hadStore(const OrvaneProjectManifest& manifest,
                                       const QString& rootPath);

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

    /// A readable root as it was when it was last listed, and what tells that it still is. Folders
    /// without a manifest belong to it: a project that is being copied in gets its manifest later,
    /// and the root doesn't change then.
    struct KnownRoot {
        struct Child {
            QByteArray folderName;
            QByteArray manifestName; ///< below the root; empty for a folder without one
            FileStamp folder;
            FileStamp manifest;
        };
        QString path;
        FileStamp folder;
        std::vector<Child> children;
    };

    /// What was listed of one root, and the folders in it that hold a manifest.
    struct ListedRoot {
        KnownRoot known;
        QStringList projects;
    };
    [[nodiscard]] ListedRoot list(const QString& root) const;
    std::optional<OrvaneProjectRecord> decodedProject(const QString& rootPath);
    [[nodiscard]] bool isUnchanged() const;
    void completeChildren(KnownRoot& root) const;

    UserFolders m_folders;
    std::optional<QString> m_override;
    QHash<QString, CachedProject> m_cache;
    std::vector<KnownRoot> m_knownRoots;
    QList<OrvaneProjectRecord> m_sorted;
    qsizetype m_manifestCount = 0;
};

} // namespace orvane
