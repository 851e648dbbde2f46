// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/TagActions.h"

#include "core/records/Wording.h"
#include "core/tags/TagColorPalette.h"
#include "shell/inspector/AliasesSheet.h"
#include "shell/inspector/TagChip.h"
#include "shell/sheets/NameSheet.h"

#include <QMenu>
#include <QPainter>

namespace orvane {

namespace {

QIcon dotIcon(const QColor& color, const Look& look, bool isChosen)
{
    constexpr int size = 16;
    constexpr int scale = 3;
    QPixmap pixmap(size * scale, size * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tagDotInk(color, look.ground(Surface::Card)));
    painter.drawEllipse(QRectF(3, 3, 10, 10));
    if (isChosen) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(look.tokens().on(Surface::Card).text, 1.5));
        painter.drawEllipse(QRectF(1, 1, 14, 14));
    }
    return QIcon(pixmap);
}

} // namespace

TagReach tagReach(const AppState& appState, const QString& tag)
{
    TagReach reach;
    for (const auto& note : appState.notes())
        reach.notes += containsTag(note->tags, tag);
    for (const auto& folder : appState.folders())
        reach.folders += containsTag(folder->tags, tag);
    return reach;
}

QStringList commonTags(const AppState& appState, const QList<BinderRowID>& rows)
{
    const auto tagsOf = [&](const BinderRowID& row) {
        if (row.kind == BinderRowID::Kind::Note)
            return appState.tagsForNote(row.id);
        const FolderRecord* folder = appState.folder(row.id);
        return folder ? folder->tags : QStringList();
    };
    QStringList common = rows.isEmpty() ? QStringList() : tagsOf(rows.first());
    for (qsizetype i = 1; i < rows.size() && !common.isEmpty(); ++i) {
        const QStringList tags = tagsOf(rows.at(i));
        common.removeIf([&](const QString& tag) { return !containsTag(tags, tag); });
    }
    return common;
}

QString inWords(const TagReach& reach)
{
    QString notes = reach.notes == 1 ? TagActions::tr("1 note")
                                     : TagActions::tr("%1 notes").arg(grouped(reach.notes));
    const QString folders = reach.folders == 1
                                ? TagActions::tr("1 folder")
                                : TagActions::tr("%1 folders").arg(grouped(reach.folders));
    if (reach.folders == 0)
        return notes;
    return reach.notes == 0 ? folders : TagActions::tr("%1 and %2").arg(notes, folders);
}

TagActions::TagActions(AppState& appState, SheetHost& sheets, Look& look, QObject* parent)
    : QObject(parent)
    , m_appState(appState)
    , m_sheets(sheets)
    , m_look(look)
{}

void TagActions::addTo(QMenu& menu, const QString& tag)
{
    addColors(*menu.addMenu(tr("Colour")), tag);
    connect(menu.addAction(tr("Aliases…")), &QAction::triggered, this,
            [this, tag] { showAliasesSheet(tag); });
    menu.addSeparator();
    QAction* rename = menu.addAction(tr("Rename Everywhere…"));
    QAction* remove = menu.addAction(tr("Remove from Library…"));
    connect(rename, &QAction::triggered, this, [this, tag] { showRenameSheet(tag); });
    connect(remove, &QAction::triggered, this, [this, tag] { removeFromLibrary(tag); });
    rename->setEnabled(!m_appState.projectSession().isReadOnly());
    remove->setEnabled(!m_appState.projectSession().isReadOnly());
}

void TagActions::addColors(QMenu& menu, const QString& tag)
{
    const QString names[] = {tr("Coral"), tr("Orange"), tr("Amber"), tr("Sky"),   tr("Green"),
                             tr("Blue"),  tr("Violet"), tr("Pink"),  tr("Steel"), tr("Grey")};
    static_assert(std::size(names) == TagColorPalette::colors.size());
    const auto chosen = rgbaFromHex(m_appState.tagSettings().colorHexes.value(tag.toLower()));
    const auto add = [&](const QString& name, const RgbaColor& color, bool isChosen) {
        QAction* action = menu.addAction(dotIcon(color.toQColor(), m_look, isChosen), name);
        action->setCheckable(true);
        action->setChecked(isChosen);
        return action;
    };
    connect(add(tr("Automatic"), TagColorPalette::autoColor(tag), !chosen), &QAction::triggered,
            this, [this, tag] { m_appState.setTagColor(tag, std::nullopt); });
    menu.addSeparator();
    for (size_t i = 0; i < std::size(names); ++i) {
        const RgbaColor color = TagColorPalette::colors.at(i);
        const QString hex = toHex(color);
        connect(add(names[i], color, chosen && toHex(*chosen) == hex), &QAction::triggered, this,
                [this, tag, hex] { m_appState.setTagColor(tag, hex); });
    }
}

std::optional<QString> TagActions::rename(const QString& tag, const QString& newName)
{
    const QString to = newName.trimmed();
    if (to == tag)
        return std::nullopt;
    if (to.size() > longestTag)
        return tr("A tag has at most %1 characters.").arg(longestTag);
    if (to.compare(tag, Qt::CaseInsensitive) == 0)
        return tr("The names differ only in capital letters, so they are the same tag.");
    if (const TagReach existing = tagReach(m_appState, to); existing != TagReach{}) {
        const Answer answer = m_appState.services().questions.ask(
            {.title = tr("Join “%1” with “%2”?").arg(tag, to),
             .text = tr("“%1” is on %2 already. Afterwards the two can't be told apart.")
                         .arg(to, inWords(existing)),
             .buttons = {tr("Join"), tr("Cancel")},
             .suppression = {},
             .choices = {},
             .tone = Question::Tone::Warning});
        if (answer.button != 0)
            return QString();
    }
    (void)m_appState.renameTag(tag, to);
    return std::nullopt;
}

void TagActions::showRenameSheet(const QString& tag)
{
    m_sheets.present(new NameSheet(
        {.title = tr("Rename “%1” Everywhere").arg(tag),
         .hint = tr("It changes on %1.").arg(inWords(tagReach(m_appState, tag))),
         .placeholder = tr("Name of the tag"),
         .acceptButton = tr("Rename"),
         .initialName = tag},
        NameSheet::BlankName::Refused,
        [self = QPointer(this), tag](const QString& name) -> std::optional<QString> {
            return self ? self->rename(tag, name) : std::nullopt;
        },
        m_look));
}

void TagActions::showAliasesSheet(const QString& tag)
{
    m_sheets.present(new AliasesSheet(m_appState, tag, m_look));
}

void TagActions::removeFromLibrary(const QString& tag)
{
    const QPointer<TagActions> self(this);
    const Answer answer = m_appState.services().questions.ask(
        {.title = tr("Remove “%1” from the Library?").arg(tag),
         .text = tr("It goes from %1, with its colour and its aliases. What is written there stays "
                    "as it is.")
                     .arg(inWords(tagReach(m_appState, tag))),
         .buttons = {tr("Remove"), tr("Cancel")},
         .suppression = {},
         .choices = {},
         .tone = Question::Tone::Destructive});
    if (self && answer.button == 0)
        (void)m_appState.removeTagFromLibrary(tag);
}

} // namespace orvane
