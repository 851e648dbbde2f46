// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Every screen of the tour as somebody meets it who doesn't see it, or sees little: what each
// element says of itself, and how what is drawn reads on what is behind it.
#include "ShellFixture.h"
#include "appearance/AppearanceTokens.h"
#include "appearance/Contrast.h"
#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/BundledThemes.h"
#include "editor/view/EditorView.h"
#include "tour/Tour.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextEdit>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

std::string describe(const QAccessibleInterface& element)
{
    const QObject* object = element.object();
    const QObject* above = object ? object->parent() : nullptr;
    return std::string(object ? object->metaObject()->className() : "part") + " “" +
           element.text(QAccessible::Name).toStdString() + "”" +
           (above ? std::string(" in ") + above->metaObject()->className() : std::string());
}

/// What the tour shows, each screen once: the same in another look or size counts as seen.
class Screens {
public:
    bool isNew(QString name)
    {
        static const QRegularExpression number(u"^[0-9]+-"_s);
        static const QRegularExpression look(u"-(light|dark|google|narrow)"_s);
        name.remove(number).remove(look);
        const bool isFirst = !m_seen.contains(name);
        m_seen.insert(name);
        return isFirst;
    }

private:
    QSet<QString> m_seen;
};

// --- What elements say of themselves
// --------------------------------------------------------------

bool isField(QAccessible::Role role)
{
    return role == QAccessible::EditableText || role == QAccessible::ComboBox ||
           role == QAccessible::SpinBox || role == QAccessible::Slider;
}

void checkElement(const QAccessibleInterface& element)
{
    const QAccessible::Role role = element.role();
    const QAccessible::State state = element.state();
    const auto* widget = qobject_cast<QWidget*>(element.object());
    const std::string name = describe(element);
    const bool takesKeyboard =
        widget && widget->focusPolicy() != Qt::NoFocus && !widget->focusProxy();
    if (takesKeyboard || isField(role) || role == QAccessible::Button) {
        EXPECT_FALSE(element.text(QAccessible::Name).isEmpty()) << "no name: " << name;
        EXPECT_NE(role, QAccessible::NoRole) << name;
        EXPECT_NE(role, QAccessible::Client) << "says only that it is there: " << name;
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget);
        button && button->isCheckable()) {
        EXPECT_TRUE(state.checkable) << name;
        EXPECT_EQ(bool(state.checked), button->isChecked()) << name;
    }
    if (widget && widget->isVisible()) {
        EXPECT_EQ(bool(state.disabled), !widget->isEnabled()) << name;
    }
    if (isField(role) && widget && widget->parentWidget()) {
        // What a label beside it says must lead to it.
        for (const auto* label :
             widget->parentWidget()->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (label->isVisible() && label->text() == element.text(QAccessible::Name)) {
                EXPECT_FALSE(element.relations(QAccessible::Label).isEmpty())
                    << "not told by its label: " << name;
            }
        }
    }
    if (const auto* label = qobject_cast<const QLabel*>(widget);
        label && !label->text().isEmpty() && label->textFormat() != Qt::RichText) {
        // A label whose name says something else can't be read.
        EXPECT_TRUE(element.text(QAccessible::Name).contains(label->text()) ||
                    element.text(QAccessible::Value).contains(label->text()))
            << "reads otherwise than “" << label->text().toStdString() << "”: " << name;
    }
    if (widget && (widget->isWindow() || widget->inherits("orvane::Sheet")) &&
        !widget->inherits("QMenu")) {
        EXPECT_TRUE(role == QAccessible::Window || role == QAccessible::Dialog ||
                    role == QAccessible::PopupMenu)
            << "a window with the role " << role << ": " << name;
        EXPECT_FALSE(element.text(QAccessible::Name).isEmpty()) << "no name: " << name;
    }
}

/// Counts what is not behind a sheet, down from `element`.
int walk(QAccessibleInterface* element, int depth = 0)
{
    if (!element || !element->isValid() || element->state().invisible || depth > 40)
        return 0;
    checkElement(*element);
    const auto role = element->role();
    if (role == QAccessible::Tree || role == QAccessible::List || role == QAccessible::Table)
        return 1; // items are walked by the tests of their views
    int count = 1;
    for (int i = 0; i < element->childCount(); ++i)
        count += walk(element->child(i), depth + 1);
    return count;
}

void checkItems(QWidget& window)
{
    const auto* sheets = window.findChild<SheetHost*>(QString(), Qt::FindDirectChildrenOnly);
    for (auto* view : window.findChildren<QAbstractItemView*>()) {
        const bool isBehind = sheets && sheets->topSheet() && !sheets->isAncestorOf(view);
        if (isBehind || !view->isVisible() || !view->model() || view->model()->rowCount() == 0)
            continue;
        QAccessibleInterface* list = QAccessible::queryAccessibleInterface(view);
        ASSERT_NE(list, nullptr);
        for (int i = 0; i < std::min(list->childCount(), 12); ++i) {
            QAccessibleInterface* item = list->child(i);
            if (!item || !item->isValid() || item->role() == QAccessible::ColumnHeader)
                continue;
            EXPECT_FALSE(item->text(QAccessible::Name).isEmpty())
                << "a row without a name in " << describe(*list);
        }
        const QModelIndex current = view->currentIndex();
        if (!current.isValid() || !view->selectionModel()->isSelected(current))
            continue;
        int selected = 0;
        for (int i = 0; i < list->childCount(); ++i) {
            QAccessibleInterface* item = list->child(i);
            selected += item && item->isValid() && item->state().selected;
        }
        EXPECT_GT(selected, 0) << "nothing says that it is selected in " << describe(*list);
    }
}

class ScreenWalkTest : public ShellTest {};

TEST_F(ScreenWalkTest, EveryElementSaysWhatItIs)
{
    Screens screens;
    const QTemporaryDir unused;
    runTour(unused.path(), [&](OrvaneWorkspaceApp& app, QWidget& shown, const QString& name) {
        if (!screens.isNew(name))
            return;
        SCOPED_TRACE(name.toStdString());
        walk(QAccessible::queryAccessibleInterface(&shown));
        checkItems(shown);
        if (&shown != &app.window() || !app.window().sheets().topSheet())
            return;
        // Behind a sheet there is nothing to go to.
        QAccessibleInterface* window = QAccessible::queryAccessibleInterface(&shown);
        for (int i = 0; i < window->childCount(); ++i) {
            EXPECT_TRUE(window->child(i)->object() == &app.window().sheets())
                << "behind the sheet: " << describe(*window->child(i));
        }
    });
}

// --- How it reads
// ----------------------------------------------------------------------------------

/// A piece of what is drawn on one ground: a word, a picture.
struct Mark {
    QRect place;
    double contrast = 1;
};

QRgb groundOf(const QImage& image, const QRect& place)
{
    QHash<QRgb, int> areas;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = place.left(); x <= place.right(); ++x)
            ++areas[line[x]];
    }
    QRgb most = 0;
    int area = -1;
    for (const auto& [color, count] : areas.asKeyValueRange()) {
        if (count > area)
            std::tie(most, area) = std::tuple(color, count);
    }
    return most;
}

/// The marks in `place`, told apart by empty lines and columns.
QList<Mark> marksIn(const QImage& image, const QRect& wanted, int gap)
{
    const QRect place = wanted & image.rect();
    if (place.isEmpty())
        return {};
    const QColor ground(groundOf(image, place));
    QHash<QRgb, double> known;
    const auto contrastAt = [&](int x, int y) {
        const QRgb color = reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
        auto found = known.find(color);
        if (found == known.end())
            found = known.insert(color, contrastRatio(QColor(color), ground));
        return *found;
    };
    constexpr double seen = 1.3;
    QList<Mark> marks;
    const auto columnsOf = [&](int top, int bottom) {
        Mark mark;
        int last = place.left() - gap - 1;
        const auto end = [&] {
            if (mark.place.isValid())
                marks.append(mark);
            mark = {};
        };
        for (int x = place.left(); x <= place.right(); ++x) {
            double most = 1;
            for (int y = top; y <= bottom; ++y)
                most = std::max(most, contrastAt(x, y));
            if (most < seen)
                continue;
            if (x - last > gap)
                end();
            mark.place |= QRect(x, top, 1, bottom - top + 1);
            mark.contrast = std::max(mark.contrast, most);
            last = x;
        }
        end();
    };
    int top = -1;
    for (int y = place.top(); y <= place.bottom() + 1; ++y) {
        bool any = false;
        for (int x = place.left(); y <= place.bottom() && x <= place.right() && !any; ++x)
            any = contrastAt(x, y) >= seen;
        if (any && top < 0)
            top = y;
        if (!any && top >= 0) {
            columnsOf(top, y - 1);
            top = -1;
        }
    }
    return marks;
}

/// What a stroke thinner than a pixel loses to its ground however near it is looked at.
constexpr double thinStrokes = 0.45;

/// Lines, bars and edges are no marks to read; single letters and large text count as pictures.
double wantedContrast(const QRect& mark)
{
    constexpr int edge = 7;
    constexpr int tallest = 40;
    constexpr int large = 19; // letters of 18 pt and more
    const int shorter = std::min(mark.width(), mark.height());
    const bool isBar = 3 * mark.width() < mark.height();
    if (shorter < edge || isBar || mark.height() > tallest)
        return 0;
    const bool isText = mark.width() >= 2 * mark.height() && mark.height() < large;
    return isText ? textContrast : iconContrast - thinStrokes;
}

bool isToRead(const QWidget& widget)
{
    if (!widget.isVisible() || !widget.isEnabled() || widget.width() < 8 || widget.height() < 8)
        return false;
    // What a person has chosen for the text and what a theme would look like are theirs.
    for (const QWidget* each = &widget; each; each = each->parentWidget()) {
        if (qobject_cast<const EditorView*>(each) || each->inherits("orvane::VariantPreview") ||
            each->inherits("orvane::ThemeCard") || each->inherits("orvane::ColorRow"))
            return false;
    }
    return qobject_cast<const QLabel*>(&widget) || qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QTextEdit*>(&widget);
}

QList<QRect> placesToRead(const QWidget& window)
{
    constexpr int edge = 4; // the frames of fields, the rings of what has the keyboard
    const auto* sheets = window.findChild<SheetHost*>(QString(), Qt::FindDirectChildrenOnly);
    QList<QRect> places;
    const auto add = [&](const QWidget& widget, const QRect& part) {
        // What has scrolled away or lies behind is not seen.
        const QRegion seen = widget.visibleRegion() & part;
        if (seen.boundingRect() == part)
            places.append({widget.mapTo(&window, part.topLeft()), part.size()});
    };
    for (auto* widget : window.findChildren<QWidget*>()) {
        const bool isBehind = sheets && sheets->topSheet() && widget != sheets->topSheet() &&
                              !sheets->topSheet()->isAncestorOf(widget);
        if (widget->window() != &window || isBehind)
            continue;
        if (isToRead(*widget)) {
            const bool isBare = qobject_cast<QLabel*>(widget);
            add(*widget,
                isBare ? widget->rect() : widget->rect().adjusted(edge, edge, -edge, -edge));
        }
        const auto* view = qobject_cast<QAbstractItemView*>(widget);
        if (!view || !view->model() || !view->isVisible())
            continue;
        QModelIndex index = view->indexAt({view->viewport()->width() / 3, 12});
        for (int i = 0; i < 30 && index.isValid(); ++i) {
            const QRect row = view->visualRect(index).adjusted(edge, edge, -edge, -edge);
            if (index.flags().testFlag(Qt::ItemIsEnabled))
                add(*view->viewport(), row);
            index = view->indexAt({row.center().x(), row.bottom() + 2 * edge});
        }
    }
    return places;
}

QImage picture(QWidget& window, const QRect& part, int scale)
{
    QImage image(part.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::black);
    window.render(&image, {}, part);
    image.setDevicePixelRatio(1);
    return image;
}

void checkContrast(QWidget& shown)
{
    constexpr int gap = 7;
    const QImage image = picture(shown, shown.rect(), 1);
    for (const QRect& place : placesToRead(shown)) {
        for (const Mark& mark : marksIn(image, place, gap)) {
            if (mark.contrast >= wantedContrast(mark.place))
                continue;
            // Thin strokes are mixed with the ground: looked at again from nearby.
            constexpr int scale = 4;
            const QRect part = mark.place.adjusted(-2, -2, 2, 2) & place;
            const QImage near = picture(shown, part, scale);
            double best = 1;
            for (const Mark& each : marksIn(near, near.rect(), gap * scale))
                best = std::max(best, each.contrast);
            EXPECT_GE(best, wantedContrast(mark.place) - 0.05)
                << part.x() << ',' << part.y() << ' ' << part.width() << 'x' << part.height()
                << " in "
                << (shown.childAt(part.center())
                        ? shown.childAt(part.center())->metaObject()->className()
                        : "the window");
        }
    }
}

/// A look that nobody would choose: every colour at random.
Tokens garishLook(unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> share(0, 1);
    AppearanceValues values;
    for (const AppearanceField& field : appearanceFields()) {
        const AppearanceFieldValue type = field.get(values);
        if (std::holds_alternative<bool>(type))
            field.set(values, share(random) < 0.7);
        else if (std::holds_alternative<double>(type))
            field.set(values, share(random) < 0.5 ? std::round(share(random)) : share(random));
    }
    return tokensFor(values);
}

TEST_F(ScreenWalkTest, EverythingReadsOnWhatIsBehindItInEveryLook)
{
    const std::pair<const char*, Tokens> looks[] = {
        {"Signature dark", tokensFor(signatureBundle().dark.values)},
        {"Signature light", tokensFor(signatureBundle().light.values)},
        {"Google dark", tokensFor(googleWorkspaceBundle().dark.values)},
        {"Google light", tokensFor(googleWorkspaceBundle().light.values)},
        {"garish 1", garishLook(1)},
        {"garish 2", garishLook(2)},
        {"garish 3", garishLook(3)},
    };
    Screens screens;
    const QTemporaryDir unused;
    runTour(unused.path(), [&](OrvaneWorkspaceApp& app, QWidget& shown, const QString& name) {
        if (!screens.isNew(name))
            return;
        const Tokens before = app.look().tokens();
        for (const auto& [title, tokens] : looks) {
            app.look().setTokens(tokens);
            SCOPED_TRACE(name.toStdString() + " in " + title);
            checkContrast(shown);
        }
        app.look().setTokens(before);
    });
}

} // namespace
} // namespace orvane
