// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <memory>

namespace orvane {

/// The pictures that stand before what a question speaks of.
enum class QuestionIcon { Note, Folder };

/// One of two things that a question compares, shown as cards side by side.
struct QuestionSide {
    QuestionIcon icon = QuestionIcon::Note;
    QString title;
    /// Figures and dates, one a line.
    QStringList lines;

    bool operator==(const QuestionSide&) const = default;
};

/// One of the things that a question lists.
struct QuestionRow {
    QuestionIcon icon = QuestionIcon::Note;
    QString title;
    /// Stands at the end of the row.
    QString detail;
    /// A file or folder that the row's "Show" brings up in the file manager; empty for none.
    QString showsPath = {};

    bool operator==(const QuestionRow&) const = default;
};

/// A question or message that must be answered before anything else goes on.
struct Question {
    enum class Tone { Plain, Warning, Destructive };
    static constexpr int lastButton = -1;
    static constexpr int noButton = -2;

    QString title;
    /// What happened and what it means.
    QString text;
    /// Cards below the text; two or none.
    QList<QuestionSide> sides = {};
    /// What was kept and where: a sentence, and rows below it.
    QString kept = {};
    QList<QuestionRow> rows = {};
    /// What each choice does, in the secondary colour.
    QString explanation = {};
    /// From the one that acts to the one that leaves things alone. One button makes a message.
    QStringList buttons;
    int defaultButton = 0;
    /// What Escape and closing the window answer: the last button, or `noButton` where that is no
    /// answer at all.
    int cancelButton = lastButton;
    /// The button that stands apart at the other end, if any.
    int apartButton = noButton;
    /// The button in the colour of danger, if any; with `Tone::Destructive` the first.
    int dangerButton = noButton;
    /// Text of a do-not-ask-again box; empty for none.
    QString suppression;
    /// Entries of a list to choose one from; empty for none.
    QStringList choices;
    Tone tone = Tone::Plain;
    /// It comes while somebody writes: what is typed goes into the answer and chooses no button
    /// until the keys have paused.
    bool keepsTyping = false;

    bool operator==(const Question&) const = default;
};

struct Answer {
    /// `Question::noButton` when the question was closed without an answer.
    int button = 0;
    bool suppress = false;
    int choice = 0;
    /// With `Question::keepsTyping`, the text that was typed until there was an answer.
    QString typed = {};
};

/// What Escape answers.
[[nodiscard]] int cancelAnswer(const Question& question);

/// A question that is on the screen while the program goes on. Destroying it takes it off the
/// screen without an answer.
class ShownQuestion {
public:
    virtual ~ShownQuestion() = default;
    /// Shows other words, figures or rows in its place; the buttons stay as many as they were.
    virtual void change(const Question& question) = 0;
};

/// Asks the person questions. Main thread.
class Questions {
public:
    virtual ~Questions() = default;
    /// Returns when the question is answered.
    virtual Answer ask(const Question& question) = 0;
    /// Returns at once; `answered` is called once, from the event loop, unless the handle is
    /// destroyed first. `answered` may destroy the handle.
    [[nodiscard]] virtual std::unique_ptr<ShownQuestion>
    show(const Question& question, std::function<void(const Answer&)> answered) = 0;
    /// Asks for the name of a file or folder to be written; empty when the person decides
    /// otherwise. `suggestedPath` is absolute.
    [[nodiscard]] virtual QString fileToSave(const QString& title,
                                             const QString& suggestedPath) = 0;
};

/// Gives prepared answers in order and remembers what was asked; without an answer left it takes
/// the button that leaves things alone. What is shown is answered by `answerShown`.
class ScriptedQuestions : public Questions {
public:
    Answer ask(const Question& question) override;
    std::unique_ptr<ShownQuestion> show(const Question& question,
                                        std::function<void(const Answer&)> answered) override;
    QString fileToSave(const QString& title, const QString& suggestedPath) override;

    /// The questions that are on the screen now, the last one on top.
    [[nodiscard]] QList<Question> shown() const;
    /// Answers the one on top, which must be there.
    void answerShown(const Answer& answer);

    std::deque<Answer> answers;
    QList<Question> asked;
    /// What `fileToSave` gives, in order; empty when there is none left.
    std::deque<QString> files;

private:
    struct Entry {
        Question question;
        std::function<void(const Answer&)> answered;
    };
    class Handle;
    std::shared_ptr<QList<std::shared_ptr<Entry>>> m_shown =
        std::make_shared<QList<std::shared_ptr<Entry>>>();
};

} // namespace orvane
