// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/AppearanceThemeLibrary.h"

#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/BundledThemes.h"
#include "platform/Clock.h"
#include "platform/UserDefaults.h"

#include <QJsonDocument>
#include <gtest/gtest.h>

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString libraryKey = u"appearance.themes.library.v2"_s;
const QString firstLibraryKey = u"appearance.themes.library.v1"_s;
constexpr auto light = AppearanceThemeMode::Light;
constexpr auto dark = AppearanceThemeMode::Dark;

class ThemeLibrary : public ::testing::Test {
protected:
    UserDefaults defaults;
    ManualClock clock;
    AppearanceThemeLibrary library{defaults, clock};

    [[nodiscard]] QStringList names() const
    {
        QStringList names;
        for (const AppearanceThemeBundle& bundle : library.themeBundles())
            names.append(bundle.name);
        return names;
    }
    /// What a program started anew over the same settings finds.
    [[nodiscard]] QList<AppearanceThemeBundle> reloaded()
    {
        AppearanceThemeLibrary other(defaults, clock);
        other.load();
        EXPECT_EQ(other.activeThemeID(), library.activeThemeID());
        EXPECT_EQ(other.activeMode(), library.activeMode());
        return other.themeBundles();
    }
    void setBinderRed(double red)
    {
        defaults.set(u"settings.appearance.binder.background.red"_s, red);
    }
    [[nodiscard]] QList<AppearanceThemeBundle> stored() const
    {
        return decodeThemeBundles(defaults.get<QByteArray>(libraryKey, {}))
            .value_or(QList<AppearanceThemeBundle>());
    }
};

AppearanceThemeBundle pairNamed(const QString& name)
{
    AppearanceThemeBundle bundle = googleWorkspaceBundle();
    bundle.id = QUuid::createUuid();
    bundle.name = name;
    return bundle;
}

} // namespace

TEST_F(ThemeLibrary, aFreshInstallationWearsTheSignatureDarkLook)
{
    library.load();
    EXPECT_EQ(names(), (QStringList{u"Google Workspace"_s, u"OrvaneWorkspace Signature"_s}));
    EXPECT_EQ(library.activeThemeID(), signatureBundle().id);
    EXPECT_EQ(library.activeMode(), dark);
    EXPECT_EQ(readAppearance(defaults).windowBackdropBlue, 0x0C / 255.0);
    EXPECT_EQ(stored(), library.themeBundles());
    EXPECT_EQ(reloaded(), library.themeBundles());
}

TEST_F(ThemeLibrary, onlyAnEmptySetOfSettingsIsFresh)
{
    const struct {
        const char* name;
        QString key;
        DefaultsValue value;
    } rows[] = {
        {"an active theme", u"appearance.themes.activeID"_s, u"nonsense"_s},
        {"a first library", firstLibraryKey, u"[]"_s.toUtf8()},
        {"an unreadable library", libraryKey, u"{"_s.toUtf8()},
        {"an empty library and so another key", libraryKey, QByteArray()},
        {"any other setting", u"settings.general.autoSaveSeconds"_s, 3.0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        UserDefaults used;
        used.set(row.key, row.value);
        AppearanceThemeLibrary other(used, clock);
        other.load();
        EXPECT_EQ(other.themeBundles().size(), 2);
        EXPECT_FALSE(other.activeThemeID());
        EXPECT_EQ(readAppearance(used), AppearanceValues{});
    }
}

TEST_F(ThemeLibrary, takesOverTheFirstReleasesThemesAsPairs)
{
    AppearanceTheme old = googleWorkspaceBundle().dark;
    old.name = u" Opus 4.6 "_s;
    QJsonObject json = toJson(old);
    json.remove("brainMapBackgroundRed"_L1);
    const QByteArray first = QJsonDocument(QJsonArray{json}).toJson();
    defaults.set(firstLibraryKey, DefaultsValue(first));
    library.load();

    EXPECT_EQ(names(),
              (QStringList{u"Google Workspace"_s, u"MIDNIGHT"_s, u"OrvaneWorkspace Signature"_s}));
    const AppearanceThemeBundle* pair = library.bundle(old.id);
    ASSERT_TRUE(pair);
    EXPECT_EQ(pair->light, pair->dark);
    EXPECT_EQ(pair->light.name, u"MIDNIGHT"_s);
    EXPECT_EQ(pair->light.values.brainMapBackground.red, 0);
    EXPECT_EQ(pair->createdAt, old.createdAt);
    EXPECT_EQ(pair->updatedAt, old.createdAt);
    EXPECT_FALSE(library.activeThemeID());
    EXPECT_EQ(readAppearance(defaults), AppearanceValues{});
    EXPECT_EQ(defaults.get<QByteArray>(firstLibraryKey, {}), first);
    EXPECT_EQ(reloaded(), library.themeBundles());
}

TEST_F(ThemeLibrary, aLibraryLackingAFieldReadsWhereTheFieldIsOptional)
{
    const AppearanceThemeBundle mine = pairNamed(u"Mine"_s);
    const AppearanceThemeBundle other = pairNamed(u"Other"_s);
    for (const AppearanceField& field : appearanceFields()) {
        SCOPED_TRACE(field.name.constData());
        QJsonObject json = toJson(mine);
        QJsonObject variant = json.value("dark"_L1).toObject();
        variant.remove(QLatin1String(field.name));
        json.insert("dark"_L1, variant);
        const QByteArray data = QJsonDocument(QJsonArray{toJson(other), json}).toJson();

        UserDefaults used;
        used.set(libraryKey, DefaultsValue(data));
        AppearanceThemeLibrary read(used, clock);
        read.load();
        ASSERT_EQ(read.themeBundles().size(), field.required ? 2 : 4);
        const QByteArray aside =
            used.get<QByteArray>(u"appearance.themes.library.unreadable"_s, {});
        EXPECT_EQ(aside, field.required ? data : QByteArray());
        if (field.required)
            continue;
        AppearanceThemeBundle expected = mine;
        field.set(expected.dark.values, field.get({}));
        EXPECT_EQ(*read.bundle(mine.id), expected);
        EXPECT_EQ(*read.bundle(other.id), other);
    }
}

TEST_F(ThemeLibrary, builtInThemesComeBackUnlessTheirPlaceIsTaken)
{
    library.load();
    library.renameTheme(googleWorkspaceBundle().id, u"My colours"_s);
    library.deleteTheme(signatureBundle().id);
    EXPECT_FALSE(library.activeThemeID());
    EXPECT_EQ(readAppearance(defaults).windowBackdropBlue, 0x0C / 255.0);

    QStringList after;
    for (const AppearanceThemeBundle& bundle : reloaded())
        after.append(bundle.name);
    EXPECT_EQ(after, (QStringList{u"My colours"_s, u"OrvaneWorkspace Signature"_s}));

    UserDefaults used;
    const AppearanceThemeBundle namesake = pairNamed(u"ORVANEWORKSPACE signature"_s);
    used.set(libraryKey, DefaultsValue(encodeThemeBundles({namesake})));
    AppearanceThemeLibrary other(used, clock);
    other.load();
    EXPECT_EQ(other.themeBundles(), (QList{googleWorkspaceBundle(), namesake}));
    EXPECT_TRUE(used.get<bool>(u"appearance.themes.bundled.orvaneWorkspaceSignature.v1.installed"_s,
                               false));
}

TEST_F(ThemeLibrary, savesAppliesAndUpdates)
{
    library.load();
    setBinderRed(0.5);
    const QUuid id = library.saveCurrentAsTheme(u"Evening"_s);
    AppearanceThemeBundle expected = *library.bundle(id);
    EXPECT_EQ(expected.light, expected.dark);
    EXPECT_EQ(expected.light.id, id);
    EXPECT_EQ(expected.createdAt, clock.now());
    EXPECT_EQ(expected.light.values, readAppearance(defaults));
    EXPECT_EQ(library.activeThemeID(), id);

    clock.advance(1min);
    setBinderRed(0.25);
    library.updateTheme(id, light);
    expected.light.values.binderBackground.red = 0.25;
    expected.updatedAt = clock.now();
    EXPECT_EQ(*library.bundle(id), expected);

    clock.advance(1min);
    library.applyTheme(id, dark);
    EXPECT_EQ(readAppearance(defaults).binderBackground.red, 0.5);
    library.applyTheme(id, light);
    EXPECT_EQ(readAppearance(defaults).binderBackground.red, 0.25);
    EXPECT_EQ(library.activeMode(), light);
    EXPECT_EQ(*library.bundle(id), expected);

    clock.advance(1min);
    library.copyVariant(id, light, light);
    EXPECT_EQ(*library.bundle(id), expected);
    library.copyVariant(id, light, dark);
    expected.dark = expected.light;
    expected.updatedAt = clock.now();
    EXPECT_EQ(*library.bundle(id), expected);
    EXPECT_EQ(reloaded(), library.themeBundles());
}

TEST_F(ThemeLibrary, aDuplicateHasItsOwnIdsNamesAndDates)
{
    library.load();
    const AppearanceThemeBundle& original = signatureBundle();
    const auto first = library.duplicateTheme(original.id);
    const auto second = library.duplicateTheme(original.id);
    ASSERT_TRUE(first && second);
    const AppearanceThemeBundle copy = *library.bundle(*second);
    EXPECT_EQ(copy.name, u"Copy of OrvaneWorkspace Signature 2"_s);
    EXPECT_EQ(copy.dark.name, copy.name);
    EXPECT_EQ(copy.dark.values, original.dark.values);
    EXPECT_EQ(copy.createdAt, clock.now());
    EXPECT_EQ(copy.updatedAt, clock.now());
    const QSet<QUuid> ids{copy.id,           copy.light.id,    copy.dark.id, *first,
                          original.light.id, original.dark.id, original.id};
    EXPECT_EQ(ids.size(), 7);
    EXPECT_EQ(library.uniqueThemeName(u"GOOGLE workspace"_s), u"GOOGLE workspace 2"_s);
    EXPECT_EQ(library.uniqueThemeName(u"Free"_s), u"Free"_s);
}

TEST_F(ThemeLibrary, unknownIdsChangeNothing)
{
    library.load();
    const auto before = library.themeBundles();
    const QUuid id = QUuid::createUuid();
    library.updateTheme(id, light);
    library.applyTheme(id, light);
    library.renameTheme(id, u"x"_s);
    library.copyVariant(id, light, dark);
    library.deleteTheme(id);
    EXPECT_FALSE(library.duplicateTheme(id));
    EXPECT_EQ(library.themeBundles(), before);
    EXPECT_EQ(library.activeThemeID(), signatureBundle().id);
    EXPECT_EQ(library.activeMode(), dark);
}

} // namespace orvane
