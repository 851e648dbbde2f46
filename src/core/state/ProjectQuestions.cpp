// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/ProjectQuestions.h"

#include "core/records/Wording.h"

#include <QCoreApplication>
#include <QDir>

namespace orvane::ProjectQuestions {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ProjectQuestions)
};

// English has no translation file of its own, so one and many are two texts.
QString notesInWords(int count)
{
    return count == 1 ? Words::tr("1 note") : Words::tr("%Ln notes", nullptr, count);
}

QString wordsInWords(int count)
{
    return count == 1 ? Words::tr("1 word") : Words::tr("%Ln words", nullptr, count);
}

QString figuresLine(const NotebookFigures& figures)
{
    return Words::tr("%1, %2", "notes, words")
        .arg(notesInWords(figures.notes), wordsInWords(figures.words));
}

QString reason(const UnsavedWork& work, const QString& title)
{
    switch (work.error.code) {
    case StoreError::Code::NoSpace:
        return Words::tr("There is no room left on the disk of “%1”.").arg(title);
    case StoreError::Code::ReadOnly:
        return Words::tr("The folder of “%1” can't be written.").arg(title);
    case StoreError::Code::Busy:
        return Words::tr("Another program holds the file of “%1”.").arg(title);
    case StoreError::Code::TooBig:
        return Words::tr("A note of “%1” is larger than a project can hold.").arg(title);
    case StoreError::Code::Refused:
        return Words::tr("“%1” can't be changed now.").arg(title);
    default:
        return Words::tr("“%1” can't be saved now.").arg(title);
    }
}

QString unsavedDetail(const UnsavedNote& note)
{
    const QString time = timeInWords(note.since);
    if (note.words == 0)
        return Words::tr("changed since %1").arg(time);
    if (note.words == 1)
        return Words::tr("1 word since %1").arg(time);
    return Words::tr("%Ln words since %1", nullptr, note.words).arg(time);
}

QString leaveTitle(const UnsavedWork& work)
{
    const int count = int(work.notes.size());
    if (count == 0)
        return Words::tr("The last changes are not saved yet");
    return count == 1 ? Words::tr("One note is not saved yet")
                      : Words::tr("%Ln notes are not saved yet", nullptr, count);
}

// What each side has that the other hasn't.
std::pair<QStringList, QStringList> replacedLines(const StoreSides& sides, Timestamp now)
{
    using Kind = StoreSides::Difference::Kind;
    int newerHere = 0;
    int newerThere = 0;
    QStringList onlyHere;
    QStringList onlyThere;
    for (const StoreSides::Difference& each : sides.differences()) {
        if (each.kind == Kind::MineIsNewer)
            ++newerHere;
        else if (each.kind == Kind::TheirsIsNewer)
            ++newerThere;
        else if (each.kind == Kind::OnlyMine)
            onlyHere.append((*each.mine)->titleForList());
        else
            onlyThere.append((*each.theirs)->titleForList());
    }
    const auto lines = [now](const NotebookSnapshot& notebook, const QString& newer,
                             const QStringList& missing) {
        const NotebookFigures figures = NotebookFigures::of(notebook);
        QStringList lines{figuresLine(figures)};
        if (figures.lastChange)
            lines.append(Words::tr("Last change %1").arg(momentInWords(*figures.lastChange, now)));
        if (!newer.isEmpty())
            lines.append(newer);
        if (missing.size() == 1)
            lines.append(Words::tr("1 note is not there: %1").arg(missing.first()));
        else if (!missing.isEmpty())
            lines.append(Words::tr("%Ln notes are not there", nullptr, int(missing.size())));
        return lines;
    };
    QString mineNewer;
    if (newerHere > 0)
        mineNewer = newerHere == 1
                        ? Words::tr("1 note is newer than theirs")
                        : Words::tr("%Ln notes are newer than theirs", nullptr, newerHere);
    QString theirsNewer;
    if (newerThere > 0)
        theirsNewer = newerThere == 1
                          ? Words::tr("1 note is newer than mine")
                          : Words::tr("%Ln notes are newer than mine", nullptr, newerThere);
    return {lines(sides.mine, mineNewer, onlyThere), lines(sides.theirs, theirsNewer, onlyHere)};
}

} // namespace

Question leave(const UnsavedWork& work, const QString& projectTitle)
{
    Question question{.title = leaveTitle(work),
                      .text = Words::tr("%1 These words stay in the window, and saving is tried "
                                        "again every few seconds.")
                                  .arg(reason(work, projectTitle)),
                      .explanation = Words::tr("A file on another disk keeps them whole, with "
                                               "their formatting; the project offers it at its "
                                               "next start."),
                      .buttons = {Words::tr("Write Them to a File…"), Words::tr("Stay"),
                                  Words::tr("Leave Without Them")},
                      .defaultButton = WriteToFile,
                      .cancelButton = Stay,
                      .apartButton = LeaveWithout,
                      .dangerButton = LeaveWithout,
                      .suppression = {},
                      .choices = {},
                      .tone = Question::Tone::Warning};
    for (const UnsavedNote& note : work.notes)
        question.rows.append({QuestionIcon::Note, note.title, unsavedDetail(note)});
    return question;
}

Question folderGone(const ProjectTrouble& trouble, const UnsavedWork& work,
                    const QString& projectTitle, const QString& home, int nextTry)
{
    const bool diskIsGone = trouble.kind == ProjectTrouble::Kind::DiskGone;
    Question question{
        .title = diskIsGone ? Words::tr("The disk with “%1” is gone").arg(projectTitle)
                            : Words::tr("The folder of “%1” is gone").arg(projectTitle),
        .text = Words::tr("The folder of this project can't be reached, so saving has stopped. "
                          "Nothing was made in its place. You can go on writing."),
        .explanation =
            (diskIsGone
                 ? Words::tr("When the disk comes back, saving goes on by itself and these words "
                             "are put in their place. Last tried at %1, next in %2 s.")
                 : Words::tr("When the folder is back, saving goes on by itself and these words "
                             "are put in their place. Last tried at %1, next in %2 s."))
                .arg(trouble.lastTried.toLocal().toString(QStringLiteral("HH:mm:ss")))
                .arg(nextTry),
        .buttons = {Words::tr("Try Again"), Words::tr("Save a Copy Elsewhere…"),
                    Words::tr("Close Project")},
        .defaultButton = TryAgain,
        .cancelButton = Question::noButton,
        .apartButton = CloseProject,
        .suppression = {},
        .choices = {},
        .tone = Question::Tone::Warning};
    const auto since = work.since();
    if (trouble.rescueFolder.isEmpty() || !since)
        return question;
    const int count = int(work.notes.size());
    const QString time = timeInWords(*since);
    question.kept =
        count == 1 ? Words::tr("%1 in one note, written since %2, are kept in")
                         .arg(wordsInWords(work.words()), time)
                   : Words::tr("%1 in %Ln notes, written since %2, are kept in", nullptr, count)
                         .arg(wordsInWords(work.words()), time);
    question.rows = {
        {QuestionIcon::Folder, shortPath(trouble.rescueFolder, home), {}, trouble.rescueFolder}};
    return question;
}

Question storeReplaced(const ProjectTrouble& trouble, const std::optional<StoreSides>& sides,
                       const QString& projectTitle, Timestamp now)
{
    Question question{
        .title = Words::tr("Another program has replaced “%1”").arg(projectTitle),
        .text = Words::tr("At %1 the file that holds your notes was exchanged for another one. "
                          "Saving has stopped, so that neither is written over.")
                    .arg(timeInWords(trouble.since)),
        .explanation = Words::tr("Nothing is lost either way: Keep Mine sets theirs aside as a "
                                 "project of its own, Take Theirs keeps yours in the versions and "
                                 "in a rescue file."),
        .buttons = {Words::tr("Show Both"), Words::tr("Keep Mine"), Words::tr("Take Theirs")},
        .defaultButton = ShowBoth,
        .cancelButton = Question::noButton,
        .suppression = {},
        .choices = {},
        .tone = Question::Tone::Warning};
    if (!sides) {
        question.kept = Words::tr("The other file can't be read now. Another program may still be "
                                  "writing it.");
        return question;
    }
    question.text = Words::tr("At %1 the file that holds your notes was exchanged for another "
                              "one. Saving has stopped, so that neither is written over. Both are "
                              "whole.")
                        .arg(timeInWords(trouble.since));
    const auto [mine, theirs] = replacedLines(*sides, now);
    question.sides = {{QuestionIcon::Note, Words::tr("Mine, open here"), mine},
                      {QuestionIcon::Note, Words::tr("Theirs, on disk"), theirs}};
    return question;
}

Question copyOrMoved(const Claimant& openedNow, const Claimant& known, const QString& home,
                     Timestamp now)
{
    const auto side = [&](const QString& title, const Claimant& claimant) {
        QuestionSide side{QuestionIcon::Folder, title, {shortPath(claimant.folder, home)}};
        if (claimant.figures)
            side.lines.append(figuresLine(*claimant.figures));
        side.lines.append(Words::tr("Changed %1").arg(momentInWords(claimant.changed, now)));
        return side;
    };
    return {
        .title = Words::tr("Is this a copy?"),
        .text = Words::tr("Two folders say that they are the same project. A copy becomes a "
                          "project of its own, so that what you do in one never touches the "
                          "other."),
        .sides = {side(Words::tr("Opened now"), openedNow), side(Words::tr("Known before"), known)},
        .explanation = Words::tr("Was it moved, and the other is only what stayed behind? "
                                 "Then it keeps its place in the lists and its last page. "
                                 "Nothing in either folder has been changed."),
        .buttons = {Words::tr("It Is a Copy"), Words::tr("It Was Moved"), Words::tr("Cancel")},
        .defaultButton = ItIsACopy,
        .cancelButton = Cancel,
        .apartButton = Cancel,
        .suppression = {},
        .choices = {}};
}

Question rescued(const FoundRescue& rescue, ItsProject project, const QString& home, Timestamp now)
{
    const bool isThere = project == ItsProject::IsThere;
    Question question{
        .title = Words::tr("Words of “%1” were rescued").arg(rescue.origin.projectTitle),
        .text = Words::tr("They could not be saved in their project and were kept in a file, %1.")
                    .arg(momentInWords(rescue.origin.writtenAt, now)),
        .explanation =
            isThere ? Words::tr("Put in place, each note gets its words back. Where a note has "
                                "changed since, it stays as it is and the rescued words stand "
                                "beside it as a note of their own. The file then goes to the "
                                "desktop's trash.")
                    : Words::tr("Their project is not there now. They can become a project of "
                                "their own, or wait until it is back."),
        .buttons = {isThere ? Words::tr("Put in Place") : Words::tr("Make a Project of Them"),
                    Words::tr("Later")},
        .defaultButton = PutInPlace,
        .cancelButton = Later,
        .suppression = {},
        .choices = {}};
    question.rows.append({QuestionIcon::Folder, shortPath(rescue.folder, home), {}, rescue.folder});
    for (const RescuedNote& note : rescue.notes)
        question.rows.append({QuestionIcon::Note, note.title, {}});
    return question;
}

} // namespace orvane::ProjectQuestions
