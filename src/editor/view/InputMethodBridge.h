// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QVariant>

class QInputMethodEvent;

namespace orvane {

class EditorView;

/// Lets input methods compose text in a text view: shows what is being composed without making it
/// part of the text, types what is decided, and tells about the text round the caret.
class InputMethodBridge {
public:
    explicit InputMethodBridge(EditorView& view);

    void handle(const QInputMethodEvent& event);
    [[nodiscard]] QVariant answer(Qt::InputMethodQuery query) const;
    /// Drops what is being composed, where the caret leaves it.
    void cancel();

private:
    void commit(const QInputMethodEvent& event);
    void compose(const QInputMethodEvent& event);

    EditorView& m_view;
    bool m_isHandling = false;
};

} // namespace orvane
