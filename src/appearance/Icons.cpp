// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Icons.h"

#include "appearance/Drawing.h"

#include <QDir>
#include <QFile>
#include <QIcon>
#include <QLoggingCategory>
#include <QPaintEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QStandardPaths>
#include <QSvgRenderer>

#include <cmath>
#include <functional>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// Path of the drawing below the theme's folder, without its size: "actions/16/NAME.svg".
struct Drawing {
    QLatin1StringView category;
    QLatin1StringView name;
};

Drawing drawingOf(Symbol symbol)
{
    switch (symbol) {
    case Symbol::AlignCenter:
        return {"actions"_L1, "format-justify-center"_L1};
    case Symbol::AlignJustified:
        return {"actions"_L1, "format-justify-fill"_L1};
    case Symbol::AlignLeft:
        return {"actions"_L1, "format-justify-left"_L1};
    case Symbol::AlignRight:
        return {"actions"_L1, "format-justify-right"_L1};
    case Symbol::AllProjects:
        return {"actions"_L1, "view-grid"_L1};
    case Symbol::Back:
        return {"actions"_L1, "go-previous"_L1};
    case Symbol::Bold:
        return {"actions"_L1, "format-text-bold"_L1};
    case Symbol::BulletList:
        return {"actions"_L1, "format-list-unordered"_L1};
    case Symbol::Bullets:
        return {"actions"_L1, "view-list-text"_L1};
    case Symbol::ChevronDown:
        return {"actions"_L1, "arrow-down"_L1};
    case Symbol::ChevronRight:
        return {"actions"_L1, "arrow-right"_L1};
    case Symbol::ChevronUp:
        return {"actions"_L1, "arrow-up"_L1};
    case Symbol::Clear:
        return {"actions"_L1, "edit-clear"_L1};
    case Symbol::Close:
        return {"actions"_L1, "edit-delete-remove"_L1};
    case Symbol::Colors:
        return {"actions"_L1, "fill-color"_L1};
    case Symbol::Folder:
        return {"places"_L1, "folder"_L1};
    case Symbol::Forward:
        return {"actions"_L1, "go-next"_L1};
    case Symbol::HeaderFill:
        break; // drawn by us, see `ownDrawing`
    case Symbol::Help:
        return {"actions"_L1, "games-hint"_L1};
    case Symbol::Highlight:
        return {"actions"_L1, "draw-highlight"_L1};
    case Symbol::Details:
        return {"actions"_L1, "view-list-details"_L1};
    case Symbol::Paste:
        return {"actions"_L1, "edit-paste"_L1};
    case Symbol::History:
        return {"actions"_L1, "view-history"_L1};
    case Symbol::Image:
        return {"actions"_L1, "insert-image"_L1};
    case Symbol::Italic:
        return {"actions"_L1, "format-text-italic"_L1};
    case Symbol::Keyboard:
        return {"devices"_L1, "input-keyboard"_L1};
    case Symbol::LeftPane:
        return {"actions"_L1, "sidebar-collapse-left"_L1};
    case Symbol::LineSpacing:
        return {"actions"_L1, "text_line_spacing"_L1};
    case Symbol::Locked:
        return {"actions"_L1, "object-locked"_L1};
    case Symbol::Menu:
        return {"actions"_L1, "application-menu"_L1};
    case Symbol::More:
        return {"actions"_L1, "overflow-menu"_L1};
    case Symbol::NewFolder:
        return {"actions"_L1, "folder-new"_L1};
    case Symbol::NewNote:
        return {"actions"_L1, "document-new"_L1};
    case Symbol::Note:
        return {"mimetypes"_L1, "text-plain"_L1};
    case Symbol::NumberedList:
        return {"actions"_L1, "format-list-ordered"_L1};
    case Symbol::Panes:
        return {"actions"_L1, "view-file-columns"_L1};
    case Symbol::PdfNote:
        return {"mimetypes"_L1, "application-pdf"_L1};
    case Symbol::Pin:
        return {"actions"_L1, "pin"_L1};
    case Symbol::Plus:
        return {"actions"_L1, "list-add"_L1};
    case Symbol::Project:
        return {"places"_L1, "document-multiple"_L1};
    case Symbol::ProjectSparkles:
        return {"actions"_L1, "tools-wizard"_L1};
    case Symbol::Rename:
        return {"actions"_L1, "edit-rename"_L1};
    case Symbol::Replace:
        return {"actions"_L1, "edit-find-replace"_L1};
    case Symbol::Revert:
        return {"actions"_L1, "edit-undo"_L1};
    case Symbol::RightPane:
        return {"actions"_L1, "sidebar-collapse-right"_L1};
    case Symbol::Search:
        return {"actions"_L1, "search"_L1};
    case Symbol::Settings:
        return {"actions"_L1, "settings-configure"_L1};
    case Symbol::Sort:
        return {"actions"_L1, "view-sort"_L1};
    case Symbol::Strikethrough:
        return {"actions"_L1, "format-text-strikethrough"_L1};
    case Symbol::Table:
        return {"actions"_L1, "insert-table"_L1};
    case Symbol::TableColumnLeft:
        return {"actions"_L1, "edit-table-insert-column-left"_L1};
    case Symbol::TableColumnRight:
        return {"actions"_L1, "edit-table-insert-column-right"_L1};
    case Symbol::TableRemoveColumn:
        return {"actions"_L1, "edit-table-delete-column"_L1};
    case Symbol::TableRemoveRow:
        return {"actions"_L1, "edit-table-delete-row"_L1};
    case Symbol::TableRowAbove:
        return {"actions"_L1, "edit-table-insert-row-above"_L1};
    case Symbol::TableRowBelow:
        return {"actions"_L1, "edit-table-insert-row-below"_L1};
    case Symbol::Tag:
        return {"actions"_L1, "tag"_L1};
    case Symbol::TextColor:
        return {"actions"_L1, "format-text-color"_L1};
    case Symbol::Trash:
        return {"places"_L1, "user-trash"_L1};
    case Symbol::Underline:
        return {"actions"_L1, "format-text-underline"_L1};
    case Symbol::Unlocked:
        return {"actions"_L1, "object-unlocked"_L1};
    case Symbol::Warning:
        break; // drawn by us, see `ownDrawing`
    case Symbol::Writing:
        return {"actions"_L1, "document-edit"_L1};
    }
    return {};
}

const QString& themeFolder()
{
    static const QString folder = [] {
        // Not every platform plugin knows where the desktop keeps its icons.
        QStringList paths = QIcon::themeSearchPaths();
        for (const QString& data :
             QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation))
            paths.append(data + "/icons"_L1);
        for (const QString& path : paths) {
            const QString candidate = path + "/breeze"_L1;
            if (!path.startsWith(u':') && QFile::exists(candidate + "/index.theme"_L1))
                return candidate;
        }
        qWarning("The Breeze icon theme is not installed; buttons show no pictures.");
        return QString();
    }();
    return folder;
}

QString drawingFile(const QString& category, const QString& name)
{
    if (themeFolder().isEmpty())
        return {};
    return themeFolder() + u'/' + category + "/16/"_L1 + name + ".svg"_L1;
}

/// What the icon theme draws filled or in colours of its own, as a line drawing.
QByteArray ownDrawing(Symbol symbol)
{
    if (symbol == Symbol::HeaderFill)
        return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16">
<path d="M2.5 2.5h11v11h-11zM2.5 10h11M8 6.5v7" fill="none" stroke="#000"/>
<path d="M2.5 2.5h11v4h-11z"/></svg>)"_ba;
    if (symbol != Symbol::Warning)
        return {};
    return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16">
<path d="M8 2.25 14.75 13.5H1.25Z" fill="none" stroke="#000" stroke-width="1.1"
 stroke-linejoin="round"/>
<path d="M8 6.5v3.25" stroke="#000" stroke-width="1.2" stroke-linecap="round"/>
<circle cx="8" cy="11.5" r=".75"/></svg>)"_ba;
}

/// A drawing in one colour; what loads it is told the renderer.
QPixmap rendered(const QString& key, int pixels, const QColor& color,
                 const std::function<bool(QSvgRenderer&)>& load)
{
    const QString whole = u"orvane:%1:%2:%3"_s.arg(key).arg(pixels).arg(color.rgba(), 0, 16);
    QPixmap pixmap;
    if (pixels <= 0 || QPixmapCache::find(whole, &pixmap))
        return pixmap;
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    if (QSvgRenderer renderer; load(renderer)) {
        QPainter painter(&image);
        renderer.render(&painter, QRectF(0, 0, pixels, pixels));
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
    }
    pixmap = QPixmap::fromImage(std::move(image));
    QPixmapCache::insert(whole, pixmap);
    return pixmap;
}

} // namespace

Symbol projectSymbol(const std::optional<QString>& storedIcon)
{
    if (storedIcon == u"sparkles"_s)
        return Symbol::ProjectSparkles;
    return Symbol::Project;
}

QPixmap symbolPixmap(Symbol symbol, int pixels, const QColor& color)
{
    if (const QByteArray own = ownDrawing(symbol); !own.isEmpty())
        return rendered(u"own/%1"_s.arg(int(symbol)), pixels, color,
                        [&](QSvgRenderer& renderer) { return renderer.load(own); });
    const auto [category, name] = drawingOf(symbol);
    return themeDrawingPixmap(QString(category), QString(name), pixels, color);
}

QPixmap themeDrawingPixmap(const QString& category, const QString& name, int pixels,
                           const QColor& color)
{
    return rendered(category + u'/' + name, pixels, color, [&](QSvgRenderer& renderer) {
        const QString file = drawingFile(category, name);
        return !file.isEmpty() && renderer.load(file);
    });
}

} // namespace orvane
