// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/themes/AppearanceValues.h"

#include <QWidget>

#include <functional>

class QGridLayout;

namespace orvane {

class Look;

/// The part of the studio about glass: which panes let the window's backdrop shine through and how
/// much, the backdrop's gradient, and the mat around the paper in page view.
class GlassRows : public QWidget {
    Q_OBJECT
public:
    using Change = std::function<void(AppearanceValues&)>;

    explicit GlassRows(Look& look, QWidget* parent = nullptr);

    void showValues(const AppearanceValues& values);
    /// One column or two.
    void setColumns(int columns);

signals:
    void changeWanted(const orvane::GlassRows::Change& change);

private:
    struct Part;
    [[nodiscard]] static QList<Part> parts();
    QWidget* makeRow(const Part& part);

    QList<std::function<void(const AppearanceValues&)>> m_show;
    Look& m_look;
    QGridLayout* m_grid;
    QList<QWidget*> m_rows;
    bool m_showing = false;
};

} // namespace orvane
