// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

class QWidget;

namespace orvane {

/// Asks for the file that a theme comes from or goes to; empty when the person decides otherwise.
class ThemeFilePicker {
public:
    virtual ~ThemeFilePicker() = default;
    [[nodiscard]] virtual QString fileToImport(QWidget* parent) = 0;
    [[nodiscard]] virtual QString fileToExport(QWidget* parent, const QString& suggestedName) = 0;
};

/// The desktop's own dialogs.
class DesktopThemeFilePicker final : public ThemeFilePicker {
public:
    [[nodiscard]] QString fileToImport(QWidget* parent) override;
    [[nodiscard]] QString fileToExport(QWidget* parent, const QString& suggestedName) override;
};

} // namespace orvane
