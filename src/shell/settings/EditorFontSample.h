// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QWidget>

namespace orvane {

class Look;

/// Some words on a card of the page's ground, in the font that notes are written in.
class EditorFontSample : public QWidget {
    Q_OBJECT
public:
    explicit EditorFontSample(const Look& look, QWidget* parent = nullptr);

    /// `points` as the editor counts them, without its zoom.
    void showFont(const QString& family, double points);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& m_look;
    QString m_family;
    double m_points = 16;
};

} // namespace orvane
