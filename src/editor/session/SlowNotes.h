// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/UserDefaults.h"

#include <QElapsedTimer>
#include <QObject>
#include <QUuid>

#include <optional>

namespace orvane {

class EditorView;
class TextStore;

/// Keeps a note from ending every start: one with a very long line may take longer to lay out than
/// a person waits. Such a note is marked in the user defaults, on the disk, before it is laid out,
/// and the mark goes when it has been painted in time. Texts with ordinary lines cost nothing.
class SlowNotes : public QObject {
    Q_OBJECT
public:
    SlowNotes(EditorView& view, UserDefaults& defaults);
    ~SlowNotes() override;

    /// The view is about to lay out `text`, which is that of `noteID`, or a large new part of it.
    void begin(const std::optional<QUuid>& noteID, const TextStore& text);
    /// It has got the text. What comes until it is painted doesn't count.
    void pause();
    /// The time, in milliseconds, beyond which a note keeps its mark.
    void setLimit(qint64 milliseconds) { m_limit = milliseconds; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void end();
    enum class Pace { slow, inTime };
    void mark(const QUuid& noteID, Pace pace);

    UserDefaults& m_defaults;
    std::optional<QUuid> m_noteID;
    QElapsedTimer m_timer;
    qint64 m_spent = 0;
    /// Counts what was begun.
    int m_begun = 0;
    qint64 m_limit = 3'000;
};

/// A paragraph of up to so many UTF-16 units is laid out before anybody notices.
inline constexpr int ordinaryParagraph = 20'000;

} // namespace orvane
