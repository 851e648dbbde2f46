// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/lists/CustomBullet.h"

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace orvane {

class Look;

/// One bullet of the bullets page: its characters, its name, and buttons to move it up and to
/// remove it.
class BulletRow : public QWidget {
    Q_OBJECT
public:
    BulletRow(const CustomBullet& bullet, Look& look, QWidget* parent);

    /// As it stands in the fields, without blanks around; a colour that it came with stays.
    [[nodiscard]] CustomBullet bullet() const;
    void setMayMoveUp(bool mayMove);
    void focusBullet();

signals:
    void edited();
    void moveUpWanted();
    void removeWanted();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CustomBullet m_bullet;
    QLineEdit* m_character;
    QLineEdit* m_name;
    QToolButton* m_up;
};

} // namespace orvane
