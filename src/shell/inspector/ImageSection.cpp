// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/ImageSection.h"

#include "appearance/Look.h"
#include "core/records/Wording.h"
#include "editor/images/ImageControls.h"
#include "shell/inspector/FactRows.h"

#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QPainter>

#include <cmath>

namespace orvane {

namespace {

constexpr int padding = 16;
constexpr int below = 16;

} // namespace

ImageSection::ImageSection(NotificationCenter& notifications, Look& look, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
    , m_grid(new QGridLayout)
    , m_placement(addFact(*m_grid, tr("Placement")))
    , m_size(addFact(*m_grid, tr("Size")))
    , m_original(addFact(*m_grid, tr("Original")))
    , m_data(addFact(*m_grid, tr("Data")))
    , m_controls(new ImageControls(ImageControls::Shape::narrow, look, Surface::Inspector,
                                   notifications, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, 0, padding, below + 15);
    layout->setSpacing(13);
    addFactGrid(*layout, tr("Image"), *m_grid);
    layout->addWidget(m_controls);
    m_observation = notifications.observe(editorSelectionSnapshotDidChange,
                                          [this](const EditorSelectionChange& change) {
                                              m_told = change;
                                              showOrHide();
                                          });
    hide();
}

void ImageSection::setNote(const std::optional<QUuid>& note)
{
    m_note = note;
    showOrHide();
}

void ImageSection::showOrHide()
{
    const auto& image = m_told.snapshot.selectedImage;
    if (!image || !m_note || m_told.targetNoteID != m_note)
        return hide();
    const auto size = [](double width, double height) {
        return tr("%1 × %2").arg(grouped(std::lround(width)), grouped(std::lround(height)));
    };
    m_placement->setText(nameOf(image->wrapMode));
    m_size->setText(size(image->width, image->height));
    m_original->setText(size(image->originalWidth, image->originalHeight));
    m_data->setText(
        QLocale().formattedDataSize(image->fileSize, 0, QLocale::DataSizeTraditionalFormat));
    m_controls->setInfo(*image, m_note);
    m_controls->setVisible(!image->hasPopover);
    show();
}

void ImageSection::paintEvent(QPaintEvent* /*event*/)
{
    QPainter(this).fillRect(0, height() - below, width(), 1,
                            m_look.tokens().on(Surface::Inspector).border);
}

} // namespace orvane
