// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/find/TextSearch.h"

#include "text/store/Graphemes.h"

namespace orvane {

namespace {

/// Chooses how the character before it is drawn, and is no part of what one looks for.
bool isVariationSelector(QChar c)
{
    return c.unicode() >= 0xfe00 && c.unicode() <= 0xfe0f;
}

/// A letter without its accent, or the first of a family of emoji, is not what stands there.
bool isWhole(QStringView text, qsizetype position, qsizetype length)
{
    const qsizetype end = position + length;
    return isGraphemeBoundary(text, position) &&
           (isGraphemeBoundary(text, end) || isVariationSelector(text[end]));
}

} // namespace

TextSearch::TextSearch(const QString& query)
    : m_query(query)
{
    QStringList forms{query};
    for (const auto form : {QString::NormalizationForm_C, QString::NormalizationForm_D}) {
        const QString normalised = query.normalized(form);
        if (!forms.contains(normalised))
            forms.append(normalised);
    }
    if (query.isEmpty())
        return;
    for (const QString& form : std::as_const(forms))
        m_forms.append(QStringMatcher(form, Qt::CaseInsensitive));
}

qsizetype TextSearch::longestMatch() const
{
    qsizetype longest = 0;
    for (const QStringMatcher& form : m_forms)
        longest = std::max(longest, form.pattern().size());
    return longest;
}

qsizetype TextSearch::find(const QStringMatcher& form, QStringView text, qsizetype from)
{
    qsizetype at = form.indexIn(text, from);
    while (at >= 0 && !isWhole(text, at, form.pattern().size()))
        at = form.indexIn(text, at + 1);
    return at;
}

std::optional<TextRange> TextSearch::first(QStringView text, qsizetype from) const
{
    std::optional<TextRange> found;
    for (const QStringMatcher& form : m_forms) {
        const qsizetype at = find(form, text, from);
        if (at >= 0 && (!found || at < found->location))
            found = TextRange{at, form.pattern().size()};
    }
    return found;
}

std::optional<TextRange> TextSearch::last(QStringView text, qsizetype to) const
{
    std::optional<TextRange> found;
    for (const QStringMatcher& form : m_forms) {
        const QString pattern = form.pattern();
        qsizetype at = to - pattern.size();
        for (; at >= 0; --at) {
            at = text.lastIndexOf(pattern, at, Qt::CaseInsensitive);
            if (at < 0 || isWhole(text, at, pattern.size()))
                break;
        }
        if (at >= 0 && (!found || at + pattern.size() > found->end()))
            found = TextRange{at, pattern.size()};
    }
    return found;
}

std::optional<TextRange> TextSearch::next(QStringView text, TextRange selection,
                                          FindDirection direction) const
{
    if (direction == FindDirection::forward) {
        const auto found = first(text, selection.end());
        return found ? found : first(text);
    }
    const auto found = last(text, selection.location);
    return found ? found : last(text, text.size());
}

QList<TextRange> TextSearch::all(QStringView text) const
{
    QList<TextRange> found;
    QList<qsizetype> places(m_forms.size(), 0); // where each form is found next, -1 for nowhere
    for (qsizetype from = 0;;) {
        std::optional<TextRange> nearest;
        for (qsizetype i = 0; i < m_forms.size(); ++i) {
            if (places[i] >= 0 && (from == 0 || places[i] < from))
                places[i] = find(m_forms[i], text, from);
            if (places[i] >= 0 && (!nearest || places[i] < nearest->location))
                nearest = TextRange{places[i], m_forms[i].pattern().size()};
        }
        if (!nearest)
            return found;
        found.append(*nearest);
        from = nearest->end();
    }
}

bool TextSearch::matches(QStringView text) const
{
    // As it is selected.
    if (!text.isEmpty() && isVariationSelector(text.back()) && matches(text.chopped(1)))
        return true;
    return std::any_of(m_forms.begin(), m_forms.end(), [&](const QStringMatcher& form) {
        return text.compare(form.pattern(), Qt::CaseInsensitive) == 0;
    });
}

} // namespace orvane
