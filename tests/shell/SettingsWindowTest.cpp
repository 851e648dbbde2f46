// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/SettingsWindow.h"

#include "ShellFixture.h"
#include "appearance/studio/ThemeStudioView.h"
#include "appearance/themes/BundledThemes.h"
#include "commands/AppCommandEvents.h"
#include "commands/ShortcutStorage.h"
#include "editor/view/EditorView.h"
#include "shell/settings/ShortcutRow.h"
#include "shell/settings/ShortcutsPage.h"
#include "text/lists/CustomBullet.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class SettingsWindowTest : public ShellTest {
protected:
    void openSettings()
    {
        dismissWelcome();
        start();
        m_hand->press(Qt::Key_Comma, Qt::ControlModifier);
        m_settings = &m_app->showSettings();
        m_settings->activateWindow();
        ASSERT_TRUE(TourHand::waitFor([this] { return m_settings->isActiveWindow(); }));
        m_keys.emplace(*m_settings);
    }

    ShortcutsPage& shortcuts()
    {
        m_settings->showPage(SettingsPageId::Shortcuts);
        TourHand::settle();
        return dynamic_cast<ShortcutsPage&>(m_settings->page(SettingsPageId::Shortcuts));
    }
    ShortcutData stored(ShortcutAction action)
    {
        return ShortcutBindings(ShortcutStorage::loadOverrides(defaults())).shortcut(action);
    }

    /// As after scrolling there.
    void click(QWidget& target)
    {
        for (QWidget* outer = target.parentWidget(); outer; outer = outer->parentWidget()) {
            if (auto* area = qobject_cast<QScrollArea*>(outer))
                area->ensureWidgetVisible(&target);
        }
        m_keys->click(target);
    }

    SettingsWindow* m_settings = nullptr;
    std::optional<TourHand> m_keys;
};

QString shown(const QWidget& control)
{
    if (const auto* box = qobject_cast<const QCheckBox*>(&control))
        return box->isChecked() ? u"on"_s : u"off"_s;
    if (const auto* combo = qobject_cast<const QComboBox*>(&control))
        return combo->currentText();
    return qobject_cast<const QDoubleSpinBox*>(&control)->text();
}

struct KeyCase {
    const char* name;
    SettingsPageId page;
    const char* control;
    Qt::Key press;
    const char* key;
    DefaultsValue written;
    DefaultsValue outside;
    const char* shown;
};

const KeyCase keyCases[] = {
    {"where the program starts", SettingsPageId::General, "When the program starts", Qt::Key_Down,
     "settings.general.launchDestination", u"lastProject"_s, u"lastNote"_s, "Launch to Last Note"},
    {"autosave", SettingsPageId::General, "Save while writing", Qt::Key_Space,
     "settings.general.autosaveEnabled", false, true, "on"},
    {"seconds", SettingsPageId::General, "Pause before saving", Qt::Key_Up,
     "settings.general.autoSaveSeconds", 2.0, 0.0, "0.3 s"},
    {"movement", SettingsPageId::General, "Panes that open and close", Qt::Key_Down,
     "settings.general.motion", u"full"_s, u"reduced"_s, "Jump"},
    {"mode", SettingsPageId::Editor, "Written as", Qt::Key_Down, "settings.editor.mode",
     u"Markdown"_s, u"Rich Text"_s, "Rich Text"},
    {"font", SettingsPageId::Editor, "Font", Qt::Key_Down, "settings.editor.fontFamily", u"Menlo"_s,
     u"A font from elsewhere"_s, "A font from elsewhere"},
    {"size", SettingsPageId::Editor, "Size", Qt::Key_Up, "settings.editor.fontSize", 17.0, 20.0,
     "20 pt"},
    {"formatting toolbar", SettingsPageId::Editor, "Formatting toolbar", Qt::Key_Space,
     "settings.editor.showFormattingToolbar", false, true, "on"},
    {"highlights", SettingsPageId::Editor, "Highlights", Qt::Key_Down,
     "settings.appearance.editor.highlightStrength", u"Strong"_s, u"Subtle"_s, "Subtle"},
    {"largest heading", SettingsPageId::Editor, "Heading 1", Qt::Key_Up,
     "settings.editor.headingTitle", 33.0, 0.0, "32 pt"},
    {"smallest heading", SettingsPageId::Editor, "Heading 6", Qt::Key_Down,
     "settings.editor.heading5", 17.0, -4.0, "18 pt"},
    {"zoom", SettingsPageId::Editor, "Zoom", Qt::Key_Down, "settings.appearance.editor.displayZoom",
     1.2, 2.0, "200 %"},
    {"room below", SettingsPageId::Editor, "Room below the text", Qt::Key_Up,
     "settings.editor.bottomDocumentPadding", 240.0, 100.0, "100 px"},
    {"ruler", SettingsPageId::Editor, "Ruler over rich text", Qt::Key_Space,
     "settings.editor.rulerVisible", true, false, "off"},
    {"page view", SettingsPageId::Editor, "Write on a sheet of paper", Qt::Key_Space,
     "settings.editor.pageViewEnabled", true, false, "off"},
    {"paper", SettingsPageId::Editor, "Paper", Qt::Key_Down, "settings.editor.pageSizePreset",
     u"A4"_s, u"US Legal"_s, "US Legal (8.5 × 14″)"},
    {"top margin", SettingsPageId::Editor, "Top margin", Qt::Key_Up,
     "settings.editor.pageMarginTop", 79.086614, 36.0, "1.27 cm"},
    {"right margin", SettingsPageId::Editor, "Right margin", Qt::Key_Down,
     "settings.editor.pageMarginRight", 64.913386, 72.0, "2.54 cm"},
    {"spelling", SettingsPageId::Editor, "Check spelling while writing", Qt::Key_Space,
     "settings.editor.spelling.enabled", false, true, "on"},
    {"versions", SettingsPageId::VersionHistory, "Keep versions while writing", Qt::Key_Space,
     "settings.versionHistory.autoSnapshotEnabled", false, true, "on"},
    {"interval", SettingsPageId::VersionHistory, "Interval", Qt::Key_Up,
     "settings.versionHistory.autoSnapshotInterval", 360.0, 0.0, "5 min"},
    {"interval of a part", SettingsPageId::VersionHistory, "Interval", Qt::Key_Down,
     "settings.versionHistory.autoSnapshotInterval", 240.0, 90.0, "1.5 min"},
    {"count", SettingsPageId::VersionHistory, "Versions of each note", Qt::Key_Up,
     "settings.versionHistory.maxSnapshots", qint64(130), qint64(-3), "120"},
    {"question", SettingsPageId::Projects, "Ask before a project is opened", Qt::Key_Space,
     "settings.projects.confirmBeforeOpen", false, true, "on"},
};

TEST_F(SettingsWindowTest, EachControlWritesItsKeyAndFollowsIt)
{
    openSettings();
    for (const KeyCase& each : keyCases) {
        SCOPED_TRACE(each.name);
        const QString key = QString::fromLatin1(each.key);
        defaults().remove(key);
        m_settings->showPage(each.page);
        TourHand::settle();
        QWidget* control = nullptr;
        for (QWidget* widget : m_settings->page(each.page).findChildren<QWidget*>()) {
            if (widget->accessibleName() == QString::fromLatin1(each.control))
                control = widget;
        }
        ASSERT_TRUE(control);
        control->setFocus();
        EXPECT_FALSE(defaults().contains(key)) << "looking is not writing";
        m_keys->press(each.press);
        EXPECT_EQ(defaults().value(key), each.written);
        defaults().set(key, each.outside);
        EXPECT_EQ(shown(*control), QString::fromUtf8(each.shown));
        EXPECT_EQ(defaults().value(key), each.outside) << "following is not writing";
    }
}

TEST_F(SettingsWindowTest, TheOpenNoteFollowsTheEditorPage)
{
    openSettings();
    ASSERT_TRUE(state().projectSession().createProject(u"Novel"_s, {}));
    state().createNote(u"Low water\nMara counts the posts."_s, {});
    m_settings->showPage(SettingsPageId::Editor);
    TourHand::settle();
    auto* text = find<EditorView>();
    ASSERT_TRUE(text);
    const auto picture = [&] {
        TourHand::settle();
        return text->viewport()->grab().toImage();
    };
    for (const char* name : {"Zoom", "Size", "Font"}) {
        const QImage before = picture();
        for (QWidget* widget : m_settings->page(SettingsPageId::Editor).findChildren<QWidget*>()) {
            if (widget->accessibleName() == QString::fromLatin1(name))
                widget->setFocus();
        }
        m_keys->press(Qt::Key_Down);
        EXPECT_NE(picture(), before) << name;
    }
}

TEST_F(SettingsWindowTest, ABulletMadeHereMakesAListInTheOpenNote)
{
    openSettings();
    ASSERT_TRUE(state().projectSession().createProject(u"Novel"_s, {}));
    state().createNote(u"Low water"_s, {});
    state().services().notifications.post(AppCommandEvents::openBulletLibrarySettings);
    ASSERT_EQ(m_settings->currentPage(), SettingsPageId::Bullets);
    QWidget& page = m_settings->page(SettingsPageId::Bullets);
    const auto add = [&] {
        for (auto* button : page.findChildren<QPushButton*>())
            click(*button);
    };
    const auto characters = [this] {
        QStringList all;
        const auto json = defaults().get<QByteArray>(u"OrvaneWorkspace.customBulletLibrary"_s, {});
        for (const CustomBullet& bullet :
             customBulletsFromJson(json).value_or(QList<CustomBullet>()))
            all.append(bullet.character);
        return all;
    };
    add();
    EXPECT_EQ(characters(), QStringList()) << "a row without a bullet is not stored";
    m_keys->type(u"#"_s);
    add();
    m_keys->type(u"=>"_s);
    m_keys->press(Qt::Key_Tab);
    m_keys->type(u"Follows"_s);
    EXPECT_EQ(characters(), QStringList({u"#"_s, u"=>"_s}));
    QToolButton* up = nullptr;
    for (auto* button : page.findChildren<QToolButton*>()) {
        if (button->accessibleName() == u"Move up"_s && button->isEnabled())
            up = button;
    }
    ASSERT_TRUE(up);
    click(*up);
    EXPECT_EQ(characters(), QStringList({u"=>"_s, u"#"_s}));

    m_settings->close();
    window().activateWindow();
    ASSERT_TRUE(TourHand::waitFor([this] { return window().isActiveWindow(); }));
    defaults().set(u"settings.editor.mode"_s, u"Rich Text"_s);
    m_hand->click(*find<EditorView>()->viewport());
    m_hand->press(Qt::Key_End, Qt::ControlModifier);
    m_hand->type(u"\n=> one\ntwo"_s);
    window().flushDrafts();
    const QString body = state().note(*state().selection().selectedNoteID())->body.readOrNothing();
    EXPECT_TRUE(body.endsWith(u"=> one\n=> two"_s)) << qUtf8Printable(body);
}

TEST_F(SettingsWindowTest, WhatNeedsAnotherSettingWaitsForIt)
{
    openSettings();
    auto* seconds = m_settings->page(SettingsPageId::General).findChild<QDoubleSpinBox*>();
    ASSERT_TRUE(seconds);
    EXPECT_TRUE(seconds->isEnabled());
    defaults().set(u"settings.general.autosaveEnabled"_s, false);
    EXPECT_FALSE(seconds->isEnabled());
}

/// Walks every page with Tab and asks the accessibility interface about each stop.
TEST_F(SettingsWindowTest, EveryControlIsReachedByTabAndSaysWhatItIs)
{
    openSettings();
    for (int i = 0; i < settingsPageCount; ++i) {
        const auto id = SettingsPageId(i);
        SCOPED_TRACE(qUtf8Printable(title(id)));
        m_settings->showPage(id);
        TourHand::settle();
        QWidget* first = QApplication::focusWidget();
        ASSERT_TRUE(first);
        QSet<QWidget*> stops;
        do {
            QWidget* stop = QApplication::focusWidget();
            ASSERT_TRUE(m_settings->isAncestorOf(stop));
            stops.insert(stop);
            QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(stop);
            ASSERT_TRUE(spoken);
            EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty())
                << stop->metaObject()->className();
            EXPECT_NE(spoken->role(), QAccessible::NoRole);
            EXPECT_NE(spoken->role(), QAccessible::Client) << stop->metaObject()->className();
            EXPECT_TRUE(spoken->state().focusable);
            EXPECT_FALSE(stop->visibleRegion().isEmpty())
                << qUtf8Printable(spoken->text(QAccessible::Name)) << " is out of sight";
            m_keys->press(Qt::Key_Tab);
        } while (QApplication::focusWidget() != first && stops.size() < 500);
        for (QWidget* widget : m_settings->findChildren<QWidget*>()) {
            const bool control = widget->isVisible() && widget->isEnabled() &&
                                 (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy();
            if (control && !stops.contains(widget))
                ADD_FAILURE() << "not reached: " << widget->metaObject()->className() << ' '
                              << qUtf8Printable(widget->accessibleName());
        }
    }
}

TEST_F(SettingsWindowTest, RecordingTakesTheNextKeyWithAModifier)
{
    openSettings();
    ShortcutsPage& page = shortcuts();
    ShortcutRow& bold = page.row(ShortcutAction::bold);
    const ShortcutData before = stored(ShortcutAction::bold);
    const auto record = [&] {
        bold.keyButton().setFocus();
        m_keys->press(Qt::Key_Space);
    };

    record();
    EXPECT_EQ(bold.keyText(), u"Hold Ctrl, Alt, Super, or Shift, then press a key"_s);
    m_keys->press(Qt::Key_Y);
    EXPECT_EQ(stored(ShortcutAction::bold), before) << "a plain key is not taken";
    m_keys->press(Qt::Key_Escape);
    EXPECT_EQ(bold.keyText(), u"Ctrl+B"_s);
    EXPECT_EQ(stored(ShortcutAction::bold), before);

    record();
    m_keys->press(Qt::Key_Y, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(bold.keyText(), u"Ctrl+Alt+Y"_s);
    EXPECT_EQ(stored(ShortcutAction::bold).desktopText(), u"Ctrl+Alt+Y"_s);
    EXPECT_EQ(bold.noteText(), QString());

    record();
    click(*page.findChild<QLineEdit*>());
    EXPECT_EQ(bold.keyText(), u"Ctrl+Alt+Y"_s) << "a press elsewhere ends it";
    m_keys->press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(bold.keyText(), u"Ctrl+Alt+Y"_s);

    page.row(ShortcutAction::bold).keyButton().click();
    m_settings->showPage(SettingsPageId::General);
    m_keys->press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(bold.keyText(), u"Ctrl+Alt+Y"_s) << "another page ends it too";
}

TEST_F(SettingsWindowTest, ConflictsAreSaidAndSaved)
{
    openSettings();
    ShortcutsPage& page = shortcuts();
    ShortcutRow& bold = page.row(ShortcutAction::bold);
    ShortcutRow& italic = page.row(ShortcutAction::italic);
    click(bold.keyButton());
    m_keys->press(Qt::Key_I, Qt::ControlModifier);
    EXPECT_EQ(bold.keyText(), u"Ctrl+I"_s);
    EXPECT_EQ(bold.noteText(),
              u"Also used by Italic. Your new shortcut was saved; change the other "
              "command if needed."_s);
    EXPECT_EQ(italic.noteText(), u"Also used by Bold."_s);
    EXPECT_TRUE(stored(ShortcutAction::bold).matches(stored(ShortcutAction::italic)));

    click(*bold.findChild<QToolButton*>());
    EXPECT_EQ(bold.keyText(), u"Ctrl+B"_s);
    EXPECT_EQ(italic.noteText(), QString());
}

TEST_F(SettingsWindowTest, WhatAKeyTakesAwayIsSaid)
{
    openSettings();
    ShortcutRow& bold = shortcuts().row(ShortcutAction::bold);
    click(bold.keyButton());
    m_keys->press(Qt::Key_F6);
    EXPECT_EQ(bold.keyText(), u"F6"_s) << "a function key needs no modifier";
    EXPECT_EQ(bold.noteText(), u"F6 no longer does “Go to Next Pane”."_s);
    click(bold.keyButton());
    m_keys->press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(bold.noteText(), u"Outside of texts, Ctrl+Down stays “Next Item in the Binder”.\n"
                               "In a text, Ctrl+Down no longer does “Go to Next Paragraph”."_s);
    if (qEnvironmentVariableIsSet("ORVANE_GRABS"))
        shortcuts().grab().save(qEnvironmentVariable("ORVANE_GRABS") + u"/shortcut-clash.png"_s);
}

TEST_F(SettingsWindowTest, KeysOfTheDesktopAreSaidAndAFreeOneIsOffered)
{
    openSettings();
    ShortcutRow& row = shortcuts().row(ShortcutAction::makeLowercase);
    ASSERT_EQ(row.keyText(), u"Ctrl+Alt+L"_s);
    EXPECT_TRUE(row.noteText().contains(u"lock the screen"_s));
    QPushButton* offer = nullptr;
    for (auto* button : row.findChildren<QPushButton*>()) {
        if (button->text().startsWith(u"Use "_s))
            offer = button;
    }
    ASSERT_TRUE(offer && offer->isVisible());
    const QString offered = offer->text().mid(4);
    click(*offer);
    EXPECT_EQ(row.keyText(), offered);
    EXPECT_EQ(row.noteText(), QString());
}

TEST_F(SettingsWindowTest, RestoreDefaultsAndOverridesFromElsewhere)
{
    openSettings();
    ShortcutsPage& page = shortcuts();
    ShortcutStorage::saveOverrides(defaults(),
                                   {{ShortcutAction::newNote, {40, KeyModifier::control}},
                                    {ShortcutAction::heading1, {7, KeyModifier::option}}});
    EXPECT_EQ(page.row(ShortcutAction::newNote).keyText(), u"Super+K"_s);
    EXPECT_EQ(page.row(ShortcutAction::heading1).keyText(), u"Alt+X"_s);
    for (auto* button : page.findChildren<QPushButton*>()) {
        if (button->text() == u"Restore Defaults"_s)
            click(*button);
    }
    EXPECT_FALSE(defaults().contains(ShortcutStorage::defaultsKey));
    for (const ShortcutAction action : allShortcutActions())
        EXPECT_EQ(page.row(action).keyText(), defaultShortcut(action).desktopText())
            << qUtf8Printable(rawValue(action));
}

TEST_F(SettingsWindowTest, ShortcutsAreFoundByNameAndByKey)
{
    openSettings();
    ShortcutsPage& page = shortcuts();
    struct Case {
        const char* words;
        QStringList found;
    };
    const Case cases[] = {
        {"jump", {u"focusBinder"_s}},
        {" Ctrl+Alt+Shift+", {u"versionHistory"_s}},
        {"Export as Markdown", {}}, // which nothing answers yet
        {"zebra", {}},
    };
    click(*page.findChild<QLineEdit*>());
    for (const Case& each : cases) {
        m_keys->press(Qt::Key_A, Qt::ControlModifier);
        m_keys->type(QString::fromLatin1(each.words));
        QStringList found;
        for (const ShortcutAction action : allShortcutActions()) {
            if (page.row(action).isVisible())
                found.append(rawValue(action));
        }
        EXPECT_EQ(found, each.found) << each.words;
    }
}

TEST_F(SettingsWindowTest, TheStudioRestylesTheOpenMainWindow)
{
    openSettings();
    ASSERT_TRUE(state().projectSession().createProject(u"Novel"_s, {}));
    TourHand::settle();
    const auto binder = [this] {
        return window().grab().toImage().pixelColor(3, window().height() / 2);
    };
    EXPECT_EQ(binder(), QColor(0x0A, 0x0E, 0x16));
    m_settings->showPage(SettingsPageId::Appearance);
    auto& studio = dynamic_cast<ThemeStudioView&>(m_settings->page(SettingsPageId::Appearance));
    studio.select(googleWorkspaceBundle().id);
    studio.select(AppearanceThemeMode::Light);
    studio.applySelected();
    TourHand::settle();
    EXPECT_EQ(binder(), QColor(0xF1, 0xF3, 0xF4));

    studio.duplicateSelected();
    m_keys->press(Qt::Key_Escape);
    const QUuid copy = studio.selectedTheme();
    const auto answer = [&] {
        const Sheet* sheet = m_settings->sheets().topSheet();
        ASSERT_TRUE(sheet) << "asked in the settings window";
        EXPECT_EQ(sheet->accessibleName(), u"Delete Theme?"_s);
        for (auto* button : sheet->findChildren<QPushButton*>()) {
            if (button->text() == u"Delete"_s)
                click(*button);
        }
    };
    QTimer::singleShot(0, m_settings, answer);
    studio.deleteSelected();
    EXPECT_FALSE(m_app->themes().bundle(copy));

    m_settings->close();
    EXPECT_EQ(&m_app->showSettings(), m_settings);
    quit();
    start();
    EXPECT_EQ(m_app->look().tokens().accent, QColor(0x1A, 0x73, 0xE8)) << "kept for the next start";
}

} // namespace
} // namespace orvane
