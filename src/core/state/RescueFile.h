// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NotebookSnapshot.h"
#include "core/store/PersistenceController.h"
#include "platform/AtomicFile.h"
#include "platform/Clock.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QUuid>

#include <expected>
#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// Whose words a rescue file keeps.
struct RescueOrigin {
    QUuid projectID;
    QString projectTitle;
    QString projectFolder;
    Timestamp writtenAt;
    /// Whether the words wait to be put in place; else they are only kept.
    bool isOffered = true;

    bool operator==(const RescueOrigin&) const = default;
};

/// One rescued note, as the description beside the small store tells it.
struct RescuedNote {
    QUuid id;
    QString title;
    /// When the version in the project's store was last changed; nothing for a note that is not
    /// in it.
    std::optional<Timestamp> storedUpdatedAt;

    bool operator==(const RescuedNote&) const = default;
};

/// A rescue file on disk.
struct FoundRescue {
    QString folder;
    RescueOrigin origin;
    QList<RescuedNote> notes;

    bool operator==(const FoundRescue&) const = default;
};

/// Keeps notes that can't be saved where they belong: a folder with a small store of its own, the
/// same words as text files, and a description by which they find back to their project. Main
/// thread.
class RescueFile {
public:
    /// Makes a rescue file at `folder`, where nothing is yet.
    [[nodiscard]] static std::expected<std::unique_ptr<RescueFile>, FileError>
    create(const QString& folder, const RescueOrigin& origin, const Clock& clock);
    /// The same with a name after the project and the day, in a folder that is made where needed.
    [[nodiscard]] static std::expected<std::unique_ptr<RescueFile>, FileError>
    createIn(const QString& parent, const RescueOrigin& origin, const Clock& clock);
    ~RescueFile();

    [[nodiscard]] const QString& folder() const { return m_folder; }
    /// Writes the notes as they are now; what was kept of other notes stays. A note whose text
    /// can't be read any more is left out. `stored` says of a note what
    /// `RescuedNote::storedUpdatedAt` tells.
    std::expected<void, FileError>
    keep(const QList<Shared<NoteRecord>>& notes, const QList<Shared<FolderRecord>>& folders,
         const std::function<std::optional<Timestamp>(const QUuid&)>& stored);

    /// The rescue files in these folders that wait to be put in place; the newest first. What
    /// can't be read as one is passed over and left alone.
    [[nodiscard]] static QList<FoundRescue> find(const QStringList& parents);
    /// The notes and folders that a rescue file holds, their bytes read.
    [[nodiscard]] static std::expected<NotebookSnapshot, FileError> read(const QString& folder,
                                                                         const Clock& clock);

private:
    RescueFile() = default;
    std::expected<void, FileError> begin(const Clock& clock);
    std::expected<void, FileError> writeTexts(const QList<Shared<NoteRecord>>& notes);
    std::expected<void, FileError> describe() const;

    QString m_folder;
    RescueOrigin m_origin;
    QList<RescuedNote> m_notes;
    QHash<QUuid, QString> m_textFiles;
    QHash<QUuid, Shared<NoteRecord>> m_kept;
    NotebookSnapshot m_content;
    std::unique_ptr<PersistenceController> m_store;
};

} // namespace orvane
