// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/sheets/SheetHost.h"

#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace orvane {

/// Asks for a name: for a new project, a new folder, or to rename one.
class NameSheet : public Sheet {
    Q_OBJECT
public:
    struct Texts {
        QString title;
        QString hint;
        QString placeholder;
        QString acceptButton;
        QString initialName;
    };
    /// Carries out what the name is for. Nothing when it worked; else what went wrong as a
    /// sentence, which the sheet shows while it stays open. An empty sentence just keeps it open.
    using Accept = std::function<std::optional<QString>(const QString& name)>;
    enum class BlankName { Allowed, Refused };

    NameSheet(const Texts& texts, BlankName blankName, Accept accept, Look& look,
              QWidget* parent = nullptr);

    [[nodiscard]] QWidget* initialFocus() override;
    [[nodiscard]] QSize sizeHint() const override;

private:
    void accept();

    Accept m_accept;
    QLineEdit* m_name;
    QLabel* m_problem;
    QPushButton* m_button;
};

} // namespace orvane
