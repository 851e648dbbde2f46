// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/BulletsPage.h"

#include "shell/settings/BulletRow.h"

#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace orvane {

BulletsPage::BulletsPage(const Services& services, Look& look, QWidget* parent)
    : SettingsPage({tr("Bullets"),
                    tr("A line that begins with one of your own bullets and a blank is a list, as "
                       "with the ones that are built in.")},
                   services.defaults, look, parent)
    , m_library(services.defaults, services.notifications)
    , m_list(new QWidget)
    , m_column(new QVBoxLayout(m_list))
    , m_empty(makeLabel(tr("You have no bullets of your own yet."), TextStyle::Body,
                        LabelInk::Secondary, m_list))
{
    m_column->setContentsMargins({});
    m_column->setSpacing(0);
    m_column->addWidget(m_empty);
    addSpace(12);
    addWidget(m_list);
    auto* add = new QPushButton(tr("Add Bullet"));
    add->setAutoDefault(false);
    connect(add, &QPushButton::clicked, this, [this] {
        CustomBullet bullet;
        bullet.id = QUuid::createUuid();
        BulletRow* row = addRow(bullet);
        placeRows();
        row->focusBullet();
    });
    addToTitle(add);
    connect(&m_library, &CustomBulletLibrary::bulletsChanged, this, [this] {
        if (!m_storing)
            showBullets();
    });
    showBullets();
}

BulletRow* BulletsPage::addRow(const CustomBullet& bullet)
{
    auto* row = new BulletRow(bullet, look(), m_list);
    m_rows.append(row);
    connect(row, &BulletRow::edited, this, &BulletsPage::store);
    connect(row, &BulletRow::moveUpWanted, this, [this, row] { moveUp(row); });
    connect(row, &BulletRow::removeWanted, this, [this, row] { remove(row); });
    return row;
}

void BulletsPage::showBullets()
{
    for (BulletRow* row : std::as_const(m_rows)) {
        row->hide();
        row->deleteLater();
    }
    m_rows.clear();
    for (const CustomBullet& bullet : m_library.bullets())
        addRow(bullet);
    placeRows();
}

void BulletsPage::placeRows()
{
    QWidget* before = nullptr;
    for (BulletRow* row : std::as_const(m_rows)) {
        m_column->removeWidget(row);
        m_column->addWidget(row);
        row->setMayMoveUp(before != nullptr);
        row->show();
        before = row;
    }
    m_empty->setVisible(m_rows.isEmpty());
}

void BulletsPage::store()
{
    QList<CustomBullet> bullets;
    for (const BulletRow* row : std::as_const(m_rows)) {
        const CustomBullet bullet = row->bullet();
        if (!bullet.character.isEmpty())
            bullets.append(bullet);
    }
    const QScopedValueRollback storing(m_storing, true);
    m_library.setBullets(bullets);
}

void BulletsPage::moveUp(BulletRow* row)
{
    const qsizetype at = m_rows.indexOf(row);
    if (at <= 0)
        return;
    m_rows.swapItemsAt(at, at - 1);
    placeRows();
    store();
}

void BulletsPage::remove(BulletRow* row)
{
    m_rows.removeOne(row);
    row->hide();
    row->deleteLater();
    placeRows();
    store();
}

} // namespace orvane
