// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/EditorExtension.h"

namespace orvane {

void EditorExtension::paintBehindText(QPainter& /*painter*/, const EditorPaint& /*paint*/) {}
void EditorExtension::paintOverText(QPainter& /*painter*/, const EditorPaint& /*paint*/) {}

bool EditorExtension::mousePressed(const EditorMouse& /*mouse*/)
{
    return false;
}

void EditorExtension::mouseMoved(const EditorMouse& /*mouse*/) {}
void EditorExtension::mouseReleased(const EditorMouse& /*mouse*/) {}

std::optional<Qt::CursorShape> EditorExtension::cursorAt(QPointF /*page*/)
{
    return std::nullopt;
}

bool EditorExtension::keyPressed(const QKeyEvent& /*event*/)
{
    return false;
}

bool EditorExtension::command(EditAction /*command*/)
{
    return false;
}

bool EditorExtension::textTyped(const QString& /*text*/)
{
    return false;
}

bool EditorExtension::paste(const QMimeData& /*data*/)
{
    return false;
}

bool EditorExtension::drop(const QMimeData& /*data*/, qsizetype /*position*/)
{
    return false;
}

void EditorExtension::addToContextMenu(QMenu& /*menu*/, QPointF /*page*/, qsizetype /*position*/) {}

} // namespace orvane
