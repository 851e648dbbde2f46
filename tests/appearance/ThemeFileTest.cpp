// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/ThemeFile.h"

#include "appearance/themes/BundledThemes.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orvane {

using namespace Qt::StringLiterals;
using Code = ThemeFileError::Code;

TEST(ThemeFile, aThemeComesBackFromItsFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(ThemeFile::fileName(u"A/B: \"dusk\""_s));
    AppearanceThemeBundle bundle = googleWorkspaceBundle();
    ASSERT_TRUE(ThemeFile::write(bundle, path));
    EXPECT_EQ(ThemeFile::read(path), bundle);
    EXPECT_TRUE(path.endsWith("A-B- -dusk-.orvanetheme"_L1)) << qPrintable(path);
    EXPECT_EQ(ThemeFile::read(folder.filePath(u"none"_s)).error().code, Code::Unreadable);
    EXPECT_EQ(ThemeFile::write(bundle, folder.filePath(u"no/folder"_s)).error().code,
              FileError::Code::NotFound);
    EXPECT_EQ(ThemeFile::fileName(u" .. "_s), u"Theme.orvanetheme"_s);
}

TEST(ThemeFile, badFilesAreRefusedInWords)
{
    const QByteArray good = ThemeFile::encode(signatureBundle());
    const auto edited = [&](const QByteArray& from, const QByteArray& to) {
        QByteArray changed = good;
        EXPECT_TRUE(changed.contains(from)) << from.constData();
        return changed.replace(from, to);
    };
    const struct {
        const char* name;
        QByteArray data;
        Code code;
        const char* words;
    } rows[] = {
        {"empty", {}, Code::NotATheme, "not a theme"},
        {"text", "# Notes", Code::NotATheme, "not a theme"},
        {"cut short", good.left(good.size() / 2), Code::NotATheme, "not a theme"},
        {"another format", edited("OrvaneWorkspace theme", "Palette"), Code::NotATheme, "a theme"},
        {"deep nesting", QByteArray(100'000, '['), Code::NotATheme, "not a theme"},
        {"a later version", edited("\"version\": 1", "\"version\": 2"), Code::NewerVersion,
         "later release"},
        {"no version", edited("\"version\"", "\"edition\""), Code::Damaged, "\"version\""},
        {"a required field missing", edited("binderRailBackgroundRed", "binderRailRed"),
         Code::Damaged, "\"light.binderRailBackgroundRed\""},
        {"a channel out of range", edited("\"shieldStrength\": 1", "\"shieldStrength\": 1.5"),
         Code::Damaged, "\"light.shieldStrength\""},
        {"a number beyond all range", edited("\"shieldStrength\": 1", "\"shieldStrength\": 1e999"),
         Code::NotATheme, "not a theme"},
        {"no name", edited("\"OrvaneWorkspace Signature\"", "\" \\n \""), Code::Damaged,
         "\"name\""},
        {"huge", QByteArray(2'000'000, ' '), Code::TooLarge, "larger"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto read = ThemeFile::decode(row.data);
        ASSERT_FALSE(read);
        EXPECT_EQ(read.error().code, row.code) << qPrintable(ThemeFile::text(read.error()));
        EXPECT_TRUE(ThemeFile::text(read.error()).contains(QLatin1String(row.words)))
            << qPrintable(ThemeFile::text(read.error()));
    }
}

} // namespace orvane
