// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/ImageOffer.h"

#include "core/library/ImageAssets.h"
#include "core/state/AppState.h"
#include "editor/images/ImageTools.h"
#include "editor/session/EditorSession.h"

#include <QCoreApplication>

namespace orvane {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ImageOffer)
};

/// What stands for an image in Markdown.
QString markdownImage(const AcceptedImage& image, const QString& address)
{
    QString name = image.name.isEmpty() ? Words::tr("Image") : image.name;
    for (const QChar sign : {u'\\', u'[', u']'})
        name.replace(sign, QString(u'\\') + sign);
    return QStringLiteral("![%1](%2)").arg(name, address);
}

void tellFailure(AppState& app, const FileError& error)
{
    Question question;
    question.title = Words::tr("The image could not be kept in the project");
    question.text =
        Words::tr("Nothing was changed in the note. The system says: %1").arg(error.detail);
    question.buttons = {Words::tr("OK")};
    app.services().questions.ask(question);
}

void linkImages(const QList<AcceptedImage>& images, const QUuid& note, TextRange range,
                EditorSession& session, AppState& app)
{
    if (session.noteID() != note || session.mode() != EditorMode::markdown)
        return;
    const QString dataFolder = ProjectLibraryController::projectDataDirectoryPath(
        app.projectSession().projectAccessPath());
    QStringList lines;
    for (const AcceptedImage& image : images) {
        const auto address = keepImageAsset(dataFolder, image.bytes, suffixOf(image.bytes));
        if (!address)
            return tellFailure(app, address.error());
        lines.append(markdownImage(image, *address));
    }
    EditGateway& text = session.gateway();
    text.setSelection(TextSelection::of(range.clampedTo(text.store().length())));
    text.insert(AttributedString(lines.join(u'\n'), text.typingStyle()), Words::tr("Insert Image"));
}

} // namespace

void offerImages(const QList<ImageSource>& sources, TextRange range, EditorSession& session,
                 AppState& app, ImageTools& images)
{
    if (!session.noteID())
        return;
    const QUuid note = *session.noteID();
    const bool isMarkdown = session.mode() == EditorMode::markdown;
    Question question;
    question.title = Words::tr("Insert Image");
    question.text = isMarkdown
                        ? Words::tr("A Markdown note links to images. The file can be kept in "
                                    "the project and linked to, or the note can become rich "
                                    "text and hold the image itself.")
                        : Words::tr("A plain text note holds no images. As rich text it does.");
    if (isMarkdown)
        question.buttons.append(Words::tr("Keep the File and Link to It"));
    question.buttons.append(Words::tr("Make This Note Rich Text"));
    question.buttons.append(Words::tr("Cancel"));
    const int answer = app.services().questions.ask(question).button;
    if (answer < 0 || answer == question.buttons.size() - 1 || session.noteID() != note)
        return;
    if (isMarkdown && answer == 0) {
        images.insertion().accept(
            sources, [&session, &app, note, range](const QList<AcceptedImage>& accepted) {
                linkImages(accepted, note, range, session, app);
            });
        return;
    }
    session.setMode(EditorMode::richText);
    if (session.mode() == EditorMode::richText)
        images.take(sources, range);
}

} // namespace orvane
