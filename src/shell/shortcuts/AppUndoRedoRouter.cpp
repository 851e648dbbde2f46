// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/shortcuts/AppUndoRedoRouter.h"

#include <QLineEdit>
#include <QMetaObject>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTextDocument>
#include <QTextEdit>

namespace orvane {

namespace {

/// Only methods that the toolkit can call by name: text views of our own need no common base.
template <typename View>
UndoTarget targetWithDocument(View* view)
{
    const QPointer<View> guarded = view;
    return {[guarded] {
                return guarded && !guarded->isReadOnly() && guarded->document()->isUndoAvailable();
            },
            [guarded] {
                return guarded && !guarded->isReadOnly() && guarded->document()->isRedoAvailable();
            },
            [guarded] { guarded->undo(); },
            [guarded] {
                guarded->redo();
            }};
}

UndoTarget targetOfField(QLineEdit* field)
{
    const QPointer<QLineEdit> guarded = field;
    return {[guarded] { return guarded && guarded->isUndoAvailable(); },
            [guarded] { return guarded && guarded->isRedoAvailable(); },
            [guarded] { guarded->undo(); },
            [guarded] {
                guarded->redo();
            }};
}

bool answers(QWidget* widget, const char* question)
{
    bool answer = false;
    return widget &&
           QMetaObject::invokeMethod(widget, question, Qt::DirectConnection,
                                     Q_RETURN_ARG(bool, answer)) &&
           answer;
}

bool hasMethods(const QWidget* widget)
{
    const QMetaObject* type = widget->metaObject();
    return type->indexOfMethod("undo()") >= 0 && type->indexOfMethod("redo()") >= 0 &&
           type->indexOfMethod("isUndoAvailable()") >= 0 &&
           type->indexOfMethod("isRedoAvailable()") >= 0;
}

UndoTarget targetByName(QWidget* widget)
{
    const QPointer<QWidget> guarded = widget;
    return {[guarded] { return answers(guarded, "isUndoAvailable"); },
            [guarded] { return answers(guarded, "isRedoAvailable"); },
            [guarded] { QMetaObject::invokeMethod(guarded, "undo", Qt::DirectConnection); },
            [guarded] {
                QMetaObject::invokeMethod(guarded, "redo", Qt::DirectConnection);
            }};
}

} // namespace

std::optional<UndoTarget> undoTargetOf(QWidget* widget)
{
    if (!widget)
        return std::nullopt;
    if (auto* field = qobject_cast<QLineEdit*>(widget))
        return targetOfField(field);
    if (auto* view = qobject_cast<QTextEdit*>(widget))
        return targetWithDocument(view);
    if (auto* view = qobject_cast<QPlainTextEdit*>(widget))
        return targetWithDocument(view);
    if (hasMethods(widget))
        return targetByName(widget);
    return std::nullopt;
}

AppUndoRedoRouter::AppUndoRedoRouter(std::vector<Source> sources)
    : m_sources(std::move(sources))
{}

std::optional<UndoTarget> AppUndoRedoRouter::find(Direction direction) const
{
    for (const Source& source : m_sources) {
        auto target = source();
        if (target && (direction == Direction::Undo ? target->canUndo() : target->canRedo()))
            return target;
    }
    return std::nullopt;
}

bool AppUndoRedoRouter::canPerform(Direction direction) const
{
    return find(direction).has_value();
}

bool AppUndoRedoRouter::perform(Direction direction) const
{
    const auto target = find(direction);
    if (!target)
        return false;
    if (direction == Direction::Undo)
        target->undo();
    else
        target->redo();
    return true;
}

} // namespace orvane
