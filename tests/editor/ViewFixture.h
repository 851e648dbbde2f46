// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QKeySequence>
#include <QTest>
#include <gtest/gtest.h>

namespace orvane {

/// A view on the screen with the keyboard, 600 pixels wide, whose lines hold some sixty characters.
class ViewFixture : public ::testing::Test {
protected:
    ViewFixture()
    {
        EditorGeometry geometry;
        geometry.leftMargin = geometry.rightMargin = 20;
        geometry.verticalMargin = 10;
        view.setGeometry(geometry);
        view.setBaseFont({QStringLiteral("Inter"), 16});
        view.resize(600, 400);
        view.show();
        QApplication::setActiveWindow(&view);
        view.setFocus();
        QApplication::processEvents();
    }

    /// Sets a text in which "|" stands for the caret and "[" and "]" for anchor and caret.
    void set(QString marked)
    {
        const qsizetype caret = marked.indexOf(u'|');
        const qsizetype anchor = marked.indexOf(u'[');
        marked.remove(u'|');
        marked.remove(u'[');
        const qsizetype position = marked.indexOf(u']');
        marked.remove(u']');
        view.setPlainText(marked);
        view.setSelection(anchor < 0 ? TextSelection::caret(std::max<qsizetype>(caret, 0))
                                     : TextSelection{anchor, position});
    }
    [[nodiscard]] QString marked() const
    {
        QString text = view.plainText();
        const TextSelection selection = view.selection();
        if (selection.isEmpty())
            return text.insert(selection.position, u'|');
        const bool isForward = selection.anchor < selection.position;
        text.insert(selection.range().end(), isForward ? u']' : u'[');
        return text.insert(selection.range().location, isForward ? u'[' : u']');
    }

    /// Presses keys as a person would: "Ctrl+Left", "a", "Shift+Return".
    void press(const QString& keys)
    {
        const QKeyCombination key = QKeySequence(keys)[0];
        if (keys.size() == 1)
            QTest::keyClicks(&view, keys);
        else
            QTest::keyClick(&view, key.key(), key.keyboardModifiers());
    }
    void type(const QString& text) { QTest::keyClicks(&view, text); }

    /// The middle of the character at `position`, in the viewport.
    [[nodiscard]] QPoint pointOf(qsizetype position)
    {
        const QRectF here = view.toViewport(view.layout().caretRect(int(position)));
        QRectF next = here;
        if (position < view.store().length())
            next = view.toViewport(view.layout().caretRect(int(position) + 1));
        const qreal x = next.top() == here.top() ? (here.x() + next.x()) / 2 : here.x() + 2;
        return {int(x), int(here.center().y())};
    }

    [[nodiscard]] QImage picture()
    {
        QApplication::processEvents();
        return view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    EditorView view;
};

} // namespace orvane
