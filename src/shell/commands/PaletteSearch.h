// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Timestamp.h"
#include "shell/commands/Command.h"

#include <QList>
#include <QUuid>

#include <variant>
#include <vector>

namespace orvane {

/// A command that would act now, as the palette lists it.
struct PaletteCommand {
    const Command* command = nullptr;
    QString title;
    QString menu;
    QString key;
};

/// A note of the open project.
struct PaletteNote {
    QUuid id;
    QString title;
    QUuid container;
    Timestamp updatedAt;
    bool isPdf = false;
};

/// One line of the palette's answer: the index of a command or note with the letters found in its
/// title, or the head of a section.
struct PaletteRow {
    enum class Kind { CommandsHead, NotesHead, Command, Note };
    Kind kind;
    qsizetype index = 0;
    int score = 0;
    QList<qsizetype> found;
    bool isScattered = false; ///< see `FuzzyMatch`

    bool operator==(const PaletteRow&) const = default;
    [[nodiscard]] bool isHead() const
    {
        return kind == Kind::CommandsHead || kind == Kind::NotesHead;
    }
};

/// What the palette searches, taken once when it opens.
class PaletteSearch {
public:
    PaletteSearch(std::vector<PaletteCommand> commands, std::vector<PaletteNote> notes);

    /// Commands first, then notes, each by how well it matches; equals as they came, notes the last
    /// changed first. Titles that have the letters only here and there are listed where nothing
    /// better is found. An empty query lists all commands and the notes last changed.
    [[nodiscard]] QList<PaletteRow> rows(const QString& query) const;
    /// The row that is meant best, of either kind; -1 when there is none.
    [[nodiscard]] static qsizetype bestRow(const QList<PaletteRow>& rows);

    [[nodiscard]] const PaletteCommand& command(const PaletteRow& row) const
    {
        return m_commands[size_t(row.index)];
    }
    [[nodiscard]] const PaletteNote& note(const PaletteRow& row) const
    {
        return m_notes[size_t(row.index)];
    }

private:
    std::vector<PaletteCommand> m_commands;
    std::vector<PaletteNote> m_notes;
    std::vector<QString> m_foldedCommands;
    std::vector<QString> m_foldedNotes;
};

} // namespace orvane
