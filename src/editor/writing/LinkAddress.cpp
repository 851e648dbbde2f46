// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/LinkAddress.h"

#include "core/records/InternalNoteLink.h"
#include "text/value/LinkTargets.h"

#include <QRegularExpression>
#include <QUrl>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

bool matchesAll(const QString& text, const QString& pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

bool isMailAddress(const QString& text)
{
    return matchesAll(text, uR"([^\s@/:?]+@[^\s@/:?.]+(\.[^\s@/:?.]+)+)"_s);
}

/// A host with a dot in it, and perhaps a port and what comes behind.
bool isWebAddress(const QString& text)
{
    return matchesAll(text, uR"([^\s@/:?#.]+(\.[^\s@/:?#.]+)+(:\d+)?([/?#]\S*)?)"_s) &&
           QUrl(u"https://"_s + text).isValid();
}

} // namespace

bool opensOutside(const QUrl& url)
{
    if (url.scheme() == "mailto"_L1)
        return url.isValid() && !url.path().isEmpty();
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == "http"_L1 || url.scheme() == "https"_L1 || url.scheme() == "ftp"_L1);
}

std::optional<QString> linkAddress(const QString& typed)
{
    const QString text = typed.trimmed();
    const QString target = linkedTargetName(text);
    if (const auto note = InternalNoteLink::noteID(text))
        return target.isEmpty() ? InternalNoteLink::link(*note) : noteTargetLink(*note, target);
    if (!target.isEmpty())
        return text;
    if (isMailAddress(text))
        return u"mailto:"_s + text;
    if (isWebAddress(text))
        return u"https://"_s + text;
    const bool isOneWord = matchesAll(text, uR"(\S+)"_s);
    return isOneWord && opensOutside(QUrl(text)) ? std::optional(text) : std::nullopt;
}

} // namespace orvane
