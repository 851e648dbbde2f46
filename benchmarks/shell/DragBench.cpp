// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellBench.h"
#include "core/state/SessionKeys.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/app/OrvaneWorkspaceApp.h"
#include "shell/layout/SplitDivider.h"
#include "shell/layout/ThreePaneSplitView.h"
#include "shell/window/MainWindow.h"
#include "support/Bench.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QTreeWidget>

#include <cstdlib>

namespace orvane::bench {

namespace {

using namespace Qt::StringLiterals;

constexpr int wordCount = 100'000;
/// So narrow that the text is broken anew at each step.
constexpr QSize windowSize(1'240, 900);
constexpr int stepsPerRound = 12;
constexpr int stepPixels = 6;

QString longText()
{
    const QStringList words = u"the ledger had been kept by four hands in sixty years and each "
                              "had pressed harder than the last"_s.split(u' ');
    QString text;
    for (int i = 0; i < wordCount; ++i)
        text += words.at((i * 7 + i / 13) % words.size()) + (i % 90 == 89 ? u'\n' : u' ');
    return text;
}

/// Goes to and fro over 24 pixels.
int offsetOfStep(int step)
{
    const int at = step % 8;
    return stepPixels * (at < 4 ? at : 8 - at);
}

/// Counts what is painted, so that a step without a picture does not pass for a quick one.
class PaintCounter final : public QObject {
public:
    explicit PaintCounter(QWidget* watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        painted += event->type() == QEvent::Paint;
        return false;
    }
    int painted = 0;
};

/// Lets come what follows a round later, so that it does not fall on the other's.
void drain()
{
    QElapsedTimer timer;
    timer.start();
    while (!timer.hasExpired(600))
        QApplication::processEvents(QEventLoop::AllEvents, 50);
}

/// The time of one step in milliseconds, the mean of a round.
template <typename Step>
double round(PaintCounter& counter, Step&& step)
{
    counter.painted = 0;
    const double all = seconds([&] {
        for (int i = 1; i <= stepsPerRound; ++i) {
            step(offsetOfStep(i));
            QApplication::processEvents();
        }
    });
    if (counter.painted < stepsPerRound) {
        std::fputs("layout/drag: a step was not painted\n", stderr);
        std::exit(1);
    }
    return 1e3 * all / stepsPerRound;
}

/// The program with the note open, its Binder's divider held by the mouse.
class OurWindow {
public:
    OurWindow()
    {
        const UserFolders folders = UserFolders::below(m_home.path());
        {
            UserDefaults defaults(folders.configuration + u"/settings.json"_s);
            SessionKeys::welcomeDismissed.write(defaults, true);
        }
        m_app = std::make_unique<OrvaneWorkspaceApp>(folders);
        m_app->start();
        m_app->window().resize(windowSize);
        AppState& state = m_app->appState();
        (void)state.projectSession().createProject(u"Bench"_s, {});
        state.createNote(longText(), {});
        QApplication::processEvents();
        m_divider = m_app->window().findChild<ThreePaneSplitView*>()->divider(SidePane::Binder);
        m_counter =
            std::make_unique<PaintCounter>(m_app->window().editorPane().textView().viewport());
        send(QEvent::MouseButtonPress, 0);
    }
    ~OurWindow() { m_app->finish(); }

    double measure()
    {
        const double step = round(*m_counter, [&](int offset) { send(QEvent::MouseMove, offset); });
        drain();
        return step;
    }

private:
    void send(QEvent::Type type, int offset)
    {
        const QPointF place(1'000 + offset, 400);
        QMouseEvent event(type, {4, 400}, place, Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(m_divider, &event);
    }

    QTemporaryDir m_home;
    std::unique_ptr<OrvaneWorkspaceApp> m_app;
    SplitDivider* m_divider = nullptr;
    std::unique_ptr<PaintCounter> m_counter;
};

class StockWindow {
public:
    StockWindow()
    {
        auto* tree = new QTreeWidget;
        new QTreeWidgetItem(tree, {u"Note"_s});
        m_text = new QTextEdit;
        m_text->setPlainText(longText());
        m_splitter.addWidget(tree);
        m_splitter.addWidget(m_text);
        m_splitter.addWidget(new QWidget);
        m_splitter.resize(windowSize);
        m_splitter.setSizes(sizes(0));
        m_splitter.show();
        m_counter = std::make_unique<PaintCounter>(m_text->viewport());
        QApplication::processEvents();
    }
    double measure()
    {
        const double step =
            round(*m_counter, [&](int offset) { m_splitter.setSizes(sizes(offset)); });
        (void)m_text->document()->size(); // what it would go on to lay out in the background
        drain();
        return step;
    }

private:
    static QList<int> sizes(int offset)
    {
        return {288 + offset, windowSize.width() - 2 * 288 - offset, 288};
    }

    QSplitter m_splitter;
    QTextEdit* m_text = nullptr;
    std::unique_ptr<PaintCounter> m_counter;
};

Measurement dragDivider()
{
    OurWindow ours;
    StockWindow stock;
    return interleave(
        9, [&] { return ours.measure(); }, [&] { return stock.measure(); });
}

} // namespace

void addLayoutRows()
{
    add({"layout/drag", "ms", 0.3, dragDivider});
}

} // namespace orvane::bench
