// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/Blob.h"
#include "platform/Timestamp.h"

#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace orvane {

/// One folder of the Binder.
struct FolderRecord {
    QUuid id;
    QString name;
    Timestamp createdAt;
    /// Absent for a folder at the top of the project.
    std::optional<QUuid> parentFolderID;
    std::optional<QString> iconName;
    std::optional<Blob> titleRTF;
    QStringList tags;
    bool isPinned = false;

    bool operator==(const FolderRecord&) const = default;

    /// The Trash of every project, 00000000-0000-4000-8000-000000000001.
    static const QUuid trashFolderID;
    [[nodiscard]] bool isTrash() const { return id == trashFolderID; }

    /// The title in lists: the rich title's text, else the trimmed name, else "Untitled".
    [[nodiscard]] QString titleForList() const;
};

size_t qHash(const FolderRecord& folder, size_t seed = 0);

} // namespace orvane
