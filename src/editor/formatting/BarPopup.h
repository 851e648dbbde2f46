// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QFrame>

class QVBoxLayout;

namespace orvane {

class Look;

/// A card that opens below a control of the formatting bar, and goes with a press outside or with
/// Escape. Deletes itself when it closes.
class BarPopup : public QFrame {
    Q_OBJECT
public:
    BarPopup(const QString& name, Look& look, QWidget* parent);

    /// Opens below `anchor`, on its screen as a whole; while it is open the control looks pressed.
    void popUpBelow(QWidget& anchor);
    /// Opens below `anchor`, in global coordinates, on the screen of `beside`.
    void popUpAt(const QRect& anchor, const QWidget& beside);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    [[nodiscard]] Look& look() const { return m_look; }
    /// Where the content goes, below the name.
    [[nodiscard]] QVBoxLayout& column() const { return *m_column; }

private:
    Look& m_look;
    QVBoxLayout* m_column;
};

} // namespace orvane
