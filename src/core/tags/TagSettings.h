// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/tags/Tags.h"
#include "platform/UserDefaults.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

namespace orvane {

/// What a person has decided about tags, the same in every project: colours, aliases and words
/// that are never tagged by themselves. Kept in the user defaults; change it by `editTagSettings`.
struct TagSettings {
    /// Hex text by lower-cased tag.
    QMap<QString, QString> colorHexes;
    TagAliases aliases;
    QStringList autoTagExceptions;

    bool operator==(const TagSettings&) const = default;

    /// Entries of the wrong type are passed over.
    [[nodiscard]] static TagSettings load(const UserDefaults& defaults);
    void save(UserDefaults& defaults) const;

    /// Moves the colour and the aliases to another name.
    void rename(const QString& oldName, const QString& newName);
    void remove(const QString& name);
    void addAlias(const QString& alias, const QString& tag);
    void removeAlias(const QString& alias, const QString& tag);
    [[nodiscard]] bool isExcludedFromAutoColor(const QString& word) const
    {
        return autoTagExceptions.contains(word, Qt::CaseInsensitive);
    }
};

/// Changes what is stored by `edit` and returns it as it is then. It begins with what stands in the
/// file, so that nothing that another process has decided meanwhile is lost.
[[nodiscard]] TagSettings editTagSettings(UserDefaults& defaults,
                                          const std::function<void(TagSettings&)>& edit);

} // namespace orvane
