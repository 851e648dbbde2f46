// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "text/value/ImportedText.h"

#include <QWidget>

class QBoxLayout;
class QLabel;

namespace orvane {

class EditorView;

/// "2 footnotes and 1 comment", as a sentence goes on with it; empty where nothing came in beside
/// the text.
[[nodiscard]] QString cameInWords(const ImportAccount& account);
/// The same of what stayed behind.
[[nodiscard]] QString stayedBehindWords(const ImportAccount& account);

/// A card at the foot of the page, after a text of another program has come in that had more than
/// text: says what came and what stayed behind, and offers the words alone or none of it. It leaves
/// at the next key and with the note.
class PasteStrip final : public QWidget {
    Q_OBJECT
public:
    /// Over the foot of `pane`, `above` pixels from its lower edge. All outlive it.
    PasteStrip(EditorView& view, Look& look, int above, QWidget& pane);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void tell(const ImportAccount& account, const QString& plainText);
    void place();
    void takeBack();

    EditorView& m_view;
    Look& m_look;
    QWidget& m_pane;
    int m_above;
    QBoxLayout* m_sentences;
    QLabel* m_picture;
    QLabel* m_came;
    QLabel* m_behind;
    QString m_plainText;
};

} // namespace orvane
