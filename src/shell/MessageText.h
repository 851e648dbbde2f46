// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QPlainTextEdit>

namespace orvane {

/// The text of a message: wrapped, also inside a long path, selectable by mouse, as high as it
/// needs up to a limit from which it scrolls.
class MessageText : public QPlainTextEdit {
    Q_OBJECT
public:
    MessageText(const QString& text, int width, QWidget* parent = nullptr);
};

} // namespace orvane
