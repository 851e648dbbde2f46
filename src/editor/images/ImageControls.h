// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "editor/images/SelectedImageInfo.h"
#include "platform/NotificationCenter.h"

#include <QWidget>

class QAbstractButton;
class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;
class QVBoxLayout;

namespace orvane {

/// What a person reads for a placement.
[[nodiscard]] QString nameOf(OrvaneNoteImageWrapMode mode);

/// What there is to choose about an image: placement, size, offset where it floats, caption and
/// description, and what is done with it. Shows the image that it is told of and posts commands for
/// it. Main thread.
class ImageControls final : public QWidget {
    Q_OBJECT
public:
    /// How the rows are arranged.
    enum class Shape {
        wide,   ///< as in a popover
        narrow, ///< as in a pane
    };
    ImageControls(Shape shape, Look& look, Surface surface, NotificationCenter& notifications,
                  QWidget* parent);

    void setInfo(const SelectedImageInfo& info, const std::optional<QUuid>& note);
    void focusCaption();

private:
    void makePlacements();
    void makeSize(Shape shape);
    void makeTexts();
    void makeButtons(Shape shape);
    [[nodiscard]] QLabel* addHead(const QString& text);
    [[nodiscard]] QDoubleSpinBox* makeLength(const QString& name, double least);
    [[nodiscard]] QPushButton* makeButton(const QString& text, void (ImageControls::*act)());
    void showLock();
    void reset();
    void replace();
    void remove();
    void postSize(std::optional<double> width, std::optional<double> height);
    void postOffset();
    void postCaption();
    void postDescription();

    Look& m_look;
    Surface m_surface;
    NotificationCenter& m_notifications;
    SelectedImageInfo m_info;
    std::optional<QUuid> m_note;
    QVBoxLayout* m_column;
    QList<QAbstractButton*> m_placements; // in the order of the modes
    QDoubleSpinBox* m_width = nullptr;
    QDoubleSpinBox* m_height = nullptr;
    QToolButton* m_lock = nullptr;
    QWidget* m_offsetRow = nullptr;
    QDoubleSpinBox* m_offsetX = nullptr;
    QDoubleSpinBox* m_offsetY = nullptr;
    QLineEdit* m_caption = nullptr;
    QLineEdit* m_description = nullptr;
};

} // namespace orvane
