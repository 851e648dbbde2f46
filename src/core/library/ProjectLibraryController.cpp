// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/library/ProjectLibraryController.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1String currentName("OrvaneWorkspace");
constexpr QLatin1String legacyName("OrvaneNotes");
constexpr QLatin1String visibleManifest("orvaneworkspace-project.json");
constexpr QLatin1String legacyVisibleManifest("orvanenotes-project.json");
// In the order in which they are looked for.
constexpr QLatin1String manifestNames[] = {
    QLatin1String(".orvaneworkspace-project.json"),
    QLatin1String(".orvanenotes-project.json"),
    visibleManifest,
    legacyVisibleManifest,
};
// Projects that are being made; discovery passes over them.
constexpr QLatin1String unfinishedPrefix(".orvane-unfinished-");
constexpr qint64 unfinishedAgeSeconds = 3600;
constexpr int nameAttempts = 100;
// Most file systems hold 255 bytes in a name; a counter still has to fit behind it.
constexpr int longestFolderNameBytes = 240;

bool exists(const QString& path)
{
    return FileStamp::of(path).exists;
}

QString untitledProject()
{
    return QCoreApplication::translate("Project", "Untitled Project");
}

std::optional<QString> existingManifest(const QString& rootPath)
{
    for (const QLatin1String name : manifestNames) {
        if (QString path = rootPath + u'/' + name; exists(path))
            return path;
    }
    return std::nullopt;
}

// Cuts whole characters, never through a surrogate pair.
QString cutToBytes(QString name, int bytes)
{
    while (name.toUtf8().size() > bytes) {
        const bool isPair = name.size() >= 2 && name.at(name.size() - 1).isLowSurrogate();
        name.chop(isPair ? 2 : 1);
    }
    return name;
}

// A folder made whole takes its name, unless something has it.
std::expected<void, FileError> renameToFree(const QString& from, const QString& to)
{
    if (QFileInfo::exists(to) || QFileInfo(to).isSymLink())
        return std::unexpected(FileError{FileError::Code::Exists, to, qt_error_string(EEXIST)});
    if (!QDir().rename(from, to))
        return std::unexpected(FileError{FileError::Code::Other, to, qt_error_string(errno)});
    return syncFolder(QFileInfo(to).absolutePath());
}

} // namespace

ProjectLibraryController::ProjectLibraryController(UserFolders folders,
                                                   std::optional<QString> projectsDirectoryOverride)
    : m_folders(std::move(folders))
    , m_override(std::move(projectsDirectoryOverride))
{}

QString ProjectLibraryController::projectsDirectoryPath() const
{
    return m_override ? *m_override : m_folders.documents + u'/' + currentName;
}

QString ProjectLibraryController::legacyProjectsDirectoryPath() const
{
    return m_folders.documents + u'/' + legacyName;
}

QStringList ProjectLibraryController::readableProjectsDirectoryPaths() const
{
    QStringList roots{projectsDirectoryPath()};
    const QString legacy = legacyProjectsDirectoryPath();
    if (!m_override && exists(legacy) && QDir::cleanPath(legacy) != QDir::cleanPath(roots.first()))
        roots.append(legacy);
    return roots;
}

std::expected<void, FileError> ProjectLibraryController::ensureProjectsDirectoryExists() const
{
    return makeFolder(projectsDirectoryPath());
}

ProjectLibraryController::ListedRoot ProjectLibraryController::list(const QString& root) const
{
    ListedRoot listed;
    listed.known.path = root;
    // Looked at before it is read, so that a change in between shows the next time.
    listed.known.folder = FileStamp::of(root);
    const QStringList names = QDir(root).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString& name : names) {
        if (name.startsWith(unfinishedPrefix))
            continue;
        QString path = root + u'/' + name;
        const FileStamp folder = FileStamp::of(path);
        if (folder.exists && !folder.isFolder)
            continue; // a link that leads nowhere may lead to a folder when its disk is back
        // A manifest appears or vanishes only with a change of its folder.
        const auto cached = m_cache.constFind(path);
        const bool known =
            cached != m_cache.cend() && cached->folder.isSettled && cached->folder == folder;
        listed.known.children.push_back({QFile::encodeName(name), {}, folder, {}});
        if (folder.exists && (known || existingManifest(path)))
            listed.projects.append(std::move(path));
    }
    listed.projects.sort();
    return listed;
}

QStringList ProjectLibraryController::projectRootPathsWithManifests()
{
    (void)ensureProjectsDirectoryExists();
    QStringList found;
    for (const QString& root : readableProjectsDirectoryPaths())
        found += list(root).projects;
    return found;
}

QList<OrvaneProjectRecord> ProjectLibraryController::decodedProjects(const QStringList& rootPaths)
{
    QList<OrvaneProjectRecord> projects;
    projects.reserve(rootPaths.size());
    for (const QString& path : rootPaths) {
        if (auto project = decodedProject(path))
            projects.append(*std::move(project));
    }
    return projects;
}

std::optional<OrvaneProjectRecord> ProjectLibraryController::decodedProject(const QString& rootPath)
{
    const FileStamp folder = FileStamp::of(rootPath);
    if (!folder.isFolder) {
        m_cache.remove(rootPath);
        return std::nullopt;
    }
    const auto cached = m_cache.constFind(rootPath);
    if (cached != m_cache.cend() && cached->folder == folder && cached->folder.isSettled &&
        cached->manifest.isSettled && cached->manifest == FileStamp::of(cached->manifestPath))
        return cached->record;

    CachedProject fresh;
    fresh.folder = folder;
    fresh.manifestPath = manifestPath(rootPath);
    fresh.manifest = FileStamp::of(fresh.manifestPath);
    if (const auto bytes = readFile(fresh.manifestPath, FileLimit::manifest)) {
        if (auto manifest = OrvaneProjectManifest::decoded(*bytes))
            fresh.record = OrvaneProjectRecord{*std::move(manifest), rootPath};
    }
    return m_cache.insert(rootPath, fresh)->record;
}

QList<OrvaneProjectRecord> ProjectLibraryController::sortedProjects()
{
    if (isUnchanged())
        return m_sorted;
    (void)ensureProjectsDirectoryExists();
    QStringList paths;
    m_knownRoots.clear();
    for (const QString& root : readableProjectsDirectoryPaths()) {
        ListedRoot listed = list(root);
        paths += listed.projects;
        m_knownRoots.push_back(std::move(listed.known));
    }
    m_manifestCount = paths.size();
    m_sorted = decodedProjects(paths);
    sortProjects(m_sorted);
    for (KnownRoot& root : m_knownRoots)
        completeChildren(root);
    return m_sorted;
}

void ProjectLibraryController::completeChildren(KnownRoot& root) const
{
    for (KnownRoot::Child& child : root.children) {
        const auto cached =
            m_cache.constFind(root.path + u'/' + QFile::decodeName(child.folderName));
        if (cached == m_cache.cend() || cached->folder != child.folder)
            continue;
        child.manifestName = QFile::encodeName(cached->manifestPath.mid(root.path.size() + 1));
        child.manifest = cached->manifest;
    }
}

bool ProjectLibraryController::isUnchanged() const
{
    const QStringList roots = readableProjectsDirectoryPaths();
    if (m_knownRoots.empty() || size_t(roots.size()) != m_knownRoots.size())
        return false;
    for (size_t i = 0; i < m_knownRoots.size(); ++i) {
        const KnownRoot& known = m_knownRoots[i];
        const FolderStamps stamps(known.path);
        if (known.path != roots.at(qsizetype(i)) || !known.folder.isSettled ||
            stamps.of({}) != known.folder)
            return false;
        const auto isAsBefore = [&](const QByteArray& name, const FileStamp& before) {
            return (before.isSettled || !before.exists) && stamps.of(name) == before;
        };
        for (const KnownRoot::Child& child : known.children) {
            if (!isAsBefore(child.folderName, child.folder) ||
                (!child.manifestName.isEmpty() && !isAsBefore(child.manifestName, child.manifest)))
                return false;
        }
    }
    return true;
}

std::expected<OrvaneProjectRecord, FileError>
ProjectLibraryController::createProject(const QString& name, const std::optional<QString>& iconName,
                                        Timestamp now, const Fill& fill)
{
    if (auto library = ensureProjectsDirectoryExists(); !library)
        return std::unexpected(library.error());
    QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        trimmed = untitledProject();
    OrvaneProjectManifest manifest;
    manifest.id = QUuid::createUuid();
    manifest.name = trimmed;
    manifest.createdAt = now;
    manifest.updatedAt = now;
    manifest.iconName = iconName;
    for (int attempt = 0;; ++attempt) {
        // Another program may take the name while the project is being made.
        auto made = createProjectAt(uniqueProjectRootPath(trimmed), manifest, fill);
        if (made || made.error().code != FileError::Code::Exists || attempt == nameAttempts)
            return made;
    }
}

std::expected<OrvaneProjectRecord, FileError>
ProjectLibraryController::createProjectAt(const QString& rootPath,
                                          const OrvaneProjectManifest& manifest, const Fill& fill)
{
    const QString above = QFileInfo(rootPath).absolutePath();
    const QString unfinished =
        above + u'/' + unfinishedPrefix + QUuid::createUuid().toString(QUuid::Id128).left(12);
    OrvaneProjectRecord project{manifest, rootPath};
    project.hasStore = project.hasStore || bool(fill);
    const auto make = [&]() -> std::expected<void, FileError> {
        const QString dataFolder = projectDataDirectoryPath(unfinished);
        if (auto made = makeFolder(dataFolder); !made)
            return made;
        if (fill) {
            if (auto filled = fill(dataFolder); !filled)
                return filled;
        }
        if (auto written = writeManifest(project, unfinished); !written)
            return written;
        return renameToFree(unfinished, rootPath);
    };
    if (auto made = make(); !made) {
        QDir(unfinished).removeRecursively();
        return std::unexpected(made.error());
    }
    return project;
}

void ProjectLibraryController::removeUnfinishedProjects(Timestamp now) const
{
    const QDir library(projectsDirectoryPath());
    const QStringList names =
        library.entryList({unfinishedPrefix + u'*'}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
    for (const QString& name : names) {
        const QFileInfo info(library.filePath(name));
        if (info.lastModified().secsTo(now.toUtc()) > unfinishedAgeSeconds)
            QDir(info.filePath()).removeRecursively();
    }
}

QString ProjectLibraryController::uniqueProjectRootPath(const QString& name) const
{
    const QString base = projectsDirectoryPath() + u'/' + sanitizedFolderName(name);
    QString path = base;
    for (int i = 2; exists(path); ++i)
        path = u"%1 %2"_s.arg(base).arg(i);
    return path;
}

std::expected<void, FileError>
ProjectLibraryController::writeManifest(const OrvaneProjectRecord& project)
{
    return writeManifest(project, project.rootPath);
}

std::expected<void, FileError>
ProjectLibraryController::writeManifest(const OrvaneProjectManifest& manifest,
                                        const QString& rootPath)
{
    const QByteArray bytes = manifest.encoded();
    const QString first = manifestPath(rootPath);
    const QString second = visibleManifestPath(rootPath);
    if (auto written = writeFileAtomically(first, bytes); !written)
        return written;
    if (second != first)
        (void)writeFileAtomically(second, bytes);
    return {};
}

std::expected<OrvaneProjectManifest, FileError>
ProjectLibraryController::readManifest(const QString& rootPath)
{
    const QString path = manifestPath(rootPath);
    const auto bytes = readFile(path, FileLimit::manifest);
    if (!bytes)
        return std::unexpected(bytes.error());
    auto manifest = OrvaneProjectManifest::decoded(*bytes);
    if (!manifest)
        return std::unexpected(FileError{FileError::Code::Other, path, manifest.error().text()});
    return *std::move(manifest);
}

bool ProjectLibraryController::hadStore(const OrvaneProjectManifest& manifest,
                                        const QString& rootPath)
{
    if (manifest.hasStore || manifest.updatedAt != manifest.createdAt)
        return true;
    const QStringList names =
        QDir(projectDataDirectoryPath(rootPath))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    return std::ranges::any_of(names, [](const QString& name) {
        return name == "history"_L1 || name == "assets"_L1 || name == "workspace-state.json"_L1 ||
               name.startsWith("PersistentStoreRecovery"_L1);
    });
}

QString ProjectLibraryController::projectDataDirectoryPath(const QString& rootPath)
{
    const QString current = rootPath + "/.orvaneworkspace"_L1;
    const QString legacy = rootPath + "/.orvanenotes"_L1;
    return !exists(current) && exists(legacy) ? legacy : current;
}

QString ProjectLibraryController::manifestPath(const QString& rootPath)
{
    return existingManifest(rootPath).value_or(rootPath + u'/' + visibleManifest);
}

QString ProjectLibraryController::visibleManifestPath(const QString& rootPath)
{
    const bool isLegacy = exists(rootPath + u'/' + manifestNames[1]) ||
                          exists(rootPath + u'/' + legacyVisibleManifest);
    return rootPath + u'/' + (isLegacy ? legacyVisibleManifest : visibleManifest);
}

QString ProjectLibraryController::sanitizedFolderName(const QString& name)
{
    QString clean;
    for (const QChar c : name) {
        if (c == u'/' || c == u':')
            clean += u'-';
        else if (c.category() != QChar::Other_Control)
            clean += c;
    }
    clean = cutToBytes(clean.trimmed(), longestFolderNameBytes).trimmed();
    const bool isOnlyDots = clean.count(u'.') == clean.size();
    return isOnlyDots ? untitledProject() : clean;
}

} // namespace orvane
