// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/commands/AppMenus.h"

#include <QMenu>

#include <algorithm>

namespace orvane {

QString menuText(QString plain)
{
    return plain.replace(u'&', QStringLiteral("&&"));
}

namespace {

QString textWithKey(const CommandCenter& commands, const Command& command)
{
    const QString title = menuText(commandTitle(command));
    const QString key = commands.keyText(command);
    return key.isEmpty() ? title : title + u'\t' + key;
}

void addCommand(QMenu& menu, CommandCenter& commands, const Command& command)
{
    QAction* action = menu.addAction(textWithKey(commands, command));
    action->setObjectName(command.id);
    action->setEnabled(commands.wouldAct(command));
    if (const auto isOn = commands.isOn(command)) {
        action->setCheckable(true);
        action->setChecked(*isOn);
    }
    // Only after the menu has gone: what runs may open a menu or a sheet of its own.
    QObject::connect(
        action, &QAction::triggered, &menu, [&commands, &command] { commands.run(command); },
        Qt::QueuedConnection);
}

bool isPresent(const CommandCenter& commands, const CommandSection& section)
{
    return std::ranges::any_of(section.commands,
                               [&](const Command& command) { return commands.isPresent(command); });
}

void addSection(QMenu& menu, CommandCenter& commands, const CommandSection& section)
{
    QMenu* target = section.submenu ? menu.addMenu(submenuTitle(section)) : &menu;
    for (const Command& command : section.commands) {
        if (commands.isPresent(command))
            addCommand(*target, commands, command);
    }
}

void fill(QMenu& menu, CommandMenu which, CommandCenter& commands)
{
    menu.clear();
    qDeleteAll(menu.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
    const CommandSection* last = nullptr;
    for (const CommandSection& section : commandSections()) {
        if (section.menu != which || !isPresent(commands, section))
            continue;
        if (last && !(last->submenu && section.submenu))
            menu.addSeparator();
        addSection(menu, commands, section);
        last = &section;
    }
}

/// Filled only when it is about to be shown, so that a start costs no menus.
QMenu* makeEmptyMenu(CommandMenu which, CommandCenter& commands, QWidget* parent)
{
    auto* menu = new QMenu(menuTitle(which), parent);
    QObject::connect(menu, &QMenu::aboutToShow, menu,
                     [menu, which, &commands] { fill(*menu, which, commands); });
    return menu;
}

} // namespace

bool hasCommands(CommandMenu which, const CommandCenter& commands)
{
    return std::ranges::any_of(commandSections(), [&](const CommandSection& section) {
        return section.menu == which && isPresent(commands, section);
    });
}

QMenu* makeCommandMenu(CommandMenu which, CommandCenter& commands, QWidget* parent)
{
    QMenu* menu = makeEmptyMenu(which, commands, parent);
    fill(*menu, which, commands);
    return menu;
}

QMenu* makeApplicationMenu(CommandCenter& commands, QWidget* parent)
{
    auto* menu = new QMenu(parent);
    for (int i = 0; i < commandMenuCount; ++i)
        menu->addMenu(makeEmptyMenu(CommandMenu(i), commands, menu));
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, &commands] {
        const auto actions = menu->actions();
        for (int i = 0; i < commandMenuCount; ++i) {
            actions[i]->setVisible(hasCommands(CommandMenu(i), commands));
        }
    });
    return menu;
}

} // namespace orvane
