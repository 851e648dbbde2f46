// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/SpellingMenu.h"

#include "editor/spelling/Spelling.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QLocale>
#include <QMenu>

namespace orvane {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(SpellingMenu)
};

} // namespace

void fillSpellingMenu(QMenu& menu, Spelling& spelling, const QUuid& note)
{
    QAction* enabled = menu.addAction(Words::tr("Check Spelling"));
    enabled->setCheckable(true);
    enabled->setChecked(spelling.isEnabled());
    QObject::connect(enabled, &QAction::triggered, &spelling, &Spelling::setEnabled);
    menu.addSeparator();
    auto* group = new QActionGroup(enabled); // goes when the menu is cleared
    const QString current = spelling.languageOf(note);
    const auto add = [&](const QString& name, const QString& language) {
        QAction* action = menu.addAction(name);
        action->setCheckable(true);
        action->setChecked(language == current);
        action->setEnabled(spelling.isEnabled());
        group->addAction(action);
        QObject::connect(action, &QAction::triggered, &spelling,
                         [&spelling, note, language] { spelling.setLanguage(note, language); });
    };
    for (const DictionaryFiles& files : spelling.dictionaries())
        add(Spelling::displayName(files.language), files.language);
    add(Words::tr("None"), {});
}

QString spellingSummary(const Spelling& spelling, const QUuid& note)
{
    const QString language = spelling.languageOf(note);
    if (language.isEmpty() || !spelling.isEnabled())
        return Words::tr("No Spelling");
    const QLocale locale(language);
    return locale.language() == QLocale::C ? language
                                           : QLocale::languageToString(locale.language());
}

} // namespace orvane
