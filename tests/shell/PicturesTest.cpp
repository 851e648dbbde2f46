// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// How every screen of the tour looks, held against pictures that somebody has looked at.
#include "platform/Clock.h"
#include "support/KeptPictures.h"
#include "tour/Tour.h"

#include <QApplication>
#include <QClipboard>
#include <QRegularExpression>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTest>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// Always the same moment, while delays pass as they do.
class FixedClock final : public Clock {
public:
    [[nodiscard]] Timestamp now() const override { return {1'795'000'000'000}; }
    [[nodiscard]] std::unique_ptr<Delay> after(std::chrono::milliseconds delay,
                                               std::function<void()> action) override
    {
        return m_delays.after(delay, std::move(action));
    }

private:
    SystemClock m_delays;
};

TEST(Screens, LookAsTheyDid)
{
    QApplication::setCursorFlashTime(0);
    QGuiApplication::clipboard()->clear();
    const QTemporaryDir unused;
    runTour(
        unused.path(),
        [](OrvaneWorkspaceApp&, QWidget& shown, QString name) {
            static const QRegularExpression number(u"^[0-9]+-"_s);
            // The same at a finer scale, and what names the folder of this run.
            static const QRegularExpression leftOut(u"2x|settings-projects|data-protected"_s);
            static const QRegularExpression counted(
                u"page|focus|typewriter|rich|link|markdown|image|table|formatting"_s);
            if (name.contains(leftOut))
                return;
            if (name.contains(counted))
                QTest::qWait(250); // until the words are counted
            expectKeptPicture(shown, name.remove(number));
        },
        [] { return std::make_unique<FixedClock>(); });
    QApplication::setCursorFlashTime(1000);
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
}

} // namespace
} // namespace orvane
