// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/app/ShellAccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct PartRole {
    QLatin1StringView className;
    QAccessible::Role role;
};
constexpr PartRole parts[] = {
    {"orvane::MainWindow"_L1, QAccessible::Window},
    {"orvane::SettingsWindow"_L1, QAccessible::Window},
    {"orvane::IconsAndTitlesWindow"_L1, QAccessible::Window},
    {"orvane::Sheet"_L1, QAccessible::Dialog},
    {"orvane::MainToolbar"_L1, QAccessible::ToolBar},
    {"orvane::FormattingBar"_L1, QAccessible::ToolBar},
    {"orvane::FindStrip"_L1, QAccessible::ToolBar},
    {"orvane::TrashStrip"_L1, QAccessible::Notification},
    {"orvane::StatusStrip"_L1, QAccessible::StatusBar},
};

class AccessiblePart final : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = role() == QAccessible::Dialog;
        return state;
    }
};

// Asked for each class of an object, its own first, then those that it is made from.
QAccessibleInterface* makePart(const QString& className, QObject* object)
{
    auto* widget = qobject_cast<QWidget*>(object);
    const auto* part = std::ranges::find(parts, className, &PartRole::className);
    return widget && part != std::end(parts) ? new AccessiblePart(widget, part->role) : nullptr;
}

} // namespace

void installShellAccessibility()
{
    QAccessible::installFactory(makePart); // a second time changes nothing
}

} // namespace orvane
