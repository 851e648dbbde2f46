// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "platform/UserDefaults.h"
#include "shell/settings/ChoiceField.h"
#include "shell/settings/NumberField.h"
#include "shell/settings/SettingRow.h"

#include <QMultiHash>

#include <functional>

class QHBoxLayout;
class QVBoxLayout;

namespace orvane {

/// One page of the settings window: a title, then heads and rows from the top down. Each row shows
/// its key of the user defaults and writes it at once; a key that changes elsewhere is shown at
/// once too. A value outside what a control can show is shown at the nearest end and left alone.
class SettingsPage : public SurfacePanel {
    Q_OBJECT
public:
    SettingsPage(const RowText& head, UserDefaults& defaults, Look& look,
                 QWidget* parent = nullptr);

    void addHead(const QString& text);
    SettingRow* addSwitch(const Setting<bool>& setting, const RowText& text);
    SettingRow* addChoice(const Setting<QString>& setting, const RowText& text,
                          const QList<Choice>& choices);
    template <typename Number>
    SettingRow* addNumber(const Setting<Number>& setting, const RowText& text,
                          const NumberForm& form)
    {
        const auto read = [this, setting, form] {
            const auto stored = double(setting.read(m_defaults));
            return form.above0 && !(stored > 0) ? double(setting.fallback) : stored;
        };
        const auto write = [this, setting](double value) {
            setting.write(m_defaults, Number(value));
        };
        return addNumberRow(setting.keyText(), text, form, read, write);
    }
    SettingRow* addRow(const RowText& text, QWidget* control);
    void addWidget(QWidget* widget);
    void addSpace(int height);
    /// What stands right of the title.
    void addToTitle(QWidget* widget);

    /// The row can be used only while the setting is on.
    void enableWith(SettingRow* row, const Setting<bool>& setting);
    /// Calls `show` now and whenever the key changes.
    void follow(const QString& key, const std::function<void()>& show);

    [[nodiscard]] UserDefaults& defaults() const { return m_defaults; }

private:
    SettingRow* addNumberRow(const QString& key, const RowText& text, const NumberForm& form,
                             const std::function<double()>& read,
                             const std::function<void(double)>& write);

    UserDefaults& m_defaults;
    QVBoxLayout* m_column;
    QHBoxLayout* m_title;
    QMultiHash<QString, std::function<void()>> m_followers;
};

} // namespace orvane
