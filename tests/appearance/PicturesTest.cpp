// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// How widgets and the theme studio look, held against pictures that somebody has looked at.
#include "appearance/AppearanceObserver.h"
#include "appearance/AppearanceTokens.h"
#include "appearance/OrvaneStyle.h"
#include "appearance/SurfacePanel.h"
#include "appearance/WornLook.h"
#include "appearance/studio/ColorEditor.h"
#include "appearance/studio/ColorRow.h"
#include "appearance/studio/ThemeCard.h"
#include "appearance/studio/ThemeFilePicker.h"
#include "appearance/studio/ThemeStudioView.h"
#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "support/KeptPictures.h"
#include "support/TestServices.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QStyleFactory>
#include <QTest>
#include <QToolButton>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class NoFiles final : public ThemeFilePicker {
public:
    QString fileToImport(QWidget*) override { return {}; }
    QString fileToExport(QWidget*, const QString&) override { return {}; }
};

class Pictures : public ::testing::Test {
protected:
    Pictures()
    {
        QApplication::setCursorFlashTime(0);
        wear(m_look);
    }
    ~Pictures() override
    {
        QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
        QApplication::setCursorFlashTime(1000);
    }
    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    Look m_look{signatureDarkTokens()};
};

/// Every stock widget in the states that it has.
void fillGallery(SurfacePanel& panel)
{
    auto* grid = new QGridLayout(&panel);
    int row = 0;
    for (const auto tone :
         {ButtonTone::Plain, ButtonTone::Accent, ButtonTone::Danger, ButtonTone::DangerText}) {
        int column = 0;
        for (const bool isEnabled : {true, false}) {
            auto* button = new QPushButton(u"Restore"_s, &panel);
            setButtonTone(button, tone);
            button->setEnabled(isEnabled);
            grid->addWidget(button, row, column++);
            auto* pressed = new QPushButton(u"Pressed"_s, &panel);
            setButtonTone(pressed, tone);
            pressed->setDown(true);
            pressed->setEnabled(isEnabled);
            grid->addWidget(pressed, row, column++);
        }
        ++row;
    }
    for (const bool isEnabled : {true, false}) {
        auto* check = new QCheckBox(u"Show words"_s, &panel);
        auto* checked = new QCheckBox(u"Show words"_s, &panel);
        checked->setChecked(true);
        auto* radio = new QRadioButton(u"Light"_s, &panel);
        radio->setChecked(true);
        auto* tool = new QToolButton(&panel);
        tool->setText(u"Bold"_s);
        tool->setCheckable(true);
        tool->setChecked(true);
        auto* combo = new QComboBox(&panel);
        combo->addItems({u"Georgia"_s, u"Inter"_s});
        auto* field = new QLineEdit(u"Low water"_s, &panel);
        auto* empty = new QLineEdit(&panel);
        empty->setPlaceholderText(u"Filter titles"_s);
        auto* number = new QSpinBox(&panel);
        number->setValue(12);
        auto* slider = new QSlider(Qt::Horizontal, &panel);
        slider->setValue(40);
        auto* bar = new QScrollBar(Qt::Horizontal, &panel);
        bar->setRange(0, 100);
        bar->setPageStep(40);
        bar->setValue(30);
        auto* progress = new QProgressBar(&panel);
        progress->setValue(60);
        int column = 0;
        for (QWidget* each : std::initializer_list<QWidget*>{
                 check, checked, radio, tool, combo, field, empty, number, slider, bar, progress}) {
            each->setEnabled(isEnabled);
            grid->addWidget(each, row + column / 4, column % 4);
            ++column;
        }
        row += 3;
    }
    auto* list = new QListWidget(&panel);
    list->addItems({u"Manuscript"_s, u"Research"_s, u"Characters"_s});
    list->setCurrentRow(1);
    list->setFixedHeight(90);
    grid->addWidget(list, row, 0, 1, 4);
}

TEST_F(Pictures, StockWidgetsInBothLooks)
{
    for (const bool isLight : {false, true}) {
        m_look.setTokens(isLight ? tokensFor(signatureBundle().light.values)
                                 : signatureDarkTokens());
        const QString look = isLight ? u"light"_s : u"dark"_s;
        SurfacePanel panel(m_look, Surface::Window);
        fillGallery(panel);
        panel.resize(640, 520);
        panel.show();
        settle();
        expectKeptPicture(panel, u"widgets-"_s + look);
        auto* field = panel.findChild<QLineEdit*>();
        QApplication::setActiveWindow(&panel);
        field->setFocus(Qt::TabFocusReason);
        settle();
        expectKeptPicture(panel, u"widgets-focus-"_s + look);

        QMenu menu;
        menu.addSection(u"Project"_s);
        menu.addAction(u"New Note"_s)->setShortcut(QKeySequence(u"Ctrl+N"_s));
        QAction* checked = menu.addAction(u"Focus Mode"_s);
        checked->setCheckable(true);
        checked->setChecked(true);
        menu.addSeparator();
        menu.addAction(u"Delete"_s)->setEnabled(false);
        menu.addMenu(u"Insert"_s)->addAction(u"Table"_s);
        menu.setActiveAction(checked);
        menu.popup({0, 0});
        settle();
        expectKeptPicture(menu, u"menu-"_s + look);
    }
}

TEST_F(Pictures, TheThemeStudio)
{
    TestServices test;
    AppearanceThemeLibrary library(test.defaults, test.clock);
    library.load();
    AppearanceObserver observer(test.defaults, m_look);
    observer.update();
    NoFiles files;
    ThemeStudioView view({test.defaults, library, m_look, test.questions, files});
    view.resize(876, 2400);
    for (const auto mode : {AppearanceThemeMode::Dark, AppearanceThemeMode::Light}) {
        library.applyTheme(signatureBundle().id, mode);
        view.show();
        settle();
        const QString look = mode == AppearanceThemeMode::Light ? u"light"_s : u"dark"_s;
        expectKeptPicture(view, u"studio-"_s + look);
    }
    for (auto* card : view.findChildren<ThemeCard*>()) {
        if (card->text() == "Google Workspace"_L1) {
            QTest::mouseMove(card, {20, 20});
            QEnterEvent entered(QPointF(20, 20), QPointF(20, 20), QPointF(20, 20));
            QApplication::sendEvent(card, &entered);
            card->setAttribute(Qt::WA_UnderMouse);
            expectKeptPicture(*card, u"card-hovered"_s);
            card->setAttribute(Qt::WA_UnderMouse, false);
        }
    }
    for (auto* row : view.findChildren<ColorRow*>()) {
        if (row->hexText().startsWith(u'#')) {
            QTest::mouseClick(row, Qt::LeftButton);
            break;
        }
    }
    settle();
    auto* editor = view.findChild<ColorEditor*>();
    ASSERT_TRUE(editor);
    expectKeptPicture(*editor, u"color-editor"_s);
}

} // namespace
} // namespace orvane
