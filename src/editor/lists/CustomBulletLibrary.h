// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "text/lists/CustomBullet.h"

#include <QObject>

namespace orvane {

/// The bullets that this person has made, the same in all projects. Kept in the user defaults.
/// Main thread.
class CustomBulletLibrary : public QObject {
    Q_OBJECT
public:
    /// Reads what is stored, also under the key of earlier versions, which is then moved.
    CustomBulletLibrary(UserDefaults& defaults, NotificationCenter& notifications,
                        QObject* parent = nullptr);

    [[nodiscard]] const QList<CustomBullet>& bullets() const { return m_bullets; }
    /// Stores the bullets and posts `customBulletLibraryDidChange`.
    void setBullets(const QList<CustomBullet>& bullets);

    /// The first bullet with which, and one space behind it, `linePrefix` begins, or null.
    [[nodiscard]] const CustomBullet* matchingBullet(QStringView linePrefix) const
    {
        return orvane::matchingBullet(m_bullets, linePrefix);
    }

signals:
    void bulletsChanged();

private:
    void load();

    UserDefaults& m_defaults;
    NotificationCenter& m_notifications;
    QList<CustomBullet> m_bullets;
};

inline constexpr Notification<NoPayload> customBulletLibraryDidChange{
    "OrvaneWorkspace.CustomBulletLibrary.DidChange"};

} // namespace orvane
