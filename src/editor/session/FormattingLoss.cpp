// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/session/FormattingLoss.h"

#include "text/store/Graphemes.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(FormattingLoss)
};

bool hasShapes(const std::optional<Blob>& payload)
{
    if (!payload || payload->isEmpty())
        return false;
    const QJsonDocument shapes = QJsonDocument::fromJson(payload->readOrNothing());
    return !shapes.isArray() || !shapes.array().isEmpty();
}

/// "a", "a and b", "a, b and c".
QString enumerated(const QStringList& words)
{
    if (words.size() < 2)
        return words.value(0);
    return Words::tr("%1 and %2")
        .arg(words.sliced(0, words.size() - 1).join(u", "_s), words.last());
}

} // namespace

FormattingLoss formattingLossOf(const EditorDraft& draft)
{
    FormattingLoss loss;
    loss.shapes = hasShapes(draft.shapesPayload);
    if (!draft.bodyRich && !draft.bodyRTF)
        return loss;
    const AttributedString text = readRichText(draft.text(), TextFont());
    loss.formatting = hasFormatting(text);
    loss.images = text.text().contains(QChar(objectCharacter));
    return loss;
}

Question formattingLossQuestion(const FormattingLoss& loss, EditorMode mode)
{
    QStringList lost;
    if (loss.formatting)
        lost.append(Words::tr("formatting"));
    if (loss.images)
        lost.append(Words::tr("images"));
    if (loss.shapes)
        lost.append(Words::tr("shapes"));
    Question question;
    question.title = Words::tr("Edit Without Formatting?");
    question.text = Words::tr("An edit in %1 mode removes this note’s %2.\n\nA version of the note "
                              "as it is now is kept first: the Version History in the Inspector "
                              "brings it back.")
                        .arg(rawValue(mode), enumerated(lost));
    if (loss.shapes)
        question.text += u' ' + Words::tr("Shapes are not part of a version.");
    question.buttons = {Words::tr("Edit"), Words::tr("Cancel")};
    question.defaultButton = 1;
    question.tone = Question::Tone::Warning;
    question.keepsTyping = true;
    return question;
}

Question typedWordsQuestion(const QString& words)
{
    constexpr qsizetype shownAtMost = 160;
    const QString shown =
        words.size() <= shownAtMost ? words : words.left(graphemeStart(words, shownAtMost)) + u'…';
    Question question;
    question.title = Words::tr("Keep What You Typed?");
    question.text = Words::tr("These words were typed meanwhile and are not in the "
                              "note:\n\n%1")
                        .arg(shown);
    question.buttons = {Words::tr("Write in Rich Text"), Words::tr("Copy"), Words::tr("Discard")};
    question.defaultButton = TypedWordsAnswer::copyWords;
    question.cancelButton = TypedWordsAnswer::copyWords;
    question.keepsTyping = true;
    return question;
}

Question versionNotKeptMessage()
{
    Question message;
    message.title = Words::tr("The Note Was Left as It Is");
    message.text =
        Words::tr("No version of it could be kept, so nothing would bring its formatting "
                  "back. Make room on the disk or allow writing in the project’s "
                  "folder, then try again.");
    message.buttons = {Words::tr("OK")};
    message.tone = Question::Tone::Warning;
    return message;
}

} // namespace orvane
