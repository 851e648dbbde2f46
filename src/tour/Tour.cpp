// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "tour/Tour.h"

#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/app/OrvaneWorkspaceApp.h"
#include "shell/binder/BinderModel.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/binder/IconsAndTitlesWindow.h"
#include "shell/inspector/AliasesSheet.h"
#include "shell/inspector/VersionListView.h"
#include "shell/projects/ProjectTilesModel.h"
#include "shell/settings/SettingsWindow.h"
#include "shell/window/MainWindow.h"
#include "tour/TourFormatting.h"
#include "tour/TourHand.h"
#include "tour/TourImages.h"
#include "tour/TourPages.h"
#include "tour/TourSafety.h"
#include "tour/TourTables.h"
#include "tour/TourWriting.h"

#include <QAbstractButton>
#include <QDir>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct SampleNote {
    QString folder;
    QString title;
    QString body;
};

const QString harbourLedger =
    u"The ledger had been kept by four hands in sixty years, and each had pressed harder than the "
    "last. Mara turned to the week of the flood. Where the tide figures should have stood there "
    "was a single line, ruled twice, and under it a name that she had never seen written down.\n\n"
    "The posts stood dry at noon, which no table allows.\n\n"
    "She copied the three rows by lamp, twice, and put one copy into her boot. Whoever had ruled "
    "that line had known what a witness was worth."_s;

const QString tideTable =
    u"# Tides of the flats\n\nLow water at **06:12**, _springs_; see [the survey]"
    "(https://example.org/survey) and `gauge.csv`, ~~not the almanac~~.\n\n> The posts stood dry "
    "at noon.\n\n## What to check\n\n```\nheight = mean + range / 2\n```\n\n- [ ] the third "
    "post"_s;

const QList<SampleNote> sampleNotes{
    {u"Manuscript"_s, u"1. Low water"_s,
     u"Mara counts the posts again.\n\nSeven where the chart had nine, and the tide not yet at its "
     "lowest."_s},
    {u"Manuscript"_s, u"2. The harbour ledger"_s, harbourLedger},
    {u"Manuscript"_s, u"3. Salt"_s, u"Everything in the house tasted of it by October."_s},
    {u"Research"_s, u"Interview with the pilot"_s,
     u"He never once used the word storm.\n\n“A hard blow,” he said, “and the wall was tired.”"_s},
    {u"Research"_s, u"Tide table"_s, tideTable},
};

const QStringList otherProjects{u"Letters"_s, u"Field notes"_s, u"Lectures, spring"_s,
                                u"Thesis: Dyke law, 1850–1914"_s};
const QString novel = u"Tidewater, a novel"_s;

class Tour {
public:
    Tour(const QString& folder, const ScreenSeen& seen, const MakeClock& makeClock)
        : m_folder(folder)
        , m_seen(seen)
        , m_makeClock(makeClock)
    {}

    int run();

private:
    void begin();
    void end();
    void welcome();
    void makeProjects();
    void buildNovel();
    void findAndReplace();
    void markdown();
    void richText();
    void tagsAndVersions();
    void looks();
    void settings();
    void commandPalette();
    void browse();
    void quitAndComeBack();
    void checkEveryWord();
    void narrowWindow();
    void protectedProject();

    void newProject(const QString& name);
    /// Goes on from what a new project is offered.
    void leaveIconsAndTitles();
    void newFolder(const QString& name);
    void newNote(const SampleNote& note);
    void selectRow(const QString& title);
    void picture(const QString& name);
    /// The same of any window, without a number.
    void picture(QWidget& shown, const QString& name);
    /// The same at two pixels for each, without a number.
    void picture2x(QWidget& shown, const QString& name);
    void pictureOfPopup(QWidget& popup, const QString& name);
    void expect(bool holds, const QString& what);
    /// Does `trigger`, which asks a question, and answers it by the button.
    void answering(const std::function<void()>& trigger, const QString& button,
                   const QString& pictureName);
    [[nodiscard]] QAbstractButton* button(const QString& name) const;
    void press(const QString& buttonName);
    template <typename T>
    [[nodiscard]] T* visible() const;
    [[nodiscard]] MainWindow& window() { return m_app->window(); }

    QString m_folder;
    const ScreenSeen& m_seen;
    const MakeClock& m_makeClock;
    QTemporaryDir m_home;
    std::unique_ptr<OrvaneWorkspaceApp> m_app;
    std::unique_ptr<TourHand> m_hand;
    int m_pictures = 0;
    int m_failures = 0;
};

template <typename T>
T* Tour::visible() const
{
    for (T* each : m_app->window().findChildren<T*>()) {
        if (each->isVisible())
            return each;
    }
    return nullptr;
}

void Tour::expect(bool holds, const QString& what)
{
    if (holds)
        return;
    ++m_failures;
    std::fprintf(stderr, "tour: not so: %s\n", qUtf8Printable(what));
}

void Tour::picture(const QString& name)
{
    picture(window(), u"%1-%2"_s.arg(++m_pictures, 2, 10, QChar(u'0')).arg(name));
}

void Tour::picture(QWidget& shown, const QString& name)
{
    TourHand::settle();
    if (m_seen)
        return m_seen(*m_app, shown, name);
    const QString file = u"%1/%2.png"_s.arg(m_folder, name);
    expect(shown.grab().save(file), u"picture written to "_s + file);
}

void Tour::picture2x(QWidget& shown, const QString& name)
{
    if (m_seen)
        return;
    TourHand::settle();
    QPixmap pixmap(shown.size() * 2);
    pixmap.setDevicePixelRatio(2);
    pixmap.fill(Qt::transparent);
    shown.render(&pixmap);
    const QString file = u"%1/%2-2x.png"_s.arg(m_folder, name);
    expect(pixmap.save(file), u"picture written to "_s + file);
}

void Tour::pictureOfPopup(QWidget& popup, const QString& name)
{
    if (m_seen)
        return picture(popup, name);
    picture2x(popup, name);
}

QAbstractButton* Tour::button(const QString& name) const
{
    const Sheet* sheet = m_app->window().sheets().topSheet();
    const QWidget* where = sheet ? static_cast<const QWidget*>(sheet) : &m_app->window();
    for (auto* each : where->findChildren<QAbstractButton*>()) {
        if (each->isVisible() && (each->text() == name || each->accessibleName() == name))
            return each;
    }
    return nullptr;
}

void Tour::press(const QString& buttonName)
{
    QAbstractButton* found = button(buttonName);
    expect(found, u"a button “%1” on screen"_s.arg(buttonName));
    if (found)
        m_hand->click(*found);
}

void Tour::answering(const std::function<void()>& trigger, const QString& button,
                     const QString& pictureName)
{
    // The question runs an event loop of its own inside the trigger.
    QTimer whenAsked;
    QObject::connect(&whenAsked, &QTimer::timeout, &window(), [&, this] {
        if (!window().sheets().topSheet())
            return;
        whenAsked.stop();
        picture(pictureName);
        press(button);
        if (Sheet* unanswered = window().sheets().topSheet())
            unanswered->dismiss();
    });
    whenAsked.start(10);
    trigger();
    expect(TourHand::waitFor([&] { return !whenAsked.isActive(); }),
           u"the question for “%1”"_s.arg(pictureName));
}

void Tour::begin()
{
    m_app = std::make_unique<OrvaneWorkspaceApp>(
        UserFolders::below(m_home.path()),
        std::make_unique<FolderTrash>(m_home.path() + u"/trash"_s),
        m_makeClock ? m_makeClock() : nullptr);
    m_app->start();
    m_hand = std::make_unique<TourHand>(window());
    window().activateWindow();
    expect(TourHand::waitFor([this] { return window().isActiveWindow(); }),
           u"the window is active"_s);
}

void Tour::end()
{
    window().close();
    m_app->finish();
    m_hand.reset();
    m_app.reset();
}

void Tour::welcome()
{
    picture(u"welcome"_s);
    press(u"Read Guide"_s);
    picture(u"guide"_s);
    press(u"Done"_s);
    press(u"Blank Project"_s);
    m_hand->type(otherProjects.first());
    picture(u"new-project"_s);
    press(u"Create Project"_s);
    expect(m_app->appState().projectSession().rootPresentationMode() ==
               RootPresentationMode::Editor,
           u"a new project opens"_s);
    leaveIconsAndTitles();
    picture(u"empty-project"_s);
}

void Tour::newProject(const QString& name)
{
    press(u"Projects"_s);
    press(u"New Project"_s);
    m_hand->type(name);
    press(u"Create Project"_s);
    leaveIconsAndTitles();
    const auto& project = m_app->appState().projectSession().currentProject();
    expect(project && project->name == name, u"the project “%1” is open"_s.arg(name));
}

void Tour::makeProjects()
{
    for (const QString& name : otherProjects.mid(1))
        newProject(name);
    newProject(novel);
}

void Tour::leaveIconsAndTitles()
{
    IconsAndTitlesWindow* offered = nullptr;
    expect(TourHand::waitFor([&] {
               offered = qobject_cast<IconsAndTitlesWindow*>(QApplication::activeWindow());
               return offered != nullptr;
           }),
           u"a new project is offered its icon"_s);
    if (offered)
        TourHand(*offered).press(Qt::Key_Return);
    expect(TourHand::waitFor([this] { return window().isActiveWindow(); }),
           u"Return goes on to the new project"_s);
}

void Tour::newFolder(const QString& name)
{
    press(u"New Folder"_s);
    m_hand->type(name);
    press(u"Create Folder"_s);
}

void Tour::newNote(const SampleNote& note)
{
    selectRow(note.folder);
    press(u"New Note"_s);
    m_hand->type(note.title + u'\n' + note.body);
}

void Tour::selectRow(const QString& title)
{
    auto* tree = visible<BinderTreeView>();
    expect(tree, u"the Binder is on screen"_s);
    if (!tree)
        return;
    const QModelIndexList found =
        tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole, title, 1,
                             Qt::MatchExactly | Qt::MatchRecursive);
    expect(!found.isEmpty(), u"“%1” is in the Binder"_s.arg(title));
    if (found.isEmpty())
        return;
    tree->scrollTo(found.first());
    m_hand->click(*tree->viewport(), tree->visualRect(found.first()).center());
}

void Tour::buildNovel()
{
    m_app->appState().selection().selectProjectRoot();
    for (const auto& name : {u"Manuscript"_s, u"Research"_s, u"Characters"_s}) {
        m_app->appState().selection().selectProjectRoot();
        newFolder(name);
    }
    picture(u"folders"_s);
    for (const SampleNote& note : sampleNotes)
        newNote(note);
    selectRow(u"Characters"_s);
    press(u"New Folder"_s);
    picture(u"new-folder"_s);
    press(u"Cancel"_s);
    selectRow(u"2. The harbour ledger"_s);
    picture(u"main"_s);
    commandPalette();
    press(u"Back"_s);
    expect(visible<QLineEdit>() != nullptr, u"the editor shows a note"_s);
    press(u"Forward"_s);
    for (auto* field : window().findChildren<QLineEdit*>()) {
        if (!field->isVisible() || field->accessibleName() != u"Filter titles"_s)
            continue;
        m_hand->click(*field);
        m_hand->type(u"pilot"_s);
        picture(u"filtered-binder"_s);
        m_hand->press(Qt::Key_Escape);
    }
}

void Tour::findAndReplace()
{
    AppearanceThemeLibrary& themes = m_app->themes();
    m_hand->press(Qt::Key_F, Qt::ControlModifier);
    m_hand->type(u"the"_s);
    m_hand->press(Qt::Key_Return);
    picture(u"find"_s);
    m_hand->press(Qt::Key_H, Qt::ControlModifier);
    themes.applyTheme(signatureBundle().id, AppearanceThemeMode::Light);
    picture(u"find-and-replace-light"_s);
    themes.applyTheme(signatureBundle().id, AppearanceThemeMode::Dark);
    m_hand->press(Qt::Key_Escape);
    expect(!button(u"Next Match"_s), u"Escape closes the find strip"_s);
}

void Tour::markdown()
{
    AppearanceThemeLibrary& themes = m_app->themes();
    selectRow(u"Tide table"_s);
    window().editorPane().session().setMode(EditorMode::markdown);
    picture(u"markdown"_s);
    themes.applyTheme(signatureBundle().id, AppearanceThemeMode::Light);
    picture(u"markdown-light"_s);
    themes.applyTheme(signatureBundle().id, AppearanceThemeMode::Dark);
    selectRow(u"2. The harbour ledger"_s);
}

/// A formatted note, and what is asked before it is edited as plain text.
void Tour::richText()
{
    selectRow(u"1. Low water"_s);
    EditorPaneView& pane = window().editorPane();
    EditorSession& session = pane.session();
    session.setMode(EditorMode::richText);
    session.gateway().performUndoableDocumentEdit(u"Formatting"_s, [](DocumentEditor& editor) {
        const qsizetype length = editor.store().length();
        editor.modifyCharacterStyles({0, std::min<qsizetype>(length, 4)},
                                     [](CharacterStyle& style) { style.font->weight = 700; });
        editor.modifyCharacterStyles(TextRange::between(length / 2, length),
                                     [](CharacterStyle& style) { style.font->italic = true; });
    });
    picture(u"rich-text"_s);
    const QString before = pane.textView().plainText();
    session.setMode(EditorMode::plainText);
    pane.focusText();
    answering([this] { m_hand->type(u"x"_s); }, u"Cancel"_s, u"formatting-question"_s);
    expect(pane.textView().plainText() == before, u"Cancel leaves the note as it is"_s);
    session.setMode(EditorMode::richText);
    selectRow(u"2. The harbour ledger"_s);
    session.setMode(EditorMode::plainText);
}

/// What belongs to a note beside its text: tags, earlier versions, icon.
void Tour::tagsAndVersions()
{
    AppState& state = m_app->appState();
    const QUuid note = *state.selection().selectedNoteID();
    const NoteContent now = NoteContent::of(*state.note(note));
    NoteContent earlier = now;
    earlier.body.replace(u"sixty years"_s, u"forty years"_s);
    (void)state.updateNote(note, earlier);
    (void)state.appendVersionSnapshot(note, u"Manual Save"_s);
    (void)state.updateNote(note, now);
    for (const auto& tag : {u"witness"_s, u"tide"_s})
        (void)state.addTagToNote(note, tag);
    picture(u"tags"_s);
    press(u"Versions"_s);
    auto* versions = visible<VersionListView>();
    expect(versions, u"the Inspector lists versions"_s);
    versions->selectVersion(0);
    for (const auto mode : {AppearanceThemeMode::Light, AppearanceThemeMode::Dark}) {
        m_app->themes().applyTheme(signatureBundle().id, mode);
        picture(u"versions-"_s + modeText(mode));
        press(u"Preview"_s);
        picture(u"version-preview-"_s + modeText(mode));
        m_hand->press(Qt::Key_Escape);
        auto* aliases = new AliasesSheet(state, u"tide"_s, m_app->look());
        window().sheets().present(aliases);
        picture(u"aliases-"_s + modeText(mode));
        aliases->dismiss();
        auto* icons = IconsAndTitlesWindow::open({TitledItem::Kind::Note, note}, state,
                                                 m_app->look(), &window());
        picture(*icons, u"icons-and-titles-"_s + modeText(mode));
        icons->close();
    }
    press(u"Details"_s);
}

/// The main window in the other built-in looks, and the settings.
void Tour::looks()
{
    AppearanceThemeLibrary& themes = m_app->themes();
    themes.applyTheme(signatureBundle().id, AppearanceThemeMode::Light);
    picture(u"main-light"_s);
    picture2x(window(), u"main-light"_s);
    themes.applyTheme(googleWorkspaceBundle().id, AppearanceThemeMode::Light);
    picture(u"main-google"_s);
    themes.applyTheme(signatureBundle().id, AppearanceThemeMode::Dark);
    picture2x(window(), u"main-dark"_s);
    settings();
    window().activateWindow();
    expect(TourHand::waitFor([this] { return window().isActiveWindow(); }),
           u"the main window is active again"_s);
}

/// Every page of the settings in the Light and the Dark look.
void Tour::settings()
{
    window().activateWindow();
    m_hand->press(Qt::Key_Comma, Qt::ControlModifier);
    SettingsWindow& settings = m_app->showSettings();
    expect(settings.isVisible(), u"Ctrl+Comma opens the settings"_s);
    for (const auto mode : {AppearanceThemeMode::Light, AppearanceThemeMode::Dark}) {
        m_app->themes().applyTheme(signatureBundle().id, mode);
        for (int page = 0; page < settingsPageCount; ++page) {
            settings.showPage(SettingsPageId(page));
            picture(settings,
                    u"settings-%1-%2"_s.arg(
                        QString(title(SettingsPageId(page))).toLower().replace(u' ', u'-'),
                        modeText(mode)));
        }
        settings.showPage(SettingsPageId::Appearance);
        picture2x(settings, u"settings-appearance-"_s + modeText(mode));
    }
    settings.close();
}

void Tour::browse()
{
    press(u"Projects"_s);
    picture(u"browser"_s);
    picture2x(window(), u"browser-dark"_s);
    m_app->themes().applyTheme(signatureBundle().id, AppearanceThemeMode::Light);
    picture(u"browser-light"_s);
    m_app->themes().applyTheme(signatureBundle().id, AppearanceThemeMode::Dark);
    auto* tiles = visible<QListView>();
    tiles->setFocus();
    m_hand->press(Qt::Key_Home);
    m_hand->press(Qt::Key_Right);
    picture(u"browser-keyboard"_s);
    m_hand->press(Qt::Key_Home);
    auto* filter = visible<QLineEdit>();
    m_hand->click(*filter);
    m_hand->type(u"zebra"_s);
    picture(u"browser-no-match"_s);
    press(u"Clear Filter"_s);
    m_hand->click(*tiles->viewport(), tiles->visualRect(tiles->model()->index(0, 0)).center(),
                  Qt::RightButton);
    if (QWidget* menu = QApplication::activePopupWidget()) {
        pictureOfPopup(*menu, u"menu-project"_s);
        menu->close();
    } else {
        expect(false, u"a menu for the project"_s);
    }
    answering(
        [&] {
            m_hand->doubleClick(*tiles->viewport(),
                                tiles->visualRect(tiles->model()->index(0, 0)).center());
        },
        u"Open"_s, u"open-confirmation"_s);
    expect(m_app->appState().projectSession().rootPresentationMode() ==
               RootPresentationMode::Editor,
           u"a tile opens its project"_s);
}

void Tour::quitAndComeBack()
{
    selectRow(u"3. Salt"_s);
    auto* text = visible<EditorView>();
    m_hand->click(*text->viewport(), {text->viewport()->width() / 2, 10});
    m_hand->press(Qt::Key_End, Qt::ControlModifier);
    // Typed and not waited for: quitting has to write it.
    m_hand->type(u" And by November nobody said so."_s);
    end();
    begin();
}

void Tour::checkEveryWord()
{
    auto* tiles = visible<QListView>();
    expect(tiles != nullptr, u"the browser is the first screen"_s);
    if (!tiles)
        return;
    answering(
        [&] {
            tiles->setFocus();
            m_hand->press(Qt::Key_Home);
            m_hand->press(Qt::Key_Return);
        },
        u"Open"_s, u"second-start"_s);
    const AppState& state = m_app->appState();
    expect(state.projectSession().currentProject() &&
               state.projectSession().currentProject()->name == novel,
           u"the project that was open last comes first"_s);
    QHash<QString, QString> bodies;
    for (const auto& note : state.notes())
        bodies.insert(note->title, note->body.readOrNothing());
    expect(bodies.size() == sampleNotes.size(), u"as many notes as were made"_s);
    for (const SampleNote& note : sampleNotes) {
        const QString wanted = note.title == u"3. Salt"_s
                                   ? note.body + u" And by November nobody said so."_s
                                   : note.body;
        expect(bodies.value(note.title) == wanted, u"every word of “%1”"_s.arg(note.title));
    }
    selectRow(u"2. The harbour ledger"_s);
    picture(u"second-start-note"_s);
}

void Tour::commandPalette()
{
    m_hand->press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    m_hand->type(u"r pa"_s);
    picture(u"command-palette"_s);
    m_hand->press(Qt::Key_A, Qt::ControlModifier);
    m_hand->type(u"harb"_s);
    m_hand->press(Qt::Key_Return);
    const auto selected = m_app->appState().selection().selectedNoteID();
    const NoteRecord* note = selected ? m_app->appState().note(*selected) : nullptr;
    expect(note && note->title.contains(u"harbour"_s), u"the palette opens a note"_s);
}

void Tour::narrowWindow()
{
    window().resize(window().minimumSize());
    picture(u"smallest-window"_s);
    press(u"Projects"_s);
    picture(u"smallest-browser"_s);
    window().resize(1440, 900);
    TourHand::settle();
}

void Tour::protectedProject()
{
    const QString root = m_app->appState().projectSession().projects().constLast().rootPath;
    m_app->appState().projectSession().closeProject();
    const QDir data(ProjectLibraryController::projectDataDirectoryPath(root));
    for (const QString& name : data.entryList({u"*.store"_s}, QDir::Files)) {
        QFile store(data.filePath(name));
        expect(store.open(QIODevice::WriteOnly) && store.write("not a store at all") > 0,
               u"the store can be damaged for the picture"_s);
    }
    answering([&] { m_app->appState().projectSession().openProjectAt(root, true); }, u"OK"_s,
              u"project-data-protected"_s);
    expect(TourHand::waitFor([this] {
               return !m_app->appState().projectSession().projectLoadProtectionAlert().has_value();
           }),
           u"the alert about a damaged project"_s);
    expect(!m_app->appState().projectSession().currentProject(),
           u"a damaged project stays closed"_s);
}

int Tour::run()
{
    if (!QDir().mkpath(m_folder) || !m_home.isValid()) {
        std::fprintf(stderr, "tour: can't write to %s\n", qUtf8Printable(m_folder));
        return 1;
    }
    begin();
    welcome();
    makeProjects();
    buildNovel();
    findAndReplace();
    markdown();
    richText();
    const auto take = [this](const QString& name) {
        picture(name);
    };
    tourRows(*m_app, *m_hand, take);
    tourPages(*m_app, *m_hand, take);
    const auto takePopup = [this](QWidget& popup, const QString& name) {
        pictureOfPopup(popup, name);
    };
    tourWriting(*m_app, *m_hand, take, takePopup);
    tourSafety(*m_app, take);
    tagsAndVersions();
    looks();
    browse();
    quitAndComeBack();
    checkEveryWord();
    const TourStop stop{window(),
                        *m_hand,
                        m_app->themes(),
                        m_app->appState().services().notifications,
                        take,
                        takePopup,
                        [this](bool holds, const QString& what) {
                            expect(holds, what);
                        }};
    tourFormatting(stop);
    tourTables(stop);
    tourImages(stop);
    tourOthers(*m_app, *m_hand, take);
    narrowWindow();
    protectedProject();
    end();
    if (m_failures == 0)
        std::printf("tour: every word was there after the second start; %d pictures in %s\n",
                    m_pictures, qUtf8Printable(m_folder));
    return m_failures == 0 ? 0 : 1;
}

} // namespace

int runTour(const QString& folder, const ScreenSeen& seen, const MakeClock& makeClock)
{
    return Tour(folder, seen, makeClock).run();
}

} // namespace orvane
