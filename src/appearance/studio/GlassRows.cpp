// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/GlassRows.h"

#include "appearance/Look.h"
#include "appearance/studio/ColorSliders.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QScopedValueRollback>

namespace orvane {

using V = AppearanceValues;

/// A switch of the look, and what it is that it grades.
struct GlassRows::Part {
    QString name;
    bool (*isOn)(const V&);
    void (*turn)(V&, bool);
    double (*strength)(const V&) = nullptr;
    void (*setStrength)(V&, double) = nullptr;
    bool needsGlass = false;

    template <bool V::*On>
    static Part flag(const QString& name)
    {
        return {name, [](const V& v) { return v.*On; },
                [](V& v, bool on) {
                    v.*On = on;
                }};
    }
    template <bool V::*On, double V::*Strength>
    static Part pane(const QString& name)
    {
        Part part = flag<On>(name);
        part.strength = [](const V& v) {
            return v.*Strength;
        };
        part.setStrength = [](V& v, double strength) {
            v.*Strength = strength;
        };
        part.needsGlass = true;
        return part;
    }
};

QList<GlassRows::Part> GlassRows::parts()
{
    return {
        Part::flag<&V::orvaneGlassEnabled>(tr("Panes of glass")),
        Part::flag<&V::windowBackdropGradient>(tr("Gradient of the backdrop")),
        Part::pane<&V::orvaneGlassBinder, &V::orvaneGlassOpacityBinder>(tr("Binder")),
        Part::pane<&V::orvaneGlassEditor, &V::orvaneGlassOpacityEditor>(tr("Editor")),
        Part::pane<&V::orvaneGlassInspector, &V::orvaneGlassOpacityInspector>(tr("Inspector")),
        {tr("Desk mat around the page"), [](const V& v) { return v.deskMat.enabled; },
         [](V& v, bool on) { v.deskMat.enabled = on; },
         [](const V& v) { return v.deskMat.strength; },
         [](V& v, double strength) {
             v.deskMat.strength = strength;
         }},
    };
}

GlassRows::GlassRows(Look& look, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
    , m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins({});
    m_grid->setVerticalSpacing(0);
    for (const Part& part : parts())
        m_rows.append(makeRow(part));
    setColumns(2);
}

void GlassRows::setColumns(int columns)
{
    for (int i = 0; i < int(m_rows.size()); ++i)
        m_grid->addWidget(m_rows.at(i), i / columns, i % columns);
    for (int column = 0; column < 2; ++column)
        m_grid->setColumnStretch(column, column < columns ? 1 : 0);
    m_grid->setHorizontalSpacing(columns > 1 ? 32 : 0);
}

QWidget* GlassRows::makeRow(const Part& part)
{
    auto* row = new QWidget(this);
    row->setFixedHeight(36);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setSpacing(12);
    auto* box = new QCheckBox(part.name, row);
    layout->addWidget(box, 1);
    connect(box, &QCheckBox::toggled, this, [this, part](bool on) {
        if (!m_showing)
            emit changeWanted([part, on](V& values) { part.turn(values, on); });
    });
    m_show.append([part, box](const V& values) {
        box->setChecked(part.isOn(values));
        box->setEnabled(!part.needsGlass || values.orvaneGlassEnabled);
    });
    if (!part.strength)
        return row;
    auto* slider = new GradientSlider(m_look, 100, tr("%1: strength").arg(part.name), row);
    slider->setFixedWidth(120);
    QLabel* figure = makeLabel({}, TextStyle::Label, LabelInk::Secondary, row);
    figure->setFixedWidth(36);
    figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    layout->addWidget(slider);
    layout->addWidget(figure);
    connect(slider, &QAbstractSlider::valueChanged, this, [this, part](int percent) {
        if (!m_showing)
            emit changeWanted(
                [part, percent](V& values) { part.setStrength(values, percent / 100.0); });
    });
    m_show.append([this, part, box, slider, figure](const V& values) {
        const QColor ink = m_look.tokens().on(Surface::Page).text;
        QColor clear = ink;
        clear.setAlpha(0);
        slider->setStops({{0, clear}, {1, ink}});
        slider->setValue(qRound(part.strength(values) * 100));
        slider->setEnabled(box->isEnabled() && box->isChecked());
        figure->setText(QLocale().toString(slider->value()) + u'%');
    });
    return row;
}

void GlassRows::showValues(const AppearanceValues& values)
{
    const QScopedValueRollback showing(m_showing, true);
    for (const auto& show : m_show)
        show(values);
}

} // namespace orvane
