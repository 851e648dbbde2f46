// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/UnsavedWork.h"

#include "core/versions/NoteVersion.h"

#include <QHash>

#include <algorithm>

namespace orvane {

int UnsavedWork::words() const
{
    int sum = 0;
    for (const UnsavedNote& note : notes)
        sum += note.words;
    return sum;
}

std::optional<Timestamp> UnsavedWork::since() const
{
    const auto first = std::ranges::min_element(notes, {}, &UnsavedNote::since);
    return first == notes.end() ? std::nullopt : std::optional(first->since);
}

QList<StoreSides::Difference> StoreSides::differences() const
{
    using Kind = Difference::Kind;
    QHash<QUuid, Shared<NoteRecord>> other;
    for (const Shared<NoteRecord>& note : theirs.notes)
        other.insert(note->id, note);
    QList<Difference> differences;
    for (const Shared<NoteRecord>& note : mine.notes) {
        const auto found = other.constFind(note->id);
        if (found == other.cend()) {
            differences.append({note->id, Kind::OnlyMine, note, std::nullopt});
            continue;
        }
        if (*note != **found) {
            const bool mineIsNewer = note->updatedAt >= (*found)->updatedAt;
            differences.append(
                {note->id, mineIsNewer ? Kind::MineIsNewer : Kind::TheirsIsNewer, note, *found});
        }
        other.erase(found);
    }
    for (const Shared<NoteRecord>& note : theirs.notes) {
        if (other.contains(note->id))
            differences.append({note->id, Kind::OnlyTheirs, std::nullopt, note});
    }
    return differences;
}

NotebookFigures NotebookFigures::of(const NotebookSnapshot& notebook)
{
    NotebookFigures figures;
    figures.notes = int(notebook.notes.size());
    for (const Shared<NoteRecord>& note : notebook.notes) {
        figures.words += wordCount(note->body.readOrNothing());
        if (!figures.lastChange || note->updatedAt > *figures.lastChange)
            figures.lastChange = note->updatedAt;
    }
    return figures;
}

} // namespace orvane
