// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/EditorExtension.h"

#include "ViewFixture.h"

#include <QClipboard>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

const QString thingType = u"application/x-thing"_s;

std::unique_ptr<QMimeData> thing()
{
    auto data = std::make_unique<QMimeData>();
    data->setData(thingType, "a thing");
    return data;
}

/// Writes down what it is asked, and answers as it is told.
class Scripted : public EditorExtension {
public:
    Scripted(EditorView& view, QString name, ExtensionPriority priority, QStringList& log)
        : m_view(view)
        , m_name(std::move(name))
        , m_log(log)
    {
        m_view.addExtension(this, priority);
    }
    ~Scripted() override { m_view.removeExtension(this); }
    Q_DISABLE_COPY_MOVE(Scripted)

    bool answers = false;
    bool isSelected = false;
    bool canCopy = true;
    std::optional<DropFeedback> feedback;
    QRectF place; ///< where it has something under the pointer

    void paintBehindText(QPainter& /*painter*/, const EditorPaint& /*paint*/) override
    {
        note(u"behind"_s);
    }
    void paintOverText(QPainter& /*painter*/, const EditorPaint& /*paint*/) override
    {
        note(u"over"_s);
    }
    bool mousePressed(const EditorMouse& /*mouse*/) override { return asked(u"press"_s); }
    bool hovered(QPointF page) override
    {
        const bool isHere = place.contains(page);
        if (isHere)
            note(u"hover"_s);
        return isHere;
    }
    void hoverEnded() override { note(u"hover ended"_s); }
    bool keyPressed(const QKeyEvent& /*event*/) override { return asked(u"key"_s); }
    bool command(EditAction /*command*/) override { return asked(u"command"_s); }
    bool textTyped(const QString& /*text*/) override { return asked(u"text"_s); }
    [[nodiscard]] bool hasSelection() const override { return isSelected; }
    [[nodiscard]] std::unique_ptr<QMimeData> copySelection() const override
    {
        return canCopy ? thing() : nullptr;
    }
    void removeSelection(const QString& actionName) override { note(u"remove by "_s + actionName); }
    [[nodiscard]] bool canTake(const QMimeData& data) const override
    {
        return data.hasFormat(thingType);
    }
    bool paste(const QMimeData& /*data*/) override { return asked(u"paste"_s); }
    std::optional<DropFeedback> dragMoved(const EditorDrag& drag) override
    {
        if (!drag.data.hasFormat(thingType))
            return std::nullopt;
        note(u"drag over %1"_s.arg(drag.position));
        return feedback;
    }
    void dragEnded() override { note(u"drag ended"_s); }
    bool drop(const EditorDrag& drag) override { return asked(u"drop at %1"_s.arg(drag.position)); }
    void addToContextMenu(QMenu& menu, QPointF /*page*/, qsizetype /*position*/) override
    {
        menu.addAction(m_name);
    }

private:
    void note(const QString& what) const { m_log += m_name + u": "_s + what; }
    bool asked(const QString& what)
    {
        note(what);
        return answers;
    }

    EditorView& m_view;
    QString m_name;
    QStringList& m_log;
};

class EditorExtensionTest : public ViewFixture {
protected:
    QStringList log;

    QStringList taken() { return std::exchange(log, {}); }
    void moveTo(QPoint point)
    {
        QMouseEvent event(QEvent::MouseMove, point, view.viewport()->mapToGlobal(point),
                          Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(view.viewport(), &event);
    }
    QRectF placeOf(qsizetype from, qsizetype to)
    {
        return view.layout().rectsOf(TextRange::between(from, to)).constFirst();
    }
    template <typename Event>
    bool accepts(const QMimeData& data, QPoint point)
    {
        Event event(point, Qt::CopyAction, &data, Qt::LeftButton, {});
        event.setAccepted(false);
        QApplication::sendEvent(view.viewport(), &event);
        return event.isAccepted();
    }
};

TEST_F(EditorExtensionTest, PriorityDecidesWhateverCameFirst)
{
    set(u"one|"_s);
    Scripted lists(view, u"lists"_s, ExtensionPriority::lists, log);
    auto page = std::make_unique<Scripted>(view, u"page"_s, ExtensionPriority::page, log);
    Scripted objects(view, u"objects"_s, ExtensionPriority::objects, log);
    view.viewport()->repaint();
    EXPECT_EQ(taken(), (QStringList{u"page: behind"_s, u"lists: behind"_s, u"objects: behind"_s,
                                    u"page: over"_s, u"lists: over"_s, u"objects: over"_s}));
    lists.answers = true;
    press(u"Return"_s);
    EXPECT_EQ(taken(), (QStringList{u"objects: key"_s, u"lists: key"_s}));
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, pointOf(1));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, pointOf(1));
    EXPECT_EQ(taken(), (QStringList{u"objects: press"_s, u"lists: press"_s}));
    EXPECT_EQ(marked(), u"one|"_s) << "whoever takes an event keeps it from the text";
    QMenu menu;
    view.fillContextMenu(menu, pointOf(1));
    EXPECT_EQ(menu.actions().value(0)->text(), u"objects"_s);
    EXPECT_EQ(menu.actions().value(2)->text(), u"page"_s);
    lists.answers = false;
    page.reset();
    type(u"x"_s);
    EXPECT_EQ(taken(), (QStringList{u"objects: key"_s, u"lists: key"_s, u"objects: text"_s,
                                    u"lists: text"_s}));
    EXPECT_EQ(marked(), u"onex|"_s);
}

TEST_F(EditorExtensionTest, WhatIsSelectedOnTopIsCopiedCutAndDeleted)
{
    Scripted objects(view, u"objects"_s, ExtensionPriority::objects, log);
    struct Row {
        const char* name;
        QString keys;
        bool isSelected;
        bool canCopy;
        bool isEditable;
        QStringList asked;
        QString text;
        bool copiesThing;
        bool copiesText;
    };
    const Row rows[] = {
        {"copied", u"Ctrl+C"_s, true, true, true, {}, u"a[bc]d"_s, true, false},
        {"cut",
         u"Ctrl+X"_s,
         true,
         true,
         true,
         {u"objects: remove by Cut"_s},
         u"a[bc]d"_s,
         true,
         false},
        {"cut from what may only be read",
         u"Ctrl+X"_s,
         true,
         true,
         false,
         {},
         u"a[bc]d"_s,
         false,
         false},
        {"what can't be copied isn't cut",
         u"Ctrl+X"_s,
         true,
         false,
         true,
         {},
         u"a[bc]d"_s,
         false,
         false},
        {"deleted",
         u"Del"_s,
         true,
         true,
         true,
         {u"objects: remove by Delete"_s},
         u"a[bc]d"_s,
         false,
         false},
        {"deleted backwards",
         u"Backspace"_s,
         true,
         true,
         true,
         {u"objects: remove by Delete"_s},
         u"a[bc]d"_s,
         false,
         false},
        {"nothing selected on top", u"Ctrl+X"_s, false, true, true, {}, u"a|d"_s, false, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        set(u"a[bc]d"_s);
        QGuiApplication::clipboard()->setText(u"before"_s);
        objects.isSelected = row.isSelected;
        view.setEditable(row.isEditable);
        objects.canCopy = row.canCopy;
        press(row.keys);
        log.removeIf([](const QString& line) { return !line.contains(u"remove"_s); });
        EXPECT_EQ(taken(), row.asked);
        EXPECT_EQ(marked(), row.text);
        const QMimeData* clipboard = QGuiApplication::clipboard()->mimeData();
        EXPECT_EQ(clipboard->hasFormat(thingType), row.copiesThing);
        EXPECT_EQ(clipboard->text() == u"bc"_s, row.copiesText);
        view.setEditable(true);
    }
}

TEST_F(EditorExtensionTest, TheMenuKnowsWhatIsSelectedAndWhatCanBePasted)
{
    Scripted objects(view, u"objects"_s, ExtensionPriority::objects, log);
    set(u"abc|"_s);
    const auto isEnabled = [&](const QString& name) {
        QMenu menu;
        view.fillContextMenu(menu, pointOf(1));
        const auto actions = menu.actions();
        const auto found = std::find_if(actions.begin(), actions.end(), [&](const QAction* action) {
            return action->text() == name;
        });
        return found != actions.end() && (*found)->isEnabled();
    };
    QGuiApplication::clipboard()->setMimeData(thing().release());
    EXPECT_TRUE(isEnabled(u"Paste"_s));
    EXPECT_FALSE(isEnabled(u"Cut"_s));
    objects.isSelected = true;
    EXPECT_TRUE(isEnabled(u"Cut"_s));
    EXPECT_TRUE(isEnabled(u"Copy"_s));
    EXPECT_TRUE(isEnabled(u"Delete"_s));
    objects.answers = true;
    view.paste();
    EXPECT_TRUE(log.contains(u"objects: paste"_s));
    EXPECT_EQ(marked(), u"abc|"_s);
}

TEST_F(EditorExtensionTest, ThePointerIsOverOneAtATime)
{
    set(u"one two three|\n"_s + u"line\n"_s.repeated(100));
    auto objects = std::make_unique<Scripted>(view, u"objects"_s, ExtensionPriority::objects, log);
    Scripted spelling(view, u"spelling"_s, ExtensionPriority::spelling, log);
    objects->place = placeOf(0, 7);
    spelling.place = placeOf(4, 13);
    (void)picture();
    log.clear();
    const auto told = [&] {
        log.removeIf([](const QString& line) { return !line.contains(u"hover"_s); });
        return taken();
    };
    struct Row {
        const char* name;
        qsizetype position;
        QStringList told;
    };
    const Row rows[] = {
        {"onto the upper", 1, {u"objects: hover"_s}},
        {"along it, over the lower", 5, {u"objects: hover"_s}},
        {"to the lower alone", 10, {u"spelling: hover"_s, u"objects: hover ended"_s}},
        {"away from both", 30, {u"spelling: hover ended"_s}},
    };
    for (const Row& row : rows) {
        moveTo(pointOf(row.position));
        EXPECT_EQ(told(), row.told) << row.name;
    }

    moveTo(pointOf(1));
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, pointOf(10));
    EXPECT_EQ(told(), (QStringList{u"objects: hover"_s, u"objects: hover ended"_s})) << "pressed";
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, pointOf(10));
    moveTo(pointOf(10));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(view.viewport(), &leave);
    EXPECT_EQ(told(), (QStringList{u"spelling: hover"_s, u"spelling: hover ended"_s})) << "left";

    moveTo(pointOf(1));
    view.verticalScrollBar()->setValue(200);
    EXPECT_EQ(told(), (QStringList{u"objects: hover"_s, u"objects: hover ended"_s})) << "scrolled";
    view.verticalScrollBar()->setValue(0);
    EXPECT_EQ(told(), (QStringList{u"objects: hover"_s})) << "and back";
    objects.reset();
    moveTo(pointOf(30));
    EXPECT_EQ(told(), QStringList()) << "nobody asks one that has gone";
}

TEST_F(EditorExtensionTest, WhatCanBeDroppedIsShownAndTakenByOneOfThem)
{
    set(u"one two three|"_s);
    auto objects = std::make_unique<Scripted>(view, u"objects"_s, ExtensionPriority::objects, log);
    Scripted tables(view, u"tables"_s, ExtensionPriority::tables, log);
    const auto data = thing();
    QMimeData text;
    text.setText(u"words"_s);
    const QImage still = picture();
    const auto told = [&] {
        log.removeIf([](const QString& line) { return !line.contains(u"dr"_s); });
        return taken();
    };
    const auto over = [](const QString& name, int position) {
        return name + u": drag over %1"_s.arg(position);
    };
    taken();
    EXPECT_TRUE(accepts<QDragEnterEvent>(*data, pointOf(2))) << "there may be a place for it";
    EXPECT_EQ(told(), (QStringList{over(u"objects"_s, 2), over(u"tables"_s, 2)}));
    EXPECT_FALSE(accepts<QDragMoveEvent>(*data, pointOf(3))) << "but not here";
    told();

    tables.feedback = DropFeedback::caret;
    EXPECT_TRUE(accepts<QDragMoveEvent>(*data, pointOf(2)));
    EXPECT_NE(picture(), still) << "a caret shows where";
    told();
    objects->feedback = DropFeedback::none;
    EXPECT_TRUE(accepts<QDragMoveEvent>(*data, pointOf(5)));
    EXPECT_EQ(picture(), still) << "it shows that itself";
    EXPECT_EQ(told(), (QStringList{over(u"objects"_s, 5), u"tables: drag ended"_s}));
    QDragLeaveEvent leave;
    QApplication::sendEvent(view.viewport(), &leave);
    EXPECT_EQ(told(), (QStringList{u"objects: drag ended"_s}));

    EXPECT_TRUE(accepts<QDragEnterEvent>(*data, pointOf(2)));
    told();
    objects->answers = true;
    EXPECT_TRUE(accepts<QDropEvent>(*data, pointOf(4)));
    EXPECT_EQ(told(), (QStringList{over(u"objects"_s, 4), u"objects: drag ended"_s,
                                   u"objects: drop at 4"_s}));
    objects->answers = false;
    EXPECT_TRUE(accepts<QDragEnterEvent>(*data, pointOf(2)));
    EXPECT_FALSE(accepts<QDropEvent>(*data, pointOf(4))) << "nothing came of it";
    told();

    view.setEditable(false);
    EXPECT_FALSE(accepts<QDragEnterEvent>(*data, pointOf(2)));
    EXPECT_EQ(told(), QStringList()) << "nobody is asked where nothing may change";
    view.setEditable(true);
    EXPECT_TRUE(accepts<QDragEnterEvent>(*data, pointOf(2)));
    objects.reset();
    told();
    EXPECT_TRUE(accepts<QDropEvent>(text, pointOf(13))) << "text is the text's";
    EXPECT_EQ(view.plainText(), u"one two threewords"_s);
}

} // namespace
} // namespace orvane
