// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/SettingsPage.h"

#include "shell/settings/Switch.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <cmath>

namespace orvane {

namespace {

constexpr int padding = 36;
constexpr int widest = 760;
/// As high as the controls that may stand beside it.
constexpr int titleHeight = 34;

} // namespace

SettingsPage::SettingsPage(const RowText& head, UserDefaults& defaults, Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::Page, parent)
    , m_defaults(defaults)
    , m_column(new QVBoxLayout)
    , m_title(new QHBoxLayout)
{
    setAccessibleName(head.title);
    auto* content = new QWidget;
    content->setMaximumWidth(widest + 2 * padding);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(padding, 30, padding, padding);
    layout->setSpacing(0);
    m_title->setSpacing(8);
    QLabel* title = makeLabel(head.title, TextStyle::SheetTitle);
    title->setMinimumHeight(titleHeight);
    m_title->addWidget(title, 1);
    layout->addLayout(m_title);
    if (!head.hint.isEmpty()) {
        layout->addSpacing(4);
        QLabel* told = makeLabel(head.hint, TextStyle::Body, LabelInk::Secondary);
        told->setWordWrap(true);
        layout->addWidget(told);
    }
    m_column->setSpacing(0);
    layout->addLayout(m_column);
    layout->addStretch(1);

    auto* scroll = new QScrollArea(this);
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    outer->addWidget(scroll);

    connect(&defaults, &UserDefaults::changed, this, [this](const QString& key) {
        for (const auto& show : m_followers.values(key))
            show();
    });
}

void SettingsPage::addHead(const QString& text)
{
    m_column->addSpacing(24);
    m_column->addWidget(makeLabel(text, TextStyle::SectionHead, LabelInk::Secondary));
    m_column->addSpacing(4);
}

SettingRow* SettingsPage::addRow(const RowText& text, QWidget* control)
{
    auto* row = new SettingRow(text, control);
    m_column->addWidget(row);
    return row;
}

void SettingsPage::addWidget(QWidget* widget)
{
    m_column->addWidget(widget);
}

void SettingsPage::addSpace(int height)
{
    m_column->addSpacing(height);
}

void SettingsPage::addToTitle(QWidget* widget)
{
    m_title->addWidget(widget);
}

SettingRow* SettingsPage::addSwitch(const Setting<bool>& setting, const RowText& text)
{
    auto* control = new Switch(look());
    connect(control, &QCheckBox::toggled, this,
            [this, setting](bool on) { setting.write(m_defaults, on); });
    SettingRow* row = addRow(text, control);
    follow(setting.keyText(), [this, setting, control] {
        const QSignalBlocker blocker(control);
        control->setChecked(setting.read(m_defaults));
    });
    return row;
}

SettingRow* SettingsPage::addChoice(const Setting<QString>& setting, const RowText& text,
                                    const QList<Choice>& choices)
{
    auto* control = new ChoiceField(choices);
    control->setFixedWidth(SettingRow::fieldWidth);
    connect(control, &QComboBox::currentIndexChanged, this,
            [this, setting, control] { setting.write(m_defaults, control->stored()); });
    SettingRow* row = addRow(text, control);
    follow(setting.keyText(), [this, setting, control] {
        const QSignalBlocker blocker(control);
        control->showStored(setting.read(m_defaults));
    });
    return row;
}

SettingRow* SettingsPage::addNumberRow(const QString& key, const RowText& text,
                                       const NumberForm& form, const std::function<double()>& read,
                                       const std::function<void(double)>& write)
{
    auto* control = new NumberField(form);
    control->setFixedWidth(SettingRow::fieldWidth);
    connect(control, &QDoubleSpinBox::valueChanged, this,
            [write, form](double shown) { write(std::round(shown / form.scale * 1e6) / 1e6); });
    SettingRow* row = addRow(text, control);
    follow(key, [control, read, form] {
        const QSignalBlocker blocker(control);
        control->setValue(read() * form.scale);
    });
    return row;
}

void SettingsPage::enableWith(SettingRow* row, const Setting<bool>& setting)
{
    follow(setting.keyText(), [this, row, setting] { row->setEnabled(setting.read(m_defaults)); });
}

void SettingsPage::follow(const QString& key, const std::function<void()>& show)
{
    m_followers.insert(key, show);
    show();
}

} // namespace orvane
