// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/RescueFile.h"
#include "core/state/UnsavedWork.h"
#include "platform/Questions.h"

#include <QString>

/// What a person is asked about a project as a whole, in words, from values. The enumerations
/// number the buttons of each question.
namespace orvane::ProjectQuestions {

enum LeaveButton { WriteToFile, Stay, LeaveWithout };
/// Before a project is left with words that are not saved.
[[nodiscard]] Question leave(const UnsavedWork& work, const QString& projectTitle);

enum FolderGoneButton { TryAgain, SaveCopy, CloseProject };
/// The project's folder can't be reached. `home` shortens paths; the next try is so many seconds
/// away.
[[nodiscard]] Question folderGone(const ProjectTrouble& trouble, const UnsavedWork& work,
                                  const QString& projectTitle, const QString& home, int nextTry);

enum StoreReplacedButton { ShowBoth, KeepMine, TakeTheirs };
/// Without `sides` the other file can't be read.
[[nodiscard]] Question storeReplaced(const ProjectTrouble& trouble,
                                     const std::optional<StoreSides>& sides,
                                     const QString& projectTitle, Timestamp now);

/// One of two folders with one id. What can't be counted has no figures.
struct Claimant {
    QString folder;
    std::optional<NotebookFigures> figures;
    Timestamp changed;
};
enum CopyButton { ItIsACopy, ItWasMoved, Cancel };
[[nodiscard]] Question copyOrMoved(const Claimant& openedNow, const Claimant& known,
                                   const QString& home, Timestamp now);

enum RescueButton { PutInPlace, Later };
/// Words of an earlier run that were kept beside their project; where that isn't there, they can
/// become one of their own.
enum class ItsProject { IsThere, IsMissing };
[[nodiscard]] Question rescued(const FoundRescue& rescue, ItsProject project, const QString& home,
                               Timestamp now);

} // namespace orvane::ProjectQuestions
