// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/IconChoices.h"

#include "appearance/Drawing.h"
#include "appearance/Icons.h"

#include <QCoreApplication>
#include <QHash>
#include <QPainter>

#include <cmath>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Entry {
    const char* name;
    const char* category;
    const char* drawing;
    const char* title;
    const char* keywords;
};

constexpr Entry entries[] = {
    {"sparkles", "actions", "tools-wizard", QT_TRANSLATE_NOOP("IconChoices", "Sparkles"),
     "magic wand star new"},
    {"archive", "places", "document-multiple", QT_TRANSLATE_NOOP("IconChoices", "Archive"),
     "box project papers"},
    {"note", "mimetypes", "text-plain", QT_TRANSLATE_NOOP("IconChoices", "Note"),
     "text page lines"},
    {"draft", "actions", "document-edit", QT_TRANSLATE_NOOP("IconChoices", "Draft"),
     "pencil edit writing"},
    {"pencil", "actions", "draw-freehand", QT_TRANSLATE_NOOP("IconChoices", "Pencil"),
     "write draw edit"},
    {"brush", "actions", "draw-brush", QT_TRANSLATE_NOOP("IconChoices", "Brush"), "paint art"},
    {"quote", "actions", "format-text-blockquote", QT_TRANSLATE_NOOP("IconChoices", "Quote"),
     "citation speech"},
    {"list", "actions", "view-list-details", QT_TRANSLATE_NOOP("IconChoices", "List"),
     "outline points"},
    {"checklist", "actions", "view-task", QT_TRANSLATE_NOOP("IconChoices", "Checklist"),
     "tasks to do"},
    {"check", "actions", "checkmark", QT_TRANSLATE_NOOP("IconChoices", "Check"),
     "done finished tick"},
    {"book", "places", "folder-book", QT_TRANSLATE_NOOP("IconChoices", "Book"),
     "chapter novel reading"},
    {"library", "places", "folder-library", QT_TRANSLATE_NOOP("IconChoices", "Library"),
     "books shelf"},
    {"dictionary", "actions", "accessories-dictionary-symbolic",
     QT_TRANSLATE_NOOP("IconChoices", "Dictionary"), "words glossary"},
    {"language", "actions", "languages", QT_TRANSLATE_NOOP("IconChoices", "Languages"),
     "translation"},
    {"bookmark", "actions", "bookmarks", QT_TRANSLATE_NOOP("IconChoices", "Bookmark"),
     "ribbon mark"},
    {"star", "places", "favorites", QT_TRANSLATE_NOOP("IconChoices", "Star"), "favourite best"},
    {"heart", "actions", "love", QT_TRANSLATE_NOOP("IconChoices", "Heart"), "love favourite"},
    {"flag", "actions", "flag", QT_TRANSLATE_NOOP("IconChoices", "Flag"), "milestone mark"},
    {"tag", "actions", "tag", QT_TRANSLATE_NOOP("IconChoices", "Tag"), "label"},
    {"pin", "actions", "pin", QT_TRANSLATE_NOOP("IconChoices", "Pin"), "fixed"},
    {"anchor", "actions", "anchor", QT_TRANSLATE_NOOP("IconChoices", "Anchor"), "sea ship"},
    {"compass", "actions", "compass", QT_TRANSLATE_NOOP("IconChoices", "Compass"),
     "direction travel"},
    {"globe", "actions", "globe", QT_TRANSLATE_NOOP("IconChoices", "Globe"), "world earth travel"},
    {"place", "actions", "mark-location", QT_TRANSLATE_NOOP("IconChoices", "Place"),
     "map location setting"},
    {"route", "actions", "routeplanning", QT_TRANSLATE_NOOP("IconChoices", "Route"),
     "travel journey map"},
    {"home", "actions", "go-home", QT_TRANSLATE_NOOP("IconChoices", "Home"), "house"},
    {"person", "actions", "user", QT_TRANSLATE_NOOP("IconChoices", "Person"),
     "character people cast"},
    {"people", "actions", "system-users", QT_TRANSLATE_NOOP("IconChoices", "People"),
     "characters group cast"},
    {"identity", "actions", "user-identity", QT_TRANSLATE_NOOP("IconChoices", "Portrait"),
     "character person card"},
    {"calendar", "actions", "view-calendar", QT_TRANSLATE_NOOP("IconChoices", "Calendar"),
     "date day schedule"},
    {"clock", "actions", "clock", QT_TRANSLATE_NOOP("IconChoices", "Clock"), "time hour"},
    {"stopwatch", "actions", "chronometer", QT_TRANSLATE_NOOP("IconChoices", "Stopwatch"),
     "time deadline"},
    {"alarm", "status", "appointment-reminder", QT_TRANSLATE_NOOP("IconChoices", "Reminder"),
     "bell alarm"},
    {"search", "actions", "search", QT_TRANSLATE_NOOP("IconChoices", "Search"),
     "find magnifier research"},
    {"eye", "actions", "visibility", QT_TRANSLATE_NOOP("IconChoices", "Eye"), "see view watch"},
    {"idea", "actions", "games-hint", QT_TRANSLATE_NOOP("IconChoices", "Idea"), "light bulb hint"},
    {"question", "actions", "help-about", QT_TRANSLATE_NOOP("IconChoices", "Information"),
     "about facts"},
    {"help", "actions", "help-contextual", QT_TRANSLATE_NOOP("IconChoices", "Question"),
     "help unknown"},
    {"warning", "status", "dialog-warning", QT_TRANSLATE_NOOP("IconChoices", "Warning"),
     "danger attention"},
    {"lock", "actions", "lock", QT_TRANSLATE_NOOP("IconChoices", "Lock"), "secret private"},
    {"unlock", "actions", "unlock", QT_TRANSLATE_NOOP("IconChoices", "Open Lock"), "public"},
    {"key", "actions", "password-copy", QT_TRANSLATE_NOOP("IconChoices", "Password"), "secret key"},
    {"mail", "actions", "mail-message", QT_TRANSLATE_NOOP("IconChoices", "Letter"), "mail post"},
    {"inbox", "places", "mail-folder-inbox", QT_TRANSLATE_NOOP("IconChoices", "Inbox"), "in tray"},
    {"chat", "actions", "dialog-messages", QT_TRANSLATE_NOOP("IconChoices", "Conversation"),
     "dialogue talk chat"},
    {"phone", "devices", "phone", QT_TRANSLATE_NOOP("IconChoices", "Telephone"), "call interview"},
    {"microphone", "devices", "audio-input-microphone",
     QT_TRANSLATE_NOOP("IconChoices", "Microphone"), "interview voice recording"},
    {"speaker", "actions", "speaker", QT_TRANSLATE_NOOP("IconChoices", "Loudspeaker"),
     "sound audio"},
    {"music", "places", "folder-music", QT_TRANSLATE_NOOP("IconChoices", "Music"), "song sound"},
    {"photo", "devices", "camera-photo", QT_TRANSLATE_NOOP("IconChoices", "Camera"),
     "photo picture"},
    {"film", "devices", "camera-video", QT_TRANSLATE_NOOP("IconChoices", "Film"),
     "video camera movie"},
    {"image", "mimetypes", "image-x-generic", QT_TRANSLATE_NOOP("IconChoices", "Picture"),
     "image photo art"},
    {"palette", "actions", "color-picker", QT_TRANSLATE_NOOP("IconChoices", "Colour"),
     "paint design"},
    {"chart", "actions", "office-chart-bar", QT_TRANSLATE_NOOP("IconChoices", "Bar Chart"),
     "figures statistics data"},
    {"curve", "actions", "office-chart-line", QT_TRANSLATE_NOOP("IconChoices", "Line Chart"),
     "figures statistics data"},
    {"pie", "actions", "office-chart-pie", QT_TRANSLATE_NOOP("IconChoices", "Pie Chart"),
     "figures statistics data"},
    {"table", "actions", "table", QT_TRANSLATE_NOOP("IconChoices", "Table"), "grid data rows"},
    {"formula", "actions", "formula", QT_TRANSLATE_NOOP("IconChoices", "Formula"),
     "mathematics science"},
    {"root", "actions", "sqrt", QT_TRANSLATE_NOOP("IconChoices", "Root"), "mathematics science"},
    {"branch", "actions", "branch", QT_TRANSLATE_NOOP("IconChoices", "Branch"),
     "variant version tree"},
    {"puzzle", "actions", "plugins", QT_TRANSLATE_NOOP("IconChoices", "Puzzle Piece"),
     "part plot extension"},
    {"package", "actions", "package", QT_TRANSLATE_NOOP("IconChoices", "Package"), "box parcel"},
    {"cloud", "places", "folder-cloud", QT_TRANSLATE_NOOP("IconChoices", "Cloud Folder"),
     "online weather"},
    {"folder", "places", "folder", QT_TRANSLATE_NOOP("IconChoices", "Folder"), "container"},
    {"download", "actions", "download", QT_TRANSLATE_NOOP("IconChoices", "Download"),
     "arrow down import"},
    {"script", "places", "folder-script", QT_TRANSLATE_NOOP("IconChoices", "Script"),
     "play screenplay theatre"},
    {"game", "devices", "input-gamepad", QT_TRANSLATE_NOOP("IconChoices", "Game"),
     "play controller"},
    {"computer", "devices", "computer-laptop", QT_TRANSLATE_NOOP("IconChoices", "Computer"),
     "laptop machine"},
    {"printer", "devices", "printer", QT_TRANSLATE_NOOP("IconChoices", "Printer"), "print paper"},
    {"radio", "devices", "radio", QT_TRANSLATE_NOOP("IconChoices", "Radio"), "sound broadcast"},
    {"robot", "devices", "uav", QT_TRANSLATE_NOOP("IconChoices", "Drone"), "flight robot"},
    {"cold", "status", "temperature-cold", QT_TRANSLATE_NOOP("IconChoices", "Cold"),
     "weather temperature"},
    {"trash", "places", "user-trash", QT_TRANSLATE_NOOP("IconChoices", "Bin"), "discarded waste"},
    {"settings", "actions", "configure", QT_TRANSLATE_NOOP("IconChoices", "Wrench"),
     "settings tool repair"},
    {"gear", "actions", "gearhead-shape", QT_TRANSLATE_NOOP("IconChoices", "Gear"),
     "machine mechanism"},
    {"speed", "actions", "speedometer", QT_TRANSLATE_NOOP("IconChoices", "Speedometer"),
     "fast pace"},
    {"donate", "actions", "help-donate", QT_TRANSLATE_NOOP("IconChoices", "Money"), "coin payment"},
    {"certificate", "places", "certificate-server", QT_TRANSLATE_NOOP("IconChoices", "Certificate"),
     "award law seal"},
    {"spiral", "actions", "spiral-shape", QT_TRANSLATE_NOOP("IconChoices", "Spiral"), "dream loop"},
    {"pentagon", "actions", "pentagon-shape", QT_TRANSLATE_NOOP("IconChoices", "Pentagon"),
     "shape"},
    {"circle", "actions", "ellipse-shape", QT_TRANSLATE_NOOP("IconChoices", "Circle"),
     "shape round"},
    {"square", "actions", "rectangle-shape", QT_TRANSLATE_NOOP("IconChoices", "Square"), "shape"},
};

const QHash<QString, const Entry*>& entriesByName()
{
    static const QHash<QString, const Entry*> table = [] {
        QHash<QString, const Entry*> result;
        for (const Entry& entry : entries)
            result.insert(QString::fromLatin1(entry.name), &entry);
        result.insert(u"sf:archivebox.fill"_s, result.value(u"archive"_s));
        return result;
    }();
    return table;
}

bool matches(const IconChoice& choice, const QStringList& wanted)
{
    const QStringList words = (choice.title + u' ' + choice.keywords).split(u' ');
    return std::all_of(wanted.begin(), wanted.end(), [&](const QString& start) {
        return std::any_of(words.begin(), words.end(), [&](const QString& word) {
            return word.startsWith(start, Qt::CaseInsensitive);
        });
    });
}

} // namespace

const QList<IconChoice>& iconChoices()
{
    static const QList<IconChoice> choices = [] {
        QList<IconChoice> result;
        for (const Entry& entry : entries)
            result.append({QString::fromLatin1(entry.name),
                           QCoreApplication::translate("IconChoices", entry.title),
                           QString::fromLatin1(entry.keywords)});
        return result;
    }();
    return choices;
}

QList<IconChoice> iconChoicesMatching(const QString& words)
{
    const QStringList wanted = words.simplified().split(u' ', Qt::SkipEmptyParts);
    QList<IconChoice> result;
    for (const IconChoice& choice : iconChoices()) {
        if (matches(choice, wanted))
            result.append(choice);
    }
    return result;
}

bool hasIconDrawing(const QString& storedIcon)
{
    return entriesByName().contains(storedIcon);
}

QString iconChoiceName(const QString& storedIcon)
{
    const Entry* entry = entriesByName().value(storedIcon);
    return entry ? QString::fromLatin1(entry->name) : QString();
}

QPixmap storedIconPixmap(const QString& storedIcon, int pixels, const QColor& color)
{
    const Entry* entry = entriesByName().value(storedIcon);
    if (!entry)
        return {};
    return themeDrawingPixmap(QString::fromLatin1(entry->category),
                              QString::fromLatin1(entry->drawing), pixels, color);
}

void drawStoredIcon(QPainter& painter, const QRectF& rect, const QString& storedIcon, double size,
                    const QColor& color)
{
    const double ratio = deviceRatio(painter);
    drawCentred(painter, rect, storedIconPixmap(storedIcon, qRound(size * ratio), color), size);
}

} // namespace orvane
