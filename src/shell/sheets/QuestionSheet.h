// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Questions.h"
#include "shell/sheets/QuestionSheetParts.h"
#include "shell/sheets/SheetHost.h"

#include <QHash>
#include <QTimer>

class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QVBoxLayout;

namespace orvane {

class MessageText;

/// A question of `Questions` as a sheet. Keys that were meant for something else don't answer it:
/// Return and the space bar act once it has been on the screen for a moment without a key, and
/// never by repeating themselves. Escape always does, since it leaves things alone.
class QuestionSheet : public Sheet {
    Q_OBJECT
public:
    QuestionSheet(const Question& question, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] const Answer& answer() const { return m_answer; }
    [[nodiscard]] QWidget* initialFocus() override;
    void dismiss() override;
    [[nodiscard]] QSize sizeHint() const override;
    /// Shows another question in this one's place. What has the focus keeps it.
    void change(const Question& question);
    /// Goes without an answer.
    void withdraw();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Body;

    [[nodiscard]] int textWidth() const;
    void makeBody(QVBoxLayout& layout);
    [[nodiscard]] MessageText* addText(QVBoxLayout& layout, LabelInk ink);
    void makeChoices(QVBoxLayout& layout);
    [[nodiscard]] QWidget* makeButtons();
    void showQuestion();
    void showButton(int index);
    void answerWith(int button);
    /// Whether the key press was meant for this sheet, as far as one can tell.
    [[nodiscard]] bool isMeant(const QKeyEvent& press);

    Question m_question;
    Answer m_answer;
    QuestionTitle* m_title = nullptr;
    MessageText* m_text = nullptr;
    Body* m_body = nullptr;
    QHBoxLayout* m_sideRow = nullptr;
    QList<QuestionSideCard*> m_sides;
    MessageText* m_kept = nullptr;
    QuestionRowList* m_rows = nullptr;
    MessageText* m_explanation = nullptr;
    QCheckBox* m_suppression = nullptr;
    QComboBox* m_choices = nullptr;
    QHash<int, QPushButton*> m_buttons;
    QTimer m_quiet;
    bool m_takesKeys = false;
};

/// Asks in the window of a sheet host, and keeps the event loop running until there is an answer.
class SheetQuestions final : public Questions {
public:
    /// Where to ask from now on; before that each question takes the answer that leaves things
    /// alone.
    void setHost(SheetHost* host, Look* look);
    Answer ask(const Question& question) override;
    std::unique_ptr<ShownQuestion> show(const Question& question,
                                        std::function<void(const Answer&)> answered) override;
    QString fileToSave(const QString& title, const QString& suggestedPath) override;

private:
    QPointer<SheetHost> m_host;
    QPointer<Look> m_look;
};

} // namespace orvane
