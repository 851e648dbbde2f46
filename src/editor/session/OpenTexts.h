// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/session/StoredText.h"
#include "text/store/EditGateway.h"
#include "text/store/TextStore.h"

#include <QUuid>

#include <memory>
#include <vector>

namespace orvane {

/// The text of one note as it is edited, with its undo.
struct OpenText {
    OpenText(const QUuid& note, TextForm textForm)
        : noteID(note)
        , form(textForm)
    {}

    QUuid noteID;
    TextForm form;
    /// What was stored when the text was last the same as that.
    StoredText stored;
    TextStore store;
    EditGateway gateway{store};
};

/// Keeps the texts of notes that were edited lately, so that undo is there when a person comes
/// back to one. The longest untouched ones are let go of.
class OpenTexts {
public:
    static constexpr std::size_t mostTexts = 24;
    static constexpr qsizetype mostCharacters = 8'000'000;

    void keep(std::unique_ptr<OpenText> text);
    /// Hands out the text of a note if it is still what is stored, and forgets it otherwise.
    [[nodiscard]] std::unique_ptr<OpenText> take(const QUuid& noteID, TextForm form,
                                                 const StoredText& stored);

private:
    std::vector<std::unique_ptr<OpenText>> m_texts; // the latest last
};

} // namespace orvane
