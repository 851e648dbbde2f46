// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QPointer>
#include <QWidget>

namespace orvane {

class SheetHost;

/// A card with something to answer, shown in the middle of the window over a dimmed backdrop.
/// While it is shown the keyboard stays inside it; Escape dismisses it.
class Sheet : public QWidget {
    Q_OBJECT
public:
    explicit Sheet(Look& look, QWidget* parent = nullptr);

    [[nodiscard]] Look& look() const { return m_look; }
    /// What receives the keyboard when the sheet appears; its first control unless it says else.
    [[nodiscard]] virtual QWidget* initialFocus() { return nullptr; }
    /// What Escape does: takes the answer that leaves things alone, or nothing where the sheet
    /// must be answered.
    virtual void dismiss() { close(); }
    /// A sheet at the top or beside something is a tool of the moment: a press beside it dismisses
    /// it. Beside something it stands over a window that isn't dimmed.
    enum class Placement { Middle, Top, Beside };
    [[nodiscard]] virtual Placement placement() const { return Placement::Middle; }
    /// What it stands beside, in the window's coordinates.
    void setAnchor(const QRect& anchor) { m_anchor = anchor; }

signals:
    /// It has been answered and is gone from the screen.
    void finished();

protected:
    /// Takes the sheet off the screen; it is deleted when control comes back to the event loop.
    void close();
    /// Gives a label of the sheet the ink of what went wrong, in every look to come.
    void setAlarming(QWidget& label);
    /// Places the sheet again after what stands in it has changed its size.
    void fitContents();
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    friend class SheetHost;
    Look& m_look;
    QPointer<SheetHost> m_host;
    QRect m_anchor;
};

/// Covers a window while it has sheets to show; the last one given is on top. One per window.
class SheetHost : public QWidget {
    Q_OBJECT
public:
    SheetHost(Look& look, QWidget* window);

    /// Takes over the sheet and shows it on top.
    void present(Sheet* sheet);
    [[nodiscard]] Sheet* topSheet() const;
    [[nodiscard]] Look& look() const { return m_look; }
    /// Places everything in the middle again.
    void layOut();

signals:
    void presented(orvane::Sheet* sheet);
    /// There is a sheet to answer now, or none any more.
    void visibleChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    friend class Sheet;
    void remove(Sheet* sheet);
    [[nodiscard]] QPoint placeOf(const Sheet& sheet) const;
    void focusInto(Sheet* sheet);
    void tellReaders();

    Look& m_look;
    QList<Sheet*> m_sheets;
    QPointer<QWidget> m_focusBefore;
};

} // namespace orvane
