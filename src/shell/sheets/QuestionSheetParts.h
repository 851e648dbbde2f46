// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "platform/Questions.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>

class QVBoxLayout;

namespace orvane {

/// The title of a question, behind a triangle where something is wrong. Wraps, also inside a long
/// name, and is cut after three lines; the whole is in its tool tip then.
class QuestionTitle : public QLabel {
    Q_OBJECT
public:
    QuestionTitle(Look& look, QWidget* parent);

    void setTitle(const QString& title, Question::Tone tone);
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] int indent() const;
    /// The lines that are shown; the last one is cut where there are more.
    [[nodiscard]] QStringList linesFor(int width) const;

    Look& m_look;
    bool m_warns = false;
};

/// A card that says what one of two things is. Each line is cut where it has no room, a path in
/// its middle; the whole is in the card's tool tip then.
class QuestionSideCard : public QWidget {
    Q_OBJECT
public:
    QuestionSideCard(Look& look, QWidget* parent);

    void setSide(const QuestionSide& side);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    Look& m_look;
    QuestionSide m_side;
};

/// One row of what a question lists, with "Show" where there is a path to show.
class QuestionRowView : public QWidget {
    Q_OBJECT
public:
    QuestionRowView(Look& look, QWidget* parent);

    void setRow(const QuestionRow& row);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    /// Where title and detail stand, before the row is mirrored.
    [[nodiscard]] QRect titleRect() const;
    [[nodiscard]] QRect detailRect() const;
    void showInFileManager();

    Look& m_look;
    QuestionRow m_row;
    QPushButton* m_show;
};

/// The rows, which scroll where there are more of them than there is room.
class QuestionRowList : public QScrollArea {
    Q_OBJECT
public:
    QuestionRowList(Look& look, QWidget* parent);

    void setRows(const QList<QuestionRow>& rows);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int heightOf(qsizetype rows) const;

    Look& m_look;
    QWidget* m_content;
    QVBoxLayout* m_layout;
    QList<QuestionRowView*> m_rows;
};

} // namespace orvane
