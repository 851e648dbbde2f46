// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/LinkTargets.h"

#include <QHash>
#include <QSet>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView noteAddress("orvaneworkspace://note/");

bool hasTargets(const AttributedString& text)
{
    bool found = false;
    text.forEachCharacterRun(text.fullRange(), [&](TextRange, const SharedCharacterStyle& style) {
        found = found || !style->targetName.isEmpty();
    });
    return found;
}

} // namespace

QString linkedTargetName(const QString& link)
{
    const qsizetype hash = link.indexOf(u'#');
    const bool isWithinNotes = hash == 0 || (hash > 0 && link.startsWith(noteAddress));
    return isWithinNotes ? link.sliced(hash + 1) : QString();
}

QString noteTargetLink(const QUuid& noteID, const QString& name)
{
    return noteAddress + noteID.toString(QUuid::WithoutBraces).toUpper() + u'#' + name;
}

std::optional<TextRange> findLinkTarget(const AttributedString& text, const QString& name)
{
    std::optional<TextRange> found;
    if (name.isEmpty())
        return found;
    text.forEachCharacterRun(text.fullRange(),
                             [&](TextRange run, const SharedCharacterStyle& style) {
                                 if (!found && style->targetName == name)
                                     found = run;
                             });
    return found;
}

void dropUnlinkedTargets(AttributedString& text)
{
    if (!hasTargets(text))
        return;
    QSet<QString> linked;
    text.forEachCharacterRun(text.fullRange(), [&](TextRange, const SharedCharacterStyle& style) {
        if (!style->link.isEmpty())
            linked.insert(linkedTargetName(style->link));
    });
    text.modifyCharacterStyles(text.fullRange(), [&](CharacterStyle& style) {
        if (!linked.contains(style.targetName))
            style.targetName.clear();
    });
}

QList<Footnote> footnotes(const AttributedString& text)
{
    struct Named {
        TextRange run;
        QString linksTo;
    };
    QHash<QString, Named> numbers; // what begins a paragraph, by its name
    QList<std::pair<QString, Named>> references;
    text.forEachCharacterRun(
        text.fullRange(), [&](TextRange run, const SharedCharacterStyle& style) {
            const QString& name = style->targetName;
            const QString linksTo = name.isEmpty() ? QString() : linkedTargetName(style->link);
            if (linksTo.isEmpty())
                return;
            const bool begins = run.location == 0 || text.text()[run.location - 1] == u'\n';
            if (begins && !text.paragraphStyle(run.location)->cell)
                numbers.insert(name, {run, linksTo});
            else
                references.append({name, {run, linksTo}});
        });
    QList<Footnote> notes;
    for (const auto& [name, reference] : references) {
        const auto number = numbers.constFind(reference.linksTo);
        if (number == numbers.constEnd() || number->linksTo != name ||
            number->run.location < reference.run.location)
            continue;
        TextRange paragraph = text.paragraphRange(number->run.location);
        if (paragraph.end() > 0 && text.text()[paragraph.end() - 1] == u'\n')
            --paragraph.length;
        qsizetype start = std::min(number->run.end(), paragraph.end());
        if (start < paragraph.end() && text.text()[start] == u' ')
            ++start;
        notes.append({reference.run, paragraph, TextRange::between(start, paragraph.end())});
    }
    return notes;
}

} // namespace orvane
