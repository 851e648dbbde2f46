// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/Records.h"
#include "core/library/ProjectWorkspaceState.h"

#include <QJsonDocument>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

const RgbaColor grey{0.93, 0.93, 0.93, 1};

TEST(WorkspaceState, RequiredKeysAreRequiredAndOptionalOnesOptional)
{
    ProjectWorkspaceState state = QuickSettingsDefaults::defaultWorkspaceState(grey);
    state.selectedNoteID = idOf(3);
    state.openQuickSettingsPane = QuickSettingsPane::Editor;
    const QJsonObject full = QJsonDocument::fromJson(state.encoded()).object();
    ASSERT_EQ(ProjectWorkspaceState::decoded(state.encoded()), state);
    const QStringList optional{u"selectedNoteID"_s, u"openQuickSettingsPane"_s, u"binderWidth"_s,
                               u"editorWidth"_s, u"inspectorWidth"_s};
    for (const QString& key : full.keys()) {
        SCOPED_TRACE(key.toStdString());
        QJsonObject without = full;
        without.remove(key);
        EXPECT_EQ(ProjectWorkspaceState::decoded(QJsonDocument(without).toJson()).has_value(),
                  optional.contains(key));
        QJsonObject wrong = full;
        wrong.insert(key, QJsonArray{1});
        EXPECT_FALSE(ProjectWorkspaceState::decoded(QJsonDocument(wrong).toJson()));
    }
    EXPECT_EQ(full.size(), 27); // thirty fields, of which three selections are absent
}

TEST(WorkspaceState, AbsentWidthStaysAbsent)
{
    ProjectWorkspaceState state = QuickSettingsDefaults::defaultWorkspaceState(grey);
    state.binderWidth.reset();
    state.binderPresets.activeIndex.reset();
    const auto read = ProjectWorkspaceState::decoded(state.encoded());
    ASSERT_TRUE(read);
    EXPECT_FALSE(read->binderWidth);
    EXPECT_FALSE(read->binderPresets.activeIndex);
    EXPECT_EQ(read->inspectorPresets.activeIndex, 1);
    EXPECT_EQ(read->editorPresets.presets.last().bubbleTint, QuickSettingsDefaults::paperWhite);
}

TEST(WorkspaceState, IsKeptBesideTheStore)
{
    const QTemporaryDir folder;
    EXPECT_FALSE(ProjectWorkspaceStateStore::load(folder.path()));
    const ProjectWorkspaceState state = QuickSettingsDefaults::defaultWorkspaceState(grey);
    ASSERT_TRUE(ProjectWorkspaceStateStore::save(state, folder.path()));
    EXPECT_EQ(ProjectWorkspaceStateStore::load(folder.path()), state);
    ASSERT_TRUE(writeFileAtomically(ProjectWorkspaceStateStore::path(folder.path()), "{\"binder"));
    EXPECT_FALSE(ProjectWorkspaceStateStore::load(folder.path()));
}

} // namespace
} // namespace orvane
