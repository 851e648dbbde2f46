// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Questions.h"

#include <QList>

#include <functional>
#include <utility>

namespace orvane {

class OrvaneWorkspaceApp;

/// The questions about a project's safety with sample values, and the names of their pictures.
[[nodiscard]] QList<std::pair<QString, Question>> sampleSafetyQuestions();

/// Takes a picture of each of them in the Light and the Dark look.
void tourSafety(OrvaneWorkspaceApp& app, const std::function<void(const QString& name)>& picture);

} // namespace orvane
