// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/ThemeStudioView.h"

#include "appearance/AppearanceObserver.h"
#include "appearance/studio/ColorEditor.h"
#include "appearance/studio/ColorRow.h"
#include "appearance/studio/ColorSliders.h"
#include "appearance/studio/ThemeCard.h"
#include "appearance/studio/ThemeFilePicker.h"
#include "appearance/studio/VariantPreview.h"
#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "appearance/themes/ThemeFile.h"
#include "support/TestServices.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

class FixedPicker final : public ThemeFilePicker {
public:
    QString path;
    QString fileToImport(QWidget*) override { return path; }
    QString fileToExport(QWidget*, const QString& suggestedName) override
    {
        suggested = suggestedName;
        return path;
    }
    QString suggested;
};

class ThemeStudio : public ::testing::Test {
protected:
    ThemeStudio()
    {
        library.load();
        observer.update();
        view.resize(876, 900);
        view.show();
    }

    template <typename T>
    [[nodiscard]] T* child(const char* text)
    {
        for (T* widget : view.findChildren<T*>()) {
            if (widget->text() == QString::fromUtf8(text) && widget->isVisibleTo(&view))
                return widget;
        }
        ADD_FAILURE() << "no " << text;
        return nullptr;
    }
    void press(const char* text)
    {
        if (auto* button = child<QPushButton>(text))
            QTest::mouseClick(button, Qt::LeftButton);
        settle();
    }
    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    [[nodiscard]] AppearanceValues look() const { return readAppearance(s.defaults); }
    [[nodiscard]] QStringList cards() const
    {
        QStringList names;
        for (const ThemeCard* card : view.findChildren<ThemeCard*>())
            names.append(card->text());
        names.sort();
        return names;
    }

    TestServices s;
    AppearanceThemeLibrary library{s.defaults, s.clock};
    Look look_{{}};
    AppearanceObserver observer{s.defaults, look_};
    FixedPicker files;
    ThemeStudioView view{{s.defaults, library, look_, s.questions, files}};
    const QUuid google = googleWorkspaceBundle().id;
    const QUuid signature = signatureBundle().id;
};

} // namespace

TEST_F(ThemeStudio, appliesThePairAndVariantThatArePicked)
{
    EXPECT_EQ(view.selectedTheme(), signature);
    EXPECT_EQ(view.selectedMode(), AppearanceThemeMode::Dark);
    QTest::mouseClick(child<ThemeCard>("Google Workspace"), Qt::LeftButton, {}, QPoint(20, 20));
    QTest::mouseClick(child<VariantPreview>("Light"), Qt::LeftButton);
    EXPECT_EQ(library.activeThemeID(), signature) << "picking changes nothing";
    press("Apply");
    EXPECT_EQ(library.activeThemeID(), google);
    EXPECT_EQ(library.activeMode(), AppearanceThemeMode::Light);
    EXPECT_EQ(look_.tokens().on(Surface::Window).ground.name(), u"#f8f9fa"_s);
    EXPECT_EQ(child<ColorRow>("Cursor and accent")->hexText(), u"#1A73E8"_s);
    EXPECT_EQ(child<ColorRow>("Toolbar text")->hexText(), u"Automatic"_s);
}

TEST_F(ThemeStudio, editsReachTheLookAtOnceAndThemesOnlyByUpdate)
{
    QTest::mouseClick(child<ColorRow>("Binder background"), Qt::LeftButton);
    auto* editor = view.findChild<ColorEditor*>();
    ASSERT_TRUE(editor);
    auto* hex = editor->findChild<QLineEdit*>();
    hex->selectAll();
    QTest::keyClicks(hex, u"#102030"_s);
    EXPECT_NEAR(look().binderBackground.blue, 0x30 / 255.0, 1e-9);
    settle();
    EXPECT_EQ(look_.tokens().on(Surface::Binder).ground.name(), u"#102030"_s);
    EXPECT_EQ(library.bundle(signature)->dark, signatureBundle().dark);
    QTest::keyClick(hex, Qt::Key_Return);
    settle();
    EXPECT_FALSE(view.findChild<ColorEditor*>());

    press("Update");
    EXPECT_NEAR(library.bundle(signature)->dark.values.binderBackground.blue, 0x30 / 255.0, 1e-9);
    EXPECT_EQ(library.bundle(signature)->light, signatureBundle().light);
    press("Copy Dark to Light");
    EXPECT_EQ(library.bundle(signature)->light, library.bundle(signature)->dark);
}

TEST_F(ThemeStudio, theEditorKeepsWhatItDidNotTouchAndEscapeBringsBack)
{
    const AppearanceValues before = look();
    QTest::mouseClick(child<ColorRow>("Page paper"), Qt::LeftButton);
    auto* editor = view.findChild<ColorEditor*>();
    ASSERT_TRUE(editor);
    GradientSlider* blue = nullptr;
    GradientSlider* opacity = nullptr;
    for (GradientSlider* slider : editor->findChildren<GradientSlider*>()) {
        if (slider->accessibleName() == "Blue"_L1)
            blue = slider;
        if (slider->accessibleName() == "Opacity"_L1)
            opacity = slider;
    }
    QTest::keyClick(opacity, Qt::Key_Home);
    QTest::keyClick(blue, Qt::Key_End);
    EXPECT_EQ(look().pagePaperBackground.alpha, 0);
    EXPECT_EQ(look().pagePaperBackground.blue, 1);
    EXPECT_EQ(look().pagePaperBackground.red, before.pagePaperBackground.red);
    EXPECT_EQ(look().pagePaperOrvane, before.pagePaperOrvane);
    for (QCheckBox* box : editor->findChildren<QCheckBox*>())
        box->click();
    EXPECT_FALSE(look().pagePaperBackground.enabled);
    EXPECT_TRUE(look().pagePaperOrvane.enabled);

    auto* field = editor->findChild<SaturationField*>();
    for (int i = 0; i < 40; ++i)
        QTest::keyClick(field, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(field, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_TRUE(look().pagePaperBackground.enabled) << "choosing a colour ends automatic";
    EXPECT_GT(look().pagePaperBackground.blue, look().pagePaperBackground.red)
        << "the hue outlives black";
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_EQ(look(), before);
}

TEST_F(ThemeStudio, contrastIsMeasuredAndWarnedOf)
{
    library.applyTheme(signature, AppearanceThemeMode::Light);
    settle();
    EXPECT_EQ(child<ColorRow>("Editor text")->contrastText(), u"17.1 : 1"_s);
    EXPECT_EQ(child<ColorRow>("Status strip text")->contrastText(), u"3.7 : 1, made readable"_s);
    EXPECT_EQ(child<ColorRow>("Binder background")->contrastText(), QString());
    s.defaults.set(u"settings.appearance.editor.text.red"_s, 1.0);
    s.defaults.set(u"settings.appearance.editor.text.green"_s, 1.0);
    settle();
    EXPECT_TRUE(child<ColorRow>("Editor text")->contrastText().endsWith(u", hard to read"_s));
}

TEST_F(ThemeStudio, savesNamesDuplicatesAndDeletes)
{
    auto* save = view.findChild<SaveLookCard*>();
    QTest::mouseClick(save, Qt::LeftButton);
    settle();
    auto* name = view.findChild<QLineEdit*>();
    ASSERT_TRUE(name);
    QTest::keyClicks(name, u"  Evening "_s);
    QTest::keyClick(name, Qt::Key_Return);
    settle();
    EXPECT_EQ(cards(),
              (QStringList{u"Evening"_s, u"Google Workspace"_s, u"OrvaneWorkspace Signature"_s}));
    EXPECT_EQ(library.bundle(view.selectedTheme())->dark.name, u"Evening"_s);

    view.duplicateSelected();
    name = view.findChild<QLineEdit*>();
    ASSERT_TRUE(name);
    QTest::keyClicks(name, u"lost"_s);
    QTest::keyClick(name, Qt::Key_Escape);
    settle();
    EXPECT_TRUE(cards().contains(u"Copy of Evening"_s));

    s.questions.answers = {{.button = 1}};
    view.deleteSelected();
    EXPECT_EQ(cards().size(), 4);
    EXPECT_EQ(s.questions.asked.last().title, u"Delete Theme?"_s);
    EXPECT_EQ(s.questions.asked.last().text,
              u"Delete “Copy of Evening” and both its Light and Dark versions?"_s);
    s.questions.answers = {{.button = 0}};
    view.deleteSelected();
    settle();
    EXPECT_EQ(cards().size(), 3);
    EXPECT_EQ(library.bundle(view.selectedTheme())->name, u"Evening"_s) << "the active one";
}

TEST_F(ThemeStudio, anEditedLookThatApplyReplacedCanBeBroughtBack)
{
    AppearanceValues edited = look();
    edited.editorText = {true, 1, 0, 0, 1};
    writeAppearance(edited, s.defaults);
    settle();
    view.applySelected();
    settle();
    EXPECT_NE(look(), edited);
    press("Bring Back Edits");
    EXPECT_EQ(look(), edited);
}

TEST_F(ThemeStudio, themesGoOutAndComeInAsFiles)
{
    files.path = s.folder.filePath(u"mine.orvanetheme"_s);
    view.exportSelected();
    EXPECT_EQ(files.suggested, u"OrvaneWorkspace Signature.orvanetheme"_s);
    press("Import…");
    EXPECT_TRUE(cards().contains(u"OrvaneWorkspace Signature 2"_s));
    EXPECT_EQ(library.bundle(view.selectedTheme())->dark.values, signatureBundle().dark.values);
    EXPECT_TRUE(s.questions.asked.isEmpty());

    const auto before = library.themeBundles();
    ASSERT_TRUE(writeFileAtomically(files.path, "# Notes"));
    press("Import…");
    EXPECT_EQ(s.questions.asked.last().title, u"The theme can't be imported"_s);
    files.path = s.folder.filePath(u"no/such/folder.orvanetheme"_s);
    view.exportSelected();
    EXPECT_EQ(s.questions.asked.last().title, u"The theme can't be exported"_s);
    files.path.clear();
    view.exportSelected();
    EXPECT_EQ(s.questions.asked.size(), 2);
    EXPECT_EQ(library.themeBundles(), before);
}

} // namespace orvane
