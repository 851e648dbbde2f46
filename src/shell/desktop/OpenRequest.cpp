// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/OpenRequest.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>
#include <QDir>
#include <QUrl>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int messageVersion = 1;

std::optional<QStringList> textsFrom(const QCborValue& value)
{
    if (!value.isArray())
        return std::nullopt;
    QStringList texts;
    for (const auto& each : value.toArray()) {
        if (!each.isString())
            return std::nullopt;
        texts.append(each.toString());
    }
    return texts;
}

/// What stands before the first colon, where that is a URL's scheme.
QString schemeOf(const QString& text)
{
    const qsizetype end = text.indexOf("://"_L1);
    return end > 0 ? text.first(end).toLower() : QString();
}

} // namespace

bool isOwnLink(const QString& text)
{
    const QString scheme = schemeOf(text);
    return scheme == "orvaneworkspace"_L1 || scheme == "orvanenotes"_L1;
}

OpenRequest openRequestFor(const QStringList& arguments, const QString& folder)
{
    OpenRequest request;
    for (const QString& argument : arguments) {
        const QString scheme = schemeOf(argument);
        if (isOwnLink(argument))
            request.links.append(argument);
        else if (scheme == "file"_L1)
            request.files.append(QUrl(argument).toLocalFile());
        else if (scheme.isEmpty() && !argument.isEmpty())
            request.files.append(QDir::cleanPath(QDir(folder).absoluteFilePath(argument)));
    }
    return request;
}

QByteArray encoded(const OpenRequest& request)
{
    return QCborMap{{u"version"_s, messageVersion},
                    {u"links"_s, QCborArray::fromStringList(request.links)},
                    {u"files"_s, QCborArray::fromStringList(request.files)},
                    {u"activationToken"_s, request.activationToken}}
        .toCborValue()
        .toCbor();
}

std::optional<OpenRequest> decodedOpenRequest(const QByteArray& message)
{
    if (message.size() > longestOpenRequest)
        return std::nullopt;
    QCborParserError error;
    const QCborValue value = QCborValue::fromCbor(message, &error);
    // What is left of a map that was cut short must not be looked into.
    if (error.error != QCborError::NoError || !value.isMap())
        return std::nullopt;
    const QCborMap map = value.toMap();
    const auto links = textsFrom(map.value(u"links"_s));
    const auto files = textsFrom(map.value(u"files"_s));
    if (map.value(u"version"_s) != messageVersion || !links || !files ||
        !map.value(u"activationToken"_s).isString())
        return std::nullopt;
    OpenRequest request{*links, *files, map.value(u"activationToken"_s).toString()};
    const bool sound = std::all_of(request.links.begin(), request.links.end(), isOwnLink) &&
                       std::all_of(request.files.begin(), request.files.end(),
                                   [](const QString& path) { return QDir::isAbsolutePath(path); });
    return sound ? std::optional(request) : std::nullopt;
}

} // namespace orvane
