// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/commands/PaletteSearch.h"

#include "shell/commands/FuzzyMatch.h"

#include <algorithm>

namespace orvane {

namespace {

using Kind = PaletteRow::Kind;

constexpr qsizetype mostCommands = 12;
constexpr qsizetype mostNotes = 50;
constexpr qsizetype recentNotes = 8;

template <typename Item>
std::vector<QString> folded(const std::vector<Item>& items)
{
    std::vector<QString> texts;
    texts.reserve(items.size());
    for (const Item& item : items)
        texts.push_back(foldedForMatch(item.title));
    return texts;
}

/// The `most` best matches; nothing is kept of the others, of which there may be very many.
QList<PaletteRow> matches(Kind kind, const QString& pattern, const std::vector<QString>& titles,
                          qsizetype most)
{
    const auto isBetter = [](const PaletteRow& left, const PaletteRow& right) {
        if (left.isScattered != right.isScattered)
            return right.isScattered;
        return left.score != right.score ? left.score > right.score : left.index < right.index;
    };
    QList<PaletteRow> best;
    for (size_t i = 0; i < titles.size(); ++i) {
        auto match = fuzzyMatch(pattern, titles[i]);
        if (!match)
            continue;
        const PaletteRow row{kind, qsizetype(i), match->score, std::move(match->positions),
                             match->isScattered};
        if (best.size() == most && !isBetter(row, best.last()))
            continue;
        best.insert(std::upper_bound(best.begin(), best.end(), row, isBetter), row);
        if (best.size() > most)
            best.removeLast();
    }
    return best;
}

void append(QList<PaletteRow>& rows, Kind head, const QList<PaletteRow>& section)
{
    if (section.isEmpty())
        return;
    rows.append(PaletteRow{head, 0, 0, {}, false});
    rows.append(section);
}

} // namespace

PaletteSearch::PaletteSearch(std::vector<PaletteCommand> commands, std::vector<PaletteNote> notes)
    : m_commands(std::move(commands))
    , m_notes(std::move(notes))
{
    std::ranges::stable_sort(m_notes, std::ranges::greater(), &PaletteNote::updatedAt);
    m_foldedCommands = folded(m_commands);
    m_foldedNotes = folded(m_notes);
}

QList<PaletteRow> PaletteSearch::rows(const QString& query) const
{
    const QString pattern = foldedForMatch(query.trimmed());
    const bool all = pattern.isEmpty();
    QList<PaletteRow> commands = matches(Kind::Command, pattern, m_foldedCommands,
                                         all ? qsizetype(m_commands.size()) : mostCommands);
    QList<PaletteRow> notes =
        matches(Kind::Note, pattern, m_foldedNotes, all ? recentNotes : mostNotes);
    if (!std::ranges::all_of(commands, &PaletteRow::isScattered) ||
        !std::ranges::all_of(notes, &PaletteRow::isScattered)) {
        const auto isScattered = [](const PaletteRow& row) {
            return row.isScattered;
        };
        commands.removeIf(isScattered);
        notes.removeIf(isScattered);
    }
    QList<PaletteRow> rows;
    append(rows, Kind::CommandsHead, commands);
    append(rows, Kind::NotesHead, notes);
    return rows;
}

qsizetype PaletteSearch::bestRow(const QList<PaletteRow>& rows)
{
    qsizetype best = -1;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (!rows[i].isHead() && (best < 0 || rows[i].score > rows[best].score))
            best = i;
    }
    return best;
}

} // namespace orvane
