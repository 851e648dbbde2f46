// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/RequestOpener.h"

#include "core/InternalNoteLink.h"
#include "core/NoteLocator.h"
#include "shell/MainWindow.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QUrl>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 longestText = 50'000'000;

void bringToFront(QWidget& window, const QString& activationToken)
{
    // From where the toolkit takes it when it next asks for activation.
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

/// The note that a link leads to; a link into a PDF leads to the note that holds it.
std::optional<QUuid> linkedNote(const QString& link)
{
    if (const auto note = InternalNoteLink::noteID(link))
        return note;
    const QUrl url(link);
    const QUuid id(url.path().section(u'/', 0, 0, QString::SectionSkipEmpty));
    return url.host() == "pdf"_L1 && !id.isNull() ? std::optional(id) : std::nullopt;
}

bool isTextFile(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == "txt"_L1 || suffix == "md"_L1 || suffix == "markdown"_L1;
}

std::optional<QString> textOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly) || file.size() > longestText)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(file.readAll());
    if (decoder.hasError())
        return std::nullopt;
    return text.replace("\r\n"_L1, "\n"_L1);
}

} // namespace

RequestOpener::RequestOpener(AppState& appState, MainWindow& window, QObject* parent)
    : QObject(parent)
    , m_appState(appState)
    , m_window(window)
{
    connect(&window.sheets(), &SheetHost::visibleChanged, this, &RequestOpener::openPending,
            Qt::QueuedConnection);
}

void RequestOpener::open(const OpenRequest& request)
{
    bringToFront(m_window, request.activationToken);
    if (!request.isEmpty())
        m_pending.append(request);
    // A message about it waits for its answer, which the caller must not.
    QMetaObject::invokeMethod(this, &RequestOpener::openPending, Qt::QueuedConnection);
}

void RequestOpener::openPending()
{
    if (m_opening || m_window.sheets().topSheet())
        return;
    m_opening = true;
    QStringList refusals;
    while (!m_pending.isEmpty()) {
        const OpenRequest request = m_pending.takeFirst();
        for (const QString& link : request.links)
            refusals.append(openLink(link));
        for (const QString& file : request.files)
            refusals.append(openFile(file));
    }
    refusals.removeAll(QString());
    if (!refusals.isEmpty())
        m_appState.services().questions.ask({.title = tr("Not Everything Could Be Opened"),
                                             .text = refusals.join(u"\n\n"_s),
                                             .buttons = {tr("Close")},
                                             .defaultButton = 0,
                                             .suppression = {},
                                             .choices = {},
                                             .tone = Question::Tone::Warning});
    m_opening = false;
    if (!m_pending.isEmpty())
        openPending();
}

QString RequestOpener::openLink(const QString& link)
{
    const auto note = linkedNote(link);
    if (!note)
        return tr("“%1” is a link to nothing that OrvaneWorkspace knows.").arg(link);
    if (!m_appState.note(*note)) {
        const auto project = projectHoldingNote(m_appState.projectsByRecentOpen(), *note);
        if (!project)
            return tr("The note of the link “%1” is in no project of the library.").arg(link);
        m_appState.openProject(*project, false);
        if (!m_appState.note(*note))
            return {}; // what stands in the way is told by the one who opens
    }
    m_appState.presentEditor();
    m_appState.openNote(*note);
    return {};
}

QString RequestOpener::openFile(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return tr("“%1” does not exist.").arg(path);
    const bool isManifest = info.fileName().endsWith("orvaneworkspace-project.json"_L1) ||
                            info.fileName().endsWith("orvanenotes-project.json"_L1);
    const QString folder = QFileInfo(isManifest ? info.path() : path).canonicalFilePath();
    for (const OrvaneProjectRecord& project : m_appState.projects()) {
        if (QFileInfo(project.rootPath).canonicalFilePath() != folder)
            continue;
        m_appState.openProject(project.id, true);
        return {};
    }
    if (info.isDir())
        return tr("“%1” is no project of the library.").arg(path);
    return isTextFile(path) ? openText(path)
                            : tr("“%1” is neither a project nor a text file.").arg(path);
}

QString RequestOpener::openText(const QString& path)
{
    const QString name = QFileInfo(path).fileName();
    if (!m_appState.currentProject())
        return tr("“%1” becomes a note once a project is open. Open one, and try again.").arg(name);
    const auto text = textOf(path);
    if (!text)
        return tr("“%1” can't be read as text.").arg(name);
    m_appState.presentEditor();
    const auto note = m_appState.createNote(*text, {});
    if (!note)
        return tr("No note can be made from “%1” now: the project can't be changed.").arg(name);
    NoteContent content = NoteContent::of(*m_appState.note(*note));
    content.title = QFileInfo(path).completeBaseName();
    m_appState.updateNote(*note, content);
    return {};
}

} // namespace orvane
