// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/AppearanceThemeLibrary.h"

#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/AppearanceThemeDisplayNameNormalizer.h"
#include "appearance/themes/BundledThemes.h"
#include "platform/Clock.h"
#include "platform/UserDefaults.h"

#include <QCollator>
#include <QSet>

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

const QString libraryKey = u"appearance.themes.library.v2"_s;
const QString firstLibraryKey = u"appearance.themes.library.v1"_s;
const QString unreadableLibraryKey = u"appearance.themes.library.unreadable"_s;
const QString activeIDKey = u"appearance.themes.activeID"_s;
const QString activeModeKey = u"appearance.themes.activeMode"_s;

struct BundledTheme {
    const AppearanceThemeBundle& bundle;
    QString installedKey;
};

QList<BundledTheme> bundledThemes()
{
    return {
        {googleWorkspaceBundle(), u"appearance.themes.bundled.googleWorkspace.v1.installed"_s},
        {signatureBundle(), u"appearance.themes.bundled.orvaneWorkspaceSignature.v1.installed"_s}};
}

void sortByName(QList<AppearanceThemeBundle>& bundles)
{
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(bundles.begin(), bundles.end(), [&](const auto& one, const auto& other) {
        return collator.compare(one.name, other.name) < 0;
    });
}

} // namespace

AppearanceThemeLibrary::AppearanceThemeLibrary(UserDefaults& defaults, const Clock& clock,
                                               QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_clock(clock)
{}

const AppearanceThemeBundle* AppearanceThemeLibrary::bundle(const QUuid& id) const
{
    const auto it = std::find_if(m_bundles.cbegin(), m_bundles.cend(),
                                 [&](const auto& bundle) { return bundle.id == id; });
    return it == m_bundles.cend() ? nullptr : &*it;
}

AppearanceThemeBundle* AppearanceThemeLibrary::find(const QUuid& id)
{
    const auto it = std::find_if(m_bundles.begin(), m_bundles.end(),
                                 [&](const auto& bundle) { return bundle.id == id; });
    return it == m_bundles.end() ? nullptr : &*it;
}

bool AppearanceThemeLibrary::lookIsActiveTheme() const
{
    const AppearanceThemeBundle* active = m_activeThemeID ? bundle(*m_activeThemeID) : nullptr;
    return active &&
           sameWhenApplied(active->variant(m_activeMode).values, readAppearance(m_defaults));
}

void AppearanceThemeLibrary::load()
{
    const FreshDefault fresh =
        shouldApplySignatureDefault() ? FreshDefault::WearSignature : FreshDefault::Leave;
    readBundles();
    const bool renamed = normalizeLegacyThemeDisplayNames();
    m_activeThemeID = uuidFromText(m_defaults.get<QString>(activeIDKey, {}));
    m_activeMode = modeFromText(m_defaults.get<QString>(activeModeKey, {}))
                       .value_or(AppearanceThemeMode::Dark);
    installBundledThemesIfNeeded(fresh);
    if (renamed)
        save();
    emit changed();
}

bool AppearanceThemeLibrary::shouldApplySignatureDefault() const
{
    return m_defaults.get<QByteArray>(libraryKey, {}).isEmpty() &&
           m_defaults.get<QByteArray>(firstLibraryKey, {}).isEmpty() &&
           !m_defaults.contains(activeIDKey) && m_defaults.keys().isEmpty();
}

void AppearanceThemeLibrary::readBundles()
{
    m_bundles.clear();
    if (const QByteArray data = m_defaults.get<QByteArray>(libraryKey, {}); !data.isEmpty()) {
        if (auto bundles = decodeThemeBundles(data)) {
            m_bundles = *std::move(bundles);
            return;
        } else {
            qWarning("The theme library can't be read: %ls",
                     qUtf16Printable(bundles.error().text()));
            m_defaults.set(unreadableLibraryKey, DefaultsValue(data));
        }
    }
    const QByteArray data = m_defaults.get<QByteArray>(firstLibraryKey, {});
    const auto themes = decodeThemes(data);
    if (data.isEmpty() || !themes)
        return;
    for (const AppearanceTheme& theme : *themes)
        m_bundles.append({theme.id, theme.name, theme.createdAt, theme.createdAt, theme, theme});
    m_defaults.set(libraryKey, DefaultsValue(encodeThemeBundles(m_bundles)));
}

bool AppearanceThemeLibrary::normalizeLegacyThemeDisplayNames()
{
    const QList<AppearanceThemeBundle> before = m_bundles;
    for (AppearanceThemeBundle& bundle : m_bundles) {
        for (QString* name : {&bundle.name, &bundle.light.name, &bundle.dark.name})
            *name = AppearanceThemeDisplayNameNormalizer::normalized(*name);
    }
    return m_bundles != before;
}

const AppearanceThemeBundle*
AppearanceThemeLibrary::existingBundledTheme(const AppearanceThemeBundle& bundled) const
{
    const auto it = std::find_if(m_bundles.cbegin(), m_bundles.cend(), [&](const auto& bundle) {
        return bundle.id == bundled.id ||
               bundle.name.compare(bundled.name, Qt::CaseInsensitive) == 0;
    });
    return it == m_bundles.cend() ? nullptr : &*it;
}

void AppearanceThemeLibrary::installBundledThemesIfNeeded(FreshDefault freshDefault)
{
    bool added = false;
    for (const BundledTheme& theme : bundledThemes()) {
        m_defaults.set(theme.installedKey, true);
        if (existingBundledTheme(theme.bundle))
            continue;
        m_bundles.append(theme.bundle);
        added = true;
    }
    if (added)
        sortByName(m_bundles);
    const bool wearsSignature = freshDefault == FreshDefault::WearSignature;
    if (wearsSignature) {
        signatureBundle().dark.applyToUserDefaults(m_defaults);
        m_activeThemeID = signatureBundle().id;
        m_activeMode = AppearanceThemeMode::Dark;
    }
    if (added || wearsSignature)
        save();
}

void AppearanceThemeLibrary::save()
{
    m_defaults.set(libraryKey, DefaultsValue(encodeThemeBundles(m_bundles)));
    if (m_activeThemeID)
        m_defaults.set(activeIDKey, uuidText(*m_activeThemeID));
    else
        m_defaults.remove(activeIDKey);
    m_defaults.set(activeModeKey, modeText(m_activeMode));
    emit changed();
}

QUuid AppearanceThemeLibrary::saveCurrentAsTheme(const QString& name)
{
    const auto theme =
        AppearanceTheme::captureCurrentState(name, QUuid::createUuid(), m_clock.now(), m_defaults);
    m_bundles.append({theme.id, theme.name, theme.createdAt, theme.createdAt, theme, theme});
    m_activeThemeID = theme.id;
    save();
    return theme.id;
}

void AppearanceThemeLibrary::updateTheme(const QUuid& id, AppearanceThemeMode mode)
{
    setVariantValues(id, mode, readAppearance(m_defaults));
}

void AppearanceThemeLibrary::setVariantValues(const QUuid& id, AppearanceThemeMode mode,
                                              const AppearanceValues& values)
{
    AppearanceThemeBundle* bundle = find(id);
    if (!bundle)
        return;
    bundle->variant(mode).values = values;
    bundle->updatedAt = m_clock.now();
    save();
}

void AppearanceThemeLibrary::applyTheme(const QUuid& id, AppearanceThemeMode mode)
{
    const AppearanceThemeBundle* bundle = find(id);
    if (!bundle)
        return;
    bundle->variant(mode).applyToUserDefaults(m_defaults);
    m_activeThemeID = id;
    m_activeMode = mode;
    save();
}

void AppearanceThemeLibrary::renameTheme(const QUuid& id, const QString& newName)
{
    AppearanceThemeBundle* bundle = find(id);
    if (!bundle)
        return;
    bundle->name = bundle->light.name = bundle->dark.name = newName;
    save();
}

void AppearanceThemeLibrary::copyVariant(const QUuid& id, AppearanceThemeMode from,
                                         AppearanceThemeMode to)
{
    AppearanceThemeBundle* bundle = find(id);
    if (!bundle || from == to)
        return;
    bundle->variant(to) = bundle->variant(from);
    bundle->updatedAt = m_clock.now();
    save();
}

std::optional<QUuid> AppearanceThemeLibrary::duplicateTheme(const QUuid& id)
{
    const AppearanceThemeBundle* original = find(id);
    if (!original)
        return std::nullopt;
    AppearanceThemeBundle copy = *original;
    copy.name = "Copy of "_L1 + original->name;
    copy.createdAt = copy.updatedAt = m_clock.now();
    return addTheme(std::move(copy));
}

QUuid AppearanceThemeLibrary::addTheme(AppearanceThemeBundle bundle)
{
    for (QUuid* id : {&bundle.id, &bundle.light.id, &bundle.dark.id})
        *id = QUuid::createUuid();
    bundle.name = bundle.light.name = bundle.dark.name = uniqueThemeName(bundle.name);
    const QUuid id = bundle.id;
    m_bundles.append(std::move(bundle));
    save();
    return id;
}

void AppearanceThemeLibrary::deleteTheme(const QUuid& id)
{
    const auto removed = m_bundles.removeIf([&](const auto& bundle) { return bundle.id == id; });
    if (removed == 0 && m_activeThemeID != id)
        return;
    if (m_activeThemeID == id)
        m_activeThemeID.reset();
    save();
}

QString AppearanceThemeLibrary::uniqueThemeName(const QString& base) const
{
    QSet<QString> taken;
    for (const AppearanceThemeBundle& bundle : m_bundles)
        taken.insert(bundle.name.toLower());
    QString name = base;
    for (int number = 2; taken.contains(name.toLower()); ++number)
        name = base + u' ' + QString::number(number);
    return name;
}

} // namespace orvane
