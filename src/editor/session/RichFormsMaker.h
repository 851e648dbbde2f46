// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/session/StoredText.h"
#include "text/store/TextSnapshot.h"

#include <QObject>
#include <QThreadPool>

#include <future>
#include <optional>

namespace orvane {

/// Makes the stored forms of a rich text away from the main thread, for one generation of the text
/// at a time. Used from the main thread.
class RichFormsMaker : public QObject {
    Q_OBJECT
public:
    explicit RichFormsMaker(QObject* parent = nullptr);
    ~RichFormsMaker() override;

    /// Begins with `text`; what was made of another generation is forgotten.
    void start(quint64 generation, TextSnapshot text, const HeadingSizes& headings);
    [[nodiscard]] bool hasStarted(quint64 generation) const;
    [[nodiscard]] bool hasFinished(quint64 generation) const;
    /// The forms of what was started last; waits until they are made.
    [[nodiscard]] RichForms take();

    /// The forms of `text` as soon as they can be had, with the help of another thread.
    [[nodiscard]] RichForms makeNow(const TextSnapshot& text, const HeadingSizes& headings);

signals:
    void finished(quint64 generation);

private:
    struct Job {
        quint64 generation;
        std::future<RichForms> forms;
    };

    QThreadPool m_pool;
    std::optional<Job> m_job;
};

} // namespace orvane
