// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

namespace orvane {

/// One entry of the tag library, identified by its name. Derived from the tags on notes and
/// folders, never stored.
struct TagRecord {
    QString name;

    bool operator==(const TagRecord&) const = default;
};

} // namespace orvane

Q_DECLARE_TYPEINFO(orvane::TagRecord, Q_RELOCATABLE_TYPE);
