// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/session/RichFormsMaker.h"

#include "text/attachments/AttachmentManager.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"

namespace orvane {

RichFormsMaker::RichFormsMaker(QObject* parent)
    : QObject(parent)
{
    // A job whose text has changed meanwhile may still run while the next one is wanted.
    m_pool.setMaxThreadCount(2);
}

RichFormsMaker::~RichFormsMaker()
{
    m_pool.waitForDone();
}

void RichFormsMaker::start(quint64 generation, TextSnapshot text, const HeadingSizes& headings)
{
    auto promise = std::make_shared<std::promise<RichForms>>();
    m_job = Job{generation, promise->get_future()};
    m_pool.start([this, generation, promise, text = std::move(text), headings] {
        promise->set_value(richForms(text.toAttributedString(), headings));
        QMetaObject::invokeMethod(
            this, [this, generation] { emit finished(generation); }, Qt::QueuedConnection);
    });
}

bool RichFormsMaker::hasStarted(quint64 generation) const
{
    return m_job && m_job->generation == generation;
}

bool RichFormsMaker::hasFinished(quint64 generation) const
{
    return hasStarted(generation) &&
           m_job->forms.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

RichForms RichFormsMaker::take()
{
    Q_ASSERT(m_job);
    RichForms forms = m_job->forms.get();
    m_job.reset();
    return forms;
}

RichForms RichFormsMaker::makeNow(const TextSnapshot& snapshot, const HeadingSizes& headings)
{
    const AttributedString text = snapshot.toAttributedString();
    if (text.isEmpty())
        return {};
    auto rtf = std::make_shared<std::promise<std::optional<QByteArray>>>();
    auto made = rtf->get_future();
    m_pool.start([rtf, text, headings] {
        rtf->set_value(
            OrvaneWorkspaceRTF::data(AttachmentManager::withoutImageBytes(text), headings));
    });
    RichForms forms;
    forms.rich = AttachmentManager::archivePayload(text);
    forms.plain = plainForm(text.text());
    forms.images = AttachmentManager::imageFiles(text);
    forms.rtf = made.get();
    return forms;
}

} // namespace orvane
