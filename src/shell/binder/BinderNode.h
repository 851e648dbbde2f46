// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/binder/BinderModel.h"

namespace orvane {

/// A row of the tree.
struct BinderModel::Node {
    BinderRowID row;
    Node* parent = nullptr;
    int place = 0; ///< among its parent's children
    bool isListed = false;
    std::vector<std::unique_ptr<Node>> children;

    void renumber(size_t from)
    {
        for (size_t i = from; i < children.size(); ++i)
            children[i]->place = int(i);
    }
};

} // namespace orvane
