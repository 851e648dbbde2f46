// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NotebookSnapshot.h"
#include "core/store/StoreError.h"
#include "platform/Timestamp.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

/// When a note was first not saved, and how many words the store had of it then.
struct UnsavedSince {
    Timestamp since;
    int storedWords = 0;
};

struct UnsavedNote {
    QUuid id;
    QString title;
    /// Words that the store doesn't have; 0 when none were added.
    int words = 0;
    Timestamp since;

    bool operator==(const UnsavedNote&) const = default;
};

/// What is in memory and not in the store, and why.
struct UnsavedWork {
    QList<UnsavedNote> notes;
    /// Folders, order and the like, which no note shows.
    bool hasMore = false;
    StoreError error;

    [[nodiscard]] bool isEmpty() const { return notes.isEmpty() && !hasMore; }
    [[nodiscard]] int words() const;
    /// Of the first note.
    [[nodiscard]] std::optional<Timestamp> since() const;
};

/// Saving has stopped because of something that a person has to know or decide.
struct ProjectTrouble {
    enum class Kind {
        FolderGone,    ///< the project's folder can't be reached, though its disk can
        DiskGone,      ///< the disk that it is on can't be reached
        StoreReplaced, ///< another file stands at the place of the open store
    };
    Kind kind = Kind::FolderGone;
    Timestamp since;
    Timestamp lastTried;
    /// Where the words are kept until then; empty when there are none or no place took them.
    QString rescueFolder;

    bool operator==(const ProjectTrouble&) const = default;
};

/// A store that was replaced: what is open here, and what stands at its place.
struct StoreSides {
    NotebookSnapshot mine;
    NotebookSnapshot theirs;

    struct Difference {
        QUuid id;
        enum class Kind { OnlyMine, OnlyTheirs, MineIsNewer, TheirsIsNewer };
        Kind kind = Kind::OnlyMine;
        std::optional<Shared<NoteRecord>> mine;
        std::optional<Shared<NoteRecord>> theirs;
    };
    /// The notes that are not the same on both sides, in the order of mine, then theirs.
    [[nodiscard]] QList<Difference> differences() const;
};

/// What a person sees of a notebook at a glance.
struct NotebookFigures {
    int notes = 0;
    int words = 0;
    std::optional<Timestamp> lastChange;

    [[nodiscard]] static NotebookFigures of(const NotebookSnapshot& notebook);
};

} // namespace orvane
