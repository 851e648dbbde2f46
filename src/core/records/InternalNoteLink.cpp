// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/InternalNoteLink.h"

#include <QUrl>

namespace orvane::InternalNoteLink {

using namespace Qt::StringLiterals;

std::optional<QUuid> noteID(const QString& text)
{
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() ||
        (url.scheme() != "orvaneworkspace"_L1 && url.scheme() != "orvanenotes"_L1))
        return std::nullopt;
    if (url.host().compare("note"_L1, Qt::CaseInsensitive) != 0)
        return std::nullopt;
    const QUuid id(url.path().section(u'/', 0, 0, QString::SectionSkipEmpty));
    return id.isNull() ? std::nullopt : std::optional(id);
}

QString link(const QUuid& noteID)
{
    return u"orvaneworkspace://note/"_s + noteID.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace orvane::InternalNoteLink
