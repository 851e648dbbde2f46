// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfListCounter.h"

#include "text/rtf/ImportedList.h"

#include <algorithm>
#include <utility>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostLists = 4'000;
constexpr int largestNumber = 1'000'000'000;

} // namespace

void RtfListCounter::beginList()
{
    m_defined = Defined::list;
    m_list = {};
    m_definesLevel = false;
}

void RtfListCounter::beginLevel()
{
    m_definesLevel = false;
    if (m_defined == Defined::list && m_list.levelsDefined < levelCount) {
        ++m_list.levelsDefined;
        m_definesLevel = true;
    } else if (m_defined == Defined::override && m_override.levelsDefined > 0) {
        m_override.levels[std::size_t(m_override.levelsDefined) - 1] = Level{};
        m_definesLevel = true;
    }
}

void RtfListCounter::beginOverride()
{
    m_defined = Defined::override;
    m_override = {};
    m_definesLevel = false;
}

void RtfListCounter::beginLevelOverride()
{
    m_definesLevel = false;
    if (m_defined == Defined::override && m_override.levelsDefined < levelCount)
        ++m_override.levelsDefined;
}

RtfListCounter::Level* RtfListCounter::level()
{
    if (!m_definesLevel)
        return nullptr;
    if (m_defined == Defined::list)
        return &m_list.levels[std::size_t(m_list.levelsDefined) - 1];
    auto& own = m_override.levels[std::size_t(m_override.levelsDefined) - 1];
    return own ? &*own : nullptr;
}

void RtfListCounter::setListId(int id)
{
    if (m_defined == Defined::list && m_lists.size() < mostLists)
        m_lists.insert(id, std::exchange(m_list, {}));
    else if (m_defined == Defined::override)
        m_override.listId = id;
    m_definesLevel = false;
}

void RtfListCounter::setOverrideNumber(int number)
{
    if (m_defined == Defined::override && m_overrides.size() < mostLists)
        m_overrides.insert(number, m_override);
}

void RtfListCounter::setStart(int start)
{
    start = std::clamp(start, 0, largestNumber);
    if (Level* own = level())
        own->start = start;
    else if (m_defined == Defined::override && m_override.levelsDefined > 0)
        m_override.starts[std::size_t(m_override.levelsDefined) - 1] = start;
}

QString RtfListCounter::nextMarker(int number, int level)
{
    const auto override = m_overrides.find(number);
    const auto list =
        override == m_overrides.end() ? m_lists.end() : m_lists.find(override->listId);
    if (list == m_lists.end())
        return {};
    const auto at = [&](int index) -> const Level& {
        const auto& own = override->levels[std::size_t(index)];
        return own ? *own : list->levels[std::size_t(index)];
    };
    const auto startOf = [&](int index) {
        return override->starts[std::size_t(index)].value_or(at(index).start);
    };
    if (!std::exchange(override->isUsed, true)) {
        for (std::size_t i = 0; i < levelCount; ++i) {
            if (override->starts[i])
                list->numbers[i].reset();
        }
    }
    auto& own = list->numbers[std::size_t(level)];
    own = own ? std::min(*own, largestNumber) + 1 : startOf(level);
    std::fill(list->numbers.begin() + level + 1, list->numbers.end(), std::nullopt);

    const Level& shown = at(level);
    if (shown.isUnmarked)
        return {};
    QString marker;
    for (const QChar c : shown.text) {
        const int index = c.unicode();
        if (index < levelCount)
            marker += ImportedList::numberText(
                at(index).kind, list->numbers[std::size_t(index)].value_or(startOf(index)));
        else
            marker += c;
    }
    marker = marker.trimmed();
    return marker.isEmpty() && shown.isBullet ? u"•"_s : marker;
}

} // namespace orvane
