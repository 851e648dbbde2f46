// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/spelling/SpellChecker.h"

#include <QBasicTimer>
#include <QCache>
#include <QObject>
#include <QTextBlock>

namespace orvane {

class TextStore;

/// No piece of text that is checked at once is much longer than this, in UTF-16 units.
inline constexpr qsizetype spellingPieceLength = 1000;

/// The pieces in which the paragraph of `block` is checked, as far as they touch `range`; both in
/// positions of the text. They end at white space, so that words stay whole, and don't move when
/// the text behind them changes.
[[nodiscard]] QList<TextRange> spellingPieces(const TextStore& store, const QTextBlock& block,
                                              TextRange range);

/// What is known of the spelling of pieces of text. What is not known yet is found out in short
/// slices while the program has nothing else to do. Main thread.
class SpellingResults : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Forgets everything. The checker outlives its use; null for no checking.
    void setChecker(SpellChecker* checker);
    void forget();

    /// The misspelt words of `piece`, in its positions; null if they are not known yet. Then they
    /// are looked for later, and `found` is told.
    [[nodiscard]] const QList<TextRange>* find(const QString& piece);
    /// Looks for them now.
    [[nodiscard]] QList<TextRange> check(const QString& piece);
    /// While somebody types nothing is looked for: the words are not finished.
    void waitForPause();

signals:
    void found();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    SpellChecker* m_checker = nullptr;
    QCache<QString, QList<TextRange>> m_known{4000};
    QList<QString> m_wanted;
    QBasicTimer m_timer;
    bool m_waits = false;
};

} // namespace orvane
