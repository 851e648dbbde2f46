// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/EditorExtension.h"
#include "text/value/AttributedString.h"

namespace orvane {

class EditorView;

/// An address that stands in a text as it is: with its scheme, from "www." on, a mail address, or a
/// link to a note. What only looks like a host ("e.g", "notes.txt") is none.
struct WrittenAddress {
    TextRange range;
    QString address; ///< with the scheme

    bool operator==(const WrittenAddress&) const = default;
};

/// The addresses in `text`, in order. Brackets and full stops around one are not part of it.
[[nodiscard]] QList<WrittenAddress> addressesIn(const QString& text);
/// `text` with links on the addresses in it that have none.
[[nodiscard]] AttributedString withAddressLinks(AttributedString text);

/// Makes an address that was typed into a rich text a link, once a blank, a tab or Return follows
/// it. That is a step of its own to undo.
class AddressLinks final : public EditorExtension {
public:
    /// Adds itself to `view`, which outlives it.
    explicit AddressLinks(EditorView& view);
    ~AddressLinks() override;
    Q_DISABLE_COPY_MOVE(AddressLinks)

    bool textTyped(const QString& text) override;
    bool keyPressed(const QKeyEvent& event) override;

private:
    void linkWordBeforeCaret();

    EditorView& m_view;
};

} // namespace orvane
