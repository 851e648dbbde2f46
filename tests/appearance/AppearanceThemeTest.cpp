// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/AppearanceTheme.h"

#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/AppearanceKeysMigration.h"
#include "appearance/themes/AppearanceThemeDisplayNameNormalizer.h"
#include "appearance/themes/BundledThemes.h"
#include "platform/UserDefaults.h"

#include <QJsonDocument>
#include <gtest/gtest.h>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// Values in which every field differs from its default and numbers from each other.
AppearanceValues unusualValues()
{
    AppearanceValues values;
    int number = 0;
    for (const AppearanceField& field : appearanceFields()) {
        ++number;
        const AppearanceFieldValue before = field.get(values);
        if (const bool* flag = std::get_if<bool>(&before))
            field.set(values, !*flag);
        else if (std::holds_alternative<double>(before))
            field.set(values, number / 1000.0);
        else
            field.set(values, u"text %1"_s.arg(number));
    }
    return values;
}

AppearanceTheme unusualTheme()
{
    return {QUuid::createUuid(), u"Ünusual"_s, {1'700'000'000'123}, unusualValues()};
}

const AppearanceField* fieldNamed(const char* name)
{
    for (const AppearanceField& field : appearanceFields()) {
        if (field.name == name)
            return &field;
    }
    return nullptr;
}

} // namespace

TEST(AppearanceFields, keepTheirStoredNamesAndKeys)
{
    struct Row {
        const char* name;
        const char16_t* key;
        AppearanceFieldValue fallback;
        bool required;
        bool applied;
    };
    const Row rows[] = {
        {"orvaneGlassOpacityEditor", u"orvane.opacity.editor", 0.92, true, true},
        {"shieldEnabled", u"shield.enabled", true, true, true},
        {"shieldStrength", u"shield.strength", 1.0, false, true},
        {"deskMatStrength", u"deskmat.strength", 0.7, true, true},
        {"windowBackdropBlue", u"windowBackdrop.blue", 0.17, true, true},
        {"windowBackdropGradient", u"windowBackdrop.useGradient", true, true, true},
        {"editorCursorColorAlpha", u"editor.cursor.alpha", 1.0, true, true},
        {"editorHighlightStrength", u"editor.highlightStrength", u"Standard"_s, false, true},
        {"binderBackgroundEnabled", u"binder.background.enabled", true, true, true},
        {"binderTextEnabled", u"binder.text.enabled", false, false, true},
        {"pageBorderBackgroundAlpha", u"pageBorder.background.alpha", 0.18, true, true},
        {"pageBorderOrvaneStrength", u"pageBorder.orvane.strength", 0.82, true, true},
        {"fmtToolbarOrvaneStrength", u"fmtToolbar.orvane.strength", 0.92, true, true},
        {"binderTopRailOrvaneStrength", u"binderTopRail.orvane.strength", 0.78, false, true},
        {"binderRailOrvaneStrength", u"binderRail.orvane.strength", 0.78, true, true},
        {"topToolbarBandOrvaneEnabled", u"topToolbar.orvane.enabled", true, true, false},
        {"toolbarBackgroundAlpha", u"toolbar.background.alpha", 0.94, true, false},
        {"toolbarTextBlue", u"toolbar.text.blue", 0.97, true, false},
        {"chromeIconColorRed", u"chrome.icon.red", 0.95, false, true},
        {"brainMapBackgroundAlpha", u"brainMap.background.alpha", 0.45, false, true},
        {"exportPageMode", u"export.pageMode", u"whitePage"_s, false, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const AppearanceField* field = fieldNamed(row.name);
        ASSERT_TRUE(field);
        EXPECT_EQ(field->key, appearanceKeyPrefix() + QString::fromUtf16(row.key));
        EXPECT_EQ(field->get({}), row.fallback);
        EXPECT_EQ(field->required, row.required);
        EXPECT_EQ(field->applied, row.applied);
    }

    QSet<QString> names;
    QSet<QString> keys;
    int required = 0;
    int recordedOnly = 0;
    for (const AppearanceField& field : appearanceFields()) {
        names.insert(QString::fromLatin1(field.name));
        keys.insert(field.key);
        required += field.required;
        recordedOnly += !field.applied;
    }
    EXPECT_EQ(names.size(), 132);
    EXPECT_EQ(keys.size(), 132);
    EXPECT_EQ(required, 93);
    EXPECT_EQ(recordedOnly, 12);
    EXPECT_EQ(toJson(AppearanceTheme{}).size(), 135);
}

TEST(AppearanceTheme, captureApplyCaptureGivesTheSame)
{
    UserDefaults first;
    writeAppearance(unusualValues(), first);
    EXPECT_EQ(first.keys().size(), 132);
    const auto captured = AppearanceTheme::captureCurrentState(u"One"_s, {}, {}, first);
    EXPECT_EQ(captured.values, unusualValues());

    UserDefaults second;
    captured.applyToUserDefaults(second);
    EXPECT_EQ(second.keys().size(), 120);
    const auto again = AppearanceTheme::captureCurrentState(u"One"_s, {}, {}, second);
    for (const AppearanceField& field : appearanceFields()) {
        SCOPED_TRACE(field.name.constData());
        EXPECT_EQ(field.get(again.values),
                  field.get(field.applied ? captured.values : AppearanceValues{}));
    }
}

TEST(AppearanceTheme, captureTakesAKeyOfAnotherTypeForUnset)
{
    UserDefaults defaults;
    defaults.set(u"settings.appearance.binder.background.enabled"_s, u"no"_s);
    defaults.set(u"settings.appearance.binder.background.red"_s, qint64(1));
    const AppearanceValues values = readAppearance(defaults);
    EXPECT_TRUE(values.binderBackground.enabled);
    EXPECT_EQ(values.binderBackground.red, 1.0);
    EXPECT_EQ(values.binderBackground.green, 0.22);
}

TEST(AppearanceTheme, jsonComesBack)
{
    AppearanceThemeBundle bundle{QUuid::createUuid(), u"Pair"_s, {1'700'000'000'001}, {-5'000},
                                 unusualTheme(),      {}};
    bundle.dark.id = QUuid::createUuid();
    const auto read = decodeThemeBundles(encodeThemeBundles({bundle, signatureBundle()}));
    ASSERT_TRUE(read) << qPrintable(read.error().text());
    EXPECT_EQ(*read, (QList{bundle, signatureBundle()}));
}

TEST(AppearanceTheme, aMissingFieldTakesItsDefaultOrFailsTheWhole)
{
    const AppearanceTheme theme = unusualTheme();
    for (const AppearanceField& field : appearanceFields()) {
        SCOPED_TRACE(field.name.constData());
        QJsonObject object = toJson(theme);
        object.remove(QLatin1String(field.name));
        const auto read = appearanceThemeFromJson(object);
        ASSERT_EQ(read.has_value(), !field.required);
        if (!read) {
            EXPECT_EQ(read.error().path, QString::fromLatin1(field.name));
            continue;
        }
        AppearanceTheme expected = theme;
        field.set(expected.values, field.get({}));
        EXPECT_EQ(*read, expected);
    }
    for (const auto key : {"id"_L1, "name"_L1, "createdAt"_L1}) {
        QJsonObject object = toJson(theme);
        object.remove(key);
        EXPECT_FALSE(appearanceThemeFromJson(object)) << key.data();
    }
}

TEST(AppearanceTheme, damagedJsonIsRefused)
{
    const QJsonObject good = toJson(signatureBundle());
    const auto with = [&](QLatin1String key, const QJsonValue& value) {
        QJsonObject changed = good;
        changed.insert(key, value);
        return changed;
    };
    QJsonObject dark = good.value("dark"_L1).toObject();
    dark.insert("shieldStrength"_L1, u"1"_s);
    const struct {
        const char* name;
        QJsonValue value;
    } rows[] = {
        {"not an object", QJsonArray()},
        {"an identifier that is none", with("id"_L1, u"A26AC280"_s)},
        {"a number for a name", with("name"_L1, 7)},
        {"a date beyond all reason", with("updatedAt"_L1, 1e300)},
        {"no light variant", with("light"_L1, QJsonValue::Null)},
        {"an optional field of another type", with("dark"_L1, dark)},
    };
    for (const auto& row : rows)
        EXPECT_FALSE(appearanceThemeBundleFromJson(row.value)) << row.name;
    EXPECT_TRUE(appearanceThemeBundleFromJson(with("future"_L1, 1)));
}

TEST(AppearanceThemeDisplayNameNormalizer, knowsTheOldNames)
{
    const struct {
        QString given;
        QString expected;
    } rows[] = {
        {u"Codex Afterglow"_s, u"AFTERGLOW"_s},
        {u"afterglow\n"_s, u"AFTERGLOW"_s},
        {u" OPUS 4.6 "_s, u"MIDNIGHT"_s},
        {u"opus4.6"_s, u"MIDNIGHT"_s},
        {u" Mine "_s, u" Mine "_s},
        {u"opus 4.7"_s, u"opus 4.7"_s},
    };
    for (const auto& row : rows)
        EXPECT_EQ(AppearanceThemeDisplayNameNormalizer::normalized(row.given), row.expected);

    const QJsonObject theme{{"name"_L1, u"opus4.6"_s},
                            {"light"_L1, QJsonObject{{"name"_L1, u"Afterglow"_s}}},
                            {"dark"_L1, 3}};
    const QJsonObject expected{{"name"_L1, u"MIDNIGHT"_s},
                               {"light"_L1, QJsonObject{{"name"_L1, u"AFTERGLOW"_s}}},
                               {"dark"_L1, 3}};
    EXPECT_EQ(AppearanceThemeDisplayNameNormalizer::normalizedThemeDictionary(theme), expected);
}

TEST(AppearanceKeysMigration, repairsWhatItUnderstands)
{
    struct Row {
        const char16_t* key;
        DefaultsValue before;
        DefaultsValue after;
    };
    const Row rows[] = {
        {u"orvane.enabled", qint64(1), true},
        {u"orvane.binder", 0.0, false},
        {u"orvane.editor", qint64(2), qint64(2)},
        {u"editor.text.red", u" 0.5"_s, 0.5},
        {u"editor.text.green", u"bright"_s, u"bright"_s},
        {u"editor.text.blue", 1.5, 1.0},
        {u"editor.highlightStrength", u"1"_s, u"1"_s},
        {u"shield.strength", true, true},
    };
    UserDefaults defaults;
    migrateAppearanceKeys(defaults);
    EXPECT_TRUE(defaults.keys().isEmpty());
    for (const Row& row : rows)
        defaults.set(appearanceKeyPrefix() + QString::fromUtf16(row.key), row.before);
    migrateAppearanceKeys(defaults);
    for (const Row& row : rows) {
        const QString key = appearanceKeyPrefix() + QString::fromUtf16(row.key);
        EXPECT_EQ(defaults.value(key), row.after) << qPrintable(key);
    }
    EXPECT_EQ(defaults.keys().size(), qsizetype(std::size(rows)));
}

} // namespace orvane
