// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "core/state/AppState.h"
#include "shell/sheets/SheetHost.h"

#include <QObject>

class QMenu;

namespace orvane {

/// How many records have a tag, the Trash's among them.
struct TagReach {
    int notes = 0;
    int folders = 0;

    bool operator==(const TagReach&) const = default;
};

[[nodiscard]] TagReach tagReach(const AppState& appState, const QString& tag);
/// The tags that all these notes and folders have, in the order of the first.
[[nodiscard]] QStringList commonTags(const AppState& appState, const QList<BinderRowID>& rows);
/// "3 notes and 1 folder".
[[nodiscard]] QString inWords(const TagReach& reach);

/// What can be done with a tag as such, wherever it stands: its colour and aliases, another name,
/// and an end. Says how much it touches before anything is done.
class TagActions : public QObject {
    Q_OBJECT
public:
    TagActions(AppState& appState, SheetHost& sheets, Look& look, QObject* parent = nullptr);

    /// Adds the entries to a menu.
    void addTo(QMenu& menu, const QString& tag);
    void showRenameSheet(const QString& tag);
    void showAliasesSheet(const QString& tag);
    void removeFromLibrary(const QString& tag);

private:
    void addColors(QMenu& menu, const QString& tag);
    /// What stands against the new name, empty to keep the sheet open without a word; nothing when
    /// the tag has it now.
    std::optional<QString> rename(const QString& tag, const QString& newName);

    AppState& m_appState;
    SheetHost& m_sheets;
    Look& m_look;
};

} // namespace orvane
