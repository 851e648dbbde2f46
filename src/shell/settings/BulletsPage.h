// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/lists/CustomBulletLibrary.h"
#include "platform/Services.h"
#include "shell/settings/SettingsPage.h"

class QLabel;

namespace orvane {

class BulletRow;

/// A person's own bullets: each with what stands before the line and a name, in the order in which
/// a line is compared with them. A row without a bullet is not stored.
class BulletsPage : public SettingsPage {
    Q_OBJECT
public:
    BulletsPage(const Services& services, Look& look, QWidget* parent = nullptr);

private:
    BulletRow* addRow(const CustomBullet& bullet);
    void showBullets();
    void store();
    void moveUp(BulletRow* row);
    void remove(BulletRow* row);
    void placeRows();

    CustomBulletLibrary m_library;
    QWidget* m_list;
    QVBoxLayout* m_column;
    QLabel* m_empty;
    QList<BulletRow*> m_rows;
    bool m_storing = false;
};

} // namespace orvane
