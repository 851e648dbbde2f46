// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "shell/desktop/OpenRequest.h"
#include "shell/desktop/TextFiles.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

namespace orvane {

class MainWindow;

class OpeningSheet;

/// Opens what a start of the program was asked to show: the note of a link, a project by its folder
/// or manifest, a text file as a new note of the open project. Text files are read beside the main
/// thread; a wait that is felt shows where it stands and can be cancelled, and then none of them
/// becomes a note. What can't be opened is said in one message. The first two arguments outlive it.
class RequestOpener : public QObject {
    Q_OBJECT
public:
    RequestOpener(AppState& appState, MainWindow& window,
                  TextFilesReader::Read read = TextFilesReader::fromDisk(),
                  QObject* parent = nullptr);
    ~RequestOpener() override;

    /// Brings the window to the front, and opens everything once no sheet asks something.
    void open(const OpenRequest& request);

private:
    void openPending();
    /// Nothing, or a sentence that says why not.
    [[nodiscard]] QString openLink(const QString& link);
    [[nodiscard]] QString openFile(const QString& path);
    void readTexts();
    void cancelReading();
    void makeNotes();
    [[nodiscard]] QString makeNote(const TextFile& file);
    void tellAndGoOn();

    AppState& m_appState;
    MainWindow& m_window;
    TextFilesReader::Read m_read;
    QList<OpenRequest> m_pending;
    bool m_opening = false;
    QStringList m_texts; ///< paths of the files to be read
    QStringList m_refusals;
    std::optional<QUuid> m_project; ///< that the notes are for
    std::unique_ptr<TextFilesReader> m_reader;
    QTimer m_felt;
    QPointer<OpeningSheet> m_sheet;
};

} // namespace orvane
