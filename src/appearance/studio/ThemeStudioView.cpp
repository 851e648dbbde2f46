// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/ThemeStudioView.h"

#include "appearance/AppearanceTokens.h"
#include "appearance/studio/ColorEditor.h"
#include "appearance/studio/ColorRow.h"
#include "appearance/studio/ThemeCard.h"
#include "appearance/studio/VariantPreview.h"
#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/DesktopThemeFollower.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollArea>

namespace orvane {

namespace {

constexpr int padding = 36;
constexpr int cardGap = 14;
constexpr int widestContent = 1120;
constexpr int columnsFrom = 760;

} // namespace

ThemeStudioView::ThemeStudioView(const ThemeStudioServices& services, QWidget* parent)
    : SurfacePanel(services.look, Surface::Page, parent)
    , m_s(services)
    , m_mode(services.library.activeMode())
    , m_scroll(new QScrollArea(this))
    , m_cardGrid(new QGridLayout)
    , m_saveCard(new SaveLookCard(services.look))
{
    setAcceptDrops(true);
    m_selected = m_s.library.activeThemeID().value_or(QUuid());
    auto* content = new QWidget;
    content->setMaximumWidth(widestContent);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(padding, 32, padding, padding);
    layout->setSpacing(0);
    layout->addWidget(makeHead());
    layout->addSpacing(20);
    m_cardGrid->setContentsMargins({});
    m_cardGrid->setSpacing(cardGap);
    layout->addLayout(m_cardGrid);
    layout->addSpacing(20);
    layout->addWidget(makeVariants());
    layout->addSpacing(8);
    layout->addWidget(makeActions());
    layout->addSpacing(24);
    layout->addWidget(makeColors());
    layout->addStretch(1);

    m_scroll->setWidget(content);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    outer->addWidget(m_scroll);

    connect(m_saveCard, &QAbstractButton::clicked, this, &ThemeStudioView::saveCurrentLook);
    connect(&m_s.library, &AppearanceThemeLibrary::changed, this, &ThemeStudioView::showLibrary);
    connect(&m_s.look, &Look::changed, this, &ThemeStudioView::showLook);
    connect(&m_s.defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key == followDesktopSetting.keyText())
            m_follow->setChecked(followDesktopSetting.read(m_s.defaults));
    });
    showLibrary();
}

QWidget* ThemeStudioView::makeHead()
{
    auto* head = new QWidget(this);
    auto* layout = new QVBoxLayout(head);
    layout->setContentsMargins({});
    layout->setSpacing(6);
    layout->addWidget(makeLabel(tr("Theme Studio"), TextStyle::SheetTitle));
    QLabel* told = makeLabel(tr("Applying a saved theme changes the workspace. It does not "
                                "overwrite saved themes unless you press Update."),
                             TextStyle::Body, LabelInk::Secondary);
    told->setWordWrap(true);
    layout->addWidget(told);
    return head;
}

QWidget* ThemeStudioView::makeVariants()
{
    auto* variants = new QWidget(this);
    auto* layout = new QHBoxLayout(variants);
    layout->setContentsMargins({});
    layout->setSpacing(cardGap);
    const std::pair<AppearanceThemeMode, QString> sides[] = {
        {AppearanceThemeMode::Light, tr("Light")}, {AppearanceThemeMode::Dark, tr("Dark")}};
    for (const auto& [mode, name] : sides) {
        auto* preview = new VariantPreview(name, m_s.look, variants);
        m_previews[int(mode)] = preview;
        layout->addWidget(preview);
        connect(preview, &QAbstractButton::clicked, this, [this, mode = mode] { select(mode); });
    }
    return variants;
}

QWidget* ThemeStudioView::makeActions()
{
    auto* actions = new QWidget(this);
    auto* layout = new QHBoxLayout(actions);
    layout->setContentsMargins({});
    layout->setSpacing(8);
    const auto add = [&](const QString& text, auto action) {
        auto* button = new QPushButton(text, actions);
        connect(button, &QPushButton::clicked, this, action);
        layout->addWidget(button);
        return button;
    };
    m_copy = add({}, [this] { copySelected(m_mode); });
    add(tr("Import…"), [this] {
        importTheme();
    })->setToolTip(tr("Take in a theme from a file; a file can also be dropped here"));
    layout->addSpacing(12);
    m_follow = new QCheckBox(tr("Follow the desktop"), actions);
    m_follow->setToolTip(tr("Change between Light and Dark with the desktop. An edited look stays "
                            "until it is saved."));
    m_follow->setChecked(followDesktopSetting.read(m_s.defaults));
    connect(m_follow, &QCheckBox::toggled, this,
            [this](bool on) { followDesktopSetting.write(m_s.defaults, on); });
    layout->addWidget(m_follow);
    layout->addStretch(1);
    m_update = add(tr("Update"), [this] { updateSelected(); });
    m_apply = add(tr("Apply"), [this] { applySelected(); });
    m_apply->setDefault(true);
    return actions;
}

QWidget* ThemeStudioView::makeColors()
{
    auto* colors = new QWidget(this);
    auto* layout = new QVBoxLayout(colors);
    layout->setContentsMargins({});
    layout->setSpacing(8);
    auto* head = new QHBoxLayout;
    head->setSpacing(12);
    head->addWidget(makeLabel(tr("The look as it is now"), TextStyle::WindowTitle));
    head->addStretch(1);
    m_state = makeLabel({}, TextStyle::Body, LabelInk::Secondary);
    head->addWidget(m_state);
    m_bringBack = new QPushButton(tr("Bring Back Edits"), colors);
    m_bringBack->setToolTip(tr("The edited look that applying this theme replaced"));
    m_bringBack->hide();
    connect(m_bringBack, &QPushButton::clicked, this, &ThemeStudioView::bringBack);
    head->addWidget(m_bringBack);
    layout->addLayout(head);

    m_colorGrid = new QGridLayout;
    m_colorGrid->setContentsMargins({});
    m_colorGrid->setVerticalSpacing(0);
    for (const StudioColor& color : studioColors()) {
        auto* row = new ColorRow(color, m_s.look, colors);
        m_rows.append(row);
        connect(row, &QAbstractButton::clicked, this, [this, row] { editColor(*row); });
    }
    layout->addLayout(m_colorGrid);
    layout->addSpacing(16);
    layout->addWidget(makeLabel(tr("Glass"), TextStyle::WindowTitle));
    m_glass = new GlassRows(m_s.look, colors);
    connect(m_glass, &GlassRows::changeWanted, this, &ThemeStudioView::change);
    layout->addWidget(m_glass);
    placeColors();
    return colors;
}

/// Down the first column and then down the second, where there is room for two.
void ThemeStudioView::placeColors()
{
    const int columns = m_isWide ? 2 : 1;
    const int rows = (int(m_rows.size()) + columns - 1) / columns;
    for (int i = 0; i < int(m_rows.size()); ++i)
        m_colorGrid->addWidget(m_rows.at(i), i % rows, i / rows);
    m_colorGrid->setHorizontalSpacing(columns > 1 ? 32 : 0);
    m_glass->setColumns(columns);
}

void ThemeStudioView::showLibrary()
{
    if (!m_s.library.bundle(m_selected)) {
        const auto& bundles = m_s.library.themeBundles();
        const auto active = m_s.library.activeThemeID();
        m_selected = active && m_s.library.bundle(*active) ? *active
                     : bundles.isEmpty()                   ? QUuid()
                                                           : bundles.first().id;
    }
    makeCards();
    const AppearanceValues current = readAppearance(m_s.defaults);
    for (qsizetype i = 0; i < m_cards.size(); ++i) {
        const AppearanceThemeBundle& bundle = m_s.library.themeBundles().at(i);
        m_cards.at(i)->showTheme(bundle.name, tokensFor(appliedTo(current, bundle.light.values)),
                                 tokensFor(appliedTo(current, bundle.dark.values)),
                                 bundle.id == m_s.library.activeThemeID());
        m_cards.at(i)->setChecked(bundle.id == m_selected);
    }
    showLook();
}

/// Makes one card for each bundle; those of the bundles that stay, stay.
void ThemeStudioView::makeCards()
{
    QList<ThemeCard*> cards;
    QList<ThemeCard*> old = m_cards;
    for (const AppearanceThemeBundle& bundle : m_s.library.themeBundles()) {
        ThemeCard* found = card(bundle.id);
        if (found && old.removeOne(found)) {
            cards.append(found);
            continue;
        }
        auto* made = new ThemeCard(bundle.id, m_s.look, m_scroll->widget());
        const QUuid id = bundle.id;
        connect(made, &QAbstractButton::clicked, this, [this, id] { select(id); });
        connect(made, &ThemeCard::applyWanted, this, [this, id] {
            select(id);
            applySelected();
        });
        connect(made, &ThemeCard::renamed, this,
                [this, id](const QString& name) { m_s.library.renameTheme(id, name); });
        connect(made, &ThemeCard::menuWanted, this, [this, id](const QPoint& position) {
            select(id);
            openMenu(position);
        });
        made->show();
        cards.append(made);
    }
    for (ThemeCard* gone : std::as_const(old)) {
        gone->hide();
        gone->deleteLater();
    }
    const bool moved = cards != m_cards || m_cardGrid->isEmpty();
    m_cards = cards;
    if (moved)
        placeCards();
}

void ThemeStudioView::placeCards()
{
    while (QLayoutItem* item = m_cardGrid->takeAt(0))
        delete item;
    const int columns = m_isWide ? 3 : 2;
    QWidget* before = nullptr;
    const auto place = [&](QWidget* widget, int index) {
        m_cardGrid->addWidget(widget, index / columns, index % columns);
        if (before)
            setTabOrder(before, widget);
        before = widget;
    };
    for (int i = 0; i < int(m_cards.size()); ++i)
        place(m_cards.at(i), i);
    place(m_saveCard, int(m_cards.size()));
    for (int column = 0; column < 3; ++column)
        m_cardGrid->setColumnStretch(column, column < columns ? 1 : 0);
}

ThemeCard* ThemeStudioView::card(const QUuid& id) const
{
    for (ThemeCard* card : m_cards) {
        if (card->themeID() == id)
            return card;
    }
    return nullptr;
}

void ThemeStudioView::showPreviews()
{
    const AppearanceThemeBundle* bundle = m_s.library.bundle(m_selected);
    const AppearanceValues current = readAppearance(m_s.defaults);
    const bool active = m_s.library.activeThemeID() == m_selected;
    for (const auto mode : {AppearanceThemeMode::Light, AppearanceThemeMode::Dark}) {
        VariantPreview* preview = m_previews[int(mode)];
        const bool onScreen = active && m_s.library.activeMode() == mode;
        preview->setVisible(bundle != nullptr);
        if (bundle)
            preview->showTokens(onScreen
                                    ? m_s.look.tokens()
                                    : tokensFor(appliedTo(current, bundle->variant(mode).values)),
                                onScreen);
        preview->setChecked(mode == m_mode);
    }
}

void ThemeStudioView::showLook()
{
    const AppearanceValues current = readAppearance(m_s.defaults);
    const QList<InkContrast> contrasts = inkContrasts(current);
    for (ColorRow* row : m_rows) {
        std::optional<InkContrast> contrast;
        for (const InkContrast& one : contrasts) {
            if (row->color().member && one.ink == row->color().member)
                contrast = one;
        }
        row->showValues(current, contrast);
    }
    m_glass->showValues(current);
    showPreviews();

    const AppearanceThemeBundle* bundle = m_s.library.bundle(m_selected);
    const bool light = m_mode == AppearanceThemeMode::Light;
    m_copy->setText(light ? tr("Copy Light to Dark") : tr("Copy Dark to Light"));
    m_update->setToolTip(
        light ? tr("Overwrite this theme's light version with the current appearance.")
              : tr("Overwrite this theme's dark version with the current appearance."));
    for (QPushButton* button : {m_copy, m_update, m_apply})
        button->setEnabled(bundle != nullptr);

    const auto active = m_s.library.activeThemeID();
    const AppearanceThemeBundle* worn = active ? m_s.library.bundle(*active) : nullptr;
    const bool edited = !m_s.library.lookIsActiveTheme();
    if (edited && m_replaced)
        m_replaced.reset();
    m_bringBack->setVisible(m_replaced.has_value());
    m_state->setText(!worn    ? tr("Not saved as a theme")
                     : edited ? tr("%1, edited").arg(worn->name)
                              : worn->name);
}

void ThemeStudioView::resizeEvent(QResizeEvent* event)
{
    SurfacePanel::resizeEvent(event);
    const bool isWide = event->size().width() >= columnsFrom;
    if (isWide != std::exchange(m_isWide, isWide)) {
        placeCards();
        placeColors();
    }
}

void ThemeStudioView::editColor(ColorRow& row)
{
    const AppearanceValues values = readAppearance(m_s.defaults);
    const StudioColor& color = row.color();
    ColorEditor::Subject subject{color.name, color.get(values), std::nullopt, color.canBeAutomatic};
    if (color.glass)
        subject.glass = values.*color.glass;
    auto* editor = new ColorEditor(subject, m_s.look, this);
    const auto showContrast = [this, editor, &color] {
        for (const InkContrast& contrast : inkContrasts(readAppearance(m_s.defaults))) {
            if (color.member && contrast.ink == color.member)
                return editor->setContrast(contrast.ratio, contrast.minimum, contrast.madeReadable);
        }
        editor->hideContrast();
    };
    connect(editor, &ColorEditor::edited, this, [this, editor, &color, showContrast] {
        change([&](AppearanceValues& changed) {
            color.set(changed, editor->color());
            if (color.glass && editor->glass())
                changed.*color.glass = *editor->glass();
        });
        showContrast();
    });
    showContrast();
    const QRect swatch = row.swatchRect();
    editor->popUpAt(QRect(row.mapToGlobal(swatch.topLeft()), swatch.size()));
}

void ThemeStudioView::change(const GlassRows::Change& change)
{
    AppearanceValues values = readAppearance(m_s.defaults);
    change(values);
    writeAppearance(values, m_s.defaults);
}

} // namespace orvane
