// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

namespace orvane {

/// What a text host is drawn with.
struct TextHostLook {
    QString fontFamily;
    double fontSize = 16; ///< in points, before the zoom
    double zoom = 1;      ///< pixels for a point
    QColor text;
    QColor link;
    QColor page;
    QColor caret;
    QColor selection;
    QColor inactiveSelection;
    QColor separator;
    QColor dimmed;
    /// Width of the column of text, in logical pixels; it stands in the middle of the widget.
    int columnWidth = 680;
    /// Empty space below the last line, in points.
    double bottomPadding = 220;

    bool operator==(const TextHostLook&) const = default;
};

/// The widget in which the body of a note is written, as the editor pane knows it: everything
/// else about it is its own affair. Positions are UTF-16 units; paragraphs end with "\n".
class TextHost : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Replaces everything: another note, or the same one from its record. Caret at the start,
    /// nothing to undo, no `edited`.
    virtual void setText(const QString& text) = 0;
    [[nodiscard]] virtual QString text() const = 0;
    virtual void setEditable(bool editable) = 0;
    virtual void setHostLook(const TextHostLook& look) = 0;
    /// Where the column begins when the host is `width` wide, in its own coordinates.
    [[nodiscard]] virtual int columnLeft(int width) const = 0;
    /// What receives the keyboard.
    [[nodiscard]] virtual QWidget* focusTarget() = 0;

signals:
    /// The person changed the text.
    void edited();
    /// The caret is to leave the text upwards: Up was pressed in the first line.
    void leftAtTop();
};

/// The text host that the program uses.
TextHost* makeTextHost(QWidget* parent);

} // namespace orvane
