// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/WritingPalette.h"
#include "editor/formatting/BarPopup.h"

#include <optional>

class QAbstractButton;
class QGridLayout;

namespace orvane {

/// A palette of colours to choose one from, with no colour at all and a colour of one's own below.
/// Arrow keys go about in the palette.
class ColorPopup : public BarPopup {
    Q_OBJECT
public:
    struct Palette {
        QString name;
        QString none; ///< what a text without the colour has: "Automatic"
        QList<WritingColor> colors;
        QList<QColor> shown;          ///< how each looks on the page
        std::optional<int> current{}; ///< which of them is there now
    };

    ColorPopup(const Palette& palette, Look& look, QWidget* parent);

signals:
    /// An invalid colour for none.
    void chosen(const QColor& color);
    void customRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addSwatches(const Palette& palette);
    [[nodiscard]] QAbstractButton* addRow(const QString& text);

    QList<QAbstractButton*> m_swatches;
};

} // namespace orvane
