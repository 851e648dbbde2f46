// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/themes/AppearanceTheme.h"

#include <QObject>

#include <optional>

namespace orvane {

class Clock;
class UserDefaults;

/// The one library of paired Light and Dark themes, kept in the user defaults. It moves looks
/// between its bundles and the live keys under `settings.appearance.`; those keys, not the
/// library, are the truth of what is on screen. Every change is saved in the same call. An unknown
/// id is passed over. Main thread.
class AppearanceThemeLibrary : public QObject {
    Q_OBJECT
public:
    /// The library is empty until `load`.
    AppearanceThemeLibrary(UserDefaults& defaults, const Clock& clock, QObject* parent = nullptr);

    [[nodiscard]] const QList<AppearanceThemeBundle>& themeBundles() const { return m_bundles; }
    [[nodiscard]] const AppearanceThemeBundle* bundle(const QUuid& id) const;
    /// The theme that was last saved or applied; the look may have been edited since.
    [[nodiscard]] std::optional<QUuid> activeThemeID() const { return m_activeThemeID; }
    [[nodiscard]] AppearanceThemeMode activeMode() const { return m_activeMode; }
    /// Whether the look is still that of the active theme's active variant, as applied.
    [[nodiscard]] bool lookIsActiveTheme() const;

    /// Reads what is stored, of this release or the first, adds the themes that come with the
    /// program, and on a fresh installation applies the Signature dark look. What can't be read
    /// counts as empty and is kept aside under a key of its own. Once, at the start of the program,
    /// before anything writes a setting: settings that are all unset are how a fresh installation
    /// is known.
    void load();
    void save();

    /// Captures the look as both variants of a new bundle and makes it the active one.
    QUuid saveCurrentAsTheme(const QString& name);
    /// Overwrites one variant with the look as it is now.
    void updateTheme(const QUuid& id, AppearanceThemeMode mode);
    /// Makes the look that of the variant; the bundle stays as it is.
    void applyTheme(const QUuid& id, AppearanceThemeMode mode);
    void renameTheme(const QUuid& id, const QString& newName);
    void copyVariant(const QUuid& id, AppearanceThemeMode from, AppearanceThemeMode to);
    /// The copy's id.
    std::optional<QUuid> duplicateTheme(const QUuid& id);
    /// The look on screen stays as it is.
    void deleteTheme(const QUuid& id);
    /// Replaces one variant's look, as an editor of colours does. The look on screen stays.
    void setVariantValues(const QUuid& id, AppearanceThemeMode mode,
                          const AppearanceValues& values);
    /// Adds a bundle that came from elsewhere, under new ids and a name that is still free.
    QUuid addTheme(AppearanceThemeBundle bundle);

    /// `base`, or with the first of " 2", " 3" and so on behind it that no bundle is called;
    /// letter case doesn't matter.
    [[nodiscard]] QString uniqueThemeName(const QString& base) const;

signals:
    /// Bundles, the active theme or its mode changed.
    void changed();

private:
    [[nodiscard]] AppearanceThemeBundle* find(const QUuid& id);
    [[nodiscard]] bool shouldApplySignatureDefault() const;
    void readBundles();
    [[nodiscard]] bool normalizeLegacyThemeDisplayNames();
    /// Whether a home without any look of its own gets the Signature one.
    enum class FreshDefault { Leave, WearSignature };
    void installBundledThemesIfNeeded(FreshDefault freshDefault);
    [[nodiscard]] const AppearanceThemeBundle*
    existingBundledTheme(const AppearanceThemeBundle& bundled) const;

    UserDefaults& m_defaults;
    const Clock& m_clock;
    QList<AppearanceThemeBundle> m_bundles;
    std::optional<QUuid> m_activeThemeID;
    AppearanceThemeMode m_activeMode = AppearanceThemeMode::Dark;
};

} // namespace orvane
