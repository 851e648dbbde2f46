// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/RequestOpener.h"

#include "core/library/NoteLocator.h"
#include "core/records/InternalNoteLink.h"
#include "editor/pane/EditorPaneView.h"
#include "shell/desktop/OpeningSheet.h"
#include "shell/window/MainWindow.h"

#include <QFileInfo>
#include <QMimeDatabase>
#include <QUrl>

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// What is read at once stands in memory until all of it is there.
constexpr qint64 mostText = 256 << 20;
constexpr auto feltAfter = 200ms;

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

// The types that the desktop is told of; what only derives from them, as RTF does, is none.
bool isTextFile(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == "txt"_L1 || suffix == "md"_L1 || suffix == "markdown"_L1)
        return true;
    // Desktops have names of their own for notes that come along with programs.
    const QString type = QMimeDatabase().mimeTypeForFile(path).name();
    return type == "text/plain"_L1 || type == "text/markdown"_L1 || type == "text/x-readme"_L1 ||
           type == "text/x-log"_L1;
}

} // namespace

RequestOpener::RequestOpener(AppState& appState, MainWindow& window, TextFilesReader::Read read,
                             QObject* parent)
    : QObject(parent)
    , m_appState(appState)
    , m_window(window)
    , m_read(std::move(read))
{
    m_felt.setSingleShot(true);
    m_felt.callOnTimeout(this, [this] {
        m_sheet = new OpeningSheet(*m_reader, m_window.sheets().look());
        connect(m_sheet, &OpeningSheet::cancelled, this, &RequestOpener::cancelReading);
        m_window.sheets().present(m_sheet);
    });
    connect(&window.sheets(), &SheetHost::visibleChanged, this, &RequestOpener::openPending,
            Qt::QueuedConnection);
}

RequestOpener::~RequestOpener()
{
    if (m_sheet)
        m_sheet->leave();
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
    while (!m_pending.isEmpty()) {
        const OpenRequest request = m_pending.takeFirst();
        for (const QString& link : request.links)
            m_refusals.append(openLink(link));
        for (const QString& file : request.files)
            m_refusals.append(openFile(file));
    }
    if (m_texts.isEmpty())
        return tellAndGoOn();
    readTexts();
}

void RequestOpener::tellAndGoOn()
{
    QStringList refusals = std::exchange(m_refusals, {});
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
        const auto project =
            projectHoldingNote(m_appState.projectSession().projectsByRecentOpen(), *note);
        if (!project)
            return tr("The note of the link “%1” is in no project of the library.").arg(link);
        m_appState.projectSession().openProjectAt(*project, false);
        if (!m_appState.note(*note))
            return {}; // what stands in the way is told by the one who opens
    }
    m_appState.projectSession().presentEditor();
    if (InternalNoteLink::noteID(link))
        m_window.editorPane().openLink(link); // also to the place that it names
    else
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
    for (const OrvaneProjectRecord& project : m_appState.projectSession().projects()) {
        if (QFileInfo(project.rootPath).canonicalFilePath() != folder)
            continue;
        m_appState.projectSession().openProjectAt(project.rootPath, true);
        return {};
    }
    if (info.isDir())
        return tr("“%1” is no project of the library.").arg(path);
    if (!isTextFile(path))
        return tr("“%1” is neither a project nor a text file.").arg(path);
    if (!m_appState.projectSession().currentProject())
        return tr("“%1” becomes a note once a project is open. Open one, and try again.")
            .arg(info.fileName());
    qint64 together = info.size();
    for (const QString& text : std::as_const(m_texts))
        together += QFileInfo(text).size();
    if (together > mostText && !m_texts.isEmpty())
        return tr("“%1” is left out: together the files are larger than %n megabytes. Open it by "
                  "itself.",
                  nullptr, int(mostText >> 20))
            .arg(info.fileName());
    m_texts.append(path);
    return {};
}

void RequestOpener::readTexts()
{
    const QStringList paths = std::exchange(m_texts, {});
    const auto& project = m_appState.projectSession().currentProject();
    m_project = project ? std::optional(project->id) : std::nullopt;
    m_reader = std::make_unique<TextFilesReader>(paths, m_read);
    connect(m_reader.get(), &TextFilesReader::finished, this, &RequestOpener::makeNotes);
    m_felt.start(feltAfter);
}

void RequestOpener::cancelReading()
{
    m_reader.reset();
    QMetaObject::invokeMethod(this, &RequestOpener::tellAndGoOn, Qt::QueuedConnection);
}

void RequestOpener::makeNotes()
{
    m_felt.stop();
    if (m_sheet)
        m_sheet->leave();
    const std::unique_ptr<TextFilesReader> reader = std::move(m_reader);
    for (const TextFile& file : reader->files())
        m_refusals.append(makeNote(file));
    tellAndGoOn();
}

QString RequestOpener::makeNote(const TextFile& file)
{
    const QString name = QFileInfo(file.path).fileName();
    if (file.outcome == TextFile::Outcome::Unreadable)
        return tr("“%1” can't be read. %2").arg(name, file.error.detail);
    if (file.outcome == TextFile::Outcome::NotText)
        return tr("“%1” can't be read as text.").arg(name);
    const auto& project = m_appState.projectSession().currentProject();
    if (!project || project->id != m_project)
        return tr("“%1” became no note: its project was closed while it was read.").arg(name);
    m_appState.projectSession().presentEditor();
    const auto note = m_appState.createNoteWithTitle(QFileInfo(file.path).completeBaseName(),
                                                     NoteText(Blob(file.utf8)));
    return note ? QString()
                : tr("No note can be made from “%1” now: the project can't be changed.").arg(name);
}

} // namespace orvane
