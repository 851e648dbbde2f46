// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/TextAttachment.h"

#include "text/value/OWChartBlock.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <variant>

namespace orvane {

struct TextAttachment::Content {
    std::variant<OrvaneNoteImageAttachment, OWChartAttachment> object;
};

TextAttachment::TextAttachment(OrvaneNoteImageAttachment image)
    : m_content(std::make_shared<Content>(std::move(image)))
{}

TextAttachment::TextAttachment(OWChartAttachment chart)
    : m_content(std::make_shared<Content>(std::move(chart)))
{}

const OrvaneNoteImageAttachment* TextAttachment::image() const
{
    return m_content ? std::get_if<OrvaneNoteImageAttachment>(&m_content->object) : nullptr;
}

const OWChartAttachment* TextAttachment::chart() const
{
    return m_content ? std::get_if<OWChartAttachment>(&m_content->object) : nullptr;
}

QUuid TextAttachment::id() const
{
    if (const OrvaneNoteImageAttachment* found = image())
        return found->attachmentID;
    const OWChartAttachment* found = chart();
    return found ? found->chartBlock.id : QUuid();
}

bool operator==(const TextAttachment& left, const TextAttachment& right)
{
    if (left.m_content == right.m_content)
        return true;
    return left.m_content && right.m_content && left.m_content->object == right.m_content->object;
}

} // namespace orvane
