// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What a change of the look and the look itself cost.
#include "appearance/AppearanceTokens.h"
#include "appearance/WornLook.h"
#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "core/state/SessionKeys.h"
#include "shell/app/OrvaneWorkspaceApp.h"
#include "shell/settings/SettingsWindow.h"
#include "shell/window/MainWindow.h"
#include "support/Bench.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QVBoxLayout>

using namespace orvane;

namespace {

void settle()
{
    for (int i = 0; i < 4; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }
}

/// The program with a project of two hundred notes open.
class Workspace {
public:
    Workspace()
        : app(UserFolders::below(m_home.path()), std::make_unique<FolderTrash>(m_home.path()))
    {
        SessionKeys::welcomeDismissed.write(app.appState().services().defaults, true);
        app.start();
        AppState& state = app.appState();
        if (!state.projectSession().createProject(QStringLiteral("Measured"), {}))
            qFatal("no project to measure in");
        for (int i = 0; i < 200; ++i)
            (void)state.createNote();
        app.window().resize(1440, 900);
        settle();
    }

    QTemporaryDir m_home;
    OrvaneWorkspaceApp app;
};

/// A window full of stock widgets.
std::unique_ptr<QWidget> plainWindow(Look& look)
{
    auto window = std::make_unique<SurfacePanel>(look, Surface::Card);
    auto* layout = new QVBoxLayout(window.get());
    for (int i = 0; i < 12; ++i) {
        auto* row = new QHBoxLayout;
        row->addWidget(makeLabel(QStringLiteral("A setting"), TextStyle::Body));
        row->addWidget(new QCheckBox(QStringLiteral("A choice")));
        row->addWidget(new QLineEdit(QStringLiteral("A value")));
        auto* combo = new QComboBox;
        combo->addItem(QStringLiteral("One of some"));
        row->addWidget(combo);
        row->addWidget(new QPushButton(QStringLiteral("Act")));
        layout->addLayout(row);
    }
    window->resize(800, 600);
    window->show();
    return window;
}

bench::Measurement measureApply()
{
    Workspace workspace;
    Look& look = workspace.app.look();
    AppearanceThemeLibrary& themes = workspace.app.themes();
    SettingsWindow& settings = workspace.app.showSettings();
    settings.showPage(SettingsPageId::Appearance);
    const auto first = plainWindow(look);
    const auto second = plainWindow(look);
    settle();
    const QList<QWidget*> windows{&workspace.app.window(), &settings, first.get(), second.get()};
    bool light = false;
    const auto apply = [&] {
        light = !light;
        return 1000 * bench::seconds([&] {
                   themes.applyTheme(signatureBundle().id, light ? AppearanceThemeMode::Light
                                                                 : AppearanceThemeMode::Dark);
                   settle();
               });
    };
    // Every part of each window painted once; a window's own repaint leaves out its opaque parts.
    QList<QPixmap> canvases;
    for (const QWidget* window : windows)
        canvases.append(QPixmap(window->size()));
    const auto repaint = [&] {
        return 1000 * bench::seconds([&] {
                   for (qsizetype i = 0; i < windows.size(); ++i)
                       windows[i]->render(&canvases[i]);
               });
    };
    return bench::interleave(40, apply, repaint);
}

bench::Measurement measureCost()
{
    Workspace workspace;
    MainWindow& window = workspace.app.window();
    QPixmap canvas(window.size());
    const auto paint = [&] {
        window.render(&canvas);
        return 1000 * bench::seconds([&] {
                   for (int i = 0; i < 5; ++i)
                       window.render(&canvas);
               }) /
               5;
    };
    return bench::interleave(
        20,
        [&] {
            wear(workspace.app.look());
            settle();
            return paint();
        },
        [&] {
            QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
            settle();
            return paint();
        });
}

bench::Measurement measureTokens()
{
    const AppearanceValues values = signatureBundle().light.values;
    const auto tokens = [&] {
        return 1e6 * bench::seconds([&] { (void)tokensFor(values); });
    };
    return bench::interleave(200, tokens, [] { return 1.0; });
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    bench::add({"look/apply", "ms", 4, measureApply});
    bench::add({"look/cost", "ms", 1.5, measureCost});
    bench::add({"look/tokens", "µs", 1000, measureTokens, bench::TargetOf::Figure});
    return bench::runMain(argc, argv);
}
