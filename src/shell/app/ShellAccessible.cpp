// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/app/ShellAccessible.h"

#include "shell/sheets/SheetHost.h"

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
    {"orvane::SettingsWindow"_L1, QAccessible::Window},
    {"orvane::IconsAndTitlesWindow"_L1, QAccessible::Window},
    {"orvane::SheetHost"_L1, QAccessible::LayeredPane},
    {"orvane::Sheet"_L1, QAccessible::Dialog},
    {"orvane::BarPopup"_L1, QAccessible::Dialog},
    {"orvane::ColorEditor"_L1, QAccessible::Dialog},
    {"orvane::SplitDivider"_L1, QAccessible::Splitter},
    {"QLineEditIconButton"_L1, QAccessible::Graphic}, // the magnifier of a field to search in
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

/// The main window. While a sheet asks something, what lies behind it is not there to go to.
class AccessibleMainWindow final : public QAccessibleWidget {
public:
    explicit AccessibleMainWindow(QWidget* window)
        : QAccessibleWidget(window, QAccessible::Window)
    {}

    [[nodiscard]] int childCount() const override
    {
        return host() ? 1 : QAccessibleWidget::childCount();
    }
    [[nodiscard]] QAccessibleInterface* child(int index) const override
    {
        if (QWidget* sheets = host())
            return index == 0 ? QAccessible::queryAccessibleInterface(sheets) : nullptr;
        return QAccessibleWidget::child(index);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override
    {
        if (QWidget* sheets = host())
            return child && child->object() == sheets ? 0 : -1;
        return QAccessibleWidget::indexOfChild(child);
    }

private:
    [[nodiscard]] QWidget* host() const
    {
        auto* sheets = widget()->findChild<SheetHost*>(QString(), Qt::FindDirectChildrenOnly);
        return sheets && sheets->topSheet() ? sheets : nullptr;
    }
};

// Asked for each class of an object, its own first, then those that it is made from.
QAccessibleInterface* makePart(const QString& className, QObject* object)
{
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget && className == "orvane::MainWindow"_L1)
        return new AccessibleMainWindow(widget);
    const auto* part = std::ranges::find(parts, className, &PartRole::className);
    return widget && part != std::end(parts) ? new AccessiblePart(widget, part->role) : nullptr;
}

} // namespace

void installShellAccessibility()
{
    QAccessible::installFactory(makePart); // a second time changes nothing
}

} // namespace orvane
