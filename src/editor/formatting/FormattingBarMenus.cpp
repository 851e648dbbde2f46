// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What the controls of the formatting bar open.
#include "appearance/FontFamilies.h"
#include "appearance/studio/ColorEditor.h"
#include "commands/TableCommands.h"
#include "editor/formatting/ChoicePopup.h"
#include "editor/formatting/ColorPopup.h"
#include "editor/formatting/FormattingBar.h"
#include "editor/formatting/ListStyleNames.h"
#include "editor/formatting/SpacingPopup.h"
#include "editor/formatting/TranslucentPalette.h"
#include "editor/lists/CustomBulletLibrary.h"
#include "editor/tables/TableGridPopup.h"
#include "platform/Services.h"

#include <QAction>
#include <QLocale>
#include <QMenu>

namespace orvane {

using namespace Qt::StringLiterals;
namespace Format = EditorFormatNotifications;

namespace {

constexpr double sizes[] = {9,  10, 11, 12, 13, 14, 15, 16, 18, 20,
                            22, 24, 28, 32, 36, 42, 48, 56, 64, 72};

QAction* addChoice(QMenu& menu, const QString& text, bool isChosen)
{
    QAction* action = menu.addAction(text);
    action->setCheckable(true);
    action->setChecked(isChosen);
    return action;
}

bool looksLike(const RgbaColor& one, const RgbaColor& other)
{
    return one.toQColor().rgba() == other.toQColor().rgba();
}

} // namespace

void FormattingBar::openMenu(QWidget& anchor, const std::function<void(QMenu&)>& fill)
{
    auto* menu = new QMenu(this);
    fill(*menu);
    auto* button = qobject_cast<QToolButton*>(&anchor);
    connect(menu, &QMenu::aboutToHide, this, [menu, button] {
        button->setDown(false);
        menu->deleteLater();
    });
    button->setDown(true);
    menu->popup(anchor.mapToGlobal(QPoint(0, anchor.height() + 6)));
    if (anchor.hasFocus())
        menu->setActiveAction(menu->actions().value(0));
}

void FormattingBar::openRoles(QWidget& anchor)
{
    openMenu(anchor, [this](QMenu& menu) {
        const auto add = [&](EditorParagraphStyleRole role, const char* commandName) {
            const QString keys = m_keyTextOf ? m_keyTextOf(commandName) : QString();
            const QString name = rawValue(role);
            QAction* action = addChoice(menu, keys.isEmpty() ? name : name + u'\t' + keys,
                                        role == m_snapshot.paragraphRole);
            connect(action, &QAction::triggered, this, [this, name] {
                m_services.notifications.post(Format::setParagraphRole,
                                              ParagraphRoleChoice{name, m_note});
            });
        };
        namespace App = AppCommandEvents;
        add(EditorParagraphStyleRole::body, Format::paragraphBody.name);
        const char* const headings[] = {App::applyHeading1.name, App::applyHeading2.name,
                                        App::applyHeading3.name, App::applyHeading4.name,
                                        App::applyHeading5.name, App::applyHeading6.name};
        for (std::size_t i = 0; i < headingCases.size(); ++i)
            add(headingCases[i], headings[i]);
    });
}

void FormattingBar::openFonts(QWidget& anchor)
{
    QStringList families = writingFontFamilies();
    if (!families.contains(m_snapshot.fontName))
        families.prepend(m_snapshot.fontName);
    auto* popup = new ChoicePopup(
        {tr("Fonts"), tr("Find a font"), families, m_snapshot.fontName, ChoicePopup::Kind::fonts},
        look(), this);
    connect(popup, &ChoicePopup::chosen, this, [this](const QString& family) {
        m_services.notifications.post(Format::setFont, FontChoice{family, {}, m_note});
    });
    popup->popUpBelow(anchor);
}

void FormattingBar::openSizes(QWidget& anchor)
{
    const QLocale locale;
    const auto text = [&locale](double size) {
        return locale.toString(size, 'g', 4);
    };
    QStringList entries;
    for (const double size : sizes)
        entries.append(text(size));
    auto* popup = new ChoicePopup({tr("Font sizes"), tr("Size in points"), entries,
                                   text(m_snapshot.fontSize), ChoicePopup::Kind::numbers},
                                  look(), this);
    connect(popup, &ChoicePopup::chosen, this, [this](const QString& chosen) {
        bool isNumber = false;
        const double size = QLocale().toDouble(chosen, &isNumber);
        if (isNumber)
            m_services.notifications.post(Format::setFont, FontChoice{{}, size, m_note});
    });
    popup->popUpBelow(anchor);
}

void FormattingBar::openAlignments(QWidget& anchor)
{
    struct Row {
        QString name;
        Symbol symbol;
        TextAlignment alignment;
        const Notification<CommandTarget>& command;
    };
    const Row rows[] = {
        {tr("Align Left"), Symbol::AlignLeft, TextAlignment::left, Format::alignLeft},
        {tr("Align Center"), Symbol::AlignCenter, TextAlignment::center, Format::alignCenter},
        {tr("Align Right"), Symbol::AlignRight, TextAlignment::right, Format::alignRight},
        {tr("Justify"), Symbol::AlignJustified, TextAlignment::justified, Format::alignJustified},
    };
    const TextAlignment current =
        m_snapshot.alignment == TextAlignment::natural ? TextAlignment::left : m_snapshot.alignment;
    openMenu(anchor, [&](QMenu& menu) {
        for (const Row& row : rows) {
            QAction* action = addChoice(menu, row.name, row.alignment == current);
            action->setIcon(look().icon(row.symbol, Surface::Card));
            connect(action, &QAction::triggered, this, [this, &command = row.command] {
                m_services.notifications.post(command, CommandTarget{m_note});
            });
        }
    });
}

void FormattingBar::openListStyles(QWidget& anchor, bool numbered)
{
    openMenu(anchor, [&](QMenu& menu) {
        for (int i = 0; i < editorListStyleCount; ++i) {
            const auto style = EditorListStyle(i);
            if (isNumbered(style) != numbered)
                continue;
            QAction* action = addChoice(menu, displayName(style) + u'\t' + markerSample(style),
                                        m_snapshot.listStyle == style);
            connect(action, &QAction::triggered, this, [this, style] {
                m_services.notifications.post(Format::setListStyle,
                                              ListStyleChoice{rawValue(style), m_note});
            });
        }
        if (!numbered)
            addBulletsOfOnesOwn(menu);
    });
}

void FormattingBar::addBulletsOfOnesOwn(QMenu& menu)
{
    NotificationCenter& notifications = m_services.notifications;
    menu.addSeparator();
    for (const CustomBullet& bullet : m_bullets.bullets()) {
        QString name = bullet.name.isEmpty() ? tr("Own Bullet") : bullet.name;
        QAction* action = menu.addAction(name.replace(u'&', u"&&"_s) + u'\t' + bullet.character);
        connect(action, &QAction::triggered, this, [this, bullet] {
            m_services.notifications.post(
                Format::setCustomBullet,
                CustomBulletChoice{bullet.character, bullet.color(), m_note});
        });
    }
    if (!m_bullets.bullets().isEmpty()) {
        connect(menu.addAction(tr("Remove Custom Bullet")), &QAction::triggered, this, [this] {
            m_services.notifications.post(Format::removeCustomBullet, CommandTarget{m_note});
        });
    }
    if (notifications.isObserved(AppCommandEvents::openBulletLibrarySettings)) {
        connect(menu.addAction(tr("Bullet Library…")), &QAction::triggered, this, [this] {
            m_services.notifications.post(AppCommandEvents::openBulletLibrarySettings);
        });
    }
}

void FormattingBar::openSpacing(QWidget& anchor)
{
    auto* popup = new SpacingPopup(m_snapshot, look(), this);
    connect(popup, &SpacingPopup::changed, this, [this](ParagraphMetrics metrics) {
        metrics.noteID = m_note;
        m_services.notifications.post(Format::setParagraphMetrics, metrics);
    });
    connect(popup, &SpacingPopup::backgroundRequested, this,
            [this, &anchor] { openParagraphBackgrounds(anchor); });
    popup->popUpBelow(anchor);
}

void FormattingBar::openTableSizes(QWidget& anchor)
{
    m_table->setChecked(m_snapshot.table.has_value());
    // Where there can be no other table, the text says so.
    if (m_snapshot.table)
        return m_services.notifications.post(AppCommandEvents::insertTable, CommandTarget{m_note});
    auto* popup = new TableGridPopup(look(), this);
    connect(popup, &TableGridPopup::chosen, this, [this](int rows, int columns) {
        m_services.notifications.post(TableCommands::insertOfSize,
                                      TableSize{rows, columns, m_note});
        emit left();
    });
    popup->popUpBelow(anchor);
}

void FormattingBar::openTextColors(QWidget& anchor)
{
    ColorPopup::Palette palette{tr("Text Color"), tr("Automatic"), textPalette(), {}};
    for (const WritingColor& each : palette.colors) {
        if (looksLike(RgbaColor::fromQColor(each.color), m_snapshot.foregroundColor))
            palette.current = int(palette.shown.size());
        palette.shown.append(each.color);
    }
    openPalette(anchor, palette, m_snapshot.foregroundColor, Format::foregroundNSColor);
}

void FormattingBar::openHighlights(QWidget& anchor)
{
    openPalette(
        anchor,
        translucentPalette(tr("Highlight"), m_snapshot.highlightColor, look(), m_services.defaults),
        m_snapshot.highlightColor, Format::highlightNSColor);
}

void FormattingBar::openParagraphBackgrounds(QWidget& anchor)
{
    const auto& current = m_snapshot.paragraphBackgroundColor;
    openPalette(
        anchor,
        translucentPalette(tr("Paragraph Background"), current, look(), m_services.defaults),
        current, Format::setParagraphBackgroundColor);
}

void FormattingBar::openPalette(QWidget& anchor, const ColorPopup::Palette& palette,
                                const std::optional<RgbaColor>& current,
                                const Notification<ColorChoice>& command)
{
    const QColor start((current ? current->toQColor() : palette.colors.first().color).rgb());
    auto* popup = new ColorPopup(palette, look(), this);
    connect(popup, &ColorPopup::chosen, this,
            [this, &command](const QColor& color) { postColor(command, color); });
    connect(popup, &ColorPopup::customRequested, this,
            [this, &anchor, name = palette.name, start, &command] {
                openCustomColor(anchor, name, start, command);
            });
    popup->popUpBelow(anchor);
}

void FormattingBar::openCustomColor(QWidget& anchor, const QString& name, const QColor& start,
                                    const Notification<ColorChoice>& command)
{
    const AppearanceColor first{true, start.redF(), start.greenF(), start.blueF(), 1};
    auto* editor = new ColorEditor({name, first, {}, false}, look(), this);
    const auto chosen = std::make_shared<AppearanceColor>(first);
    connect(editor, &ColorEditor::edited, this, [editor, chosen] { *chosen = editor->color(); });
    // One step to undo, whatever was tried on the way.
    connect(editor, &QObject::destroyed, this, [this, first, chosen, &command] {
        if (!(*chosen == first))
            postColor(command, QColor::fromRgbF(float(chosen->red), float(chosen->green),
                                                float(chosen->blue)));
    });
    editor->popUpAt(QRect(anchor.mapToGlobal(QPoint()), anchor.size()));
}

void FormattingBar::postColor(const Notification<ColorChoice>& command, const QColor& color)
{
    ColorChoice choice{std::nullopt, m_note};
    if (color.isValid())
        choice.color = RgbaColor::fromQColor(color);
    // Highlights are made fit by who applies them; a paragraph's ground is taken as it is.
    if (choice.color && &command == &Format::setParagraphBackgroundColor)
        choice.color = fitBehindText(*choice.color, m_services.defaults);
    m_services.notifications.post(command, choice);
}

} // namespace orvane
