// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

class QKeyEvent;

namespace orvane {

/// Collects what somebody goes on typing while a sheet has come up, so that no word is lost and
/// none of its keys answers the sheet. After a pause, counted from when the sheet came up and from
/// each key, Return and the space bar mean the buttons again.
class TypingAside : public QObject {
    Q_OBJECT
public:
    /// In milliseconds, for all.
    static inline int pause = 1'000;

    /// For all that is in `sheet` by now.
    explicit TypingAside(QWidget& sheet);

    [[nodiscard]] const QString& text() const { return m_text; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool takes(const QKeyEvent& key);

    QString m_text;
    QElapsedTimer m_sinceKey;
};

} // namespace orvane
