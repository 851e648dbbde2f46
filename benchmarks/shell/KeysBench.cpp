// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellBench.h"
#include "shell/shortcuts/ShortcutCenter.h"
#include "support/Bench.h"
#include "support/TestServices.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace orvane::bench {

namespace {

constexpr int presses = 20'000;
constexpr int rounds = 25;

/// Takes keys as a text field does, without doing anything with them.
class IdleField final : public QLineEdit {
protected:
    void keyPressEvent(QKeyEvent* event) override { event->accept(); }
};

class EmptyFilter final : public QObject {
public:
    bool eventFilter(QObject*, QEvent*) override { return false; }
};

double microsecondsPerLetter(QWidget& field)
{
    const double total = seconds([&] {
        for (int i = 0; i < presses; ++i) {
            QKeyEvent event(QEvent::KeyPress, Qt::Key_A + i % 26, Qt::NoModifier,
                            QString(QChar(u'a' + i % 26)));
            event.setTimestamp(quint64(i));
            QCoreApplication::sendEvent(&field, &event);
        }
    });
    return total / presses * 1e6;
}

/// Time that the monitor adds to one letter typed into a field that stands six widgets deep, over
/// what an application event filter that does nothing adds; both without the delivery itself.
Measurement monitorTime()
{
    TestServices services;
    ShortcutOverrides overrides;
    for (int i = 0; i < 10; ++i) {
        const ShortcutAction action = allShortcutActions()[size_t(i * 4)];
        overrides[action] = {quint16(96 + i), KeyModifier::command | KeyModifier::shift};
    }
    ShortcutStorage::saveOverrides(services.defaults, overrides);

    QWidget window;
    QWidget* place = &window;
    for (int depth = 0; depth < 5; ++depth)
        place = new QWidget(place);
    auto* field = new IdleField;
    field->setParent(place);
    window.show();
    window.activateWindow();
    QCoreApplication::processEvents();
    field->setFocus();

    EmptyFilter empty;
    ShortcutCenter center(services.services(), AppUndoRedoRouter());
    std::vector<double> bare;
    std::vector<double> withEmpty;
    std::vector<double> withCenter;
    for (int i = 0; i < rounds; ++i) {
        bare.push_back(microsecondsPerLetter(*field));
        qApp->installEventFilter(&empty);
        withEmpty.push_back(microsecondsPerLetter(*field));
        qApp->removeEventFilter(&empty);
        center.start();
        withCenter.push_back(microsecondsPerLetter(*field));
        center.stop();
    }
    const double ground = median(bare);
    return {median(withCenter) - ground, std::max(median(withEmpty) - ground, 0.0)};
}

} // namespace

void addKeysRows()
{
    add({"keys/monitor", "us", 1.0, monitorTime, TargetOf::Figure});
}

} // namespace orvane::bench
