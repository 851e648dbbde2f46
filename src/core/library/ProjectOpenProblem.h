// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/StoreError.h"
#include "platform/AtomicFile.h"

#include <QString>
#include <QUuid>

namespace orvane {

/// Why a project stays closed: its store was damaged and has been moved aside.
struct ProjectLoadProtectionAlert {
    QUuid id;
    QString projectName;
    QString backupPath;
    QString errorDescription;

    bool operator==(const ProjectLoadProtectionAlert&) const = default;

    /// The alert's text, below the title "Project Data Protected".
    [[nodiscard]] QString message() const;
};

/// Why a project was not opened though nothing is wrong with its files: a message for a person,
/// which says what happened, that nothing was changed, and what to do.
struct ProjectOpenProblem {
    QString projectName;
    QString title;
    QString message;

    bool operator==(const ProjectOpenProblem&) const = default;

    [[nodiscard]] static ProjectOpenProblem of(const QString& projectName,
                                               const StoreOpenError& error);
    [[nodiscard]] static ProjectOpenProblem of(const QString& projectName, const FileError& error);
    /// The project's folder isn't there any more.
    [[nodiscard]] static ProjectOpenProblem vanished(const QString& projectName,
                                                     const QString& folder);
};

} // namespace orvane
