// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/sheets/MessageText.h"

#include <QTextBlock>

#include <cmath>

namespace orvane {

namespace {

constexpr int tallest = 360;
constexpr double loosePitch = 19;

} // namespace

MessageText::MessageText(int width, LabelInk ink, Lines lines, Look& look, QWidget* parent)
    : QTextEdit(parent)
    , m_width(width)
    , m_ink(ink)
    , m_lines(lines)
    , m_look(look)
{
    setReadOnly(true);
    setAcceptRichText(false);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::ClickFocus);
    setTextStyle(this, TextStyle::Body);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    setFixedWidth(width);
    applyLook();
    connect(&look, &Look::changed, this, &MessageText::applyLook);
    hide();
}

void MessageText::setMessage(const QString& text)
{
    setVisible(!text.isEmpty());
    if (text == m_message)
        return;
    m_message = text;
    setPlainText(text);
    if (m_lines == Lines::Loose) {
        QTextBlockFormat format;
        format.setLineHeight(loosePitch, QTextBlockFormat::FixedHeight);
        QTextCursor all(document());
        all.select(QTextCursor::Document);
        all.mergeBlockFormat(format);
    }
    document()->setTextWidth(m_width);
    const int needed = int(std::ceil(document()->size().height()));
    m_room = qMax(m_room, qMin(needed, tallest));
    setFixedHeight(m_room);
    setVerticalScrollBarPolicy(needed > tallest ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    setAccessibleName(text);
}

void MessageText::applyLook()
{
    QPalette colors = m_look.palette(Surface::Card);
    if (m_ink == LabelInk::Secondary)
        colors.setColor(QPalette::Text, colors.color(QPalette::PlaceholderText));
    colors.setColor(QPalette::Base, colors.color(QPalette::Window));
    setPalette(colors);
}

} // namespace orvane
