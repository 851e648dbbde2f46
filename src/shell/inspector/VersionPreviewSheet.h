// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/NoteRecord.h"
#include "core/records/TextDifference.h"
#include "core/versions/NoteVersion.h"
#include "shell/sheets/SheetHost.h"

class QCheckBox;
class QLabel;
class QTextEdit;

namespace orvane {

/// Shows a version of a note to read, on wish with what has changed since marked in it.
class VersionPreviewSheet : public Sheet {
    Q_OBJECT
public:
    enum class Restoring { Offered, NotPossible };

    VersionPreviewSheet(const NoteVersionSnapshot& version, const NoteRecord& note, Timestamp now,
                        const QString& fontFamily, Restoring restoring, Look& look,
                        QWidget* parent = nullptr);

    [[nodiscard]] QWidget* initialFocus() override;
    [[nodiscard]] QSize sizeHint() const override { return {760, 680}; }

signals:
    void restoreRequested();

private:
    [[nodiscard]] QLayout* makeHead(Timestamp now, const NoteRecord& note);
    [[nodiscard]] QLayout* makeFoot(Restoring restoring);
    void showText();

    NoteVersionSnapshot m_version;
    QList<TextPiece> m_title;
    QList<TextPiece> m_body;
    QString m_fontFamily;
    QTextEdit* m_text;
    QCheckBox* m_marks;
    QLabel* m_legend;
};

} // namespace orvane
