// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/window/TrashStrip.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/OrvaneStyle.h"
#include "core/records/Wording.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace orvane {

namespace {

constexpr int stripHeight = 40;
constexpr int buttonHeight = 28;
constexpr int padding = 16;
/// How much of the warning's colour lies on the page, and on the line below the strip.
constexpr double tint = 0.1;
constexpr double edgeTint = 0.4;

} // namespace

TrashStrip::TrashStrip(Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::Page, parent)
    , m_picture(new QLabel(this))
    , m_since(makeLabel({}, TextStyle::Body, LabelInk::Primary, this))
{
    setFixedHeight(stripHeight);
    setAccessibleName(tr("This note is in the Trash"));
    auto* restore = new QPushButton(tr("Restore"), this);
    setButtonTone(restore, ButtonTone::Accent);
    auto* erase = new QPushButton(tr("Delete Permanently"), this);
    setButtonTone(erase, ButtonTone::DangerText);
    for (QPushButton* button : {restore, erase})
        button->setFixedHeight(buttonHeight);
    m_restore = restore;
    m_erase = erase;
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(padding, 0, padding - 4, 0);
    row->setSpacing(10);
    row->addWidget(m_picture);
    row->addWidget(m_since);
    row->addWidget(makeLabel(tr("Read-only until it is restored"), TextStyle::Body,
                             LabelInk::Secondary, this));
    row->addStretch(1);
    row->addWidget(restore);
    row->addWidget(erase);
    const auto showPicture = [this] {
        m_picture->setPixmap(this->look().icon(Symbol::Trash, Surface::Page).pixmap(16, 16));
    };
    connect(&look, &Look::changed, this, showPicture);
    showPicture();
    connect(restore, &QPushButton::clicked, this, &TrashStrip::restoreWanted);
    connect(erase, &QPushButton::clicked, this, &TrashStrip::eraseWanted);
}

void TrashStrip::show(const NoteRecord& note, Timestamp now, bool mayWrite)
{
    m_since->setText(note.trashedAt
                         ? tr("In the Trash since %1").arg(momentInWords(*note.trashedAt, now))
                         : tr("In the Trash"));
    m_restore->setEnabled(mayWrite);
    m_erase->setEnabled(mayWrite);
    setVisible(true);
}

void TrashStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const SurfaceTokens& t = look().tokens().on(Surface::Page);
    painter.fillRect(rect(), blended(t.warning, tint, t.ground));
    drawLineAt(Qt::BottomEdge, painter, rect(), blended(t.warning, edgeTint, t.ground));
}

} // namespace orvane
