// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/themes/AppearanceThemeLibrary.h"
#include "core/state/SessionKeys.h"
#include "shell/app/OrvaneWorkspaceApp.h"
#include "shell/sheets/MessageText.h"
#include "shell/window/MainWindow.h"
#include "tour/TourHand.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>

namespace orvane {

/// The whole program over a temporary home, worked by real events.
class ShellTest : public testing::Test {
protected:
    ~ShellTest() override
    {
        quit();
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    }

    void start()
    {
        const UserFolders folders = UserFolders::below(m_home.path());
        m_app = std::make_unique<OrvaneWorkspaceApp>(
            folders, std::make_unique<FolderTrash>(m_home.path() + QStringLiteral("/trash")));
        m_app->start();
        m_hand = std::make_unique<TourHand>(window());
        window().activateWindow();
        ASSERT_TRUE(TourHand::waitFor([this] { return window().isActiveWindow(); }));
    }
    void quit()
    {
        if (m_app)
            m_app->finish();
        m_hand.reset();
        m_app.reset();
    }

    MainWindow& window() { return m_app->window(); }
    AppState& state() { return m_app->appState(); }
    UserDefaults& defaults() { return state().services().defaults; }

    /// The visible widget of a class, by its accessible name where one is given.
    template <typename T>
    T* find(const QString& name = {})
    {
        QWidget* sheet = window().sheets().topSheet();
        QWidget* where = sheet ? sheet : &window();
        for (T* each : where->findChildren<T*>()) {
            if (each->isVisible() && (name.isEmpty() || each->accessibleName() == name))
                return each;
        }
        return nullptr;
    }
    QAbstractButton* button(const QString& text)
    {
        QWidget* sheet = window().sheets().topSheet();
        QWidget* where = sheet ? sheet : &window();
        for (auto* each : where->findChildren<QAbstractButton*>()) {
            if (each->isVisible() && (each->text() == text || each->accessibleName() == text))
                return each;
        }
        return nullptr;
    }
    void press(const QString& text)
    {
        QAbstractButton* found = button(text);
        ASSERT_NE(found, nullptr) << qUtf8Printable(text);
        m_hand->click(*found);
    }
    /// The window that a new project's icon is offered in, closed again.
    void leaveIconsAndTitles()
    {
        const auto offered = [] {
            QWidget* window = QApplication::activeWindow();
            return window && window->objectName() == QLatin1String("iconsAndTitles");
        };
        EXPECT_TRUE(TourHand::waitFor(offered));
        if (offered())
            TourHand(*QApplication::activeWindow()).press(Qt::Key_Escape);
        EXPECT_TRUE(TourHand::waitFor([this] { return window().isActiveWindow(); }));
    }
    QString sheetTitle()
    {
        const Sheet* sheet = window().sheets().topSheet();
        return sheet ? sheet->accessibleName() : QString();
    }

    /// Does `trigger` and, when it asks something, `answer`; whether it asked.
    bool answering(const std::function<void()>& trigger, const std::function<void()>& answer)
    {
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            if (!window().sheets().topSheet())
                return;
            poll.stop();
            answer();
            if (Sheet* open = window().sheets().topSheet())
                open->dismiss();
        });
        poll.start(5);
        trigger();
        return TourHand::waitFor([&] { return !poll.isActive(); }, std::chrono::seconds(2));
    }

    static QString wordsOf(const Sheet& sheet)
    {
        QString words = sheet.accessibleName();
        for (const auto* text : sheet.findChildren<MessageText*>())
            words += QLatin1Char(' ') + text->toPlainText();
        return words;
    }
    /// What the program says during `doing` and until it has been quiet for a while, one sheet
    /// after the other, each closed again.
    static QString said(const std::function<void()>& doing = [] {})
    {
        QString words;
        QElapsedTimer silence;
        silence.start();
        QTimer close;
        close.callOnTimeout([&] {
            for (QWidget* each : QApplication::topLevelWidgets()) {
                auto* window = qobject_cast<MainWindow*>(each);
                Sheet* sheet = window ? window->sheets().topSheet() : nullptr;
                if (!sheet)
                    continue;
                words += wordsOf(*sheet) + QLatin1Char('\n');
                silence.restart();
                sheet->dismiss();
            }
        });
        close.start(10);
        doing();
        silence.restart();
        TourHand::waitFor([&] { return silence.elapsed() > 200; });
        return words;
    }

    /// Settings as after a first start whose welcome was dismissed.
    void dismissWelcome()
    {
        UserDefaults defaults(UserFolders::below(m_home.path()).configuration +
                              QStringLiteral("/settings.json"));
        const SystemClock clock;
        AppearanceThemeLibrary(defaults, clock).load();
        SessionKeys::welcomeDismissed.write(defaults, true);
        EXPECT_TRUE(defaults.flush().has_value());
    }

    QTemporaryDir m_home;
    std::unique_ptr<OrvaneWorkspaceApp> m_app;
    std::unique_ptr<TourHand> m_hand;
};

} // namespace orvane
