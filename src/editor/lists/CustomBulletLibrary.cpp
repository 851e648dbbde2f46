// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/lists/CustomBulletLibrary.h"

namespace orvane {

namespace {

const QString& libraryKey()
{
    static const QString key = QStringLiteral("OrvaneWorkspace.customBulletLibrary");
    return key;
}

const QString& earlierKey()
{
    static const QString key = QStringLiteral("OrvaneNotes.customBulletLibrary");
    return key;
}

} // namespace

CustomBulletLibrary::CustomBulletLibrary(UserDefaults& defaults, NotificationCenter& notifications,
                                         QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_notifications(notifications)
{
    if (const auto earlier = m_defaults.get<QByteArray>(earlierKey())) {
        if (!m_defaults.contains(libraryKey()))
            m_defaults.set(libraryKey(), DefaultsValue(*earlier));
        m_defaults.remove(earlierKey());
    }
    load();
    connect(&m_defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key == libraryKey())
            load();
    });
}

void CustomBulletLibrary::setBullets(const QList<CustomBullet>& bullets)
{
    m_defaults.set(libraryKey(), DefaultsValue(customBulletsToJson(bullets)));
    m_notifications.post(customBulletLibraryDidChange);
}

void CustomBulletLibrary::load()
{
    const auto stored = m_defaults.get<QByteArray>(libraryKey());
    const auto bullets = stored ? customBulletsFromJson(*stored) : std::nullopt;
    if (!bullets || *bullets == m_bullets)
        return;
    m_bullets = *bullets;
    emit bulletsChanged();
}

} // namespace orvane
