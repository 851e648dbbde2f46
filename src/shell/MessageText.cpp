// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/MessageText.h"

#include "appearance/Typography.h"

#include <QFontMetrics>

namespace orvane {

namespace {

constexpr int tallest = 360;

} // namespace

MessageText::MessageText(const QString& text, int width, QWidget* parent)
    : QPlainTextEdit(text, parent)
{
    setReadOnly(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::ClickFocus);
    setTextStyle(this, TextStyle::Body);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    QPalette colors = parent ? parent->palette() : palette();
    colors.setColor(QPalette::Text, colors.color(QPalette::PlaceholderText));
    colors.setColor(QPalette::Base, colors.color(QPalette::Window));
    setPalette(colors);
    const QRect bounds = QFontMetrics(font()).boundingRect(
        QRect(0, 0, width, 100'000), Qt::TextWordWrap | Qt::TextWrapAnywhere, text);
    setFixedHeight(qMin(bounds.height() + 4, tallest));
    if (bounds.height() + 4 <= tallest)
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(text);
}

} // namespace orvane
