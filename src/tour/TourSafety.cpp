// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "tour/TourSafety.h"

#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "shell/app/OrvaneWorkspaceApp.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

Question replacedStore()
{
    Question question;
    question.title = u"Another program has replaced “Tidewater, a novel”"_s;
    question.text = u"At 14:36 the file that holds your notes was exchanged for another one. "
                    u"Saving has stopped, "
                    "so that neither is written over. Both are whole."_s;
    question.sides = {{QuestionIcon::Note,
                       u"Mine, open here"_s,
                       {u"41 notes, 86,420 words"_s, u"Last change today, 14:35"_s,
                        u"3 notes are newer than theirs"_s}},
                      {QuestionIcon::Note,
                       u"Theirs, on disk"_s,
                       {u"40 notes, 85,988 words"_s, u"Last change today, 14:31"_s,
                        u"1 note is not there: The week of the flood"_s}}};
    question.explanation =
        u"Nothing is lost either way: Keep Mine sets theirs aside as a project of its own, Take "
        "Theirs keeps yours in the versions and in a rescue file."_s;
    question.buttons = {u"Show Both"_s, u"Keep Mine"_s, u"Take Theirs"_s};
    question.cancelButton = Question::noButton;
    question.tone = Question::Tone::Warning;
    return question;
}

Question diskGone()
{
    Question question;
    question.title = u"The disk with “Field notes” is gone"_s;
    question.text = u"The folder of this project can’t be reached, so saving has stopped. Nothing "
                    "was made in its place. You can go on writing."_s;
    question.kept = u"212 words in 2 notes, written since 14:31, are kept in"_s;
    question.rows = {{QuestionIcon::Folder,
                      u"Documents/OrvaneWorkspace/Rescued/Field notes, 22 November"_s,
                      {},
                      u"/"_s}};
    question.explanation =
        u"When the disk comes back, saving goes on by itself and these words are "
        "put in their place. Last tried at 14:36:20, next in 4 s."_s;
    question.buttons = {u"Try Again"_s, u"Save a Copy Elsewhere…"_s, u"Close Project"_s};
    question.cancelButton = Question::noButton;
    question.apartButton = 2;
    question.tone = Question::Tone::Warning;
    return question;
}

Question copyOrMoved()
{
    Question question;
    question.title = u"Is this a copy?"_s;
    question.text = u"Two folders say that they are the same project. A copy becomes a project of "
                    "its own, so that what you do in one never touches the other."_s;
    question.sides = {{QuestionIcon::Folder,
                       u"Opened now"_s,
                       {u"Documents/OrvaneWorkspace/Tidewater 2"_s, u"40 notes, 80,115 words"_s,
                        u"Changed 12 November"_s}},
                      {QuestionIcon::Folder,
                       u"Known before"_s,
                       {u"Documents/OrvaneWorkspace/Tidewater"_s, u"41 notes, 86,420 words"_s,
                        u"Changed today, 14:35"_s}}};
    question.explanation =
        u"Was it moved, and the other is only what stayed behind? Then it keeps its place in the "
        "lists and its last page. Nothing in either folder has been changed."_s;
    question.buttons = {u"It Is a Copy"_s, u"It Was Moved"_s, u"Cancel"_s};
    question.apartButton = 2;
    return question;
}

Question leaving()
{
    Question question;
    question.title = u"Two notes are not saved yet"_s;
    question.text =
        u"There is no room left on the disk of “Tidewater, a novel”. These words stay in "
        "the window, and saving is tried again every few seconds."_s;
    question.rows = {
        {QuestionIcon::Note, u"2. The harbour ledger"_s, u"84 words since 14:31"_s},
        {QuestionIcon::Note, u"3. Salt"_s, u"12 words since 14:35"_s},
    };
    question.explanation = u"A file on another disk keeps them whole, with their formatting; the "
                           "project offers it at its next start."_s;
    question.buttons = {u"Write Them to a File…"_s, u"Stay"_s, u"Leave Without Them"_s};
    question.cancelButton = 1;
    question.apartButton = 2;
    question.dangerButton = 2;
    question.tone = Question::Tone::Warning;
    return question;
}

} // namespace

QList<std::pair<QString, Question>> sampleSafetyQuestions()
{
    return {{u"replaced-store"_s, replacedStore()},
            {u"disk-gone"_s, diskGone()},
            {u"copy-or-moved"_s, copyOrMoved()},
            {u"leaving"_s, leaving()}};
}

void tourSafety(OrvaneWorkspaceApp& app, const std::function<void(const QString& name)>& picture)
{
    for (const auto mode : {AppearanceThemeMode::Light, AppearanceThemeMode::Dark}) {
        app.themes().applyTheme(signatureBundle().id, mode);
        for (const auto& [name, question] : sampleSafetyQuestions()) {
            const auto shown =
                app.appState().services().questions.show(question, [](const Answer&) {});
            picture(u"%1-%2"_s.arg(name, modeText(mode)));
        }
    }
}

} // namespace orvane
