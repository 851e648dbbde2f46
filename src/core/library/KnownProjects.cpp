// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/library/KnownProjects.h"

#include "core/library/ProjectLibraryController.h"
#include "platform/FolderHandle.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

const QString storedKey = u"projects.known.v1"_s;
constexpr double seenStepSeconds = 3600;

QJsonObject toJson(const KnownProject& project)
{
    QJsonObject object{
        {"folder"_L1, project.folder},       {"id"_L1, uuidText(project.id)},
        {"title"_L1, project.title},         {"lastSeen"_L1, toIso8601(project.lastSeen)},
        {"wasOpened"_L1, project.wasOpened}, {"isSetAside"_L1, project.isSetAside}};
    if (project.iconName)
        object.insert("iconName"_L1, *project.iconName);
    return object;
}

std::optional<KnownProject> fromJson(const QJsonValue& value)
{
    JsonObjectReader reader(value);
    KnownProject project;
    project.folder = reader.string("folder"_L1);
    project.id = reader.uuid("id"_L1);
    project.title = reader.string("title"_L1);
    project.lastSeen = reader.date("lastSeen"_L1);
    project.wasOpened = reader.optionalBoolean("wasOpened"_L1).value_or(false);
    project.isSetAside = reader.optionalBoolean("isSetAside"_L1).value_or(false);
    project.iconName = reader.optionalString("iconName"_L1);
    return reader.failed() ? std::nullopt : std::optional(project);
}

} // namespace

bool holdsProject(const QString& folder, const QUuid& id)
{
    const auto manifest = ProjectLibraryController::readManifest(folder);
    return manifest && manifest->id == id;
}

bool isSameFolder(const QString& one, const QString& other)
{
    if (one == other)
        return true;
    const auto first = FileIdentity::of(one);
    const auto second = FileIdentity::of(other);
    return first && second && *first == *second;
}

KnownProjects KnownProjects::load(const UserDefaults& defaults)
{
    KnownProjects known;
    const QJsonObject stored = defaults.get<QJsonObject>(storedKey, {});
    for (const QJsonValue value : stored.value("projects"_L1).toArray()) {
        auto project = fromJson(value);
        if (project && !known.at(project->folder))
            known.m_projects.append(*std::move(project));
    }
    known.m_saved = known.m_projects;
    return known;
}

void KnownProjects::save(UserDefaults& defaults)
{
    if (m_projects == m_saved)
        return;
    QJsonArray projects;
    for (const KnownProject& project : std::as_const(m_projects))
        projects.append(toJson(project));
    defaults.set(storedKey, QJsonObject{{"projects"_L1, projects}});
    m_saved = m_projects;
}

KnownProject* KnownProjects::find(const QString& folder)
{
    const auto it = std::ranges::find(m_projects, folder, &KnownProject::folder);
    return it == m_projects.end() ? nullptr : &*it;
}

const KnownProject* KnownProjects::at(const QString& folder) const
{
    const auto it = std::ranges::find(m_projects, folder, &KnownProject::folder);
    return it == m_projects.end() ? nullptr : &*it;
}

const KnownProject* KnownProjects::opened(const QUuid& id) const
{
    const auto it = std::ranges::find_if(
        m_projects, [&](const KnownProject& each) { return each.id == id && each.wasOpened; });
    return it == m_projects.end() ? nullptr : &*it;
}

void KnownProjects::see(const QList<OrvaneProjectRecord>& listed, Timestamp now)
{
    QHash<QString, qsizetype> places;
    for (qsizetype i = 0; i < m_projects.size(); ++i)
        places.insert(m_projects.at(i).folder, i);
    QSet<QString> present;
    for (const OrvaneProjectRecord& project : listed)
        present.insert(project.rootPath);
    for (const OrvaneProjectRecord& project : listed) {
        const auto place = places.constFind(project.rootPath);
        KnownProject* known = place == places.cend() ? nullptr : &m_projects[*place];
        if (!known) {
            const auto isFormer = [&](const KnownProject& each) {
                return each.id == project.id && !present.contains(each.folder) &&
                       !holdsProject(each.folder, each.id);
            };
            const auto former = std::ranges::find_if(m_projects, isFormer);
            if (former != m_projects.end()) {
                known = &*former;
            } else {
                m_projects.append(KnownProject{project.rootPath, project.id, {}, {}, now});
                known = &m_projects.last();
            }
            known->folder = project.rootPath;
        }
        if (known->id != project.id) {
            known->wasOpened = false;
            known->isSetAside = false;
        }
        known->id = project.id;
        known->title = project.titleForDisplay();
        known->iconName = project.iconName;
        if (now.secondsSince(known->lastSeen) > seenStepSeconds)
            known->lastSeen = now;
    }
}

void KnownProjects::open(const OrvaneProjectRecord& project, Timestamp now)
{
    for (KnownProject& each : m_projects) {
        if (each.id != project.id || each.folder == project.rootPath)
            continue;
        each.isSetAside = each.isSetAside || each.wasOpened;
        each.wasOpened = false;
    }
    m_projects.removeIf([&](const KnownProject& each) {
        return each.id == project.id && each.isSetAside && each.folder != project.rootPath &&
               !holdsProject(each.folder, each.id);
    });
    KnownProject* known = find(project.rootPath);
    if (!known) {
        m_projects.append(KnownProject{});
        known = &m_projects.last();
    }
    *known = {project.rootPath,
              project.id,
              project.titleForDisplay(),
              project.iconName,
              now,
              true,
              false};
}

void KnownProjects::forget(const QString& folder)
{
    m_projects.removeIf([&](const KnownProject& each) { return each.folder == folder; });
}

void KnownProjects::move(const QString& from, const QString& to)
{
    if (!find(from))
        return;
    forget(to);
    find(from)->folder = to;
}

QList<KnownProject> KnownProjects::missing(const QList<OrvaneProjectRecord>& listed) const
{
    QSet<QString> present;
    for (const OrvaneProjectRecord& project : listed)
        present.insert(project.rootPath);
    QList<KnownProject> gone;
    for (const KnownProject& each : m_projects) {
        if (!present.contains(each.folder) && !holdsProject(each.folder, each.id))
            gone.append(each);
    }
    std::ranges::stable_sort(gone, std::ranges::greater(), &KnownProject::lastSeen);
    return gone;
}

} // namespace orvane
