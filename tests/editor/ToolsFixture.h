// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/AppearanceTokens.h"
#include "editor/pane/WritingTools.h"
#include "editor/view/EditorView.h"
#include "support/TestServices.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace orvane {

/// A pane with a text and its tools, worked by keys.
class ToolsTest : public ::testing::Test {
protected:
    ToolsTest()
    {
        auto* layout = new QVBoxLayout(&pane);
        layout->addWidget(view);
        layout->addWidget(&tools->findStrip());
        pane.resize(900, 500);
    }

    /// Shows the view's text as that of `shown`, in a window that has the keyboard.
    void show(const std::optional<QUuid>& shown, EditorMode mode)
    {
        tools->prepareText(view->gateway(), mode);
        tools->showText(shown);
        if (pane.isVisible())
            return;
        pane.show();
        QApplication::setActiveWindow(&pane);
        view->setFocus();
        QApplication::processEvents();
    }
    [[nodiscard]] QString selected() const { return view->store().text(view->selection().range()); }
    template <typename T>
    T* named(const QString& name)
    {
        for (T* each : pane.findChildren<T*>()) {
            if (each->accessibleName() == name || each->property("text").toString() == name)
                return each;
        }
        return nullptr;
    }
    static void type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }

    TestServices services;
    const QUuid note = QUuid::createUuid();
    Look look{signatureDarkTokens()};
    WritingLibrary library{services.services(), {}, QStringLiteral("en_US")};
    QWidget pane;
    EditorView* view = new EditorView(&pane);
    std::unique_ptr<WritingTools> tools =
        std::make_unique<WritingTools>(*view, library, services.services(), look, pane);
};

} // namespace orvane
