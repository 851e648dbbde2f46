// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/BinderLayout.h"
#include "core/FolderRecord.h"
#include "core/NoteRecord.h"
#include "core/Shared.h"

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
