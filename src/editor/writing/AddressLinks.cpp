// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/AddressLinks.h"

#include "editor/view/EditorView.h"
#include "editor/writing/LinkAddress.h"
#include "text/store/TextStore.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(AddressLinks)
};

constexpr qsizetype longestAddress = 2'000;

bool endsAddress(QChar c)
{
    return c.isSpace() || QStringView(u"<>\"\u201c\u201d\u201e\u00ab\u00bb\ufffc").contains(c);
}

/// How many characters at the end of `word` close what stands around an address.
qsizetype closingLength(QStringView word)
{
    qsizetype length = word.size();
    while (length > 0) {
        const QChar last = word[length - 1];
        const bool isSign = QStringView(u".,;:!?'\u2019\u2026*_").contains(last);
        const QStringView kept = word.first(length);
        const bool closes = (last == u')' && kept.count(u')') > kept.count(u'(')) ||
                            (last == u']' && kept.count(u']') > kept.count(u'[')) || last == u'}';
        if (!isSign && !closes)
            break;
        --length;
    }
    return word.size() - length;
}

/// Where an address begins in a run of characters without blanks; -1 where none does.
qsizetype addressStart(QStringView word)
{
    const auto isBefore = [&](qsizetype i, auto belongs) {
        while (i > 0 && belongs(word[i - 1]))
            --i;
        return i;
    };
    if (const qsizetype colon = word.indexOf(u"://"); colon > 0)
        return isBefore(colon, [](QChar c) { return c.isLetter() && c.unicode() < 0x80; });
    if (const qsizetype mail = word.indexOf(u"mailto:"); mail >= 0)
        return mail;
    if (const qsizetype at = word.indexOf(u'@'); at > 0) {
        return isBefore(
            at, [](QChar c) { return c.isLetterOrNumber() || QStringView(u"._+-").contains(c); });
    }
    const qsizetype web = word.indexOf(u"www.");
    const bool isWithin = web > 0 && word[web - 1].isLetterOrNumber();
    return isWithin ? -1 : web;
}

/// The address in `word`, which stands at `location`.
std::optional<WrittenAddress> addressInWord(QStringView word, qsizetype location)
{
    const qsizetype start = word.size() > longestAddress ? -1 : addressStart(word);
    if (start < 0)
        return std::nullopt;
    QStringView written = word.sliced(start);
    written.chop(closingLength(written));
    const auto address = linkAddress(written.toString());
    if (!address)
        return std::nullopt;
    return WrittenAddress{{location + start, written.size()}, *address};
}

} // namespace

QList<WrittenAddress> addressesIn(const QString& text)
{
    QList<WrittenAddress> found;
    const QStringView all(text);
    qsizetype behind = 0;
    // Each address has one of these signs, so most of a long text is only searched for them.
    const auto nextSign = [&](qsizetype from) {
        qsizetype next = -1;
        for (const QStringView sign : {QStringView(u"://"), QStringView(u"@"), QStringView(u"www."),
                                       QStringView(u"mailto:")}) {
            const qsizetype at = all.indexOf(sign, from);
            if (at >= 0 && (next < 0 || at < next))
                next = at;
        }
        return next;
    };
    for (qsizetype sign = nextSign(0); sign >= 0; sign = nextSign(behind)) {
        qsizetype from = sign;
        while (from > behind && !endsAddress(all[from - 1]))
            --from;
        qsizetype to = sign;
        while (to < all.size() && !endsAddress(all[to]))
            ++to;
        if (const auto address = addressInWord(all.sliced(from, to - from), from))
            found.append(*address);
        behind = std::max(to, sign + 1);
    }
    return found;
}

AttributedString withAddressLinks(AttributedString text)
{
    for (const WrittenAddress& written : addressesIn(text.text())) {
        text.modifyCharacterStyles(written.range, [&](CharacterStyle& style) {
            if (style.link.isEmpty())
                style.link = written.address;
        });
    }
    return text;
}

AddressLinks::AddressLinks(EditorView& view)
    : m_view(view)
{
    m_view.addExtension(this, ExtensionPriority::writing);
}

AddressLinks::~AddressLinks()
{
    m_view.removeExtension(this);
}

bool AddressLinks::textTyped(const QString& text)
{
    if (text.size() == 1 && text.front().isSpace())
        linkWordBeforeCaret();
    return false;
}

bool AddressLinks::keyPressed(const QKeyEvent& event)
{
    const bool endsWord =
        event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Tab;
    const bool isPlain = !(event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    if (endsWord && isPlain)
        linkWordBeforeCaret();
    return false;
}

void AddressLinks::linkWordBeforeCaret()
{
    const TextStore& store = m_view.store();
    const TextRange selected = m_view.selection().range();
    if (m_view.formatting() != TextFormatting::rich || !m_view.isEditable() || !selected.isEmpty())
        return;
    const qsizetype caret = selected.location;
    const qsizetype first = std::max(store.paragraphRange(caret).location, caret - longestAddress);
    qsizetype from = caret;
    while (from > first && !endsAddress(store.characterAt(from - 1)))
        --from;
    const TextRange word = TextRange::between(from, caret);
    const auto written = addressInWord(store.text(word), from);
    if (!written)
        return;
    bool hasLink = false;
    store.forEachCharacterRun(written->range, [&](TextRange, const SharedCharacterStyle& style) {
        hasLink = hasLink || !style->link.isEmpty();
    });
    EditGateway& gateway = m_view.gateway();
    if (hasLink || !gateway.shouldChangeText(written->range, store.text(written->range)))
        return;
    gateway.performUndoableDocumentEdit(Words::tr("Link"), [&](DocumentEditor& editor) {
        const SharedCharacterStyle typing = editor.typingStyle();
        editor.modifyCharacterStyles(written->range,
                                     [&](CharacterStyle& style) { style.link = written->address; });
        editor.setTypingStyle(typing);
    });
}

} // namespace orvane
