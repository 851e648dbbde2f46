// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/EditorExtension.h"

#include <QMimeData>

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

bool EditorExtension::hovered(QPointF /*page*/)
{
    return false;
}

void EditorExtension::hoverEnded() {}

bool EditorExtension::takesKey(const QKeyEvent& /*event*/) const
{
    return false;
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

bool EditorExtension::hasSelection() const
{
    return false;
}

QList<TextRange> EditorExtension::selectedRanges() const
{
    return {};
}

std::unique_ptr<QMimeData> EditorExtension::copySelection() const
{
    return nullptr;
}

void EditorExtension::removeSelection(const QString& /*actionName*/) {}

bool EditorExtension::canTake(const QMimeData& /*data*/) const
{
    return false;
}

bool EditorExtension::paste(const QMimeData& /*data*/)
{
    return false;
}

std::optional<DropFeedback> EditorExtension::dragMoved(const EditorDrag& /*drag*/)
{
    return std::nullopt;
}

void EditorExtension::dragEnded() {}

bool EditorExtension::drop(const EditorDrag& /*drag*/)
{
    return false;
}

void EditorExtension::addToContextMenu(QMenu& /*menu*/, QPointF /*page*/, qsizetype /*position*/) {}

} // namespace orvane
