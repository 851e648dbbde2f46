// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QTextEdit>

namespace orvane {

/// The text of a message: wrapped, also inside a long path, selectable by mouse, as high as it
/// needs up to a limit from which it scrolls.
class MessageText : public QTextEdit {
    Q_OBJECT
public:
    /// `Loose` lines stand 19 px apart, `Tight` ones as the font has them.
    enum class Lines { Tight, Loose };

    MessageText(int width, LabelInk ink, Lines lines, Look& look, QWidget* parent = nullptr);

    /// Shows the text, in the place of an earlier one with at least the room that that had, so that
    /// figures that run don't move what stands below. Nothing where there is none.
    void setMessage(const QString& text);

private:
    void applyLook();

    int m_width;
    LabelInk m_ink;
    Lines m_lines;
    Look& m_look;
    QString m_message;
    int m_room = 0;
};

} // namespace orvane
