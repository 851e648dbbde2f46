// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/images/ImageControls.h"

#include "appearance/Drawing.h"
#include "appearance/OrvaneStyle.h"
#include "commands/ImageCommands.h"
#include "editor/formatting/PointsField.h"
#include "editor/images/ImageHandles.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>

namespace orvane {

namespace {

namespace Format = EditorFormatNotifications;
using WrapMode = OrvaneNoteImageWrapMode;

constexpr WrapMode modes[] = {WrapMode::inLine, WrapMode::topAndBottom, WrapMode::behindText,
                              WrapMode::inFrontOfText};

/// A placement as a drawing with its name below.
class PlacementButton final : public QAbstractButton {
public:
    PlacementButton(WrapMode mode, Look& look, Surface surface, QWidget* parent)
        : QAbstractButton(parent)
        , m_mode(mode)
        , m_look(look)
        , m_surface(surface)
    {
        setText(nameOf(mode));
        setAccessibleName(text());
        setCheckable(true);
        setAttribute(Qt::WA_Hover);
        setFocusPolicy(Qt::TabFocus);
        setFixedHeight(46);
        setMinimumWidth(84);
        setToolTip(text());
        connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
    }
    [[nodiscard]] QSize sizeHint() const override { return {120, 46}; }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        const SurfaceTokens& surface = m_look.tokens().on(m_surface);
        if (isChecked())
            drawPanel(painter, rect(), 4, surface.selectedRow, surface.accent);
        else if (underMouse())
            drawPanel(painter, rect(), 4, surface.hoveredRow);
        const QColor ink = isChecked() ? surface.textOnSelectedRow : surface.text;
        paintDrawing(painter, QRectF((width() - 18) / 2, 7, 18, 14), ink,
                     isChecked() ? surface.selectedRow : surface.ground);
        painter.setFont(interfaceFont(TextStyle::Label, m_look.polarity(m_surface)));
        painter.setPen(ink);
        painter.drawText(QRect(2, 24, width() - 4, 18), Qt::AlignCenter,
                         fitted(text(), painter.font(), width() - 4));
        if (showsKeyboardFocus(*this))
            drawFocusRing(painter, rect(), 4, surface.accent);
    }

private:
    void paintDrawing(QPainter& painter, const QRectF& box, const QColor& ink,
                      const QColor& ground) const
    {
        const auto line = [&](int row, qreal from, qreal to) {
            painter.fillRect(QRectF(box.left() + from, box.top() + row * 4, to - from, 1.6), ink);
        };
        const QRectF picture(box.left() + 5, box.top() + 2.6, 8, 8);
        switch (m_mode) {
        case WrapMode::inLine:
            line(0, 0, 18);
            line(2, 0, 3.5);
            line(2, 14.5, 18);
            line(3, 0, 18);
            break;
        case WrapMode::topAndBottom:
            line(0, 0, 18);
            line(3, 0, 18);
            break;
        case WrapMode::behindText:
        case WrapMode::inFrontOfText:
            for (int row = 0; row < 4; ++row)
                line(row, 0, 18);
            break;
        }
        if (m_mode == WrapMode::behindText) {
            QColor faint = ink;
            faint.setAlphaF(0.4F);
            painter.fillRect(picture.adjusted(0, -1, 0, 1), faint);
            return;
        }
        painter.fillRect(picture.adjusted(-1.4, -1, 1.4, 1), ground);
        painter.fillRect(picture, ink);
    }

    WrapMode m_mode;
    Look& m_look;
    Surface m_surface;
};

/// From its beginning on.
void showText(QLineEdit* field, const QString& text)
{
    if (field->text() == text)
        return;
    field->setText(text);
    field->setCursorPosition(0);
}

} // namespace

QString nameOf(OrvaneNoteImageWrapMode mode)
{
    switch (mode) {
    case WrapMode::inLine:
        return ImageControls::tr("In Line with Text");
    case WrapMode::topAndBottom:
        return ImageControls::tr("Top and Bottom");
    case WrapMode::behindText:
        return ImageControls::tr("Behind Text");
    case WrapMode::inFrontOfText:
        break;
    }
    return ImageControls::tr("In Front of Text");
}

ImageControls::ImageControls(Shape shape, Look& look, Surface surface,
                             NotificationCenter& notifications, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
    , m_surface(surface)
    , m_notifications(notifications)
    , m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins({});
    m_column->setSpacing(6);
    makePlacements();
    makeSize(shape);
    makeTexts();
    makeButtons(shape);
}

QLabel* ImageControls::addHead(const QString& text)
{
    if (m_column->count() > 0)
        m_column->addSpacing(6);
    QLabel* head = makeLabel(text, TextStyle::SectionHead, LabelInk::Secondary, this);
    m_column->addWidget(head);
    return head;
}

void ImageControls::makePlacements()
{
    (void)addHead(tr("Placement"));
    auto* grid = new QGridLayout;
    grid->setSpacing(4);
    auto* group = new QButtonGroup(this);
    for (const WrapMode mode : modes) {
        auto* button = new PlacementButton(mode, m_look, m_surface, this);
        group->addButton(button);
        const int index = int(m_placements.size());
        grid->addWidget(button, index / 2, index % 2);
        connect(button, &QAbstractButton::clicked, this, [this, mode] {
            m_notifications.post(Format::setImageWrapMode,
                                 ImageWrapModeChoice{m_info.attachmentID, rawValue(mode), m_note});
        });
        m_placements.append(button);
    }
    m_column->addLayout(grid);
}

QDoubleSpinBox* ImageControls::makeLength(const QString& name, double least)
{
    auto* field = new PointsField(least, mostImageSize.width(), this);
    field->setAccessibleName(name);
    field->setToolTip(name);
    field->setMinimumWidth(66);
    field->setMaximumWidth(84);
    field->setFixedHeight(28);
    return field;
}

void ImageControls::makeSize(Shape shape)
{
    (void)addHead(tr("Size"));
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    m_width = makeLength(tr("Width in points"), leastImageSize.width());
    m_height = makeLength(tr("Height in points"), leastImageSize.height());
    m_lock = new QToolButton(this);
    m_lock->setCheckable(true);
    m_lock->setIconSize({16, 16});
    m_lock->setFixedSize(28, 28);
    m_lock->setFocusPolicy(Qt::TabFocus);
    row->addWidget(m_width);
    row->addWidget(makeLabel(QStringLiteral("×"), TextStyle::Body, LabelInk::Secondary, this));
    row->addWidget(m_height);
    row->addWidget(m_lock);
    row->addStretch();
    if (shape == Shape::wide)
        row->addWidget(makeButton(tr("Reset"), &ImageControls::reset));
    m_column->addLayout(row);
    connect(m_width, &QDoubleSpinBox::valueChanged, this,
            [this](double width) { postSize(width, std::nullopt); });
    connect(m_height, &QDoubleSpinBox::valueChanged, this,
            [this](double height) { postSize(std::nullopt, height); });
    connect(m_lock, &QToolButton::clicked, this, [this](bool isLocked) {
        ImageSizeChoice choice{.imageAttachmentID = m_info.attachmentID, .noteID = m_note};
        choice.imageAspectLocked = isLocked;
        m_notifications.post(Format::setImageSize, choice);
    });
    connect(&m_look, &Look::changed, this, &ImageControls::showLock);

    m_offsetRow = new QWidget(this);
    auto* offsets = new QHBoxLayout(m_offsetRow);
    offsets->setContentsMargins(0, 6, 0, 0);
    offsets->setSpacing(6);
    m_offsetX = makeLength(tr("Distance to the right in points"), -mostImageSize.width());
    m_offsetY = makeLength(tr("Distance down in points"), -mostImageSize.height());
    offsets->addWidget(
        makeLabel(tr("Offset"), TextStyle::SectionHead, LabelInk::Secondary, m_offsetRow));
    offsets->addStretch();
    offsets->addWidget(m_offsetX);
    offsets->addWidget(m_offsetY);
    m_column->addWidget(m_offsetRow);
    for (QDoubleSpinBox* field : {m_offsetX, m_offsetY})
        connect(field, &QDoubleSpinBox::valueChanged, this, &ImageControls::postOffset);
}

void ImageControls::makeTexts()
{
    const auto addField = [this](const QString& head, const QString& hint) {
        QLabel* label = addHead(head);
        auto* field = new QLineEdit(this);
        field->setPlaceholderText(hint);
        field->setAccessibleName(head);
        field->setFixedHeight(28);
        label->setBuddy(field);
        m_column->addWidget(field);
        return field;
    };
    m_caption = addField(tr("Caption"), tr("A line below the image"));
    m_description = addField(tr("Description for screen readers"), tr("What the image shows"));
    connect(m_caption, &QLineEdit::editingFinished, this, &ImageControls::postCaption);
    connect(m_description, &QLineEdit::editingFinished, this, &ImageControls::postDescription);
}

QPushButton* ImageControls::makeButton(const QString& text, void (ImageControls::*act)())
{
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    button->setFixedHeight(28);
    connect(button, &QPushButton::clicked, this, act);
    return button;
}

void ImageControls::makeButtons(Shape shape)
{
    m_column->addSpacing(6);
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(makeButton(tr("Replace…"), &ImageControls::replace));
    if (shape == Shape::narrow)
        row->addWidget(makeButton(tr("Reset"), &ImageControls::reset));
    row->addStretch();
    QPushButton* remove = makeButton(tr("Remove"), &ImageControls::remove);
    setButtonTone(remove, ButtonTone::DangerText);
    row->addWidget(remove);
    m_column->addLayout(row);
}

void ImageControls::setInfo(const SelectedImageInfo& info, const std::optional<QUuid>& note)
{
    const bool isAnother = info.attachmentID != m_info.attachmentID;
    m_info = info;
    m_note = note;
    for (std::size_t i = 0; i < std::size(modes); ++i)
        m_placements[qsizetype(i)]->setChecked(modes[i] == info.wrapMode);
    // An image that came in smaller than it can be made says so.
    const auto set = [](QDoubleSpinBox* field, double value, double least) {
        const QSignalBlocker quiet(field);
        field->setMinimum(std::min(least, value));
        field->setValue(value);
    };
    set(m_width, info.width, leastImageSize.width());
    set(m_height, info.height, leastImageSize.height());
    set(m_offsetX, info.offsetX, -mostImageSize.width());
    set(m_offsetY, info.offsetY, -mostImageSize.height());
    m_offsetRow->setVisible(info.wrapMode == WrapMode::behindText ||
                            info.wrapMode == WrapMode::inFrontOfText);
    m_lock->setChecked(info.aspectRatioLocked);
    showLock();
    // What is being typed stays.
    if (isAnother || !m_caption->hasFocus())
        showText(m_caption, info.caption);
    if (isAnother || !m_description->hasFocus())
        showText(m_description, info.description);
}

void ImageControls::focusCaption()
{
    m_caption->setFocus(Qt::OtherFocusReason);
}

void ImageControls::showLock()
{
    const bool isLocked = m_info.aspectRatioLocked;
    m_lock->setIcon(m_look.icon(isLocked ? Symbol::Locked : Symbol::Unlocked, m_surface));
    m_lock->setToolTip(tr("Keep Proportions"));
    m_lock->setAccessibleName(tr("Keep Proportions"));
}

void ImageControls::reset()
{
    m_notifications.post(Format::resetSelectedImageSize, ImageTarget{m_info.attachmentID, m_note});
}

void ImageControls::replace()
{
    m_notifications.post(Format::chooseReplacementImage, ImageTarget{m_info.attachmentID, m_note});
}

void ImageControls::remove()
{
    m_notifications.post(Format::removeSelectedImage, ImageTarget{m_info.attachmentID, m_note});
}

void ImageControls::postSize(std::optional<double> width, std::optional<double> height)
{
    ImageSizeChoice choice{.imageAttachmentID = m_info.attachmentID, .noteID = m_note};
    choice.imageWidth = width;
    choice.imageHeight = height;
    m_notifications.post(Format::setImageSize, choice);
}

void ImageControls::postOffset()
{
    m_notifications.post(
        Format::setImageOffset,
        ImageOffsetChoice{m_info.attachmentID, {m_offsetX->value(), m_offsetY->value()}, m_note});
}

void ImageControls::postCaption()
{
    if (m_caption->text().simplified() != m_info.caption)
        m_notifications.post(Format::setImageCaption,
                             ImageTextChoice{m_info.attachmentID, m_caption->text(), m_note});
}

void ImageControls::postDescription()
{
    if (m_description->text().trimmed() != m_info.description)
        m_notifications.post(Format::setImageDescription,
                             ImageTextChoice{m_info.attachmentID, m_description->text(), m_note});
}

} // namespace orvane
