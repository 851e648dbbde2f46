// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/BinderLayout.h"
#include "core/records/FolderRecord.h"
#include "core/records/NoteRecord.h"
#include "core/records/Shared.h"

#include <QList>

#include <optional>

namespace orvane {

/// The whole notebook of one project. Without a layout the default order is derived.
struct NotebookSnapshot {
    QList<Shared<FolderRecord>> folders;
    QList<Shared<NoteRecord>> notes;
    std::optional<BinderLayoutSnapshot> binderLayout;

    bool operator==(const NotebookSnapshot&) const = default;
};

} // namespace orvane
