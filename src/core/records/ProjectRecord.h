// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/JsonObjectReader.h"
#include "platform/Timestamp.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <expected>
#include <optional>

namespace orvane {

/// A project's manifest file: who it is and how it shows in the browser.
struct OrvaneProjectManifest {
    /// Also the container id of the notes at the project root.
    QUuid id;
    QString name;
    Timestamp createdAt;
    /// Last change anywhere in the project.
    Timestamp updatedAt;
    std::optional<QString> iconName;
    std::optional<QByteArray> titleRTF;
    /// The project has had a store: from then on a missing one is a loss.
    bool hasStore = false;
    /// The colour of its cover, "#RRGGBB"; without one the icon decides.
    std::optional<QString> coverColor;
    /// What it held when its date was written, outside its Trash; for showing alone.
    std::optional<int> noteCount;
    std::optional<int> wordCount;

    bool operator==(const OrvaneProjectManifest&) const = default;

    /// Pretty-printed JSON with sorted keys, as it stands in the file.
    [[nodiscard]] QByteArray encoded() const;
    [[nodiscard]] static std::expected<OrvaneProjectManifest, JsonError>
    decoded(const QByteArray& bytes);
};

/// A project in memory: its manifest and its folder on disk.
struct OrvaneProjectRecord : OrvaneProjectManifest {
    /// Absolute path of the project's folder.
    QString rootPath;

    bool operator==(const OrvaneProjectRecord&) const = default;

    /// The rich title's text, else the trimmed name, else "Untitled Project".
    [[nodiscard]] QString titleForDisplay() const;
};

/// The browser's order: newer `updatedAt` first, equal ones by title regardless of case.
void sortProjects(QList<OrvaneProjectRecord>& projects);

} // namespace orvane
