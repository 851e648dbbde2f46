// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/sheets/QuestionSheet.h"

#include "appearance/OrvaneStyle.h"
#include "shell/sheets/MessageText.h"
#include "shell/window/TypingAside.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QEventLoop>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace orvane {

using namespace std::chrono_literals;

namespace {

constexpr int narrow = 440;
constexpr int wide = 560;
constexpr int detailed = 632;
constexpr int padding = 28;
/// Of the padding, what is left of a scroll bar.
constexpr int edge = 12;
/// Longer messages get the wider card.
constexpr qsizetype longMessage = 200;
constexpr int narrowestButton = 84;
constexpr int buttonGap = 10;
/// Longer than between the keys of somebody who is typing.
constexpr auto quietTime = 300ms;

/// Whether it shows more than words.
bool isDetailed(const Question& question)
{
    return !question.sides.isEmpty() || !question.kept.isEmpty() || !question.rows.isEmpty() ||
           !question.explanation.isEmpty();
}

/// From the end of the row of buttons to its beginning.
QList<int> buttonOrder(const Question& question)
{
    QList<int> order;
    for (int i = 0; i < question.buttons.size(); ++i) {
        if (i != question.apartButton)
            order.append(i);
    }
    if (isDetailed(question) && order.removeOne(question.defaultButton))
        order.prepend(question.defaultButton);
    return order;
}

ButtonTone toneOf(const Question& question, int button)
{
    if (question.tone == Question::Tone::Destructive && button == 0)
        return ButtonTone::Danger;
    if (button == question.dangerButton)
        return ButtonTone::DangerText;
    return button == question.defaultButton ? ButtonTone::Accent : ButtonTone::Plain;
}

/// The handle of a question that is on the screen. What is still to be told goes with it.
class ShownSheet final : public ShownQuestion {
public:
    using Answered = std::function<void(const Answer&)>;

    explicit ShownSheet(Answered answered)
        : m_answered(std::move(answered))
    {}
    ~ShownSheet() override
    {
        if (m_sheet)
            m_sheet->withdraw();
    }
    void change(const Question& question) override
    {
        if (m_sheet)
            m_sheet->change(question);
    }
    void follow(QuestionSheet* sheet)
    {
        m_sheet = sheet;
        QObject::connect(sheet, &Sheet::finished, &m_context, [this] {
            const Answer answer = m_sheet->answer();
            m_sheet = nullptr;
            tell(answer);
        });
    }
    void tell(const Answer& answer)
    {
        QMetaObject::invokeMethod(
            &m_context, [answered = m_answered, answer] { answered(answer); },
            Qt::QueuedConnection);
    }

private:
    Answered m_answered;
    QPointer<QuestionSheet> m_sheet;
    QObject m_context;
};

} // namespace

/// What stands between title and buttons; scrolls where the window is too low for it.
class QuestionSheet::Body final : public QScrollArea {
public:
    explicit Body(QWidget* parent)
        : QScrollArea(parent)
        , m_content(new QWidget)
    {
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setWidgetResizable(true);
        setFocusPolicy(Qt::NoFocus);
        setWidget(m_content);
        viewport()->setAutoFillBackground(false);
        m_content->setAutoFillBackground(false);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    [[nodiscard]] QWidget* content() const { return m_content; }
    [[nodiscard]] QSize sizeHint() const override { return m_content->layout()->sizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 60}; }

private:
    QWidget* m_content;
};

QuestionSheet::QuestionSheet(const Question& question, Look& look, QWidget* parent)
    : Sheet(look, parent)
    , m_question(question)
    , m_answer{cancelAnswer(question), false, 0}
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(edge, padding - 4, edge, padding - 4 - ringRoom);
    layout->setSpacing(0);
    const auto addColumn = [layout] {
        auto* column = new QVBoxLayout;
        column->setContentsMargins(padding - edge, 0, padding - edge, 0);
        column->setSpacing(8);
        layout->addLayout(column);
        return column;
    };
    auto* head = addColumn();
    m_title = new QuestionTitle(look, this);
    head->addWidget(m_title);
    if (isDetailed(question))
        makeBody(*layout);
    else if (!question.text.isEmpty())
        m_text = addText(*head, LabelInk::Secondary);
    makeChoices(*addColumn());
    layout->addSpacing(20 - ringRoom);
    layout->addWidget(makeButtons());
    showQuestion();
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietTime);
    m_quiet.callOnTimeout(this, [this] { m_takesKeys = true; });
}

int QuestionSheet::textWidth() const
{
    return sizeHint().width() - 2 * padding;
}

MessageText* QuestionSheet::addText(QVBoxLayout& layout, LabelInk ink)
{
    const auto lines =
        isDetailed(m_question) ? MessageText::Lines::Loose : MessageText::Lines::Tight;
    auto* text = new MessageText(textWidth(), ink, lines, look(), this);
    layout.addWidget(text, 0, Qt::AlignLeft);
    return text;
}

void QuestionSheet::makeBody(QVBoxLayout& layout)
{
    m_body = new Body(this);
    layout.addSpacing(8);
    layout.addWidget(m_body);
    auto* column = new QVBoxLayout(m_body->content());
    column->setContentsMargins(padding - edge, 0, 0, 0);
    column->setSpacing(8);
    m_text = addText(*column, LabelInk::Primary);
    auto* sides = new QWidget;
    sides->setFixedWidth(textWidth());
    m_sideRow = new QHBoxLayout(sides);
    m_sideRow->setContentsMargins(0, 4, 0, 0);
    m_sideRow->setSpacing(12);
    column->addWidget(sides, 0, Qt::AlignLeft);
    m_kept = addText(*column, LabelInk::Primary);
    m_rows = new QuestionRowList(look(), this);
    m_rows->setFixedWidth(textWidth());
    column->addWidget(m_rows, 1, Qt::AlignLeft);
    m_explanation = addText(*column, LabelInk::Secondary);
}

void QuestionSheet::makeChoices(QVBoxLayout& layout)
{
    if (!m_question.choices.isEmpty()) {
        m_choices = new QComboBox(this);
        m_choices->addItems(m_question.choices);
        layout.addSpacing(12);
        layout.addWidget(m_choices);
    }
    if (!m_question.suppression.isEmpty()) {
        m_suppression = new QCheckBox(m_question.suppression, this);
        layout.addSpacing(m_choices ? 4 : 12);
        layout.addWidget(m_suppression);
    }
}

QWidget* QuestionSheet::makeButtons()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    const int inset = padding - edge - ringRoom;
    layout->setContentsMargins(inset, 0, inset, 0);
    layout->setSpacing(buttonGap - 2 * ringRoom);
    const auto add = [&](int index) {
        auto* button = new QPushButton(row);
        setRingAroundFace(button);
        button->installEventFilter(this);
        connect(button, &QPushButton::clicked, this, [this, index] { answerWith(index); });
        m_buttons.insert(index, button);
        showButton(index);
        layout->addWidget(button);
    };
    if (m_question.apartButton >= 0)
        add(m_question.apartButton);
    layout->addStretch();
    const QList<int> order = buttonOrder(m_question);
    for (auto index = order.rbegin(); index != order.rend(); ++index)
        add(*index);
    if (row->sizeHint().width() > sizeHint().width() - 2 * edge)
        layout->setDirection(QBoxLayout::TopToBottom);
    return row;
}

void QuestionSheet::showButton(int index)
{
    QPushButton& button = *m_buttons.value(index);
    button.setText(m_question.buttons.value(index));
    button.setDefault(index == m_question.defaultButton);
    setButtonTone(&button, toneOf(m_question, index));
    if (!isDetailed(m_question))
        button.setMinimumWidth(narrowestButton + 2 * ringRoom);
}

void QuestionSheet::showQuestion()
{
    setAccessibleName(m_question.title);
    setAccessibleDescription(m_question.text);
    m_title->setTitle(m_question.title, m_question.tone);
    if (m_text)
        m_text->setMessage(m_question.text);
    if (m_choices)
        m_choices->setAccessibleName(m_question.title);
    if (!m_body)
        return;
    m_kept->setMessage(m_question.kept);
    m_explanation->setMessage(m_question.explanation);
    m_rows->setRows(m_question.rows);
    m_rows->setAccessibleName(m_question.kept.isEmpty() ? m_question.text : m_question.kept);
    while (m_sides.size() > m_question.sides.size())
        delete m_sides.takeLast();
    while (m_sides.size() < m_question.sides.size()) {
        m_sides.append(new QuestionSideCard(look(), this));
        m_sideRow->addWidget(m_sides.last(), 1);
    }
    for (qsizetype i = 0; i < m_sides.size(); ++i)
        m_sides.at(i)->setSide(m_question.sides.at(i));
    m_sideRow->parentWidget()->setVisible(!m_sides.isEmpty());
    m_body->updateGeometry(); // which a scroll area doesn't do for what is in it
}

QSize QuestionSheet::sizeHint() const
{
    const int width = isDetailed(m_question)                 ? detailed
                      : m_question.text.size() > longMessage ? wide
                                                             : narrow;
    return {width, layout() ? layout()->totalHeightForWidth(width) : 0};
}

QWidget* QuestionSheet::initialFocus()
{
    return m_buttons.value(m_question.defaultButton);
}

void QuestionSheet::dismiss()
{
    answerWith(cancelAnswer(m_question));
}

void QuestionSheet::answerWith(int button)
{
    m_answer.button = button;
    m_answer.suppress = m_suppression && m_suppression->isChecked();
    m_answer.choice = m_choices ? m_choices->currentIndex() : 0;
    close();
}

void QuestionSheet::change(const Question& question)
{
    if (question == m_question)
        return;
    m_question = question;
    showQuestion();
    for (auto each = m_buttons.keyBegin(); each != m_buttons.keyEnd(); ++each)
        showButton(*each);
    fitContents();
}

void QuestionSheet::withdraw()
{
    disconnect(this, &Sheet::finished, nullptr, nullptr);
    close();
}

void QuestionSheet::paintEvent(QPaintEvent* event)
{
    Sheet::paintEvent(event);
    if (m_takesKeys || m_quiet.isActive())
        return;
    m_quiet.start();
    QAccessibleEvent shown(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&shown);
}

bool QuestionSheet::isMeant(const QKeyEvent& press)
{
    const int key = press.key();
    const bool acts = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space ||
                      key == Qt::Key_Select;
    if (!m_takesKeys && m_quiet.isActive() && key != Qt::Key_Tab && key != Qt::Key_Backtab)
        m_quiet.start();
    return !acts || (m_takesKeys && !press.isAutoRepeat());
}

bool QuestionSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && !isMeant(*static_cast<QKeyEvent*>(event)))
        return true;
    return Sheet::eventFilter(watched, event);
}

void QuestionSheet::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (m_body && (key == Qt::Key_PageUp || key == Qt::Key_PageDown))
        return m_body->verticalScrollBar()->triggerAction(
            key == Qt::Key_PageUp ? QScrollBar::SliderPageStepSub : QScrollBar::SliderPageStepAdd);
    if (isMeant(*event))
        Sheet::keyPressEvent(event);
}

void SheetQuestions::setHost(SheetHost* host, Look* look)
{
    m_host = host;
    m_look = look;
}

Answer SheetQuestions::ask(const Question& question)
{
    if (!m_host || !m_look)
        return {cancelAnswer(question), false, 0};
    auto* sheet = new QuestionSheet(question, *m_look);
    Answer answer{cancelAnswer(question), false, 0};
    const auto* aside = question.keepsTyping ? new TypingAside(*sheet) : nullptr;
    QEventLoop loop;
    QObject::connect(sheet, &Sheet::finished, &loop, [&] {
        answer = sheet->answer();
        if (aside)
            answer.typed = aside->text();
        loop.quit();
    });
    // The window may go while the question is open.
    QObject::connect(sheet, &QObject::destroyed, &loop, &QEventLoop::quit);
    m_host->present(sheet);
    loop.exec(QEventLoop::DialogExec);
    return answer;
}

std::unique_ptr<ShownQuestion> SheetQuestions::show(const Question& question,
                                                    std::function<void(const Answer&)> answered)
{
    auto shown = std::make_unique<ShownSheet>(std::move(answered));
    if (!m_host || !m_look) {
        shown->tell({cancelAnswer(question), false, 0});
        return shown;
    }
    auto* sheet = new QuestionSheet(question, *m_look);
    shown->follow(sheet);
    m_host->present(sheet);
    return shown;
}

QString SheetQuestions::fileToSave(const QString& title, const QString& suggestedPath)
{
    return QFileDialog::getSaveFileName(m_host ? m_host->window() : nullptr, title, suggestedPath);
}

} // namespace orvane
