// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/attachments/SafeSvg.h"

#include <QHash>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <vector>

namespace orvane {

namespace {

using namespace Qt::StringLiterals;

constexpr int deepest = 200;
constexpr qint64 mostElements = 200'000;
/// A line of dashes shorter than this takes longer to draw than anybody waits.
constexpr double shortestDash = 0.05;

QStringView localName(QStringView name)
{
    return name.sliced(name.lastIndexOf(u':') + 1);
}

/// Elements that run something, or show what lies elsewhere.
bool isLeftOut(QStringView element)
{
    constexpr QStringView names[] = {u"script", u"foreignObject", u"handler", u"listener",
                                     u"iframe", u"audio",         u"video"};
    return std::ranges::find(names, element) != std::end(names);
}

/// Whether a text of style or an attribute names something outside of the drawing.
bool pointsOutside(QStringView text)
{
    if (text.contains("@import"_L1, Qt::CaseInsensitive))
        return true;
    for (qsizetype at = 0; (at = text.indexOf("url"_L1, at, Qt::CaseInsensitive)) >= 0;) {
        at += 3;
        QStringView target = text.sliced(at).trimmed();
        if (!target.startsWith(u'('))
            continue;
        target = target.sliced(1).trimmed();
        while (target.startsWith(u'"') || target.startsWith(u'\''))
            target = target.sliced(1);
        if (!target.startsWith(u'#'))
            return true;
    }
    return false;
}

bool isOwnPicture(QStringView address)
{
    return address.startsWith("data:image/png"_L1) || address.startsWith("data:image/jpeg"_L1);
}

bool hasTinyDashes(QStringView dashes)
{
    const auto numbers = dashes.toString().split(u' ', Qt::SkipEmptyParts);
    return std::ranges::any_of(numbers.join(u',').split(u',', Qt::SkipEmptyParts),
                               [](const QString& number) {
                                   const double length = number.toDouble();
                                   return length > 0 && length < shortestDash;
                               });
}

bool isKept(QStringView name, QStringView value)
{
    const QStringView local = localName(name);
    if (local.startsWith("on"_L1, Qt::CaseInsensitive) || local == u"base")
        return false;
    if (local == u"href" || local == u"src")
        return value.startsWith(u'#') || isOwnPicture(value);
    if (local == u"stroke-dasharray" && hasTinyDashes(value))
        return false;
    return name.startsWith("xmlns"_L1) || !pointsOutside(value);
}

/// How many elements are drawn, those counted that are shown in several places.
class Repetitions {
public:
    /// An element begins, within the one that began last and hasn't ended.
    void begin(const QString& id, const QString& repeated)
    {
        const int index = int(m_elements.size());
        m_elements.push_back({{}, repeated, 0, false});
        if (!m_open.empty())
            m_elements[std::size_t(m_open.back())].children.push_back(index);
        m_open.push_back(index);
        if (!id.isEmpty())
            m_byId.insert(id, index);
    }
    void end() { m_open.pop_back(); }
    [[nodiscard]] int depth() const { return int(m_open.size()); }
    [[nodiscard]] bool areFew() { return m_elements.empty() || count(0, 0) <= mostElements; }

private:
    struct Element {
        std::vector<int> children;
        QString repeated; ///< the identifier of what it shows again
        qint64 count;     ///< 0 where it isn't known yet
        bool isOpen;      ///< being counted
    };

    qint64 count(int index, int depth)
    {
        Element& element = m_elements[std::size_t(index)];
        if (element.count > 0)
            return element.count;
        if (element.isOpen || depth > 2 * deepest)
            return mostElements + 1; // shows itself
        element.isOpen = true;
        qint64 sum = 1;
        for (const int child : element.children)
            sum = std::min(sum + count(child, depth + 1), mostElements + 1);
        if (const auto again = m_byId.constFind(element.repeated); again != m_byId.cend())
            sum = std::min(sum + count(*again, depth + 1), mostElements + 1);
        element.isOpen = false;
        return element.count = sum;
    }

    std::vector<Element> m_elements;
    std::vector<int> m_open;
    QHash<QString, int> m_byId;
};

} // namespace

bool isSvg(const QByteArray& bytes)
{
    constexpr qsizetype looked = 1024;
    const QByteArray head = bytes.first(std::min(looked, bytes.size())).trimmed();
    const bool isMarkup = head.startsWith('<') || head.startsWith("\xef\xbb\xbf<");
    return isMarkup && (head.contains("<svg") || head.contains(":svg"));
}

std::optional<QByteArray> safeSvg(const QByteArray& svg)
{
    QXmlStreamReader reader(svg);
    // Names stay as they are spelled.
    reader.setNamespaceProcessing(false);
    QByteArray safe;
    QXmlStreamWriter writer(&safe);
    writer.writeStartDocument();
    Repetitions repetitions;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            const QStringView name = localName(reader.qualifiedName());
            if (repetitions.depth() == 0 && name != u"svg")
                return std::nullopt;
            if (isLeftOut(name)) {
                reader.skipCurrentElement();
                break;
            }
            if (name == u"style") {
                const QString style = reader.readElementText(QXmlStreamReader::SkipChildElements);
                if (!pointsOutside(style))
                    writer.writeTextElement("style"_L1, style);
                break;
            }
            writer.writeStartElement(reader.qualifiedName().toString());
            QString id;
            QString repeated;
            for (const QXmlStreamAttribute& attribute : reader.attributes()) {
                const QStringView attributeName = attribute.qualifiedName();
                if (!isKept(attributeName, attribute.value()))
                    continue;
                writer.writeAttribute(attributeName.toString(), attribute.value().toString());
                if (attributeName == u"id")
                    id = attribute.value().toString();
                else if (name == u"use" && localName(attributeName) == u"href")
                    repeated = attribute.value().sliced(1).toString();
            }
            repetitions.begin(id, repeated);
            if (repetitions.depth() > deepest)
                return std::nullopt;
            break;
        }
        case QXmlStreamReader::EndElement:
            writer.writeEndElement();
            repetitions.end();
            break;
        case QXmlStreamReader::Characters:
            writer.writeCharacters(reader.text().toString());
            break;
        default:
            break; // comments, entities, processing instructions
        }
    }
    if (reader.hasError() || !repetitions.areFew())
        return std::nullopt;
    writer.writeEndDocument();
    return safe;
}

} // namespace orvane
