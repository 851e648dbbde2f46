// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/LinkEditing.h"

#include "text/store/EditGateway.h"
#include "text/store/TextStore.h"

#include <QCoreApplication>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(LinkEditing)
};

/// What a reader sees of an address that stands for itself.
QString shownAddress(const QString& address)
{
    const auto mail = "mailto:"_L1;
    return address.startsWith(mail) ? address.mid(mail.size()) : address;
}

/// The characters round `position` that have its link, within the paragraph.
TextRange linkAround(const TextStore& store, qsizetype position)
{
    const QString& address = store.characterStyle(position)->link;
    const TextRange paragraph = store.paragraphRange(position);
    qsizetype from = position;
    while (from > paragraph.location && store.characterStyle(from - 1)->link == address)
        --from;
    qsizetype to = position + 1;
    while (to < paragraph.end() && store.characterStyle(to)->link == address)
        ++to;
    return TextRange::between(from, to);
}

/// `range` without the blanks at its ends, unless it is nothing else: a word is often selected with
/// the one behind it.
TextRange trimmed(const TextStore& store, TextRange range)
{
    const QString text = store.text(range);
    const QString inner = text.trimmed();
    return inner.isEmpty() ? range : TextRange{range.location + text.indexOf(inner), inner.size()};
}

bool isStillThere(const EditGateway& gateway, const LinkPlace& place)
{
    return place.range.end() <= gateway.store().length() &&
           gateway.store().text(place.range) == place.text;
}

} // namespace

bool LinkPlace::isOneLine() const
{
    return std::none_of(text.begin(), text.end(), [](QChar c) {
        return c == u'\n' || c == lineSeparator || c == objectCharacter;
    });
}

LinkPlace linkPlaceAt(const TextStore& store, TextSelection selection)
{
    LinkPlace place;
    place.range = trimmed(store, selection.range());
    if (!place.range.isEmpty()) {
        store.forEachCharacterRun(place.range, [&](TextRange, const SharedCharacterStyle& style) {
            if (place.address.isEmpty())
                place.address = style->link;
        });
    } else {
        const TextRange paragraph = store.paragraphRange(selection.position);
        for (const qsizetype position : {selection.position, selection.position - 1}) {
            const bool isHere = position >= paragraph.location && position < paragraph.end();
            if (!isHere || place.isLink())
                continue;
            place.address = store.characterStyle(position)->link;
            if (place.isLink())
                place.range = linkAround(store, position);
        }
    }
    place.text = store.text(place.range);
    return place;
}

bool setLink(EditGateway& gateway, const LinkPlace& place, const QString& text,
             const QString& address)
{
    const QString words = text.trimmed().isEmpty() ? shownAddress(address) : text;
    const bool replaces = place.isOneLine() && words != place.text;
    if (!isStillThere(gateway, place) ||
        !gateway.shouldChangeText(place.range, replaces ? words : place.text))
        return false;
    const TextSelection before = gateway.selection();
    return gateway.performUndoableDocumentEdit(
        place.isLink() ? Words::tr("Edit Link") : Words::tr("Insert Link"),
        [&](DocumentEditor& editor) {
            const SharedCharacterStyle typing = editor.typingStyle();
            if (!replaces) {
                editor.modifyCharacterStyles(place.range,
                                             [&](CharacterStyle& style) { style.link = address; });
                return;
            }
            CharacterStyle style = place.range.isEmpty()
                                       ? *typing
                                       : *editor.store().characterStyle(place.range.location);
            style.link = address;
            editor.replace(place.range, words, style);
            const TextRange linked{place.range.location, words.size()};
            editor.setSelection(before.isEmpty() ? TextSelection::caret(linked.end())
                                                 : TextSelection::of(linked));
            // What is typed behind is no part of it.
            style.link.clear();
            editor.setTypingStyle(style);
        });
}

bool removeLink(EditGateway& gateway, const LinkPlace& place)
{
    if (!isStillThere(gateway, place) || !gateway.shouldChangeText(place.range, place.text))
        return false;
    return gateway.performUndoableDocumentEdit(
        Words::tr("Remove Link"), [&](DocumentEditor& editor) {
            editor.modifyCharacterStyles(place.range,
                                         [](CharacterStyle& style) { style.link.clear(); });
        });
}

} // namespace orvane
