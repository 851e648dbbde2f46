// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/ColorEditor.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "appearance/studio/ColorSliders.h"
#include "appearance/studio/ContrastChip.h"
#include "text/value/RgbaColor.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 16;

QColor toQColor(const AppearanceColor& color)
{
    return RgbaColor{color.red, color.green, color.blue, color.alpha}.toQColor();
}

QString percent(int of255)
{
    return QLocale().toString(qRound(of255 / 2.55)) + u'%';
}

} // namespace

ColorEditor::ColorEditor(const Subject& subject, Look& look, QWidget* parent)
    : QFrame(parent, Qt::Popup | Qt::FramelessWindowHint)
    , m_look(look)
    , m_start(subject)
    , m_color(subject.color)
    , m_glass(subject.glass)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(subject.name);
    setAccessibleName(subject.name);
    build();
    connectParts();
    const auto follow = [this] {
        setPalette(m_look.palette(Surface::Card));
    };
    follow();
    connect(&look, &Look::changed, this, follow);
    showColor();
}

QWidget* ColorEditor::makeSliderRow(const QString& letter, GradientSlider* slider, QLabel*& figure)
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->setSpacing(8);
    QLabel* label = makeLabel(letter, TextStyle::Label, LabelInk::Secondary);
    label->setFixedWidth(48);
    layout->addWidget(label);
    layout->addWidget(slider, 1);
    figure = makeLabel({}, TextStyle::Label, LabelInk::Secondary);
    figure->setFixedWidth(34);
    figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    layout->addWidget(figure);
    return row;
}

void ColorEditor::build()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding - 4, padding, padding);
    layout->setSpacing(4);
    auto* head = new QHBoxLayout;
    head->addWidget(makeLabel(m_start.name, TextStyle::BodyStrong));
    head->addStretch(1);
    m_automatic = new QCheckBox(tr("Automatic"), this);
    m_automatic->setToolTip(tr("Leave this colour to the program"));
    m_automatic->setVisible(m_start.canBeAutomatic);
    head->addWidget(m_automatic);
    layout->addLayout(head);
    layout->addSpacing(8);

    m_field = new SaturationField(m_look, this);
    m_hueSlider = new GradientSlider(m_look, 359, tr("Hue"), this);
    QGradientStops hues;
    for (int i = 0; i <= 6; ++i)
        hues.append({i / 6.0, QColor::fromHsv(qMin(359, i * 60), 255, 255)});
    m_hueSlider->setStops(hues);
    layout->addWidget(m_field);
    layout->addWidget(m_hueSlider);
    layout->addSpacing(4);
    const QString names[] = {tr("Red"), tr("Green"), tr("Blue")};
    for (int i = 0; i < 3; ++i) {
        m_channels[i] = new GradientSlider(m_look, 255, names[i], this);
        layout->addWidget(makeSliderRow(names[i], m_channels[i], m_channelFigures[i]));
    }
    m_alpha = new GradientSlider(m_look, 255, tr("Opacity"), this);
    QWidget* alphaRow = makeSliderRow(tr("Opacity"), m_alpha, m_alphaFigure);
    alphaRow->setVisible(m_start.canBeAutomatic);
    layout->addWidget(alphaRow);

    m_glassOn = new QCheckBox(tr("Glass"), this);
    m_glassOn->setToolTip(tr("Let what lies behind shine through"));
    m_strength = new GradientSlider(m_look, 255, tr("Strength"), this);
    QWidget* glassRow = makeSliderRow(tr("Strength"), m_strength, m_strengthFigure);
    m_glassOn->setVisible(m_glass.has_value());
    glassRow->setVisible(m_glass.has_value());
    layout->addSpacing(4);
    layout->addWidget(m_glassOn);
    layout->addWidget(glassRow);

    layout->addSpacing(8);
    auto* foot = new QHBoxLayout;
    foot->setSpacing(8);
    m_hex = new QLineEdit(this);
    m_hex->setFixedWidth(104);
    m_hex->setMaxLength(9);
    m_hex->setAccessibleName(tr("Hexadecimal colour"));
    foot->addWidget(m_hex);
    m_chip = new ContrastChip(m_look, Surface::Card, this);
    m_chip->hide();
    foot->addWidget(m_chip);
    foot->addStretch(1);
    auto* done = new QPushButton(tr("Done"), this);
    done->setDefault(true);
    connect(done, &QPushButton::clicked, this, &ColorEditor::close);
    foot->addWidget(done);
    layout->addLayout(foot);
    setFixedWidth(336);
}

void ColorEditor::connectParts()
{
    connect(m_field, &SaturationField::chosen, this, &ColorEditor::chooseHsv);
    connect(m_hueSlider, &QAbstractSlider::valueChanged, this, &ColorEditor::chooseHsv);
    for (GradientSlider* slider : m_channels)
        connect(slider, &QAbstractSlider::valueChanged, this, &ColorEditor::chooseChannels);
    connect(m_alpha, &QAbstractSlider::valueChanged, this, [this](int alpha) {
        QColor color = toQColor(m_color);
        color.setAlpha(alpha);
        choose(color);
    });
    connect(m_hex, &QLineEdit::textEdited, this, &ColorEditor::chooseHex);
    connect(m_automatic, &QCheckBox::toggled, this, [this](bool automatic) {
        if (m_showing)
            return;
        m_color.enabled = !automatic;
        showColor();
        emit edited();
    });
    const auto chooseGlass = [this] {
        if (m_showing)
            return;
        m_glass = AppearanceGlass{m_glassOn->isChecked(), m_strength->value() / 255.0};
        showColor();
        emit edited();
    };
    connect(m_glassOn, &QCheckBox::toggled, this, chooseGlass);
    connect(m_strength, &QAbstractSlider::valueChanged, this, chooseGlass);
}

void ColorEditor::chooseHsv()
{
    if (m_showing)
        return;
    m_hue = m_hueSlider->value();
    m_saturation = m_field->saturation();
    m_brightness = m_field->brightness();
    QColor color = QColor::fromHsv(m_hue, m_saturation, m_brightness).toRgb();
    color.setAlpha(toQColor(m_color).alpha());
    choose(color);
}

void ColorEditor::chooseChannels()
{
    choose(QColor(m_channels[0]->value(), m_channels[1]->value(), m_channels[2]->value(),
                  toQColor(m_color).alpha()));
}

void ColorEditor::chooseHex()
{
    const QString text = m_hex->text().trimmed();
    const auto read = rgbaFromHex(text);
    if (!read)
        return;
    QColor color = read->toQColor();
    const bool namesAlpha = text.size() - qsizetype(text.startsWith(u'#')) == 8;
    if (!namesAlpha)
        color.setAlpha(toQColor(m_color).alpha());
    choose(color);
}

void ColorEditor::choose(const QColor& color)
{
    if (m_showing)
        return;
    m_color = {true, color.red() / 255.0, color.green() / 255.0, color.blue() / 255.0,
               m_start.canBeAutomatic ? color.alpha() / 255.0 : 1.0};
    showColor();
    emit edited();
}

void ColorEditor::showColor()
{
    const QScopedValueRollback showing(m_showing, true);
    const QColor color = toQColor(m_color);
    // Many hues and saturations round to one dark colour, and greys have none: those that were
    // chosen stay as long as they make this colour.
    if (QColor::fromHsv(m_hue, m_saturation, m_brightness).rgb() != QColor(color.rgb()).rgb()) {
        if (color.hsvSaturation() > 0)
            m_hue = qMax(0, color.hsvHue());
        m_saturation = color.hsvSaturation();
        m_brightness = color.value();
    }
    m_automatic->setChecked(!m_color.enabled);
    m_field->setColor(m_hue, m_saturation, m_brightness);
    m_hueSlider->setValue(m_hue);
    const int channels[] = {color.red(), color.green(), color.blue()};
    for (int i = 0; i < 3; ++i) {
        QColor from(color.rgb());
        QColor to(color.rgb());
        i == 0 ? from.setRed(0) : i == 1 ? from.setGreen(0) : from.setBlue(0);
        i == 0 ? to.setRed(255) : i == 1 ? to.setGreen(255) : to.setBlue(255);
        m_channels[i]->setStops({{0, from}, {1, to}});
        m_channels[i]->setValue(channels[i]);
        m_channelFigures[i]->setText(QLocale().toString(channels[i]));
    }
    QColor clear(color.rgb());
    clear.setAlpha(0);
    m_alpha->setStops({{0, clear}, {1, QColor(color.rgb())}});
    m_alpha->setValue(color.alpha());
    m_alphaFigure->setText(percent(color.alpha()));
    if (m_glass) {
        const int strength = qRound(m_glass->strength * 255);
        m_glassOn->setChecked(m_glass->enabled);
        m_strength->setEnabled(m_glass->enabled);
        m_strength->setStops({{0, clear}, {1, QColor(color.rgb())}});
        m_strength->setValue(strength);
        m_strengthFigure->setText(percent(strength));
    }
    const auto typed = rgbaFromHex(m_hex->text().trimmed());
    if (!m_hex->hasFocus() || !typed || typed->toQColor().rgb() != color.rgb())
        m_hex->setText(toHex(RgbaColor::fromQColor(color)));
}

void ColorEditor::setContrast(double ratio, double minimum, bool madeReadable)
{
    m_chip->setContrast(ratio, minimum, madeReadable);
    m_chip->show();
}

void ColorEditor::hideContrast()
{
    m_chip->hide();
}

void ColorEditor::revert()
{
    m_color = m_start.color;
    m_glass = m_start.glass;
    showColor();
    emit edited();
}

void ColorEditor::popUpAt(const QRect& globalAnchor)
{
    ensurePolished();
    adjustSize();
    const QRect screen = parentWidget()->screen()->availableGeometry();
    QPoint at(globalAnchor.right() - width(), globalAnchor.bottom() + 6);
    if (at.y() + height() > screen.bottom())
        at.setY(globalAnchor.top() - height() - 6);
    at.setX(qBound(screen.left() + 4, at.x(), qMax(screen.left() + 4, screen.right() - width())));
    at.setY(qBound(screen.top() + 4, at.y(), qMax(screen.top() + 4, screen.bottom() - height())));
    move(at);
    show();
    m_hex->setFocus(Qt::PopupFocusReason);
    m_hex->selectAll();
}

void ColorEditor::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
    drawPanel(painter, rect(), popupRadius, card.ground, card.border);
}

void ColorEditor::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    cutCorners(*this);
}

void ColorEditor::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        revert();
        close();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        close();
    } else {
        QFrame::keyPressEvent(event);
    }
}

} // namespace orvane
