// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/library/ProjectOpenProblem.h"

#include <QCoreApplication>
#include <QSysInfo>

namespace orvane {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ProjectOpenProblem)
};

// Whether a program on another machine still runs can't be looked up from here.
QString leftLockHint(const StoreOpenError& error)
{
    if (!error.holder || error.holder->host == QSysInfo::machineHostName())
        return {};
    return Words::tr("\n\nIf no program has it open any more, remove this file first:\n%1")
        .arg(error.path);
}

QString holderText(const std::optional<LockHolder>& holder)
{
    if (!holder)
        return Words::tr("another program");
    return Words::tr("%1 (process %2 on %3)")
        .arg(holder->program.isEmpty() ? Words::tr("another program") : holder->program)
        .arg(holder->processId)
        .arg(holder->host);
}

} // namespace

QString ProjectLoadProtectionAlert::message() const
{
    return Words::tr("OrvaneWorkspace could not safely load \"%1\", so it stopped before opening "
                     "an empty project.\n\nThe existing Core Data store files were moved "
                     "to:\n%2\n\nThis project will stay closed until the recovery marker is "
                     "inspected.\n\nError:\n%3")
        .arg(projectName, backupPath, errorDescription);
}

ProjectOpenProblem ProjectOpenProblem::of(const QString& projectName, const StoreOpenError& error)
{
    using Code = StoreOpenError::Code;
    switch (error.code) {
    case Code::NewerSchema:
        return {
            projectName, Words::tr("Saved by a Newer Version"),
            Words::tr("\"%1\" was saved by a newer version of OrvaneWorkspace. Nothing in it was "
                      "changed. Update OrvaneWorkspace, then open the project again.")
                .arg(projectName)};
    case Code::LockedByOther:
        return {projectName, Words::tr("Project Is Open Elsewhere"),
                Words::tr("\"%1\" is open in %2. Close it there, then open it here. Nothing was "
                          "changed.")
                        .arg(projectName, holderText(error.holder)) +
                    leftLockHint(error)};
    case Code::Missing:
        return {projectName, Words::tr("Project Data Is Missing"),
                Words::tr(
                    "The notes of \"%1\" are not where they were:\n%2\n\nNothing was made in their "
                    "place, and what is left beside them was kept. The project stays closed until "
                    "the file is back: look for it in the Trash, on a disk that is not connected, "
                    "or in a backup, and put it there again.")
                    .arg(projectName, error.path)};
    case Code::ForeignSchema:
        return {projectName, Words::tr("Project Data Was Altered"),
                Words::tr(
                    "The data of \"%1\" holds parts that OrvaneWorkspace did not make and that "
                    "could change or delete notes:\n%2\n\nThe project was not opened and nothing "
                    "was changed. Remove these parts with the program that made them, or put back "
                    "a backup of this file:\n%3")
                    .arg(projectName, error.detail, error.path)};
    case Code::NoAccess:
        return {
            projectName, Words::tr("Project Can't Be Opened"),
            Words::tr("The folder of \"%1\" can't be read or written:\n%2\n\nNothing was changed. "
                      "Check who may use the folder, then open the project again.")
                .arg(projectName, error.path)};
    case Code::NoSpace:
        return {
            projectName, Words::tr("Disk Is Full"),
            Words::tr("There is not enough space to open \"%1\". Nothing was changed. Free some "
                      "space, then open the project again.")
                .arg(projectName)};
    case Code::MigrationFailed:
        return {
            projectName, Words::tr("Project Can't Be Brought Up to Date"),
            Words::tr("\"%1\" was saved by an older version, and bringing it up to date failed. "
                      "Its files are as they were.\n\nError:\n%2")
                .arg(projectName, error.detail)};
    case Code::RecoveryFailed:
        return {
            projectName, Words::tr("Project Data Needs Attention"),
            Words::tr("\"%1\" is damaged and its files could not be moved to a safe place. They "
                      "are where they were:\n%2\n\nError:\n%3")
                .arg(projectName, error.path, error.detail)};
    case Code::Unreadable:
        break;
    }
    return {
        projectName, Words::tr("Project Can't Be Read"),
        Words::tr("The files of \"%1\" can't be read:\n%2\n\nNothing was changed.\n\nError:\n%3")
            .arg(projectName, error.path, error.detail)};
}

ProjectOpenProblem ProjectOpenProblem::of(const QString& projectName, const FileError& error)
{
    return {projectName, Words::tr("Project Can't Be Opened"),
            Words::tr("The files of \"%1\" can't be read or written:\n%2\n\nNothing was "
                      "changed.\n\nError:\n%3")
                .arg(projectName, error.path, error.detail)};
}

ProjectOpenProblem ProjectOpenProblem::vanished(const QString& projectName, const QString& folder)
{
    return {
        projectName, Words::tr("Project Is Not There"),
        Words::tr("The folder of \"%1\" is not at its place any more:\n%2\n\nIt was renamed, "
                  "moved or removed, or its disk is not connected. Nothing was made in its place. "
                  "When it is back, open it again.")
            .arg(projectName, folder)};
}

} // namespace orvane
