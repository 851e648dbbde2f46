// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "core/state/SessionKeys.h"
#include "support/TestServices.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace orvane {

/// A program over a home of its own, which ends and starts again on the same disk and settings.
struct ProjectFixture : ::testing::Test {
    TestServices test;
    std::unique_ptr<AppState> app = start();

    std::unique_ptr<AppState> start()
    {
        using namespace Qt::StringLiterals;
        SessionKeys::welcomeDismissed.write(test.defaults, true);
        SessionKeys::launchDestination.write(test.defaults, u"lastProject"_s);
        auto state = std::make_unique<AppState>(test.services());
        state->projectSession().bootstrapProjects();
        return state;
    }
    void restart()
    {
        app->projectSession().terminate();
        app.reset();
        app = start();
    }
    QString newProject(const QString& name)
    {
        const auto id = app->projectSession().createProject(name, std::nullopt);
        EXPECT_TRUE(id) << qPrintable(id ? QString() : id.error());
        return app->projectSession().currentProject()->rootPath;
    }
    QUuid newNote(const QString& title, const QString& body)
    {
        const QUuid id = app->createNote().value();
        write(id, title, body);
        return id;
    }
    void write(const QUuid& id, const QString& title, const QString& body)
    {
        app->updateNote(id, {title, body, {}, {}, {}, {}});
    }
    QString library() { return app->projectSession().library().projectsDirectoryPath(); }
    static QString storeOf(const QString& folder)
    {
        return storePath(ProjectLibraryController::projectDataDirectoryPath(folder));
    }
    QStringList titles()
    {
        QStringList all;
        for (const Shared<NoteRecord>& note : app->notes())
            all.append(note->title);
        all.sort();
        return all;
    }
    /// As another program copies a folder.
    static void copyFolder(const QString& from, const QString& to)
    {
        ASSERT_TRUE(QDir().mkpath(to));
        const QDir source(from);
        for (const QFileInfo& each : source.entryInfoList(QDir::AllEntries | QDir::Hidden |
                                                          QDir::System | QDir::NoDotAndDotDot)) {
            const QString target = to + u'/' + each.fileName();
            if (each.isDir())
                copyFolder(each.filePath(), target);
            else
                ASSERT_TRUE(QFile::copy(each.filePath(), target));
        }
    }
};

} // namespace orvane
