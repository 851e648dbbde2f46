// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/BulletRow.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QToolButton>

namespace orvane {

namespace {

constexpr int rowHeight = 52;
constexpr int characterWidth = 72;
constexpr int longestCharacter = 8;
constexpr int longestName = 200;

} // namespace

BulletRow::BulletRow(const CustomBullet& bullet, Look& look, QWidget* parent)
    : QWidget(parent)
    , m_bullet(bullet)
    , m_character(new QLineEdit(bullet.character, this))
    , m_name(new QLineEdit(bullet.name, this))
    , m_up(new QToolButton(this))
{
    setFixedHeight(rowHeight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 8, 0, 9);
    row->setSpacing(8);
    m_character->setFixedWidth(characterWidth);
    m_character->setAlignment(Qt::AlignCenter);
    m_character->setMaxLength(longestCharacter);
    m_character->setPlaceholderText(QStringLiteral("★"));
    m_character->setAccessibleName(tr("Bullet"));
    m_name->setMaxLength(longestName);
    m_name->setPlaceholderText(tr("Name"));
    m_name->setAccessibleName(tr("Name of the bullet"));
    row->addWidget(m_character);
    row->addWidget(m_name, 1);
    const auto addButton = [&](QToolButton* button, Symbol symbol, const QString& name) {
        button->setIcon(look.icon(symbol, Surface::Page));
        button->setFixedSize(28, 28);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setToolTip(name);
        button->setAccessibleName(name);
        row->addWidget(button);
    };
    auto* remove = new QToolButton(this);
    addButton(m_up, Symbol::ChevronUp, tr("Move up"));
    addButton(remove, Symbol::Trash, tr("Remove the bullet"));
    connect(m_character, &QLineEdit::textEdited, this, &BulletRow::edited);
    connect(m_name, &QLineEdit::textEdited, this, &BulletRow::edited);
    connect(m_up, &QToolButton::clicked, this, &BulletRow::moveUpWanted);
    connect(remove, &QToolButton::clicked, this, &BulletRow::removeWanted);
}

CustomBullet BulletRow::bullet() const
{
    CustomBullet bullet = m_bullet;
    bullet.character = m_character->text().trimmed();
    bullet.name = m_name->text().trimmed();
    return bullet;
}

void BulletRow::setMayMoveUp(bool mayMove)
{
    m_up->setEnabled(mayMove);
}

void BulletRow::focusBullet()
{
    m_character->setFocus(Qt::OtherFocusReason);
}

void BulletRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawLineAt(Qt::BottomEdge, painter, rect(), palette().color(QPalette::Mid));
}

} // namespace orvane
