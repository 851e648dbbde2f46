// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What the studio does with the chosen pair of themes.
#include "appearance/studio/ThemeCard.h"
#include "appearance/studio/ThemeFilePicker.h"
#include "appearance/studio/ThemeStudioView.h"
#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/ThemeFile.h"
#include "platform/Questions.h"

#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollArea>
#include <QUrl>

namespace orvane {

namespace {

/// The one local theme file that is dragged, else empty.
QString draggedTheme(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    const QString path = urls.size() == 1 ? urls.first().toLocalFile() : QString();
    return path.endsWith(ThemeFile::suffix()) ? path : QString();
}

} // namespace

void ThemeStudioView::select(const QUuid& id)
{
    m_selected = id;
    showLibrary();
}

void ThemeStudioView::select(AppearanceThemeMode mode)
{
    m_mode = mode;
    showLook();
}

void ThemeStudioView::applySelected()
{
    const AppearanceValues before = readAppearance(m_s.defaults);
    const bool edited = !m_s.library.lookIsActiveTheme();
    m_s.library.applyTheme(m_selected, m_mode);
    if (edited && !sameWhenApplied(before, readAppearance(m_s.defaults)))
        m_replaced = before;
    showLook();
}

void ThemeStudioView::bringBack()
{
    if (const auto replaced = std::exchange(m_replaced, std::nullopt))
        writeAppearance(*replaced, m_s.defaults);
    showLook();
}

void ThemeStudioView::updateSelected()
{
    m_s.library.updateTheme(m_selected, m_mode);
}

void ThemeStudioView::copySelected(AppearanceThemeMode from)
{
    m_s.library.copyVariant(m_selected, from,
                            from == AppearanceThemeMode::Light ? AppearanceThemeMode::Dark
                                                               : AppearanceThemeMode::Light);
}

void ThemeStudioView::duplicateSelected()
{
    if (const auto copy = m_s.library.duplicateTheme(m_selected)) {
        select(*copy);
        renameSelected();
    }
}

void ThemeStudioView::saveCurrentLook()
{
    select(m_s.library.saveCurrentAsTheme(m_s.library.uniqueThemeName(tr("My look"))));
    renameSelected();
}

void ThemeStudioView::renameSelected()
{
    if (ThemeCard* chosen = card(m_selected)) {
        m_scroll->ensureWidgetVisible(chosen);
        chosen->editName();
    }
}

void ThemeStudioView::deleteSelected()
{
    const AppearanceThemeBundle* bundle = m_s.library.bundle(m_selected);
    if (!bundle)
        return;
    Question question;
    question.title = tr("Delete Theme?");
    question.text = tr("Delete “%1” and both its Light and Dark versions?").arg(bundle->name);
    question.buttons = {tr("Delete"), tr("Cancel")};
    question.tone = Question::Tone::Destructive;
    if (m_s.questions.ask(question).button == 0)
        m_s.library.deleteTheme(m_selected);
}

void ThemeStudioView::importTheme()
{
    const QString path = m_s.files.fileToImport(this);
    if (!path.isEmpty())
        importTheme(path);
}

void ThemeStudioView::importTheme(const QString& path)
{
    auto bundle = ThemeFile::read(path);
    if (!bundle)
        return tell(tr("The theme can't be imported"), ThemeFile::text(bundle.error()));
    select(m_s.library.addTheme(*std::move(bundle)));
    if (ThemeCard* added = card(m_selected))
        m_scroll->ensureWidgetVisible(added);
}

void ThemeStudioView::exportSelected()
{
    const AppearanceThemeBundle* bundle = m_s.library.bundle(m_selected);
    if (!bundle)
        return;
    const QString path = m_s.files.fileToExport(this, ThemeFile::fileName(bundle->name));
    if (path.isEmpty())
        return;
    if (const auto written = ThemeFile::write(*bundle, path); !written)
        tell(tr("The theme can't be exported"),
             tr("The file can't be written: %1").arg(written.error().detail));
}

void ThemeStudioView::tell(const QString& title, const QString& text)
{
    Question message;
    message.title = title;
    message.text = text;
    message.buttons = {tr("OK")};
    message.tone = Question::Tone::Warning;
    m_s.questions.ask(message);
}

void ThemeStudioView::openMenu(const QPoint& position)
{
    QMenu menu(this);
    menu.addAction(tr("Rename"), this, &ThemeStudioView::renameSelected);
    menu.addAction(tr("Duplicate"), this, &ThemeStudioView::duplicateSelected);
    menu.addSeparator();
    menu.addAction(tr("Copy Light to Dark"), this,
                   [this] { copySelected(AppearanceThemeMode::Light); });
    menu.addAction(tr("Copy Dark to Light"), this,
                   [this] { copySelected(AppearanceThemeMode::Dark); });
    menu.addSeparator();
    menu.addAction(tr("Export…"), this, &ThemeStudioView::exportSelected);
    menu.addAction(tr("Delete…"), this, &ThemeStudioView::deleteSelected);
    menu.exec(position);
}

void ThemeStudioView::dragEnterEvent(QDragEnterEvent* event)
{
    if (!draggedTheme(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void ThemeStudioView::dropEvent(QDropEvent* event)
{
    const QString path = draggedTheme(event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    importTheme(path);
}

} // namespace orvane
