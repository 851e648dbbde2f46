// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/page/RulerMarks.h"

#include <QWidget>

namespace orvane {

class PageRuler;

/// One mark on the ruler: dragged with the mouse, moved by the arrow keys; to screen readers a
/// slider.
class RulerMarker final : public QWidget {
    Q_OBJECT
public:
    RulerMarker(PageRuler& ruler, const RulerMark& mark);

    void setMark(const RulerMark& mark);
    [[nodiscard]] const RulerMark& mark() const { return m_mark; }
    /// A tab stop that is drawn off the ruler fades; letting it go there takes it away.
    void setFading(bool fading);

    /// What it is called, and where it stands: "Tab stop", "2.5 cm".
    [[nodiscard]] QString name() const;
    [[nodiscard]] QString value() const;
    [[nodiscard]] PageRuler& ruler() const { return m_ruler; }

    /// The pixels of a marker, whose middle stands at its position.
    static constexpr int markerWidth = 17;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    PageRuler& m_ruler;
    RulerMark m_mark;
    bool m_isFading = false;
};

} // namespace orvane
