// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellFixture.h"
#include "appearance/DesktopMotion.h"
#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/BundledThemes.h"
#include "appearance/themes/DesktopThemeFollower.h"
#include "commands/ShortcutStorage.h"
#include "editor/formatting/EditorHighlightStrength.h"
#include "editor/formatting/EditorParagraphStyleRole.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/pane/EditorTextHost.h"
#include "editor/pane/WritingLibrary.h"
#include "editor/session/CaretPlaces.h"
#include "editor/session/PerNoteEditorProfile.h"
#include "editor/view/EditorSettings.h"
#include "editor/view/EditorView.h"
#include "shell/binder/BinderTreeView.h"
#include "shell/inspector/InspectorView.h"
#include "shell/layout/PaneLayoutSettings.h"

#include <QComboBox>
#include <QDirIterator>
#include <QRegularExpression>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// Keys that no row sets, and why.
const QMap<QString, QString> otherKeys{
    {u"OrvaneNotes.customBulletLibrary"_s, u"of the first release: only read, then removed"_s},
    {u"appearance.themes.library.v1"_s, u"of the first release: only read"_s},
    {u"appearance.themes.library.unreadable"_s, u"kept aside, never read"_s},
};

/// Texts with dots in the sources that are no keys.
const QStringList noKeys{
    u"OrvaneWorkspace.MainDocumentWindow"_s,
    u"com.adobe.pdf"_s,
    u"opus4.6"_s,
    u"org.freedesktop.appearance"_s,
    u"org.freedesktop.portal.Desktop"_s,
    u"org.freedesktop.portal.Settings"_s,
    u"org.gnome.desktop.interface"_s,
    u"org.kde.kdeglobals.KDE"_s,
};

/// Sets every key in one run of the whole program, and looks in the next run, over the same home,
/// for what each does.
class SettingsOverTwoRuns : public ShellTest {
protected:
    struct Row {
        QString key;
        std::function<void()> change;
        std::function<bool()> works;
    };

    template <typename T>
    void add(const Setting<T>& setting, const T& value, std::function<bool()> works = {})
    {
        EXPECT_NE(value, setting.fallback) << qUtf8Printable(setting.keyText());
        if (!works)
            works = [this, setting, value] {
                return setting.read(defaults()) == value;
            };
        m_rows.append({setting.keyText(),
                       [this, setting, value] { setting.write(defaults(), value); },
                       std::move(works)});
    }
    void add(const QString& key, std::function<void()> change, std::function<bool()> works)
    {
        m_rows.append({key, std::move(change), std::move(works)});
    }

    EditorSession& session() { return window().editorPane().session(); }
    const RichTextViewRepresentable& page() { return find<EditorTextHost>()->parameters(); }
    WritingLibrary library() { return WritingLibrary(state().services(), {}, u"en_US"_s); }

    void addStart();
    void addEditor();
    void addPanes();
    void addLook();
    void addTags();

    QList<Row> m_rows;
    QUuid m_project;
    QUuid m_note;
    QUuid m_theme;
};

void SettingsOverTwoRuns::addStart()
{
    add(SessionKeys::welcomeDismissed, true, [this] { return sheetTitle().isEmpty(); });
    add(SessionKeys::launchDestination, u"lastNote"_s, [this] {
        return state().projectSession().rootPresentationMode() == RootPresentationMode::Editor;
    });
    add(
        SessionKeys::lastOpenedProjectID, [] {},
        [this] {
            return state().projectSession().currentProject() &&
                   state().projectSession().currentProject()->id == m_project;
        });
    add(
        SessionKeys::lastOpenedNoteID(m_project), [] {},
        [this] { return state().selection().selectedNoteID() == m_note; });
    add(
        SessionKeys::openProjectHistoryIDs, [] {},
        [this] { return state().projectSession().projectsByRecentOpen().first().id == m_project; });
    add(
        CaretPlaces::defaultsKey,
        [this] { window().editorPane().textView().setSelection(TextSelection::caret(3)); },
        [this] { return window().editorPane().textView().selection().position == 3; });
    add(SessionKeys::confirmBeforeOpen, false);
    add(autosaveEnabledSetting, false);
    add(autoSaveSecondsSetting, 4.5);
    add(autoSnapshotEnabledSetting, false,
        [this] { return !state().versionHistory().isAutoSnapshotEnabled(); });
    add(autoSnapshotIntervalSetting, 17.0,
        [this] { return state().versionHistory().autoSnapshotInterval() == 17; });
    add(maxSnapshotsSetting, qint64(7),
        [this] { return state().versionHistory().maxSnapshots() == 7; });
    add(
        u"settings.projects.browserOrder"_s,
        [this] { defaults().set(u"settings.projects.browserOrder"_s, u"title"_s); },
        [this] {
            state().projectSession().presentProjectsBrowser();
            TourHand::settle();
            bool isByTitle = false;
            for (auto* box : window().findChildren<QComboBox*>()) {
                if (box->accessibleName() == u"Order of the projects"_s)
                    isByTitle = box->currentIndex() == 2;
            }
            state().projectSession().presentEditor();
            TourHand::settle();
            return isByTitle;
        });
    add(
        u"projects.known.v1"_s, [] {},
        [this] { return state().projectSession().knownProjects().opened(m_project) != nullptr; });
    const QString elsewhere = u"/somewhere/else"_s;
    add(
        SessionKeys::rescueFoldersKey,
        [this, elsewhere] { SessionKeys::addRescueFolder(defaults(), elsewhere); },
        [this, elsewhere] { return SessionKeys::rescueFolders(defaults()).contains(elsewhere); });
    const QUuid slow = QUuid::createUuid();
    add(
        SessionKeys::slowNoteIDs,
        [this, slow] { SessionKeys::writeUuids(defaults(), SessionKeys::slowNoteIDs, {slow}); },
        [this, slow] {
            return SessionKeys::readUuids(defaults(), SessionKeys::slowNoteIDs).contains(slow);
        });
    add(
        u"settings.binder.sortOrder"_s,
        [this] { state().setBinderSortOrder(BinderSortOrder::RecentModified); },
        [this] { return state().binderSortOrder() == BinderSortOrder::RecentModified; });
    add(
        ShortcutStorage::defaultsKey,
        [this] {
            // The key of Bold, moved to the place of another letter.
            ShortcutStorage::saveOverrides(defaults(),
                                           {{ShortcutAction::bold, {38, 0x100000 | 0x80000}}});
        },
        [this] {
            const auto stored = ShortcutStorage::loadOverrides(defaults());
            return stored.size() == 1 && stored.contains(ShortcutAction::bold);
        });
}

void SettingsOverTwoRuns::addEditor()
{
    using Role = EditorParagraphStyleRole;
    add(
        editorModeSetting.keyText(), [this] { session().setMode(EditorMode::richText); },
        [this] { return session().mode() == EditorMode::richText; });
    add(
        u"settings.editor.perNoteProfiles.v1"_s, [] {},
        [this] {
            const auto profile = PerNoteEditorProfiles(defaults()).profile(m_note);
            return profile && profile->fontSize == 19;
        });
    add(editorFontFamilySetting, u"DejaVu Sans"_s,
        [this] { return session().baseFont().family == u"DejaVu Sans"_s; });
    add(editorFontSizeSetting, 19.0, [this] { return session().baseFont().size == 19; });
    add(editorDisplayZoomSetting, 1.75, [this] { return page().visualZoom == 1.75; });
    add(bottomDocumentPaddingSetting, 33.0, [this] { return page().bottomDocumentPadding == 33; });
    add(showFormattingToolbarSetting, false,
        [this] { return !window().editorPane().formattingBar().isVisible(); });
    const std::pair<const Setting<double>&, Role> sizes[] = {
        {headingTitleSizeSetting, Role::heading1}, {heading1SizeSetting, Role::heading2},
        {heading2SizeSetting, Role::heading3},     {heading3SizeSetting, Role::heading4},
        {heading4SizeSetting, Role::heading5},     {heading5SizeSetting, Role::heading6}};
    for (const auto& [setting, role] : sizes) {
        const double size = setting.fallback + 0.5;
        add(setting, size, [this, role, size] { return configuredSize(role, defaults()) == size; });
    }
    add(pageViewEnabledSetting, true, [this] { return page().pageViewEnabled; });
    add(pageSizePresetSetting, u"A5"_s);
    add(pageMarginTopSetting, 41.0, [this] { return page().pageMargins.top() == 41; });
    add(pageMarginBottomSetting, 42.0, [this] { return page().pageMargins.bottom() == 42; });
    add(pageMarginLeftSetting, 43.0, [this] { return page().pageMargins.left() == 43; });
    add(pageMarginRightSetting, 44.0, [this] { return page().pageMargins.right() == 44; });
    add(rulerVisibleSetting, true, [this] { return page().rulerVisible; });
    add(typewriterModeSetting, true);
    add(focusModeSetting, true,
        [this] { return window().editorPane().textView().focusRange().has_value(); });
    add(focusModeGranularitySetting, u"sentence"_s, [this] {
        const auto range = window().editorPane().textView().focusRange();
        return range && range->length < session().gateway().store().length() / 2;
    });
    add(focusModeDimOpacitySetting, 0.9);
    add(smartPasteSetting, false);
    add(autoBracketingSetting, false);
    add(editorHighlightStrengthSetting, u"Strong"_s);
    add(spellingEnabledSetting, false, [this] { return !library().spelling.isEnabled(); });
    add(
        QString::fromUtf16(spellingLanguagesKey),
        [this] { library().spelling.setLanguage(m_note, {}); },
        [this] { return library().spelling.languageOf(m_note).isEmpty(); });
    add(
        u"OrvaneWorkspace.customBulletLibrary"_s,
        [this] {
            library().bullets.setBullets(
                {{QUuid::createUuid(), u"★"_s, u"Star"_s, {}, {}, {}, {}}});
        },
        [this] {
            const auto bullets = library().bullets.bullets();
            return bullets.size() == 1 && bullets.first().name == u"Star"_s;
        });
}

void SettingsOverTwoRuns::addPanes()
{
    add(PaneLayoutSettings::binderVisible, false,
        [this] { return find<BinderTreeView>() == nullptr; });
    add(PaneLayoutSettings::inspectorVisible, false,
        [this] { return find<InspectorView>() == nullptr; });
    add(PaneLayoutSettings::inspectorSection, u"versions"_s);
    // The locks are the exception: they end with the run.
    for (const auto* lock : {&PaneLayoutSettings::binderLock, &PaneLayoutSettings::editorLock,
                             &PaneLayoutSettings::inspectorLock})
        add(*lock, true, [this, lock] { return !lock->read(defaults()); });
    add(PaneLayoutSettings::editorPageWidth, PaneMetrics::editorPageWidthDefault + 40);
    add(
        u"session.mainWindow.placement"_s, [this] { window().resize(1111, 701); },
        [this] { return window().size() == QSize(1111, 701); });
    add(motionSetting, u"reduced"_s, [this] { return DesktopMotion(defaults()).isReduced(); });
}

void SettingsOverTwoRuns::addLook()
{
    AppearanceValues values;
    for (const AppearanceField& field : appearanceFields()) {
        AppearanceFieldValue value = field.get(values);
        if (bool* flag = std::get_if<bool>(&value))
            *flag = !*flag;
        else if (double* number = std::get_if<double>(&value))
            *number = *number > 0.5 ? *number - 0.25 : *number + 0.25;
        else if (field.name == "exportPageMode")
            value = u"appPageColor"_s;
        else
            value = u"Strong"_s;
        field.set(values, value);
        const AppearanceFieldValue stored = field.get(values);
        add(
            field.key,
            [this, &field, stored] {
                std::visit([&](const auto& each) { defaults().set(field.key, each); }, stored);
            },
            [this, &field, stored] { return field.get(readAppearance(defaults())) == stored; });
    }
    add(
        u"appearance.themes.library.v2"_s,
        [this] { m_theme = m_app->themes().saveCurrentAsTheme(u"Mine"_s); },
        [this] {
            const AppearanceThemeBundle* mine = m_app->themes().bundle(m_theme);
            return mine && mine->name == u"Mine"_s &&
                   mine->light.values == readAppearance(defaults());
        });
    add(
        u"appearance.themes.activeID"_s, [] {},
        [this] { return m_app->themes().activeThemeID() == m_theme; });
    add(
        u"appearance.themes.activeMode"_s,
        [this] { m_app->themes().applyTheme(m_theme, AppearanceThemeMode::Light); },
        [this] { return m_app->themes().activeMode() == AppearanceThemeMode::Light; });
    const std::pair<const char16_t*, const AppearanceThemeBundle&> bundled[] = {
        {u"appearance.themes.bundled.googleWorkspace.v1.installed", googleWorkspaceBundle()},
        {u"appearance.themes.bundled.orvaneWorkspaceSignature.v1.installed", signatureBundle()}};
    for (const auto& [key, bundle] : bundled)
        add(
            QString::fromUtf16(key), [] {},
            [this, id = bundle.id] { return m_app->themes().bundle(id) != nullptr; });
}

void SettingsOverTwoRuns::addTags()
{
    add(
        u"tagColors.v2"_s, [this] { state().setTagColor(u"Tide"_s, u"#123456"_s); },
        [this] { return state().tagSettings().colorHexes.value(u"tide"_s) == u"#123456"_s; });
    add(
        u"tagAliases.v1"_s, [this] { state().addAlias(u"flood"_s, u"Tide"_s); },
        [this] {
            return state().tagSettings().aliases.value(u"tide"_s) == QStringList{u"flood"_s};
        });
    add(
        u"autoTag.exceptions"_s, [this] { state().addAutoTagException(u"the"_s); },
        [this] { return state().tagSettings().isExcludedFromAutoColor(u"The"_s); });
}

/// What the sources call a key: what a `Setting` names, and every text with dots in it that is
/// neither a file's name nor one of `noKeys`. One that ends in a dot begins keys.
QStringList keysInSources()
{
    static const QRegularExpression setting(uR"re(Setting<[\w:]+>\s+\w+\s*\{\s*u"([^"]+)")re"_s);
    static const QRegularExpression dotted(
        uR"re((?:u|QStringLiteral\(|QLatin1StringView\()?"([A-Za-z]\w*(?:\.[A-Za-z0-9]+)+\.?)"(_s|_L1|\)|[;},)]))re"_s);
    static const QRegularExpression fileName(
        uR"re(\.(json|store|txt|svg|desktop|orvanetheme|html|rtf|lock|socket|sqlite|pdf|png)$)re"_s);
    QStringList keys;
    QDirIterator files(QStringLiteral(ORVANE_SOURCE_DIR "/src"), {u"*.cpp"_s, u"*.h"_s},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString text = QString::fromUtf8(readFile(files.next()).value());
        for (const auto& match : setting.globalMatch(text))
            keys.append(match.captured(1));
        for (const auto& match : dotted.globalMatch(text)) {
            // A plain literal is a name of a notification or a word for the log.
            const QString before = match.captured(0);
            const bool isText = !before.startsWith(u'"') || match.captured(2).startsWith(u'_');
            if (isText && !fileName.match(match.captured(1)).hasMatch())
                keys.append(match.captured(1));
        }
    }
    for (const AppearanceField& field : appearanceFields())
        keys.append(field.key);
    keys.removeDuplicates();
    return keys;
}

TEST_F(SettingsOverTwoRuns, EveryKeyIsReadAgainWithItsEffect)
{
    dismissWelcome();
    start();
    for (const QString& name : {u"Zebra"_s, u"Aster"_s}) {
        press(u"New Project"_s);
        m_hand->type(name);
        m_hand->press(Qt::Key_Return);
        leaveIconsAndTitles();
        state().projectSession().presentProjectsBrowser();
        TourHand::settle();
    }
    state().projectSession().openProject(state().projectSession().projects().last().id, false);
    m_project = state().projectSession().currentProject()->id;
    m_note = state().createNote().value();
    TourHand::settle();
    window().editorPane().textView().setFocus();
    m_hand->type(u"One sentence. Another sentence, and a third. The end of it all is far away."_s);
    addStart();
    addEditor();
    addPanes();
    addTags();
    addLook();
    for (const Row& row : std::as_const(m_rows))
        row.change();
    TourHand::settle();
    // Where the window stands is written once it stands still.
    ASSERT_TRUE(TourHand::waitFor(
        [this] { return defaults().contains(u"session.mainWindow.placement"_s); }));
    const QString root = state().projectSession().currentProject()->rootPath;
    quit();
    // The project's own memory of the selection and the panes goes before the settings', so it has
    // to show the same.
    EXPECT_TRUE(QFile::exists(ProjectLibraryController::projectDataDirectoryPath(root) +
                              u"/workspace-state.json"_s));

    start();
    ASSERT_EQ(state().selection().selectedNoteID(), m_note);
    QSet<QString> known(otherKeys.keyBegin(), otherKeys.keyEnd());
    for (const Row& row : std::as_const(m_rows)) {
        EXPECT_TRUE(defaults().contains(row.key)) << qUtf8Printable(row.key);
        EXPECT_TRUE(row.works()) << qUtf8Printable(row.key);
        known.insert(row.key);
    }

    // Following the desktop would take the active mode elsewhere, so it has a run of its own.
    followDesktopSetting.write(defaults(), true);
    known.insert(followDesktopSetting.keyText());
    const QStringList written = defaults().keys();
    quit();
    start();
    EXPECT_TRUE(followDesktopSetting.read(defaults()));

    // Nothing that the program has, or has written, is without a row.
    QStringList strangers;
    for (const QString& key : keysInSources()) {
        const bool begins = key.endsWith(u'.') && std::ranges::any_of(known, [&](const QString& k) {
                                return k.startsWith(key);
                            });
        if (!begins && !known.contains(key) && !noKeys.contains(key))
            strangers.append(key);
    }
    for (const QString& key : written) {
        if (!known.contains(key) && !key.startsWith(SessionKeys::lastOpenedNoteID({}).chopped(36)))
            strangers.append(key);
    }
    EXPECT_TRUE(strangers.isEmpty()) << "no row has " << qUtf8Printable(strangers.join(u", "_s));
}

} // namespace
} // namespace orvane
