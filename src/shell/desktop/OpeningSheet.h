// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/desktop/TextFiles.h"
#include "shell/sheets/SheetHost.h"

#include <QTimer>

class QLabel;
class QProgressBar;

namespace orvane {

class ElidedLabel;

/// How far the reading of text files is, with a button that cancels it; Escape does too.
class OpeningSheet : public Sheet {
    Q_OBJECT
public:
    OpeningSheet(const TextFilesReader& reader, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] QWidget* initialFocus() override;
    void dismiss() override;
    [[nodiscard]] QSize sizeHint() const override;
    /// Takes the sheet off the screen. Looks at the reader no more.
    void leave();

signals:
    /// It is off the screen already.
    void cancelled();

private:
    void showProgress();

    const TextFilesReader& m_reader;
    ElidedLabel* m_name;
    QLabel* m_amount;
    QProgressBar* m_bar;
    QTimer m_refresh;
};

} // namespace orvane
